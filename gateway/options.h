// What the user gives the gateway: the command line, of which one table of options and one of exit codes feed parsing
// and help, and the settings file. GatewayError ends the program with one of these codes and one sentence.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "feeds/settings/feed_settings.h"

enum class GatewayExit : int {
  Ended = 0,
  Mistakes = 1,
  CommandLine = 2,
  File = 3,
  Log = 4,
  Session = 5,
};

class GatewayError : public std::runtime_error {
 public:
  GatewayError(GatewayExit code, const std::string& sentence) : std::runtime_error(sentence), Code(code) {}
  GatewayExit Code;
};

// One of Config, Check, Replay and the three flags is given.
struct GatewayOptions {
  std::filesystem::path Config;
  std::filesystem::path EventLog;
  std::filesystem::path Check;
  std::filesystem::path Replay;
  std::string To;
  std::filesystem::path ReplayConfig;
  std::filesystem::path LogAccess;
  bool SampleConfig = false;
  bool Help = false;
  bool Version = false;
};

// Throws GatewayError with GatewayExit::CommandLine.
GatewayOptions ParseGatewayOptions(const std::vector<std::filesystem::path>& arguments);
std::string GatewayHelpText();

// The settings of a file without mistakes. Throws GatewayError with GatewayExit::Mistakes and a line FILE:LINE: text
// for each mistake, and FeedError if the file cannot be read.
FeedSettings GatewaySettings(const std::filesystem::path& file);

// The command line of the terminal: one table of options feeds parsing and help.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "terminal/day/day_input.h"

// When the windows close by themselves.
struct ExitAfter {
  bool Played = false;                          // once the day has been played
  std::optional<std::chrono::seconds> Seconds;  // of the wall

  bool HasCome(bool dayHasEnded, std::chrono::steady_clock::duration sinceBegin) const noexcept {
    return Played ? dayHasEnded : sinceBegin >= *Seconds;
  }
};

struct Options {
  bool Headless = false;
  bool Help = false;
  bool Version = false;
  std::filesystem::path Day;  // or the address of a feed; empty paths stand for the defaults of the help
  std::filesystem::path LogAccess;
  std::filesystem::path Securities;
  std::filesystem::path Desk;
  std::filesystem::path Plugin;
  std::filesystem::path Work;
  std::filesystem::path Record;  // or the address of a log
  std::filesystem::path Screenshot;
  std::filesystem::path Script;
  std::filesystem::path Report;
  std::optional<LiveFrom> Live;
  std::optional<double> Speed;  // times real time; nothing for as fast as the plug-in takes it, unless it is not given
  bool SpeedGiven = false;
  std::optional<struct ExitAfter> ExitAfter;
  std::optional<std::uint16_t> RecordMode;
};

// Throws TerminalError with ExitCode::CommandLine for an unknown option, a missing value or a bad one. An option given
// twice keeps its last value.
Options ParseOptions(const std::vector<std::filesystem::path>& arguments);

// The files that the options name, and the defaults of the help for the others.
RunFiles FilesOf(const Options& options);

std::string HelpText();

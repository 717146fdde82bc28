// FeedSettings: the settings file of a FIX session, its journal, its day log and its mapping. One table of the keys
// feeds reading, checking and the sample.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "feeds/day_log/log_address.h"
#include "feeds/engine/fix_engine.h"
#include "feeds/fix/trade_mapper.h"

struct FeedSettings {
  FixEngineSettings Session;
  std::filesystem::path JournalFolder;
  LogAccess Log;        // no servers: the journal alone
  std::string LogName;  // "trades": the stream TRADES_DATE with the subject trades.DATE
  int LogReplicas = 1;
  MappingChoices Mapping;
};

struct SettingsMistake {
  std::uint64_t Line = 0;  // 0: of the file as a whole
  std::string Text;
};

// Reads all of the file. Mistakes are listed in the order of lines; with any, the settings are not to be used. Throws
// FeedError if the file cannot be read. Relative paths are those of the file's folder. Secrets stand in files of their
// own, which nobody but their owner may read.
FeedSettings ReadFeedSettings(const std::filesystem::path& file, std::vector<SettingsMistake>& mistakes);
// The commented sample.
std::string SampleFeedSettings();

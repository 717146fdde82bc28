// JournalDay: the trade messages of a journal, in batches; follows the file while it grows.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <vector>

#include "feeds/common/feed_report.h"
#include "feeds/fix/trade_mapper.h"
#include "feeds/journal/journal_reader.h"

struct JournalCounts {
  std::uint64_t Records = 0;
  std::uint64_t Messages = 0;  // trade messages made
  std::uint64_t Trades = 0;
  std::uint64_t Corrections = 0;
  std::uint64_t Busts = 0;
  std::uint64_t Repeats = 0;
  std::uint64_t Refused = 0;  // by the engine or by the mapping
};

class JournalDay {
 public:
  // Throws FeedError.
  JournalDay(const std::filesystem::path& file, const MappingChoices& choices, AlarmSink& alarms);

  // Appends whole wire messages of the next records, about mostBytes at most; false if there is nothing more now.
  // Alarms of mapping and damage go to the sink in the order of the file.
  bool Take(std::vector<std::uint8_t>& messages, std::size_t mostBytes);
  const JournalCounts& Counts() const noexcept { return Told; }
  const JournalIdentity& Identity() const noexcept { return Reader.Identity(); }
  std::uint64_t BytesBehind() const { return Reader.BytesBehind(); }

 private:
  JournalReader Reader;
  TradeMapper Mapper;
  AlarmSink& Alarms;
  JournalCounts Told;
};

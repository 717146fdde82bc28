// JournalDay: the trade messages of a journal, in batches; follows the file while it grows.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "feeds/common/feed_report.h"
#include "feeds/fix/trade_mapper.h"
#include "feeds/journal/journal_reader.h"

struct JournalCounts {
  std::uint64_t Records = 0;
  std::uint64_t Messages = 0;  // trade messages that Take gave
  std::uint64_t Trades = 0;
  std::uint64_t Corrections = 0;
  std::uint64_t Busts = 0;
  std::uint64_t Repeats = 0;
  std::uint64_t Refused = 0;  // records that the engine or the mapping refused
  std::uint64_t Unknown = 0;  // corrections and busts of trades that never came
};

// Messages that the engine refused are mapped like all others, as one of them may be a trade, unless they are damaged
// or of another session; the alarm is told in any case. Call it from one thread.
class JournalDay {
 public:
  // Throws FeedError.
  JournalDay(const std::filesystem::path& file, const MappingChoices& choices, AlarmSink& alarms);

  // Appends whole wire messages of the next records: at most mostBytes, but at least one message if there is any. False
  // if there was neither a message nor a record; true without a message for records that hold no trade. Reads at most
  // kMostRecords records. Alarms of mapping and damage go to the sink in the order of the file. Throws FeedError if the
  // file cannot be read any more.
  bool Take(std::vector<std::uint8_t>& messages, std::size_t mostBytes);
  const JournalCounts& Counts() const noexcept { return Told; }
  const JournalIdentity& Identity() const noexcept { return Reader.Identity(); }
  // Of the file; records whose messages have not been taken count as read.
  std::uint64_t BytesBehind() const { return Reader.BytesBehind(); }

  static constexpr int kMostRecords = 10'000;

 private:
  bool GiveWaiting(std::vector<std::uint8_t>& messages, std::size_t begin, std::size_t mostBytes);
  void MapRecord(const JournalRecord& record);
  bool IsOfSession(std::string_view text) const;
  void TellDamage(const JournalRecord& record);
  void Tell(AlarmKind kind, const JournalRecord& record, const std::string& what);

  JournalReader Reader;
  TradeMapper Mapper;
  AlarmSink& Alarms;
  JournalCounts Told;
  std::uint64_t DamageTold = 0;
  std::vector<std::uint8_t> Waiting;  // messages of the last record; given up to GivenSize
  std::size_t GivenSize = 0;
};

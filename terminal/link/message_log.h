// MessageLog: the latest messages between terminal and plug-in, in both directions, and what feeds tell, with their
// texts for a list and a file.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <span>
#include <string>
#include <vector>

#include "host_link/messages/packet_writer.h"
#include "terminal/lists/list_source.h"

enum class LogDirection : std::uint8_t { ToPlugin, FromPlugin, Alarm, Connection };

struct LoggedMessage {
  std::uint64_t Count = 0;  // of all rows so far, from 1
  std::chrono::system_clock::time_point Time;
  LogDirection Direction = LogDirection::ToPlugin;
  std::uint16_t Number = 0;          // 0 for what a feed tells
  std::vector<std::uint8_t> Fields;  // decoded, behind the message number; the text of a feed
};

// Adding copies the bytes; texts are made on demand. After kMost messages the oldest goes. As a list its rows are the
// messages by their counts less 1.
class MessageLog : public ListSource {
 public:
  static constexpr std::size_t kMost = 10'000;

  void Add(bool toPlugin, std::uint16_t number, std::span<const std::uint8_t> fields);
  // A message that is open or finished; its number is its first field.
  void Add(bool toPlugin, const CQORPacketWriter& message);
  // What a feed tells.
  void AddNote(bool isAlarm, const std::string& text);
  void Clear() { Messages.clear(); }

  std::size_t Size() const noexcept { return Messages.size(); }

  std::span<const ListColumn> Columns() const override;
  ListRow FirstRow() const override { return Taken - Messages.size(); }
  ListRow EndRow() const override { return Taken; }
  std::wstring Text(ListRow row, std::size_t column) const override;
  SheetValue Value(ListRow row, std::size_t column) const override;
  ListChanges TakeChanges() override { return {}; }  // a message stays as it is
  // The newest is row 0.
  const LoggedMessage& At(std::size_t row) const { return Messages[Messages.size() - 1 - row]; }

 private:
  void Add(LogDirection direction, std::uint16_t number, std::span<const std::uint8_t> fields);
  const LoggedMessage& MessageOf(ListRow row) const { return Messages[static_cast<std::size_t>(row - FirstRow())]; }

  std::deque<LoggedMessage> Messages;  // the oldest first
  std::uint64_t Taken = 0;
};

enum class LogColumn : std::uint8_t { Count, Time, Direction, Number, Meaning, Bytes, Fields };

// What a message is for; empty for a number that is none of this system's.
const char* MeaningOf(std::uint16_t number) noexcept;
// "tag=value" of each field, a blank between: numbers as unsigned, those of eight bytes from 40001 on as decimals,
// texts in quotes with every byte outside ASCII as \xHH, what has no width of its own in hex.
std::string FieldsText(std::span<const std::uint8_t> fields);
std::string LogText(const LoggedMessage& message, LogColumn column);

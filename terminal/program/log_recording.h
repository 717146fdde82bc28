// Writes the trades of a day of files into a day log, and goes on there where an earlier run was interrupted.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "terminal/day/day_spec.h"
#include "terminal/day/numbered_day.h"

// What takes batches of messages: a day log.
class BatchTarget {
 public:
  virtual ~BatchTarget() = default;
  // The count of messages that it has. Throws FeedError.
  virtual std::uint64_t Connect() = 0;
  // Whole messages, the first of which is number `before` + 1. Throws FeedError; then Connect tells where to go on.
  virtual void Publish(std::uint64_t before, std::uint32_t count, std::span<const std::uint8_t> messages) = 0;
};

struct RecordedTrades {
  std::uint64_t All = 0;      // trades of the day
  std::uint64_t Former = 0;   // messages that the log had
  std::uint64_t LeftOut = 0;  // messages that are no trades, or too long
};

// Takes the trades as they are numbered, which must be 9101. Throws TerminalError if the log does not take them.
RecordedTrades RecordTradesInBatches(NumberedDay& script, BatchTarget& log);
// "13,612 trades, 5,000 of them were there; other messages left out: 2"
std::string RecordedText(const RecordedTrades& recorded);

// Connects with the access of the day. Throws TerminalError.
std::unique_ptr<BatchTarget> OpenLogForRecording(const DaySpec& log);

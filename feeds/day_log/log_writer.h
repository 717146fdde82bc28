// LogWriter: appends batches of trade messages to a day log, each exactly once.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <span>

#include "feeds/day_log/log_address.h"

// Every batch carries the count of messages up to its end as id and names the id before it, so that the log takes each
// once and in order, whoever dies meanwhile and however many writers there are. Call it from one thread.
class LogWriter {
 public:
  LogWriter(LogAccess access, LogDay day, int replicas);
  ~LogWriter();
  LogWriter(const LogWriter&) = delete;
  LogWriter& operator=(const LogWriter&) = delete;

  // Connects, or connects again, makes the stream if it is missing and returns the count of messages in the log. Waits
  // at most that long. Throws FeedError.
  std::uint64_t Connect(std::chrono::milliseconds atMost);
  // Appends whole wire messages, the first of which is number `before` + 1 of the day; at most kMostBytes. Returns when
  // the log has acknowledged them. Throws FeedError; then Connect tells where to go on.
  void Publish(std::uint64_t before, std::uint32_t count, std::span<const std::uint8_t> messages);

  static constexpr std::size_t kMostBytes = 256 * 1024;

 private:
  struct State;
  std::unique_ptr<State> Self;
};

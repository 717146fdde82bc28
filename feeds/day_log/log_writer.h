// LogWriter: appends batches of trade messages to a day log, each exactly once.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <span>

#include "feeds/day_log/log_address.h"

// Every batch carries the count of messages up to its end as id and names the number of the stored batch before it, so
// that the log takes each once and in order, whoever dies meanwhile and however many writers there are. Of two writers
// at once one is refused and has to connect again. Call it from one thread.
class LogWriter {
 public:
  LogWriter(LogAccess access, LogDay day, int replicas);
  ~LogWriter();
  LogWriter(const LogWriter&) = delete;
  LogWriter& operator=(const LogWriter&) = delete;

  // Connects, or connects again, makes the stream if it is missing and returns the count of messages in the log, which
  // may be lower than before if a server lost its disk. Tries until the time is over, which every request may exceed by
  // seconds; throws FeedError then, and at once if the access is refused.
  std::uint64_t Connect(std::chrono::milliseconds atMost);
  // Appends whole plain wire messages of number 9101, the first of which is number `before` + 1 of the day; at most
  // kMostBytes. Returns when the log has acknowledged them. Throws FeedError; then Connect tells where to go on.
  void Publish(std::uint64_t before, std::uint32_t count, std::span<const std::uint8_t> messages);

  static constexpr std::size_t kMostBytes = 256 * 1024;

 private:
  struct State;
  std::unique_ptr<State> Self;
};

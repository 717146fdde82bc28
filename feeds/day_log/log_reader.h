// LogReader: reads a day log from its begin and goes on with it.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <vector>

#include "feeds/day_log/log_address.h"

// Gives every batch once and in order through lost connections, servers and leaders. Call it from one thread; it waits.
class LogReader {
 public:
  LogReader(LogAccess access, LogDay day);
  ~LogReader();
  LogReader(const LogReader&) = delete;
  LogReader& operator=(const LogReader&) = delete;

  enum class Step : std::uint8_t {
    Messages,  // appended
    Nothing,   // within the time; the connection stands
    Missing,   // there is no such stream yet
    Lost,      // no connection, see Reason; the next call tries again
    Damaged,   // a batch was left out as it holds no whole messages, see Reason
  };
  // Appends the whole wire messages of the next batches, at least one batch; waits at most that long. Throws nothing
  // but memory.
  Step Take(std::vector<std::uint8_t>& messages, std::chrono::milliseconds atMost);
  const std::string& Reason() const noexcept;
  // All that was in the log when it was first reached has been given; never false again.
  bool IsCaughtUp() const noexcept;
  // Batches in the log that have not been given, as of the last call.
  std::uint64_t Behind() const noexcept;

 private:
  struct State;
  std::unique_ptr<State> Self;
};

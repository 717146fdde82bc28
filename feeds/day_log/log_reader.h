// LogReader: reads a day log from its begin and goes on with it.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "feeds/day_log/log_address.h"

// Gives every message once and in order through lost connections, servers and leaders. A log that was made anew or lost
// its end is read from its begin once more; if it holds the messages that were given, what follows is given, else it is
// another log, which is Lost until it is made anew again. Call it from one thread; it waits.
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
    Lost,      // no connection or no answer, see Reason; the next call tries again
    Damaged,   // a batch was left out as it holds no whole messages, or messages are missing, see Reason
  };
  // Appends the whole wire messages of the next batches, at least one batch, about half a megabyte at most. Waits at
  // most that long; to connect, two seconds and to get an answer five if the servers are silent. Throws nothing but
  // memory.
  Step Take(std::vector<std::uint8_t>& messages, std::chrono::milliseconds atMost);
  const std::string& Reason() const noexcept;
  // All that was in the log when it was first reached has been given; never false again.
  bool IsCaughtUp() const noexcept;
  // Batches in the log that have not been given, as of the last call.
  std::uint64_t Behind() const noexcept;
  // Ends a waiting Take from another thread; from then on every Take is Lost at once or, while it connects, in seconds.
  void Cancel() noexcept;
  // "desk-log:4222": the server that it is connected to or tried last; empty before the first call of Take.
  const std::string& Server() const noexcept;

 private:
  struct State;
  std::unique_ptr<State> Self;
};

// FeedWatch: a feed in a run without windows: what it tells, and when the run ends.
#pragma once

#include <csignal>
#include <iosfwd>
#include <optional>

#include "terminal/day/day_input.h"
#include "terminal/play/player.h"
#include "terminal/program/options.h"

// While it lives, Ctrl+C and the system's request to end are noted instead of followed. One at a time.
class Interruption {
 public:
  Interruption();
  ~Interruption();
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;

  bool HasCome() const noexcept;

 private:
  using Handler = void (*)(int);
  Handler FormerInterrupt;
  Handler FormerTerminate;
};

// For a day of files all of it is a no-op.
class FeedWatch {
 public:
  FeedWatch(DayInput& input, const Options& options, PlayClock& clock, PlayProgress& progress, std::ostream& errors);

  // To be asked between messages. Tells what is new some times a second.
  bool GoesOn();
  // One line for each alarm and each change of the connection.
  void TellNews();

 private:
  DayInput& Input;
  std::optional<struct ExitAfter> End;
  PlayClock& Clock;
  PlayProgress& Progress;
  std::ostream& Errors;
  PlayClock::Time Start;
  PlayClock::Time NextNews;
  std::optional<Interruption> Stop;  // of a feed
};

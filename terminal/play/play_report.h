// What the status bar says of a day that plays: texts of clock, counts and rate. Pure; one thread.
#pragma once

#include <cstdint>
#include <deque>
#include <iosfwd>
#include <optional>
#include <string>

#include "terminal/link/terminal_host.h"

// "2013-10-07 10:23:45"; empty for nothing.
std::string DayClockText(std::optional<std::int64_t> seconds);
// "60x", "0.5x", "full speed".
std::string SpeedText(std::optional<double> speed);

// Trades a second over about the last two seconds.
class TradeRate {
 public:
  // Takes the count of all trades so far; to be told a few times a second.
  void Tell(std::uint64_t trades, PlayClock::Time now);
  std::uint64_t PerSecond() const;

 private:
  struct Sample {
    PlayClock::Time Time;
    std::uint64_t Trades;
  };
  std::deque<Sample> Samples;
};

// PlayProgress: one line on a screen that tells how far a long day is.

// Promises: nothing in the first second, then at most two lines a second, each over the one before; Finish wipes the
// last.
class PlayProgress {
 public:
  PlayProgress(std::ostream& out, PlayClock& clock);

  void Tell(std::uint64_t trades);
  void Finish();

 private:
  std::ostream& Out;
  PlayClock& Clock;
  PlayClock::Time Next;
  bool Shown = false;
};

// Texts of a day that plays: clock, speed and rate for the status bar, and a line of progress for a console.
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
  // Takes the count of all trades so far; call it a few times a second.
  void Tell(std::uint64_t trades, PlayClock::Time now);
  std::uint64_t PerSecond() const;

 private:
  struct Sample {
    PlayClock::Time Time;
    std::uint64_t Trades;
  };
  std::deque<Sample> Samples;
};

// Nothing in the first second, then at most two lines a second, each over the one before. Finish wipes the last.
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

// What the status bar says of a day that plays: texts of clock, counts and rate. Pure; one thread.
#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>

#include "terminal/play_clock.h"

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

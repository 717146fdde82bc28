// DayPace: how the seconds of a day run beside those of the wall: when a live trade is due, and what time of the day
// it is now.
#pragma once

#include <cstdint>
#include <optional>

#include "terminal/link/terminal_host.h"

// Promises: what goes late does not stretch the day, as each trade counts from where the day stands and not from when
// the one before was sent. The first trade, a step back in time and a change of date are not waited for: the day goes
// on from there. So it does from wherever it stands when the speed changes or a pause ends.
class DayPace {
 public:
  // How many times faster than the wall the day goes; nothing for without waiting.
  explicit DayPace(std::optional<double> speed) : Speed(speed) {}

  // When a trade of that second is to be sent; not after now for at once. To be asked once for each trade.
  PlayClock::Time DueTime(std::int64_t seconds, PlayClock::Time now);
  // The same for the trade asked about last, after a change of speed.
  PlayClock::Time DueAgain() const;

  void SetSpeed(std::optional<double> speed, PlayClock::Time now);
  void Pause(PlayClock::Time now);
  void Resume(PlayClock::Time now);
  std::optional<double> GetSpeed() const noexcept { return Speed; }
  bool IsPaused() const noexcept { return Paused; }

  // Where the day stands, in seconds as those of the trades, never ahead of the trade that is waited for; nothing
  // before the first trade.
  std::optional<std::int64_t> DaySeconds(PlayClock::Time now) const;

 private:
  struct Anchor {
    PlayClock::Time Wall;
    double Day;
  };
  double DayAt(PlayClock::Time now) const;

  std::optional<double> Speed;
  bool Paused = false;
  std::optional<Anchor> Start;
  std::int64_t Last = 0;  // the second asked about last
};

#include "terminal/play/pace.h"

#include <algorithm>
#include <cmath>

#include "terminal/day/csv_file.h"

PlayClock::Time DayPace::DueTime(std::int64_t seconds, PlayClock::Time now) {
  const bool jumps = !Start || !Speed || seconds < Last || DateOf(seconds) != DateOf(Last);
  if (jumps) Start = Anchor{now, static_cast<double>(seconds)};
  Last = seconds;
  return DueAgain();
}

PlayClock::Time DayPace::DueAgain() const {
  if (!Start) return {};
  if (!Speed) return Start->Wall;
  const std::chrono::duration<double> gap((static_cast<double>(Last) - Start->Day) / *Speed);
  return Start->Wall + std::chrono::round<PlayClock::Time::duration>(gap);
}

double DayPace::DayAt(PlayClock::Time now) const {
  if (Paused || !Speed) return Start->Day;
  const std::chrono::duration<double> gone = now - Start->Wall;
  return std::min(Start->Day + gone.count() * *Speed, static_cast<double>(Last));
}

void DayPace::SetSpeed(std::optional<double> speed, PlayClock::Time now) {
  if (Start) Start = Anchor{now, DayAt(now)};
  Speed = speed;
}

void DayPace::Pause(PlayClock::Time now) {
  if (Start) Start = Anchor{now, DayAt(now)};
  Paused = true;
}

void DayPace::Resume(PlayClock::Time now) {
  if (Start) Start->Wall = now;
  Paused = false;
}

std::optional<std::int64_t> DayPace::DaySeconds(PlayClock::Time now) const {
  if (!Start) return std::nullopt;
  return static_cast<std::int64_t>(std::floor(DayAt(now)));
}

#include "terminal/beat.h"

#include <algorithm>

void CBeat::Register(CommandFunction callback, std::chrono::milliseconds period) {
  Callback = callback;
  Period = std::max(period, std::chrono::milliseconds(1));
  Due = Clock.Now() + Period;
}

// A beat that comes late moves those behind it: none is made up for.
void CBeat::CallIfDue() {
  if (Callback == nullptr) return;
  const PlayClock::Time now = Clock.Now();
  if (now < Due) return;
  Due = now + Period;
  ++CallCount;
  Callback();
}

void CBeat::WaitUntil(PlayClock::Time time) {
  CallIfDue();
  while (Clock.Now() < time) {
    Clock.SleepUntil(Callback == nullptr ? time : std::min(time, Due));
    CallIfDue();
  }
}

std::optional<PlayClock::Time> CBeat::NextCall() const {
  return Callback == nullptr ? std::nullopt : std::optional(Due);
}

// CBeat: the refresh callback that a plug-in registers, called at its period. Not a timer of its own: the player asks
// between two messages and while it waits, the windows by a timer. One thread.
#pragma once

#include <cstdint>
#include <optional>

#include "host_link/entry_points.h"
#include "terminal/play_clock.h"

class CBeat {
 public:
  explicit CBeat(PlayClock& clock) : Clock(clock) {}

  // The last registration holds. Null ends the calls.
  void Register(CommandFunction callback, std::chrono::milliseconds period);
  void CallIfDue();
  // Sleeps until the time is there, with the beats that fall due meanwhile.
  void WaitUntil(PlayClock::Time time);

  // When the next call falls due; nothing while no callback is registered.
  std::optional<PlayClock::Time> NextCall() const;

  std::uint64_t Calls() const noexcept { return CallCount; }

 private:
  PlayClock& Clock;
  CommandFunction Callback = nullptr;
  std::chrono::milliseconds Period{};
  PlayClock::Time Due;
  std::uint64_t CallCount = 0;
};

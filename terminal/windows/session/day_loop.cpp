#include "terminal/windows/session/day_loop.h"

#include <algorithm>
#include <utility>

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kSlice(8);
constexpr milliseconds kBeat(250);
constexpr milliseconds kLongestWait(250);
constexpr milliseconds kBusyWait(20);

}  // namespace

DayLoop::DayLoop(DayRun& day, RefreshBeat& beat, PluginLink& plugin, PlayClock& clock, Listener listener)
    : Day(day), PluginBeat(beat), Plugin(plugin), Clock(clock), Told(std::move(listener)) {
  PlayTimer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Play(); });
  RefreshTimer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Refresh(); });
  BeatTimer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Told.Beat(); });
}

void DayLoop::Start() {
  Refresh();
  BeatTimer.Start(static_cast<int>(kBeat.count()));
}

void DayLoop::PlayOn() {
  StartOnce(PlayTimer, Clock.Now());
}

void DayLoop::Stop() {
  PlayTimer.Stop();
  RefreshTimer.Stop();
  BeatTimer.Stop();
}

void DayLoop::StartOnce(wxTimer& timer, PlayClock::Time time) {
  const auto wait = std::chrono::ceil<milliseconds>(time - Clock.Now());
  timer.StartOnce(static_cast<int>(std::clamp(wait, milliseconds(1), kLongestWait).count()));
}

void DayLoop::Play() {
  if (Plugin.IsBusy()) return StartOnce(PlayTimer, Clock.Now() + kBusyWait);
  const bool hadEnded = Day.HasEnded();
  try {
    if (const auto next = Day.PlayFor(kSlice)) StartOnce(PlayTimer, *next);
  } catch (const std::exception& failure) {
    return Told.DayFailed(failure.what());
  }
  if (Day.HasEnded() && !hadEnded) Told.DayEnded();
}

// A registration that comes later is seen at the next turn.
void DayLoop::Refresh() {
  if (!Plugin.IsBusy()) PluginBeat.CallIfDue();
  StartOnce(RefreshTimer, PluginBeat.NextCall().value_or(Clock.Now() + kBeat));
}

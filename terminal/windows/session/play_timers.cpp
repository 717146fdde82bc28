#include "terminal/windows/session/play_timers.h"

#include <algorithm>

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kSlice(8);
constexpr milliseconds kBeatPeriod(250);
constexpr milliseconds kLongestWait(250);
constexpr milliseconds kBusyWait(20);

}  // namespace

PlayTimers::PlayTimers(DayRun& day, RefreshBeat& beat, PluginLink& plugin, PlayClock& clock, PlayObserver& observer)
    : Day(day), Beat(beat), Plugin(plugin), Clock(clock), Observer(observer) {
  PlayTimer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Play(); });
  RefreshTimer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Refresh(); });
  BeatTimer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Observer.OnBeat(); });
}

void PlayTimers::Start() {
  Refresh();
  BeatTimer.Start(static_cast<int>(kBeatPeriod.count()));
}

void PlayTimers::PlayOn() {
  StartOnce(PlayTimer, Clock.Now());
}

void PlayTimers::Stop() {
  PlayTimer.Stop();
  RefreshTimer.Stop();
  BeatTimer.Stop();
}

void PlayTimers::StartOnce(wxTimer& timer, PlayClock::Time time) {
  const auto wait = std::chrono::ceil<milliseconds>(time - Clock.Now());
  timer.StartOnce(static_cast<int>(std::clamp(wait, milliseconds(1), kLongestWait).count()));
}

void PlayTimers::Play() {
  if (Plugin.IsBusy()) return StartOnce(PlayTimer, Clock.Now() + kBusyWait);
  const bool hadEnded = Day.HasEnded();
  try {
    if (const auto next = Day.PlayFor(kSlice)) StartOnce(PlayTimer, *next);
  } catch (const std::exception& failure) {
    return Observer.OnDayFailed(failure.what());
  }
  if (Day.HasEnded() && !hadEnded) Observer.OnBeat();
}

// Sees a later registration at the next turn.
void PlayTimers::Refresh() {
  if (!Plugin.IsBusy()) Beat.CallIfDue();
  StartOnce(RefreshTimer, Beat.NextCall().value_or(Clock.Now() + kBeatPeriod));
}

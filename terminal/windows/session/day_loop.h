// DayLoop: the timers that play a day and keep the beats while the windows are served: slices of the day, the plug-
// in's refresh, the terminal's own repaint.
#pragma once

#include <wx/timer.h>

#include <functional>

#include "terminal/link/plugin_link.h"
#include "terminal/link/terminal_host.h"
#include "terminal/play/day_run.h"

// Promises: no slice is longer than some milliseconds, so that keys and painting come in between; the plug-in is never
// called while it is being called.
class DayLoop {
 public:
  struct Listener {
    std::function<void()> Beat;  // four times a second, behind the plug-in's own refresh
    std::function<void()> DayEnded;
    std::function<void(const std::string&)> DayFailed;  // with the reason
  };
  DayLoop(DayRun& day, RefreshBeat& beat, PluginLink& plugin, PlayClock& clock, Listener listener);

  // Begins the beats.
  void Start();
  // Goes on with the day: after a change of day, speed or pause.
  void PlayOn();
  void Stop();

 private:
  void Play();
  void Refresh();
  // A timer that fires once at that time, or soon when it has passed.
  void StartOnce(wxTimer& timer, PlayClock::Time time);

  DayRun& Day;
  RefreshBeat& PluginBeat;
  PluginLink& Plugin;
  PlayClock& Clock;
  Listener Told;
  wxTimer PlayTimer;
  wxTimer RefreshTimer;
  wxTimer BeatTimer;
};

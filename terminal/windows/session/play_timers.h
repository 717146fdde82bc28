// PlayTimers: the timers that play a day and keep the beats while the windows are served: slices of the day, the plug-
// in's refresh, the terminal's own repaint.
#pragma once

#include <wx/timer.h>

#include <filesystem>
#include <string>

#include "terminal/link/plugin_link.h"
#include "terminal/link/terminal_host.h"
#include "terminal/play/player.h"

// Who is told while a day plays.
class PlayObserver {
 public:
  virtual ~PlayObserver() = default;
  // Four times a second, after the plug-in's own refresh; and at once when the day has ended or the user has changed
  // how it plays.
  virtual void OnBeat() = 0;
  virtual void OnDayBegun(const std::filesystem::path& day) = 0;
  virtual void OnDayFailed(const std::string& reason) = 0;
};

// No slice is longer than some milliseconds, so that keys and painting come in between. The plug-in is never called
// while it is being called.
class PlayTimers {
 public:
  PlayTimers(DayRun& day, RefreshBeat& beat, PluginLink& plugin, PlayClock& clock, PlayObserver& observer);

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
  RefreshBeat& Beat;
  PluginLink& Plugin;
  PlayClock& Clock;
  PlayObserver& Observer;
  wxTimer PlayTimer;
  wxTimer RefreshTimer;
  wxTimer BeatTimer;
};

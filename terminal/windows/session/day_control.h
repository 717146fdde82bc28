// DayControl: the day that plays beside the windows, by timers, and what the user does with it: pause, speed, another
// day, a new begin or login.
#pragma once

#include <wx/timer.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "terminal/ledger/trade_ledger.h"
#include "terminal/link/plugin_link.h"
#include "terminal/link/terminal_host.h"
#include "terminal/play/player.h"
#include "terminal/positions/position_list.h"
#include "terminal/program/options.h"
#include "terminal/program/window_memory.h"
#include "terminal/watch/market_watch.h"

// Who is told while a day plays.
class PlayObserver {
 public:
  virtual ~PlayObserver() = default;
  // Four times a second, after the plug-in's own refresh; and at once when the day has ended or the user has changed
  // how it plays.
  virtual void OnBeat() = 0;
  virtual void OnDayBegun(const DaySpec& day) = 0;
  virtual void OnDayFailed(const std::string& reason) = 0;
};

// The timers that play a day and keep the beats while the windows are served: slices of the day, the plug-in's refresh,
// the terminal's own repaint.
//
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

// PluginConnection: the plug-in with all that it talks to: the host that answers it, its beat, the log of the messages
// of both directions.
class PluginConnection {
 public:
  explicit PluginConnection(const SecurityList& securities) : Host(securities, Beat) {}

  // Throws TerminalError.
  void Load(const std::filesystem::path& module, TerminalWindows& windows);
  bool IsLoaded() const noexcept { return Plugin.has_value(); }
  // The plug-in is being called, or stands in a dialog of its own: it must not be called now.
  bool IsBusy() const noexcept { return Plugin && Plugin->IsBusy(); }
  // Of a number that the plug-in takes; counts it.
  void SendControl(std::uint16_t number) { ControlMessages += Plugin->Send(number) ? 1 : 0; }

  WallClock Clock;
  RefreshBeat Beat{Clock};
  MessageLog Log;
  TerminalHost Host;
  std::optional<PluginLink> Plugin;
  std::uint64_t ControlMessages = 0;  // sent beside those of the day

 private:
  RunningHostScope Running{Host};
};

class DayControl {
 public:
  // Reads the day that the command line names, else the last one played. Where that cannot be read any more, the
  // sample. Throws TerminalError.
  DayControl(const RunFiles& files, const Options& options, WindowMemory& memory, BadLineReport& badLines,
             FeedOpener openFeeds);

  // Sends the start messages and plays. The connection is loaded.
  void Start(PluginConnection& connection, PlayObserver& observer);
  void Stop();
  bool IsStarted() const noexcept { return Run.has_value(); }

  // A day that cannot be opened leaves the one that plays. The feed that plays begins again. This and the next two
  // throw TerminalError.
  void Open(const DaySpec& day);
  void StartAgain();
  void LoginAgain();
  void PlayOrPause();
  void SetSpeed(std::optional<double> speed);

  // The next three once it is started.
  const DayRun& Day() const { return *Run; }
  std::uint64_t TradesPerSecond();
  PlayClock::Time::duration TimePlayed() const;
  // For the status bar.
  std::string StateText() const;
  // Logs what a feed tells.
  void LogNews();

  const RunFiles& Files() const noexcept { return DayFiles; }
  const SecurityList& Securities() const noexcept { return Input->Securities; }
  MarketWatch& Watch() noexcept { return Rows; }
  // The trades of the day, for the terminal's own windows.
  const TradeLedger& Trades() const noexcept { return Ledger; }
  PositionList& Positions() noexcept { return PositionRows; }
  // Why the last day does not play; empty if it does.
  const std::string& LostDay() const noexcept { return WhyLost; }

 private:
  std::unique_ptr<DayInput> FirstInput(const Options& options, WindowMemory& memory);
  void Begin();
  void ForgetTrades();

  FeedOpener OpenFeed;
  RunFiles DayFiles;
  BadLineReport& BadLines;
  std::string WhyLost;
  std::unique_ptr<DayInput> Input;
  std::vector<std::unique_ptr<DayInput>> FormerInputs;  // a plug-in may keep addresses in their securities
  MarketWatch Rows;
  TradeLedger Ledger;
  PositionList PositionRows{Ledger};
  TradeListeners Listeners;
  std::optional<double> FirstSpeed;
  PluginConnection* Connection = nullptr;
  PlayObserver* Observer = nullptr;
  std::optional<DayRun> Run;
  std::optional<PlayTimers> Timers;
  TradeRate Rate;
  PlayClock::Time Begun;
};

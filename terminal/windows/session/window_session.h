// WindowSession: a run of the terminal with windows: makes frame, market watch and plug-in, plays the day, does the
// commands of the menu bar and answers the plug-in's questions about windows. The main thread only, while WxRun lives.
#pragma once

#include <wx/timer.h>
#include <wx/weakref.h>

#include <memory>
#include <optional>
#include <vector>

#include "terminal/link/plugin_link.h"
#include "terminal/link/terminal_host.h"
#include "terminal/play/play_report.h"
#include "terminal/program/options.h"
#include "terminal/program/program.h"
#include "terminal/program/window_memory.h"
#include "terminal/windows/drivers/script_runner.h"
#include "terminal/windows/frame/log_bar.h"
#include "terminal/windows/frame/main_frame.h"
#include "terminal/windows/frame/market_watch_bar.h"
#include "terminal/windows/frame/property_pane.h"
#include "terminal/windows/frame/terminal_bar.h"
#include "terminal/windows/session/day_loop.h"

class WindowSession : private TerminalWindows, private ScriptTarget {
 public:
  // Reads what the day needs and enters the working folder. Throws TerminalError.
  WindowSession(const RunFiles& files, const Options& options, BadLineReport& badLines);
  // Windows go before the plug-in, whose classes stand in them.
  ~WindowSession() override;

  // Shows the windows and begins the day; they live until the user closes the frame. Throws TerminalError.
  void Open();
  // Of the run so far.
  DaySummary Summary() const;

  void Run(TerminalCommand command);
  MainFrame* GetFrame() const { return Frame.get(); }
  MarketWatchBar& GetWatchBar() const { return *WatchBar; }
  PropertyPane& GetPropertyPane() const { return *PropertiesBar; }
  LogBar& GetLogBar() const { return *MessagesBar; }
  const DayRun& GetDay() const { return *Day; }

 private:
  std::unique_ptr<DayInput> FirstDay();
  std::unique_ptr<ScriptRunner> MakeScript();
  void MakeFrame();
  void ShowFrame();
  void MakeBars();
  void PutBack(TerminalBar& bar);
  void LoadPlugin();
  void StartDay();
  void Finish();
  bool ShouldEnd() const;

  void TellSelection(std::uint64_t window, MessageFunction answer) override;
  void FocusMoved(const void* window, bool closed) override;
  void ShowProperties(const PropertyRequest& request) override;
  void PropertiesFilled() override;
  bool IsPluginBar(const CQORPDockingControlBar& bar) const;

  bool OpenBook() override;
  bool Select(const std::string& securityId) override;
  bool Focus(ScriptFocus where, const std::string& title) override;
  bool HasFocus(ScriptFocus where) override;
  CQORPDockingControlBar* BarFor(ScriptFocus where) const;
  CQORPDockingControlBar* BookTitled(const std::string& title) const;
  CQORPDockingControlBar* Book() override { return BarFor(ScriptFocus::Book); }
  std::size_t OpenBooks() override;
  bool Press(const KeyPress& key) override;
  bool RunMenu(const std::vector<std::string>& texts) override;
  bool HasPlayed() override { return Day->HasEnded(); }
  void SavePictureTo(const std::filesystem::path& file) override;
  void CloseWindows() override;

  void ShowAbout();
  void AskForDay();
  void OpenDay(const std::filesystem::path& file);
  void BeginDay(DayInput& input);
  void ForgetDay();
  void StartAgain();
  void LoginAgain();
  void PlayOrPause();
  void SetSpeed(std::optional<double> speed);
  void Toggle(CQORPDockingControlBar& bar);

  void OnBeat();
  void ShowStatus();
  void ShowCommands();
  std::string StateText() const;

  RunFiles Files;
  Options Given;
  BadLineReport& BadLines;
  std::unique_ptr<ScriptRunner> Script;  // null for none; its files lie where the terminal was started
  WindowMemory Memory;
  std::string LostDay;  // why the day of the last time does not play; empty when it does
  mutable WallClock Clock;
  RefreshBeat Beat{Clock};
  std::unique_ptr<DayInput> Input;
  std::vector<std::unique_ptr<DayInput>> FormerInputs;  // a plug-in may keep addresses in their securities
  MarketWatch Rows;
  MessageLog Log;
  TerminalHost Host;
  RunningHostScope Running{Host};
  std::optional<PluginLink> Plugin;
  std::optional<DayRun> Day;
  std::optional<DayLoop> Loop;
  wxWeakRef<MainFrame> Frame;
  MarketWatchBar* WatchBar = nullptr;                  // belongs to the frame
  LogBar* MessagesBar = nullptr;                       // the same
  wxWeakRef<PropertyPane> PropertiesBar;               // asked for while the frame goes, too
  const CQORPDockingControlBar* FocusedBar = nullptr;  // for comparing: may be gone
  const CQORPDockingControlBar* LastBook = nullptr;    // the same; null for the one that was opened last
  ClosedBars GoneBars;
  wxTimer EndTimer;
  TradeRate Rate;
  std::uint64_t ControlMessages = 0;
  PlayClock::Time Begun;
};

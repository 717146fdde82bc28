// WindowSession: a run of the terminal with windows, from the first window to the last: brings plug-in, day and windows
// together, shows on the beat how the day stands, and closes all.
#pragma once

#include <wx/timer.h>

#include <iosfwd>
#include <memory>
#include <optional>

#include "terminal/common/errors.h"
#include "terminal/day/day_input.h"
#include "terminal/program/options.h"
#include "terminal/program/program.h"
#include "terminal/windows/session/day_control.h"
#include "terminal/windows/session/menu_commands.h"
#include "terminal/windows/session/session_windows.h"
#include "terminal/windows/session/window_requests.h"

class WindowSession : private PlayObserver {
 public:
  // Reads what the day needs and enters the working folder. Throws TerminalError.
  WindowSession(const RunFiles& files, const Options& options, BadLineReport& badLines,
                const FeedOpener& openFeeds = OpenFeeds);
  // Windows go before the plug-in, whose classes stand in them.
  ~WindowSession() override;

  // Shows the windows and begins the day; they live until the user closes the frame. Throws TerminalError.
  void Open();
  // Of the run so far.
  DaySummary Summary() const;

  MenuCommands& Commands() noexcept { return Menu; }
  const SessionWindows& GetWindows() const noexcept { return Windows; }
  const DayRun& GetDay() const { return Day.Day(); }

 private:
  std::unique_ptr<ScriptRunner> MakeScript();
  void OnBeat() override;
  void OnDayBegun(const DaySpec& day) override;
  void OnDayFailed(const std::string& reason) override;
  static std::wstring FocusText(const CQORPDockingControlBar* focused);
  void ShowStatus();
  // Closes the frame; a dialog ends first.
  void Close();
  // The windows are whole yet, and the books with them.
  void Finish();

  RunFiles Files;
  std::optional<struct ExitAfter> ExitAfter;
  BadLineReport& BadLines;
  std::unique_ptr<ScriptRunner> Script;  // null for none; its files lie where the terminal was started
  WindowMemory Memory;
  DayControl Day;
  PluginConnection Connection{Day.Securities()};
  SessionWindows Windows;
  BookBars Books{Windows, Connection.Host};
  MenuCommands Menu;
  ScriptActions Actions;
  PluginRequests Requests;
  wxTimer EndTimer;
};

// wxWidgets from its start to its end. One at a time.
class WxRun {
 public:
  // Throws TerminalError with ExitCode::Display where there is no display.
  WxRun();
  ~WxRun();
  WxRun(const WxRun&) = delete;
  WxRun& operator=(const WxRun&) = delete;

  // Until the last window is closed.
  void Loop();
  // Destroys closed windows that wait for an idle moment.
  static void DropClosedWindows();
};

// PlayInWindowsFunction of program.h. Throws TerminalError with ExitCode::Display if there is no display.
void PlayInWindows(const RunFiles& files, const Options& options, BadLineReport& badLines, std::ostream& out);

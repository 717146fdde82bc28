// What the plug-in and a script ask of the terminal's windows: PluginRequests answers the one, ScriptActions serves the
// other.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "terminal/windows/drivers/script_runner.h"
#include "terminal/windows/session/day_control.h"
#include "terminal/windows/session/menu_commands.h"
#include "terminal/windows/session/session_windows.h"

class PluginRequests : public TerminalWindows {
 public:
  // changed is called when the focus has moved or a pane was shown, which status bar and menu then show.
  PluginRequests(PluginConnection& connection, SessionWindows& windows, BookBars& books, std::function<void()> changed)
      : Connection(connection), Windows(windows), Books(books), Changed(std::move(changed)) {}

  // Of market watch and positions their own row; a book is asked itself.
  void TellSelection(std::uint64_t window, MessageFunction answer) override;
  void FocusMoved(const void* window, bool closed) override;
  void ShowProperties(const PropertyRequest& request) override;
  void PropertiesFilled() override;

 private:
  std::pair<std::string, std::string> SelectionOf(const CQORPDockingControlBar& bar) const;

  PluginConnection& Connection;
  SessionWindows& Windows;
  BookBars& Books;
  std::function<void()> Changed;
};

class ScriptActions : public ScriptTarget {
 public:
  // close ends the terminal.
  ScriptActions(DayControl& day, SessionWindows& windows, BookBars& books, MenuCommands& commands,
                std::function<void()> close)
      : Day(day), Windows(windows), Books(books), Commands(commands), Close(std::move(close)) {}

  bool OpenBook() override { return Commands.OpenBook(); }
  bool Select(const std::string& securityId) override { return Windows.Watch().Grid().Select(securityId); }
  bool Focus(ScriptFocus where, const std::string& title) override;
  bool HasFocus(ScriptFocus where) override;
  bool Press(const KeyPress& key) override;
  bool RunMenu(const std::vector<std::wstring>& texts) override { return Windows.Frame()->RunMenu(texts); }
  CQORPDockingControlBar* Book() override { return Books.Current(); }
  std::size_t OpenBooks() override { return Books.Shown().size(); }
  bool HasPlayed() override { return Day.Day().HasEnded(); }
  bool IsLive() override { return Day.Day().IsLive(); }
  void SavePictureTo(const std::filesystem::path& file) override;
  void CloseWindows() override { Close(); }

 private:
  CQORPDockingControlBar* BarFor(ScriptFocus where) const;

  DayControl& Day;
  SessionWindows& Windows;
  BookBars& Books;
  MenuCommands& Commands;
  std::function<void()> Close;
};

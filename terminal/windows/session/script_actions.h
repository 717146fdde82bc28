// ScriptActions: what the commands of a script do in the terminal's windows.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "terminal/windows/drivers/script_runner.h"
#include "terminal/windows/session/menu_commands.h"

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

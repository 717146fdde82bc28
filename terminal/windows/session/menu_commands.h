// MenuCommands: the commands of the terminal's menu bar: one table of their texts and keys, of what each does and of
// how it stands.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "terminal/windows/session/day_control.h"
#include "terminal/windows/session/first_view.h"
#include "terminal/windows/session/session_windows.h"

enum class TerminalCommand : std::uint8_t {
  OpenDay,
  Connect,
  DayReport,
  Exit,
  OpenBook,  // the plug-in's menu entry, with the texts and the key of message 30005
  PlayOrPause,
  RealTime,
  TenTimes,
  SixtyTimes,
  FullSpeed,
  StartAgain,
  NewLogin,
  RefreshBooks,
  MarketWatch,
  Properties,
  Messages,
  Positions,
  Chart,
  ChartOfRows,
  ResetWindows,
  Keys,
  About,
};

class MenuCommands {
 public:
  // close ends the terminal.
  MenuCommands(DayControl& day, PluginConnection& connection, SessionWindows& windows, BookBars& books,
               WindowMemory& memory, std::filesystem::path plugin, std::function<void()> close);

  // Makes the menu bar of the terminal's own commands.
  void AddTo(MainFrame& frame) const;
  // Puts the plug-in's entry into a menu of its own, if it has one.
  void AddPluginEntry(MainFrame& frame) const;
  // A no-op while the plug-in is busy. A failure is shown to the user.
  void Run(TerminalCommand command);
  // False while the plug-in is busy or if it has no menu entry.
  bool OpenBook();
  // The windows of a start that remembers nothing.
  FirstView& First() noexcept { return FirstWindows; }
  // Checks and enables the entries as things stand.
  void ShowStates() const;

 private:
  struct State {
    bool Checked = false;
    bool Enabled = true;
  };
  struct Row {
    MenuEntry Entry;
    void (MenuCommands::*Run)();
    State (MenuCommands::*Now)() const = nullptr;  // null: always enabled, never checked
  };
  static const Row kRows[];

  void AskForDay();
  void AskForFeed();
  void AskForReport();
  void Exit() { Close(); }
  void RunPluginEntry() { OpenBook(); }
  void PlayOrPause() { Day.PlayOrPause(); }
  // 0 stands for as fast as possible.
  template <int Times>
  void SetSpeed();
  void StartAgain() { Day.StartAgain(); }
  void LoginAgain() { Day.LoginAgain(); }
  void RefreshBooks() { Connection.SendControl(30020); }
  template <auto Bar>
  void Toggle();
  void ToggleChart();
  void ShowChartOfRows();
  void ResetWindows();
  void ShowKeys();
  void ShowAbout();

  State PauseState() const;
  template <int Times>
  State SpeedState() const;
  template <auto Bar>
  State ShownState() const;
  std::wstring KeysText() const;
  std::wstring AboutText() const;

  DayControl& Day;
  PluginConnection& Connection;
  SessionWindows& Windows;
  BookBars& Books;
  WindowMemory& Memory;
  std::filesystem::path PluginFile;
  std::function<void()> Close;
  FirstView FirstWindows{Windows, Books, [this] { return OpenBook(); }};
};

// CMainFrame: the terminal's main window: menu bar, status bar, and the keys of all commands, also while the focus is
// in a floating bar. Not what commands do, nor what the status says: window_session.h. The main thread only.
#pragma once

#include <wx/accel.h>

#include <functional>
#include <string>
#include <vector>

#include "terminal/windows/terminal_commands.h"
#include "toolkit/frame.h"

enum class StatusField : int { Focus, DayClock, State, Trades, Rate };

class CMainFrame : public CQORPFrame {
 public:
  CMainFrame(const wxRect& rect, std::function<void(TerminalCommand)> run);

  // Puts the plug-in's entry into a menu of that title; the key may be none.
  void AddPluginMenu(const std::wstring& title, const std::wstring& entry, const KeyPress& key);
  void Check(TerminalCommand command, bool checked);
  void EnableCommand(TerminalCommand command, bool enabled);
  // Does nothing while there is no room for the field.
  void SetStatus(StatusField field, const std::wstring& text);
  // Where it stands, or would if it were not maximized.
  wxRect GetNormalRect() const { return NormalRect; }
  // Runs the entry of the menu bar with those texts, without marks and keys, from the top down; false for none, or for
  // one that cannot be chosen now.
  bool RunMenu(const std::vector<std::wstring>& texts);

 private:
  void AddMenus();
  void AddStatusBar();
  void NoteRect();
  void BindCommand(TerminalCommand command);
  void AddKey(TerminalCommand command, const KeyPress& key);

  std::function<void(TerminalCommand)> Run;
  std::vector<wxAcceleratorEntry> KeyEntries;
  wxRect NormalRect;
};

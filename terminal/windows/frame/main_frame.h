// MainFrame: the terminal's main window: menu bar, status bar, and the keys of all commands, also while the focus is
// in a floating bar.
#pragma once

#include <wx/accel.h>

#include <exception>
#include <functional>
#include <string>
#include <vector>

#include "terminal/windows/frame/terminal_commands.h"
#include "toolkit/bars/frame.h"

enum class StatusField : int { Focus, DayClock, State, Trades, Rate };

class MainFrame : public CQORPFrame {
 public:
  MainFrame(const wxRect& rect, std::function<void(TerminalCommand)> run);

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

// What a handler of an event does with a failure: it is said to the user, and the terminal goes on.

// Modal; nothing while another of them is up.
void ShowFailure(wxWindow* parent, const std::string& sentence);
void ShowMessage(wxWindow* parent, const std::wstring& caption, const std::wstring& text);

// Runs the function; false, with the reason shown, when it threw.
template <typename Function>
bool OrShowFailure(wxWindow* parent, Function function) {
  try {
    function();
    return true;
  } catch (const std::exception& failure) {
    ShowFailure(parent, failure.what());
    return false;
  }
}

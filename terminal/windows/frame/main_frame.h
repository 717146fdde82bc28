// MainFrame: the terminal's main window: menu bar, status bar, and the keys of all menu entries, also while the focus
// is in a floating bar.
#pragma once

#include <wx/accel.h>

#include <exception>
#include <functional>
#include <string>
#include <vector>

#include "terminal/script/window_script.h"
#include "toolkit/bars/docking_manager.h"

enum class StatusField : int { Focus, DayClock, State, Trades, Rate };

struct MenuEntry {
  enum class Form : std::uint8_t { Plain, Check, Radio };
  int Id;
  const wchar_t* Menu;
  const wchar_t* Text;
  const wchar_t* Help;
  KeyPress Key{};  // may be none
  Form Kind = Form::Plain;
  bool BeginsGroup = false;  // a separator stands before it
};

class MainFrame : public CQORPFrame {
 public:
  // run is called with the id of an entry.
  MainFrame(const wxRect& rect, std::function<void(int)> run);

  // Appends the entry to its menu. A menu that is not there yet is put before the one of that title, else at the end.
  void AddEntry(const MenuEntry& entry, const wchar_t* menuBehind = nullptr);
  void Check(int id, bool checked);
  void EnableEntry(int id, bool enabled);
  // Does nothing while there is no room for the field.
  void SetStatus(StatusField field, const std::wstring& text);
  // Where it stands, or would if it were not maximized.
  wxRect GetNormalRect() const { return NormalRect; }
  // Call on the beat.
  void GrowIfTiny();
  // Neither maximized nor minimized.
  void PlaceAt(const wxRect& rect);
  // Runs the entry of the menu bar with those texts, without marks and keys, from the top down; false for none, or for
  // one that cannot be chosen now.
  bool RunMenu(const std::vector<std::wstring>& texts);

 private:
  wxMenu& MenuOf(const MenuEntry& entry, const wchar_t* menuBehind);
  void AddKey(int wxId, const KeyPress& key);
  void AddStatusBar();
  void NoteRect();
  bool IsTiny() const;

  std::function<void(int)> Run;
  std::vector<wxAcceleratorEntry> KeyEntries;
  wxRect NormalRect;
};

// What an event handler does with a failure: it tells the user, and the terminal goes on.

// Modal; a no-op while another of them is up.
void ShowFailure(wxWindow* parent, const std::string& sentence);
void ShowMessage(wxWindow* parent, const std::wstring& caption, const std::wstring& text);

// Runs the function; shows why if it throws.
template <typename Function>
void OrShowFailure(wxWindow* parent, Function function) {
  try {
    function();
  } catch (const std::exception& failure) {
    ShowFailure(parent, failure.what());
  }
}

// Keys as wxWidgets numbers them: the code, 0 for a key that wxWidgets does not know.
int WxKeyCode(const KeyPress& key);
// The held keys as wxACCEL_ bits, which are those of wxMOD_ too.
int WxHeldKeys(const KeyPress& key);

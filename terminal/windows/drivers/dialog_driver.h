// DialogDriver: answers the dialogs that a command opened, in the user's place: names the file to save, presses a
// button, checks an item.
//
// Each gives back why it could not be done, in words for the user; empty when it was done.
#pragma once

#include <wx/event.h>
#include <wx/modalhook.h>
#include <wx/weakref.h>
#include <wx/window.h>

#include <filesystem>
#include <optional>
#include <string>

#include "toolkit/grid/grid_ctrl.h"

class DialogDriver : private wxModalDialogHook {
 public:
  DialogDriver() { Register(); }

  // The next dialog that asks for a file to save gets that path, or is cancelled, without being shown.
  std::string SaveNextAs(const std::filesystem::path& file);
  std::string CancelNextSave() { return SaveNextAs({}); }
  // Whether such a dialog came up.
  std::string ExpectSaved() const;

  // In the dialog that is up; of several in the last one. Texts count without &.
  std::string PressButton(const std::wstring& text);
  // Of the first check list that has such an item.
  std::string ChooseItem(const std::wstring& text) { return ChangeItem(text, false); }
  std::string CheckItem(const std::wstring& text) { return ChangeItem(text, true); }
  // While a dialog is up the user can do nothing in other windows.
  static bool IsUp();
  // Ends the dialog that is up as Cancel does, whatever its buttons; false for none. It goes at the next event.
  static bool EndTop();
  // A text of the dialog that is up, or else of the other window, holds this one; line ends count as blanks.
  std::string ExpectText(const wxWindow* other, const std::wstring& text) const;

 private:
  int Enter(wxDialog* dialog) override;
  void Exit(wxDialog* /*dialog*/) override {}
  std::string ChangeItem(const std::wstring& text, bool toggles);

  std::optional<std::filesystem::path> NextFile;  // an empty one cancels
};

// FilterTypist: types a text into a field of a grid's filter bar, letter by letter, so that each letter filters.
class wxTextCtrl;

// Types with the keyboard's own events. Where they do not arrive, as in a window that the system gives no focus, it
// writes the letters into the field, which filters as well.
class FilterTypist {
 public:
  // Takes the place of what stands in the field; an empty text empties it. Gives back why it cannot be done, else
  // nothing.
  std::string Begin(CQORPGridCtrl& grid, int column, const std::wstring& text);
  bool IsTyping() const noexcept { return Typing; }
  // The next letter, once the last one has arrived. Gives back why it had to end, else nothing.
  std::string TypeOn();

 private:
  void Start();
  std::string Restart();
  wxTextCtrl* Field() const;
  std::wstring Expected() const { return Text.substr(0, Typed); }
  void TypeNext(wxTextCtrl& field);
  bool PressNext(const wxTextCtrl& field) const;

  wxWeakRef<CQORPGridCtrl> Grid;
  int Column = -1;
  std::wstring Text;
  std::size_t Typed = 0;  // letters that should stand in the field
  bool Typing = false;
  bool Begun = false;    // what stood in the field before is gone
  bool Writing = false;  // keys do not arrive
  int Waits = 0;
  int Restarts = 0;
};

// Act in the place of the user: BookDriver clicks headers, selects rows and runs the context menu of a book,
// FieldTypist types into a filter field or the find bar, DialogDriver answers dialogs.
//
// Each function returns why it failed, in words for the user; empty on success.
#pragma once

#include <wx/event.h>
#include <wx/modalhook.h>
#include <wx/weakref.h>
#include <wx/window.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "toolkit/grid/grid_ctrl.h"

namespace BookDriver {

// The grid with the focus; null for none.
CQORPGridCtrl* GridWithFocus();
// The first grid below the window; null for none.
CQORPGridCtrl* FindGrid(const wxWindow* window);
// The column with that title; -1 for none.
int FindColumn(const CQORPGridCtrl& grid, const std::wstring& title);

// Scrolls the header into view. With Ctrl the click selects the column.
std::string ClickHeader(CQORPGridCtrl& grid, const std::wstring& title, bool ctrl);
// From the first to the last, both counted from 1.
std::string SelectRows(CQORPGridCtrl& grid, int first, int last);
// Returns after the command, dialogs included.
std::string RunMenu(CQORPGridCtrl& grid, const std::vector<std::wstring>& texts);
std::string ExpectRows(const CQORPGridCtrl& grid, int count);

}  // namespace BookDriver

// Names the file to save, presses a button, checks an item.
class DialogDriver : private wxModalDialogHook {
 public:
  DialogDriver() { Register(); }

  // The next save dialog gets that path, or is cancelled, and is not shown.
  std::string SaveNextAs(const std::filesystem::path& file);
  std::string CancelNextSave() { return SaveNextAs({}); }
  // Fails if that dialog has not come up.
  std::string ExpectSaved() const;

  // In the top dialog. Texts go without &.
  std::string PressButton(const std::wstring& text);
  // In the first check list with that item.
  std::string ChooseItem(const std::wstring& text) { return ChangeItem(text, false); }
  std::string CheckItem(const std::wstring& text) { return ChangeItem(text, true); }
  // A dialog blocks the other windows.
  static bool IsUp();
  // Ends the top dialog as Cancel does, whatever its buttons; false for none. It goes at the next event.
  static bool EndTop();
  // Looks for the text in the top dialog, else in the other window; line ends count as blanks.
  std::string ExpectText(const wxWindow* other, const std::wstring& text) const;

 private:
  int Enter(wxDialog* dialog) override;
  void Exit(wxDialog* /*dialog*/) override {}
  std::string ChangeItem(const std::wstring& text, bool toggles);

  std::optional<std::filesystem::path> NextFile;  // an empty one cancels
};

class wxTextCtrl;

// Types letter by letter, so that each filters or finds, with keyboard events. Where they do not arrive, as in a window
// without the focus, it writes the letters into the field, which has the same effect.
class FieldTypist {
 public:
  // Replaces the text of the filter field; an empty text empties it.
  std::string BeginFilter(CQORPGridCtrl& grid, int column, const std::wstring& text);
  // Opens the find bar and replaces its text.
  std::string BeginFind(CQORPGridCtrl& grid, const std::wstring& text);
  bool IsTyping() const noexcept { return Typing; }
  // Types the next letter once the last one has arrived. Returns why it had to end.
  std::string TypeOn();

 private:
  static constexpr int kFindBar = -1;

  std::string Begin(CQORPGridCtrl& grid, int column, const std::wstring& text);
  bool OpenField();
  void Start();
  std::string Restart();
  wxTextCtrl* Field() const;
  std::wstring Expected() const { return Text.substr(0, Typed); }
  void TypeNext(wxTextCtrl& field);
  bool PressNext(const wxTextCtrl& field) const;

  wxWeakRef<CQORPGridCtrl> Grid;
  int Column = kFindBar;
  std::wstring Text;
  std::size_t Typed = 0;  // letters that should stand in the field
  bool Typing = false;
  bool Begun = false;    // what stood in the field before is gone
  bool Writing = false;  // keys do not arrive
  int Waits = 0;
  int Restarts = 0;
};

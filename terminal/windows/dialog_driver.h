// CDialogDriver: answers the dialogs that a command opened, in the user's place: names the file to save, presses a
// button, checks an item. Not the dialogs themselves. Used on the calling thread of the windows only.
//
// Each gives back why it could not be done, in words for the user; empty when it was done.
#pragma once

#include <wx/modalhook.h>
#include <wx/window.h>

#include <filesystem>
#include <optional>
#include <string>

class CDialogDriver : private wxModalDialogHook {
 public:
  CDialogDriver() { Register(); }

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

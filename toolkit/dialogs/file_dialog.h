// CQORPFileDialog: the system's dialog for the name of a file to save.
#pragma once

#include <wx/filedlg.h>

#include <filesystem>
#include <optional>
#include <string>

#include "toolkit/system/toolkit_export.h"

class TOOLKIT_EXPORT CQORPFileDialog : public wxFileDialog {
 public:
  // The dialog starts in the folder of the proposal, or its nearest existing parent; in the current folder if the
  // proposal has none. The filter is the text of the list of types, with the extension in parentheses.
  CQORPFileDialog(wxWindow* parent, const std::filesystem::path& proposal, const std::wstring& extension,
                  const std::wstring& filter);

  // The chosen path, with the extension if the user typed none; asks before it replaces a file. Empty if the user
  // cancels.
  std::optional<std::filesystem::path> AskForPath();

  // For a wxModalDialogHook that answers for the user and ends the dialog with wxID_OK.
  void AnswerWith(const std::filesystem::path& path) { Answer = path; }
  const std::filesystem::path& Proposal() const noexcept { return Proposed; }

 private:
  bool MayReplace(const std::filesystem::path& path);

  std::filesystem::path Proposed;
  std::wstring Extension;
  std::filesystem::path Answer;  // empty: the dialog's own
};

// CQORPFileDialog: the system's dialog that asks for the name of a file to save.
#pragma once

#include <wx/filedlg.h>

#include <filesystem>
#include <optional>
#include <string>

#include "toolkit/system/toolkit_export.h"

class TOOLKIT_EXPORT CQORPFileDialog : public wxFileDialog {
 public:
  // The dialog starts in the proposal's folder, or in the nearest one above it that exists; a proposal without a folder
  // of its own starts in the current one. The filter is the text of the list of types, with the extension in
  // parentheses.
  CQORPFileDialog(wxWindow* parent, const std::filesystem::path& proposal, const std::wstring& extension,
                  const std::wstring& filter);

  // The chosen path, with the extension where the user gave none; he is asked before a file is replaced. Empty when he
  // cancels.
  std::optional<std::filesystem::path> AskForPath();

  // For whoever answers in the user's place from a wxModalDialogHook, and then ends the dialog with wxID_OK.
  void AnswerWith(const std::filesystem::path& path) { Answer = path; }
  const std::filesystem::path& Proposal() const noexcept { return Proposed; }

 private:
  bool MayReplace(const std::filesystem::path& path);

  std::filesystem::path Proposed;
  std::wstring Extension;
  std::filesystem::path Answer;  // empty: the dialog's own
};

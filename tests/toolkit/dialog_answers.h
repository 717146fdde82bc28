// DialogAnswers: answers dialogs for the user in tests.
#pragma once

#include <wx/modalhook.h>
#include <wx/stattext.h>

#include <algorithm>

#include "toolkit/dialogs/dialog.h"

// Shows nothing: a file dialog gets the file, a message box its first answer.
class DialogAnswers : public wxModalDialogHook {
 public:
  DialogAnswers() { Register(); }
  ~DialogAnswers() override { Unregister(); }
  int Enter(wxDialog* dialog) override {
    if (auto* file = dynamic_cast<CQORPFileDialog*>(dialog)) {
      Proposals.push_back(file->Proposal());
      file->AnswerWith(SaveAs);
      return SaveAs.empty() ? wxID_CANCEL : wxID_OK;
    }
    Said.push_back(dialog->GetTitle().ToStdWstring());
    for (const wxWindow* child : dialog->GetChildren())
      if (const auto* text = dynamic_cast<const wxStaticText*>(child)) Said.back() += L": " + text->GetLabel();
    std::ranges::replace(Said.back(), L'\n', L' ');
    return 1;
  }
  // Also clears the notes.
  void AnswerAnew(const std::filesystem::path& saveAs) {
    SaveAs = saveAs;
    Proposals.clear();
    Said.clear();
  }

  std::filesystem::path SaveAs;  // empty cancels
  std::vector<std::filesystem::path> Proposals;
  std::vector<std::wstring> Said;  // caption and text of message boxes
};

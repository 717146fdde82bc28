// DialogAnswers: answers dialogs for the user in tests.
#pragma once

#include <wx/modalhook.h>

#include <filesystem>
#include <string>
#include <vector>

// Shows nothing: a file dialog gets the file, a message box its first answer.
class DialogAnswers : public wxModalDialogHook {
 public:
  DialogAnswers() { Register(); }
  ~DialogAnswers() override { Unregister(); }
  int Enter(wxDialog* dialog) override;
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

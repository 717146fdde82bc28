// DialogAnswers: answers dialogs in the user's place, in tests. Used on the one thread of the tests.
#pragma once

#include <wx/modalhook.h>

#include <filesystem>
#include <string>
#include <vector>

// With nothing shown: a dialog for a file gets that file, a message box its first answer.
class DialogAnswers : public wxModalDialogHook {
 public:
  DialogAnswers() { Register(); }
  ~DialogAnswers() override { Unregister(); }
  int Enter(wxDialog* dialog) override;
  // With nothing noted so far.
  void AnswerAnew(const std::filesystem::path& saveAs) {
    SaveAs = saveAs;
    Proposals.clear();
    Said.clear();
  }

  std::filesystem::path SaveAs;  // empty cancels
  std::vector<std::filesystem::path> Proposals;
  std::vector<std::wstring> Said;  // caption and text of message boxes
};

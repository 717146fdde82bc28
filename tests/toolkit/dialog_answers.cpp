#include "tests/toolkit/dialog_answers.h"

#include <wx/dialog.h>
#include <wx/stattext.h>

#include <algorithm>

#include "toolkit/dialogs/dialog.h"

int DialogAnswers::Enter(wxDialog* dialog) {
  if (auto* file = dynamic_cast<CQORPFileDialog*>(dialog)) {
    Proposals.push_back(file->Proposal());
    file->AnswerWith(SaveAs);
    return SaveAs.empty() ? wxID_CANCEL : wxID_OK;
  }
  std::wstring said = dialog->GetTitle().ToStdWstring();
  for (const wxWindow* child : dialog->GetChildren())
    if (const auto* text = dynamic_cast<const wxStaticText*>(child)) said += L": " + text->GetLabel().ToStdWstring();
  std::ranges::replace(said, L'\n', L' ');
  Said.push_back(said);
  return 1;
}

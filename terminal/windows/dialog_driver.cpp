#include "terminal/windows/dialog_driver.h"

#include <wx/button.h>
#include <wx/checklst.h>
#include <wx/dialog.h>

#include <algorithm>
#include <utility>

#include "terminal/windows/find_child.h"
#include "toolkit/file_dialog.h"
#include "toolkit/static_text.h"

namespace {

constexpr const char* kNoDialog = "there is no dialog";

// The last one that was made stands before the others.
wxDialog* TopDialog() {
  wxDialog* top = nullptr;
  for (wxWindow* window : wxTopLevelWindows)
    if (auto* dialog = dynamic_cast<wxDialog*>(window); dialog != nullptr && dialog->IsModal()) top = dialog;
  return top;
}

std::wstring ShownText(const wxWindow& window) {
  const auto* line = dynamic_cast<const CQORPStatic*>(&window);
  std::wstring text =
      line != nullptr ? line->GetWindowText() : wxControl::RemoveMnemonics(window.GetLabel()).ToStdWstring();
  std::replace(text.begin(), text.end(), L'\n', L' ');
  return text;
}

}  // namespace

std::string CDialogDriver::SaveNextAs(const std::filesystem::path& file) {
  if (NextFile) return "the save dialog that was to be answered before has not come up";
  NextFile = file;
  return {};
}

std::string CDialogDriver::ExpectSaved() const {
  return NextFile ? "the save dialog that was to be answered has not come up" : "";
}

int CDialogDriver::Enter(wxDialog* dialog) {
  auto* asking = dynamic_cast<CQORPFileDialog*>(dialog);
  if (asking == nullptr || !NextFile) return wxID_NONE;
  const std::filesystem::path file = *std::exchange(NextFile, std::nullopt);
  if (file.empty()) return wxID_CANCEL;
  asking->AnswerWith(file);
  return wxID_OK;
}

bool CDialogDriver::IsUp() {
  return TopDialog() != nullptr;
}

bool CDialogDriver::EndTop() {
  wxDialog* dialog = TopDialog();
  if (dialog != nullptr) dialog->EndModal(wxID_CANCEL);
  return dialog != nullptr;
}

std::string CDialogDriver::PressButton(const std::wstring& text) {
  wxDialog* dialog = TopDialog();
  if (dialog == nullptr) return kNoDialog;
  auto* button = FindChild<wxButton>(
      *dialog, [&text](wxButton& one) { return one.IsShown() && one.IsEnabled() && one.GetLabelText() == text; });
  if (button == nullptr) return "the dialog has no such button";
  wxCommandEvent press(wxEVT_BUTTON, button->GetId());
  press.SetEventObject(button);
  button->GetEventHandler()->ProcessEvent(press);
  return {};
}

std::string CDialogDriver::ChangeItem(const std::wstring& text, bool toggles) {
  wxDialog* dialog = TopDialog();
  if (dialog == nullptr) return kNoDialog;
  auto* list = FindChild<wxCheckListBox>(
      *dialog, [&text](wxCheckListBox& one) { return one.FindString(text, true) != wxNOT_FOUND; });
  if (list == nullptr) return "no list of the dialog has such an item";
  const int item = list->FindString(text, true);
  list->SetSelection(item);
  if (!toggles) return {};
  list->Check(static_cast<unsigned>(item), !list->IsChecked(static_cast<unsigned>(item)));
  wxCommandEvent check(wxEVT_CHECKLISTBOX, list->GetId());
  check.SetEventObject(list);
  check.SetInt(item);
  list->GetEventHandler()->ProcessEvent(check);
  return {};
}

std::string CDialogDriver::ExpectText(const wxWindow* other, const std::wstring& text) const {
  const wxDialog* dialog = TopDialog();
  const wxWindow* window = dialog == nullptr ? other : dialog;
  const auto holds = [&text](const wxWindow& one) { return ShownText(one).find(text) != std::wstring::npos; };
  const auto shows = [&holds](const wxWindow& one) { return one.IsShownOnScreen() && holds(one); };
  if (window != nullptr && (holds(*window) || FindChild<wxWindow>(*window, shows) != nullptr)) return {};
  return dialog == nullptr ? "the book shows no such text" : "the dialog shows no such text";
}

#include "terminal/windows/drivers/user_drivers.h"

#include <wx/button.h>
#include <wx/checklst.h>
#include <wx/defs.h>
#include <wx/dialog.h>
#include <wx/event.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>

#include <algorithm>
#include <utility>

#include "terminal/windows/frame/window_tools.h"
#include "toolkit/dialogs/controls.h"
#include "toolkit/dialogs/dialog.h"

namespace {

constexpr int kMostScrollSteps = 1000;
constexpr int kHeaderPx = 24;  // of a header in view that a click needs; its edge would resize

void PressKey(wxWindow& window, int keyCode, bool shift) {
  wxKeyEvent event(wxEVT_KEY_DOWN);
  event.m_keyCode = keyCode;
  event.SetShiftDown(shift);
  event.SetEventObject(&window);
  window.GetEventHandler()->ProcessEvent(event);
}

void SendClick(wxWindow& window, const wxPoint& point, bool ctrl) {
  for (const wxEventType type : {wxEVT_LEFT_DOWN, wxEVT_LEFT_UP}) {
    wxMouseEvent event(type);
    event.SetPosition(point);
    event.SetLeftDown(type == wxEVT_LEFT_DOWN);
    event.SetControlDown(ctrl);
    event.SetEventObject(&window);
    window.GetEventHandler()->ProcessEvent(event);
  }
}

bool IsHeaderInView(const CQORPGridCtrl& grid, int column) {
  const int width = grid.GetColumnsInfo().GetColumnWidth(column);
  return grid.HeaderRect(column).width >= std::min(width, grid.FromDIP(kHeaderPx));
}

bool ScrollToHeader(CQORPGridCtrl& grid, int column) {
  for (const int key : {WXK_LEFT, WXK_RIGHT})
    for (int step = 0; step < kMostScrollSteps && !IsHeaderInView(grid, column); ++step)
      PressKey(*grid.GetRowsWindow(), key, false);
  return IsHeaderInView(grid, column);
}

// Presses Shift and the key until the current row is the wanted one.
template <typename Wanted>
void ExtendBy(CQORPGridCtrl& grid, int keyCode, Wanted goesOn) {
  for (int before = -1; goesOn(grid.GetCurSel()) && grid.GetCurSel() != before;) {
    before = grid.GetCurSel();
    PressKey(*grid.GetRowsWindow(), keyCode, true);
  }
}

}  // namespace

CQORPGridCtrl* BookDriver::GridWithFocus() {
  wxWindow* window = wxWindow::FindFocus();
  while (window != nullptr && dynamic_cast<CQORPGridCtrl*>(window) == nullptr) window = window->GetParent();
  return dynamic_cast<CQORPGridCtrl*>(window);
}

CQORPGridCtrl* BookDriver::FindGrid(const wxWindow* window) {
  return window == nullptr ? nullptr : FindChild<CQORPGridCtrl>(*window, [](CQORPGridCtrl&) { return true; });
}

int BookDriver::FindColumn(const CQORPGridCtrl& grid, const std::wstring& title) {
  for (int column = 0; column < grid.GetColumnCount(); ++column)
    if (grid.GetColumnName(column) == title) return column;
  return -1;
}

std::string BookDriver::ClickHeader(CQORPGridCtrl& grid, const std::wstring& title, bool ctrl) {
  const int column = FindColumn(grid, title);
  if (column < 0) return "the book has no column of that title";
  if (!grid.IsHeaderEnabled() || !grid.GetColumnsInfo().GetColumnVisible(column)) return "the header is hidden";
  if (!ScrollToHeader(grid, column)) return "the header cannot be brought into view";
  const wxRect header = grid.HeaderRect(column);
  SendClick(*grid.GetHeaderWindow(column), header.GetPosition() + header.GetSize() / 2, ctrl);
  return {};
}

std::string BookDriver::SelectRows(CQORPGridCtrl& grid, int first, int last) {
  if (last > grid.GetVirtualRows()) return "the book shows " + std::to_string(grid.GetVirtualRows()) + " rows";
  grid.SetCurSel(first - 1);
  ExtendBy(grid, WXK_PAGEDOWN, [last](int row) { return row < last - 1; });
  ExtendBy(grid, WXK_UP, [last](int row) { return row > last - 1; });
  return grid.GetCurSel() == last - 1 ? "" : "the rows cannot be selected";
}

std::string BookDriver::RunMenu(CQORPGridCtrl& grid, const std::vector<std::wstring>& texts) {
  return grid.RunContextMenu(texts) ? "" : "the book's menu has no such entry, or it cannot be had now";
}

std::string BookDriver::ExpectRows(const CQORPGridCtrl& grid, int count) {
  return grid.GetVirtualRows() == count ? "" : "the book shows " + std::to_string(grid.GetVirtualRows()) + " rows";
}

namespace {

constexpr const char* kNoDialog = "there is no dialog";

// The dialog that was made last is on top.
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

std::string DialogDriver::SaveNextAs(const std::filesystem::path& file) {
  if (NextFile) return "the save dialog that was to be answered before has not come up";
  NextFile = file;
  return {};
}

std::string DialogDriver::ExpectSaved() const {
  return NextFile ? "the save dialog that was to be answered has not come up" : "";
}

int DialogDriver::Enter(wxDialog* dialog) {
  auto* asking = dynamic_cast<CQORPFileDialog*>(dialog);
  if (asking == nullptr || !NextFile) return wxID_NONE;
  const std::filesystem::path file = *std::exchange(NextFile, std::nullopt);
  if (file.empty()) return wxID_CANCEL;
  asking->AnswerWith(file);
  return wxID_OK;
}

bool DialogDriver::IsUp() {
  return TopDialog() != nullptr;
}

bool DialogDriver::EndTop() {
  wxDialog* dialog = TopDialog();
  if (dialog != nullptr) dialog->EndModal(wxID_CANCEL);
  return dialog != nullptr;
}

std::string DialogDriver::PressButton(const std::wstring& text) {
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

std::string DialogDriver::ChangeItem(const std::wstring& text, bool toggles) {
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

std::string DialogDriver::ExpectText(const wxWindow* other, const std::wstring& text) const {
  const wxDialog* dialog = TopDialog();
  const wxWindow* window = dialog == nullptr ? other : dialog;
  const auto holds = [&text](const wxWindow& one) { return ShownText(one).find(text) != std::wstring::npos; };
  const auto shows = [&holds](const wxWindow& one) { return one.IsShownOnScreen() && holds(one); };
  if (window != nullptr && (holds(*window) || FindChild<wxWindow>(*window, shows) != nullptr)) return {};
  return dialog == nullptr ? "the book shows no such text" : "the dialog shows no such text";
}

namespace {
constexpr int kWaits = 10;  // for the focus or a letter, before they are given up
constexpr int kRestarts = 3;
constexpr wchar_t kFirstLetter = L' ', kLastLetter = L'~';
}  // namespace

std::string FieldTypist::BeginFilter(CQORPGridCtrl& grid, int column, const std::wstring& text) {
  if (column < 0) return "the book has no column of that title";
  if (!grid.IsFilterBarEnabled()) return "the filter bar is not shown";
  return Begin(grid, column, text);
}

std::string FieldTypist::BeginFind(CQORPGridCtrl& grid, const std::wstring& text) {
  return Begin(grid, kFindBar, text);
}

std::string FieldTypist::Begin(CQORPGridCtrl& grid, int column, const std::wstring& text) {
  Grid = &grid;
  Column = column;
  if (!OpenField()) return "the column is hidden";
  Text = text;
  Restarts = 0;
  Start();
  return {};
}

bool FieldTypist::OpenField() {
  if (Column != kFindBar) return Grid->EditFilter(Column);
  Grid->OpenFind();
  return true;
}

void FieldTypist::Start() {
  Typed = 0;
  Waits = 0;
  Begun = Writing = false;
  Typing = true;
}

// A window that got the focus late ended the edit: types again from the first letter.
std::string FieldTypist::Restart() {
  Typing = false;
  if (!Grid || ++Restarts > kRestarts || !OpenField()) return "the field went away";
  Start();
  return {};
}

wxTextCtrl* FieldTypist::Field() const {
  if (!Grid) return nullptr;
  return dynamic_cast<wxTextCtrl*>(Column == kFindBar ? Grid->GetFindEdit() : Grid->GetFilterEdit());
}

std::string FieldTypist::TypeOn() {
  wxTextCtrl* field = Field();
  if (field == nullptr) return Restart();
  const bool arrived = Begun ? field->GetValue().ToStdWstring() == Expected() : Writing || field->HasFocus();
  if (!arrived && ++Waits <= kWaits) return {};
  if (!arrived) Writing = true;
  if (!arrived && Begun) field->SetValue(Expected());
  Waits = 0;
  Typing = !Begun || Typed < Text.size();
  if (Typing) TypeNext(*field);
  return {};
}

// The first letter replaces the old text, which is selected.
void FieldTypist::TypeNext(wxTextCtrl& field) {
  if (!Text.empty()) ++Typed;
  Begun = true;
  if (Writing || !PressNext(field)) field.SetValue(Expected());
}

bool FieldTypist::PressNext(const wxTextCtrl& field) const {
  if (!field.HasFocus()) return false;
  wxUIActionSimulator keyboard;
  if (Text.empty()) return keyboard.Char(WXK_DELETE);
  const wchar_t letter = Text[Typed - 1];
  if (letter < kFirstLetter || letter > kLastLetter) return false;
  const char key[] = {static_cast<char>(letter), '\0'};
  return keyboard.Text(key);
}

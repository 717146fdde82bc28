#include "terminal/windows/filter_typist.h"

#include <wx/textctrl.h>
#include <wx/uiaction.h>

namespace {
constexpr int kWaits = 10;  // for the focus or a letter, before they are given up
constexpr int kRestarts = 3;
constexpr wchar_t kFirstLetter = L' ', kLastLetter = L'~';
}  // namespace

std::string CFilterTypist::Begin(CQORPGridCtrl& grid, int column, const std::wstring& text) {
  if (column < 0) return "the book has no column of that title";
  if (!grid.IsFilterBarEnabled()) return "the filter bar is not shown";
  if (!grid.EditFilter(column)) return "the column is hidden";
  Grid = &grid;
  Column = column;
  Text = text;
  Restarts = 0;
  Start();
  return {};
}

void CFilterTypist::Start() {
  Typed = 0;
  Waits = 0;
  Begun = Writing = false;
  Typing = true;
}

// A window that got the focus late ended the edit: the text is typed from its first letter.
std::string CFilterTypist::Restart() {
  Typing = false;
  if (!Grid || ++Restarts > kRestarts || !Grid->EditFilter(Column)) return "the filter field went away";
  Start();
  return {};
}

wxTextCtrl* CFilterTypist::Field() const {
  return Grid ? dynamic_cast<wxTextCtrl*>(Grid->GetFilterEdit()) : nullptr;
}

std::string CFilterTypist::TypeOn() {
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

// The first letter takes the place of the old text, which is selected.
void CFilterTypist::TypeNext(wxTextCtrl& field) {
  if (!Text.empty()) ++Typed;
  Begun = true;
  if (Writing || !PressNext(field)) field.SetValue(Expected());
}

bool CFilterTypist::PressNext(const wxTextCtrl& field) const {
  if (!field.HasFocus()) return false;
  wxUIActionSimulator keyboard;
  if (Text.empty()) return keyboard.Char(WXK_DELETE);
  const wchar_t letter = Text[Typed - 1];
  if (letter < kFirstLetter || letter > kLastLetter) return false;
  const char key[] = {static_cast<char>(letter), '\0'};
  return keyboard.Text(key);
}

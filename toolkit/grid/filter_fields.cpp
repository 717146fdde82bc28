#include "toolkit/grid/filter_fields.h"

#include <wx/textctrl.h>

#include <algorithm>

#include "toolkit/grid/edit_field.h"
#include "toolkit/system/make_child.h"
#include "toolkit/system/native_windows.h"

namespace {

constexpr int kLeastEditPx = 40;  // in a narrower column the edit covers its neighbour
constexpr int kLinePx = 1;        // between fields
constexpr int kInsetPx = 3;       // the text of the edit is where the field paints it

}  // namespace

// While hidden, the field is a child of the grid: wxGTK 3.2 also scrolls hidden children of a header, about which GTK
// 3.24 warns. Drop when 3.4 is the floor.
void GridFilterBar::MakeField() {
  Field = &MakeChild<wxTextCtrl>();
  Field->Hide();
  Field->Create(&Owner, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                wxBORDER_NONE | wxTE_PROCESS_ENTER | wxTE_PROCESS_TAB);
  Field->SetMinSize(wxSize(1, 1));
  Field->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { OnText(); });
  Field->Bind(wxEVT_CHAR_HOOK, &GridFilterBar::OnKey, this);
  Field->Bind(wxEVT_CONTEXT_MENU, [](wxContextMenuEvent& event) { KeepInField(event); });
  Field->Bind(wxEVT_KILL_FOCUS, [this](wxFocusEvent& event) {
    event.Skip();
    Field->CallAfter([this] { Follow(); });
  });
}

wxWindow* GridFilterBar::FieldWindow() const {
  return Field;
}

wxWindow* GridFilterBar::GetEdit() const {
  return Column >= 0 ? Field : nullptr;
}

bool GridFilterBar::HasFocus() const {
  return wxWindow::FindFocus() == FieldWindow();
}

bool GridFilterBar::Edit(int column, Caret caret) {
  if (View == nullptr || !State.Filters.Shown || View->Table().PlaceOf(column) < 0) return false;
  if (Field == nullptr) MakeField();
  View->ShowColumn(column);
  if (column != Column) {
    Field->ChangeValue(State.Filters.TextOf(column));
    SetAccessibleName(*Field, L"Filter of " + State.Columns.GetColumnName(column));
  }
  State.Filters.LastEdited = Column = column;
  Dress();
  Place();
  Field->Show();
  if (!HasFocus()) Field->SetFocus();
  PutCaret(caret);
  View->RepaintHeader();
  return true;
}

bool GridFilterBar::EditAgain() {
  return Edit(State.Filters.LastEdited, Caret::AllSelected) ||
         (View != nullptr && Edit(View->Table().ColumnAt(0), Caret::AllSelected));
}

void GridFilterBar::PutCaret(Caret caret) {
  switch (caret) {
    case Caret::AtStart:
      Field->SetInsertionPoint(0);
      break;
    case Caret::AtEnd:
      Field->SetInsertionPointEnd();
      break;
    case Caret::AllSelected:
      Field->SelectAll();
      break;
  }
}

void GridFilterBar::Dress() {
  Field->SetFont(View->GetLabelFont());
  Field->SetBackgroundColour(wxColour(State.Theme.Window));
  Field->SetForegroundColour(wxColour(State.Theme.WindowText));
}

// As high as its text, in the middle of the field, as some systems do not centre the text vertically.
void GridFilterBar::Place() {
  MoveInto(*View->HeaderWindow(Column));
  wxRect rect = View->FieldSpace(Column);
  const int room = rect.height - kLinePx;
  rect.height = std::min(room, Field->GetBestSize().y);
  rect.y += (room - rect.height) / 2;
  const int inset = View->FromDIP(kInsetPx);
  rect.x += inset;
  rect.width = std::max(rect.width - inset - kLinePx, View->FromDIP(kLeastEditPx));
  if (Field->GetRect() != rect) Field->SetSize(rect.x, rect.y, rect.width, rect.height, wxSIZE_ALLOW_MINUS_ONE);
}

// wxGTK 3.2: a reparented window becomes visible at the next idle event, also if it was hidden, and loses focus and
// selection. Drop when 3.4 is the floor.
void GridFilterBar::MoveInto(wxWindow& parent) {
  if (Field->GetParent() == &parent) return;
  const bool hadFocus = HasFocus(), shown = Field->IsShown();
  long first = 0, end = 0;
  Field->GetSelection(&first, &end);
  Field->Reparent(&parent);
  Field->Show(!shown);
  Field->Show(shown);
  if (hadFocus) Field->SetFocus();
  Field->SetSelection(first, end);
}

void GridFilterBar::LeaveFrozenWindow() {
  if (Column >= 0) MoveInto(*View->GetGridColLabelWindow());
}

// The edit stays while another program has the focus, as it may get it back.
void GridFilterBar::Follow() {
  if (Column < 0) return;
  const bool left = wxWindow::FindFocus() != nullptr && !HasFocus();
  if (left || !State.Filters.Shown || View->Table().PlaceOf(Column) < 0) return End();
  Dress();
  Place();
}

void GridFilterBar::End() {
  Column = -1;
  if (HasFocus()) View->SetFocus();
  Field->Hide();
  MoveInto(Owner);
  View->RepaintHeader();
}

bool GridFilterBar::Store(int column, const std::wstring& text) {
  if (column < 0 || column >= State.Columns.GetColumnCount() || text == State.Filters.TextOf(column)) return false;
  State.Filters.Texts[column] = text;
  if (text.empty()) State.Filters.Texts.erase(column);
  if (View != nullptr) View->RepaintHeader();
  return true;
}

void GridFilterBar::OnText() {
  const int column = Column;
  const std::wstring text = Field->GetValue().ToStdWstring();
  if (Store(column, text)) Owner.OnFilterBarChanged(column, text);
}

void GridFilterBar::SetText(int column, const std::wstring& text) {
  if (!Store(column, text)) return;
  if (column == Column) Field->ChangeValue(text);
  Owner.OnFilterBarChanged(column, text);
}

void GridFilterBar::ClearTexts() {
  State.Filters.Texts.clear();
  if (Column >= 0) Field->ChangeValue(wxString());
  if (View != nullptr) View->RepaintHeader();
}

void GridFilterBar::OnKey(wxKeyEvent& event) {
  if (IsForProgram(event)) {
    event.Skip();
  } else if (!event.ControlDown() && (LeaveByKey(event.GetKeyCode()) || MoveByKey(event))) {
    // Handled.
  } else if (IsForField(event)) {
    KeepInField(event);
  } else {
    event.Skip();
  }
}

bool GridFilterBar::LeaveByKey(int keyCode) {
  switch (keyCode) {
    case WXK_ESCAPE:
    case WXK_RETURN:
    case WXK_NUMPAD_ENTER:
    case WXK_DOWN:
    case WXK_NUMPAD_DOWN:
      View->SetFocus();
      End();
      return true;
    case WXK_UP:
    case WXK_NUMPAD_UP:
      return true;
    default:
      return false;
  }
}

bool GridFilterBar::MoveByKey(const wxKeyEvent& event) {
  long first = 0, end = 0;
  Field->GetSelection(&first, &end);
  const bool isCaret = first == end && !event.ShiftDown();
  switch (event.GetKeyCode()) {
    case WXK_TAB:
      EditNeighbour(event.ShiftDown() ? -1 : 1, Caret::AllSelected);
      return true;
    case WXK_LEFT:
    case WXK_NUMPAD_LEFT:
      if (!isCaret || first > 0) return false;
      EditNeighbour(-1, Caret::AtEnd);
      return true;
    case WXK_RIGHT:
    case WXK_NUMPAD_RIGHT:
      if (!isCaret || end < Field->GetLastPosition()) return false;
      EditNeighbour(1, Caret::AtStart);
      return true;
    default:
      return false;
  }
}

void GridFilterBar::EditNeighbour(int step, Caret caret) {
  const int count = View->Table().GetNumberCols();
  const int place = View->Table().PlaceOf(Column);
  Edit(View->Table().ColumnAt((place + step + count) % count), caret);
}

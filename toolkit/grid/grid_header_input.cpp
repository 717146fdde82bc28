#include "toolkit/grid/grid_input.h"

#include <wx/cursor.h>
#include <wx/window.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace {

constexpr int kEdgePx = 4;
constexpr int kDragPx = 5;
constexpr int kMostWidthPx = 2048;  // of a column by mouse or key
constexpr int kScrollSteps = 2;
constexpr int kWidthStepPx = 8;  // of a key
constexpr int kWiderKeys[] = {'+', '=', WXK_NUMPAD_ADD}, kNarrowerKeys[] = {'-', '_', WXK_NUMPAD_SUBTRACT};

// -1 for narrower, 1 for wider, 0 for any other key. Keyboards differ in whether + and - need Shift.
int WidthStep(int key) {
  const bool wider = std::ranges::find(kWiderKeys, key) != std::end(kWiderKeys);
  const bool narrower = std::ranges::find(kNarrowerKeys, key) != std::end(kNarrowerKeys);
  return static_cast<int>(wider) - static_cast<int>(narrower);
}

}  // namespace

void GridHeaderInput::Attach(wxWindow& header) {
  const auto press = [this, &header](wxMouseEvent& event) { OnLeftDown(event, header); };
  header.Bind(wxEVT_LEFT_DOWN, press);
  header.Bind(wxEVT_LEFT_DCLICK, press);
  header.Bind(wxEVT_MOTION, [this, &header](wxMouseEvent& event) { OnMotion(event, header); });
  header.Bind(wxEVT_LEFT_UP, [this, &header](wxMouseEvent& event) { OnLeftUp(event, header); });
  header.Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) {
    Captured = nullptr;
    StopDragging();
  });
}

void GridHeaderInput::StopDragging() {
  if (Captured && Captured->HasCapture()) Captured->ReleaseMouse();
  Captured = nullptr;
  Doing = Action::None;
  State.DraggedColumn = State.DropPlace = -1;
  View->RepaintHeader();
}

int GridHeaderInput::PlaceOfEdgeAt(int x) const {
  return View->Strip().PlaceOfEdgeAt(x, View->FromDIP(kEdgePx));
}

void GridHeaderInput::OnLeftDown(wxMouseEvent& event, wxWindow& window) {
  const int x = View->StripX(window, event.GetX());
  const int edge = PlaceOfEdgeAt(x);
  const int place = edge >= 0 ? edge : View->Strip().PlaceAt(x);
  if (place < 0) return;
  Column = View->Table().ColumnAt(place);
  if (edge < 0 && event.GetY() >= View->TitleHeight()) {
    Filters.Edit(Column, GridFilterBar::Caret::AtEnd);
    return;
  }
  Doing = edge >= 0 ? Action::Resize : Action::Press;
  PressedX = x;
  PressedWidth = State.Columns.GetColumnWidth(Column);
  if (!window.HasCapture()) window.CaptureMouse();
  Captured = &window;
}

void GridHeaderInput::OnMotion(wxMouseEvent& event, wxWindow& window) {
  const int x = View->StripX(window, event.GetX());
  if (Doing == Action::None || !event.LeftIsDown())
    window.SetCursor(PlaceOfEdgeAt(x) >= 0 ? wxCursor(wxCURSOR_SIZEWE) : wxNullCursor);
  else
    DragTo(x);
}

void GridHeaderInput::DragTo(int x) {
  if (Doing == Action::Press && std::abs(x - PressedX) >= View->FromDIP(kDragPx)) Doing = Action::Move;
  if (Doing == Action::Resize) {
    ResizeTo(PressedWidth + x - PressedX);
  } else if (Doing == Action::Move) {
    if (x >= View->StripWidth()) View->ScrollColumns(kScrollSteps);
    if (x < 0) View->ScrollColumns(-kScrollSteps);
    State.DraggedColumn = Column;
    State.DropPlace = View->Strip().DropPlaceAt(x);
    View->RepaintHeader();
  }
}

void GridHeaderInput::ResizeTo(int widthPx) {
  const int least = std::min(Owner.OnGetColumnMinWidth(Column), kMostWidthPx);
  State.Columns.SetColumnWidth(Column, std::clamp(widthPx, least, kMostWidthPx));
  View->ApplyWidth(Column);
}

// Deferred: a changed layout may destroy the window of this event.
void GridHeaderInput::OnLeftUp(wxMouseEvent& event, wxWindow& window) {
  const Action done = Doing;
  const int column = Column;
  const int place = View->Strip().DropPlaceAt(View->StripX(window, event.GetX()));
  StopDragging();
  if (done == Action::Move) View->CallAfter([this, column, place] { Drop(column, place); });
  if (done == Action::Resize)
    View->CallAfter([this] {
      View->ApplyState();
      Owner.OnColumnsChanged();
    });
  if (done != Action::Press) return;
  if (event.CmdDown())
    Select(column);
  else
    Sort(column);
}

void GridHeaderInput::Sort(int column) {
  View->CallAfter([this, column] {
    Owner.ToggleSortColumn(column);
    Speaker.ColumnMoved();
  });
}

void GridHeaderInput::Select(int column) {
  State.Columns.SelectColumn(column, !State.Columns.IsColumnSelected(column));
  View->RepaintRows();
  View->RepaintHeader();
}

void GridHeaderInput::EnsureCurrentColumn() {
  if (View->Table().PlaceOf(State.CurrentColumn) >= 0 || View->Table().GetNumberCols() == 0) return;
  State.CurrentColumn = View->Table().ColumnAt(0);
  View->RepaintHeader();
}

// The first column if none is current.
void GridHeaderInput::ChooseColumn(int by) {
  const int count = View->Table().GetNumberCols();
  if (count == 0) return;
  const int place = View->Table().PlaceOf(State.CurrentColumn);
  State.CurrentColumn = View->Table().ColumnAt(place < 0 ? 0 : std::clamp(place + by, 0, count - 1));
  View->ShowColumn(State.CurrentColumn);
  View->RepaintHeader();
  if (!State.WholeRow) View->RepaintRows();
  Speaker.ColumnMoved();
}

void GridHeaderInput::MoveColumn(int by) {
  const int place = View->Table().PlaceOf(State.CurrentColumn);
  const int to = place + by;
  if (place < 0 || to < 0 || to >= View->Table().GetNumberCols()) return;
  Drop(State.CurrentColumn, by > 0 ? to + 1 : to);
  View->ShowColumn(State.CurrentColumn);
  Speaker.ColumnMoved();
}

void GridHeaderInput::WidenColumn(int steps) {
  Column = State.CurrentColumn;
  ResizeTo(State.Columns.GetColumnWidth(Column) + steps * View->FromDIP(kWidthStepPx));
  View->ApplyState();
  Owner.OnColumnsChanged();
}

bool GridHeaderInput::OnKey(const wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  const bool shift = event.GetModifiers() == (wxMOD_CONTROL | wxMOD_SHIFT);
  if (!shift && event.GetModifiers() != wxMOD_CONTROL) return false;
  const bool hasColumn = View->Table().PlaceOf(State.CurrentColumn) >= 0;
  if (key == WXK_LEFT || key == WXK_RIGHT) {
    const int by = key == WXK_LEFT ? -1 : 1;
    shift ? MoveColumn(by) : ChooseColumn(by);
  } else if (hasColumn && key == WXK_RETURN && !shift) {
    Sort(State.CurrentColumn);
  } else if (hasColumn && key == WXK_SPACE && shift) {
    Select(State.CurrentColumn);
  } else if (hasColumn && WidthStep(key) != 0) {
    WidenColumn(WidthStep(key));
  } else {
    return false;
  }
  return true;
}

void GridHeaderInput::Drop(int column, int place) {
  if (!State.Columns.DropColumn(place, column)) return;
  View->ApplyState();
  Owner.OnColumnsChanged();
}

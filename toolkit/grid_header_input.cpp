#include "toolkit/grid_header_input.h"

#include <wx/cursor.h>
#include <wx/window.h>

#include <algorithm>
#include <cstdlib>

namespace {

constexpr int kEdgePx = 4;
constexpr int kDragPx = 5;
constexpr int kLeastWidthPx = 12;  // what the mouse can make of a column
constexpr int kMostWidthPx = 2048;
constexpr int kScrollSteps = 2;

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

// Frozen headers cover those that are scrolled under them.
int GridHeaderInput::PlaceUnder(int x) const {
  for (int place = 0; place < View->Table().GetNumberCols(); ++place) {
    const GridView::Span span = View->SpanOf(place);
    if (x >= span.Left && x < span.Right) return place;
  }
  return -1;
}

int GridHeaderInput::PlaceOfEdgeAt(int x) const {
  const int edge = View->FromDIP(kEdgePx);
  const int frozen = View->FrozenWidth();
  for (int place = View->Table().GetNumberCols() - 1; place >= 0; --place) {
    const int right = View->SpanOf(place).Right;
    if (std::abs(x - right) <= edge && right >= frozen) return place;
  }
  const int place = PlaceUnder(x);
  return place >= 0 && View->SpanOf(place).Right - x <= edge ? place : -1;
}

int GridHeaderInput::DropPlaceAt(int x) const {
  const int count = View->Table().GetNumberCols();
  for (int place = 0; place < count; ++place) {
    const GridView::Span span = View->SpanOf(place);
    if (x < View->FrozenWidth() && span.Left >= View->FrozenWidth()) return place;
    if (x < (span.Left + span.Right) / 2) return place;
  }
  return count;
}

void GridHeaderInput::OnLeftDown(wxMouseEvent& event, wxWindow& window) {
  const int x = View->StripX(window, event.GetX());
  const int edge = PlaceOfEdgeAt(x);
  const int place = edge >= 0 ? edge : PlaceUnder(x);
  if (place < 0) return;
  Column = View->Table().ColumnAt(place);
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
    State.Columns.SetColumnWidth(Column, std::clamp(PressedWidth + x - PressedX, kLeastWidthPx, kMostWidthPx));
    View->ApplyWidth(Column);
  } else if (Doing == Action::Move) {
    if (x >= View->StripWidth()) View->ScrollColumns(kScrollSteps);
    if (x < 0) View->ScrollColumns(-kScrollSteps);
    State.DraggedColumn = Column;
    State.DropPlace = DropPlaceAt(x);
    View->RepaintHeader();
  }
}

// What the release brings about may take away the window whose event this is: it waits until the event is through.
void GridHeaderInput::OnLeftUp(wxMouseEvent& event, wxWindow& window) {
  const Action done = Doing;
  const int column = Column;
  const int place = DropPlaceAt(View->StripX(window, event.GetX()));
  StopDragging();
  if (done == Action::Move) View->CallAfter([this, column, place] { Drop(column, place); });
  if (done == Action::Resize)
    View->CallAfter([this] {
      View->ApplyState();
      Owner.OnColumnsChanged();
    });
  if (done != Action::Press) return;
  if (event.CmdDown()) {
    State.Columns.SelectColumn(column, !State.Columns.IsColumnSelected(column));
    View->RepaintRows();
    View->RepaintHeader();
  } else {
    View->CallAfter([this, column] { Owner.ToggleSortColumn(column); });
  }
}

void GridHeaderInput::Drop(int column, int place) {
  const std::vector<int>& shown = View->Table().Columns();
  const int from = View->Table().PlaceOf(column);
  const auto locked = std::ranges::count_if(shown, [this](int other) { return State.Columns.GetColumnLocked(other); });
  if (from < 0 || place == from || place == from + 1) return;
  const bool wasLocked = State.Columns.GetColumnLocked(column);
  State.Columns.SetColumnLocked(column, place < locked || (wasLocked && place == locked));
  State.Columns.SetColumnDisplayPos(place > from ? place - 1 : place, column);
  View->ApplyState();
  Owner.OnColumnsChanged();
}

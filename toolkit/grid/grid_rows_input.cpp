#include "toolkit/grid/grid_input.h"

#include <wx/window.h>

#include <algorithm>
#include <optional>

namespace {

constexpr int kColumnSteps = 4;
constexpr int kRepeatMs = 50;

// The row to which the key moves from the current one, -1 for none; empty for other keys.
std::optional<int> RowAfter(int keyCode, int current, int page, int rows) {
  switch (keyCode) {
    case WXK_UP:
    case WXK_NUMPAD_UP:
      return std::max(current - 1, 0);
    case WXK_DOWN:
    case WXK_NUMPAD_DOWN:
      return current + 1;
    case WXK_PAGEUP:
    case WXK_NUMPAD_PAGEUP:
      return std::max(current - page, 0);
    case WXK_PAGEDOWN:
    case WXK_NUMPAD_PAGEDOWN:
      return current + page;
    case WXK_HOME:
    case WXK_NUMPAD_HOME:
      return 0;
    case WXK_END:
    case WXK_NUMPAD_END:
      return rows - 1;
    default:
      return std::nullopt;
  }
}

bool IsHomeOrEnd(int keyCode) {
  return keyCode == WXK_HOME || keyCode == WXK_NUMPAD_HOME || keyCode == WXK_END || keyCode == WXK_NUMPAD_END;
}

bool IsSingle(const std::vector<RowRange>& ranges) {
  return ranges.empty() || (ranges.size() == 1 && ranges[0].First == ranges[0].Last);
}

}  // namespace

GridRowsInput::GridRowsInput(CQORPGridCtrl& owner, GridState& state, GridFilterBar& filters, GridHeaderInput& headers,
                             GridSpeaker& speaker)
    : Owner(owner), State(state), Filters(filters), Headers(headers), Speaker(speaker) {
  Repeat.Bind(wxEVT_TIMER, [this](wxTimerEvent&) {
    if (Dragging && State.Selection.GetRows() > 0) ExtendToPointer();
  });
}

void GridRowsInput::Attach(wxWindow& rows) {
  const auto press = [this, &rows](wxMouseEvent& event) { OnLeftDown(event, rows); };
  rows.Bind(wxEVT_LEFT_DOWN, press);
  rows.Bind(wxEVT_LEFT_DCLICK, press);
  rows.Bind(wxEVT_MOTION, [this](wxMouseEvent& event) { OnMotion(event); });
  rows.Bind(wxEVT_LEFT_UP, [this](wxMouseEvent&) { StopDragging(); });
  rows.Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) {
    Dragging = nullptr;
    StopDragging();
  });
  rows.Bind(wxEVT_RIGHT_DOWN, [this](wxMouseEvent& event) { OnRightDown(event); });
  rows.Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) { OnKeyDown(event); });
  rows.Bind(wxEVT_SET_FOCUS, [this](wxFocusEvent& event) {
    event.Skip();
    Owner.OnGridFocus();
  });
}

void GridRowsInput::ShowChange(const RowSelection& before) {
  const RowSelection& now = State.Selection;
  View->ShowRow(now.GetCurrent());
  if (IsSingle(before.GetRanges()) && IsSingle(now.GetRanges())) {
    for (const RowSelection* selection : {&before, &now}) {
      View->RepaintRow(selection->GetCurrent());
      if (!selection->GetRanges().empty()) View->RepaintRow(selection->GetRanges()[0].First);
    }
  } else {
    View->RepaintRows();
  }
}

void GridRowsInput::SetCurrentColumn(const wxWindow& window, int x) {
  const int before = State.CurrentColumn;
  const int place = View->Strip().PlaceAt(View->StripX(window, x));
  if (place >= 0) State.CurrentColumn = View->Table().ColumnAt(place);
  if (State.CurrentColumn != before) View->RepaintHeader();
}

void GridRowsInput::OnLeftDown(wxMouseEvent& event, wxWindow& window) {
  View->SetFocus();
  const int row = View->RowAtHeight(event.GetY());
  if (row < 0 || row >= State.Selection.GetRows()) return;
  SetCurrentColumn(window, event.GetX());
  KeepsOthers = event.CmdDown();
  ChangeByUser([&](RowSelection& selection) {
    if (event.ShiftDown()) {
      selection.Extend(row, KeepsOthers);
    } else if (KeepsOthers) {
      selection.Toggle(row);
    } else {
      selection.SelectOnly(row);
    }
  });
  if (!window.HasCapture()) window.CaptureMouse();
  Dragging = &window;
}

void GridRowsInput::OnMotion(wxMouseEvent& event) {
  if (Dragging == nullptr || !event.LeftIsDown() || State.Selection.GetRows() == 0) {
    event.Skip();
    return;
  }
  PointerY = event.GetY();
  ExtendToPointer();
}

// A pointer outside scrolls row by row, at any distance.
void GridRowsInput::ExtendToPointer() {
  const bool outside = PointerY < 0 || PointerY >= Dragging->GetClientSize().y;
  if (outside && !Repeat.IsRunning()) Repeat.Start(kRepeatMs);
  if (!outside) Repeat.Stop();
  const int first = View->GetFirstRow();
  const int row = std::clamp(View->RowAtHeight(PointerY), first - 1, first + View->CountFullRows());
  if (std::clamp(row, 0, State.Selection.GetRows() - 1) == State.Selection.GetCurrent()) return;
  ChangeByUser([&](RowSelection& selection) { selection.Extend(row, KeepsOthers); });
}

void GridRowsInput::StopDragging() {
  Repeat.Stop();
  if (Dragging && Dragging->HasCapture()) Dragging->ReleaseMouse();
  Dragging = nullptr;
}

// The context menu that follows acts on the row under the pointer.
void GridRowsInput::OnRightDown(wxMouseEvent& event) {
  event.Skip();
  View->SetFocus();
  const int row = View->RowAtHeight(event.GetY());
  if (row < 0 || row >= State.Selection.GetRows() || State.Selection.Contains(row)) return;
  ChangeByUser([row](RowSelection& selection) { selection.SelectOnly(row); });
}

void GridRowsInput::OnKeyDown(wxKeyEvent& event) {
  if (Headers.OnKey(event) || MoveByKey(event) || SelectByKey(event) || FilterByKey(event) || LeaveOrScrollByKey(event))
    return;
  // Otherwise wxGrid copies the cell of its own cursor.
  if (event.GetModifiers() == wxMOD_CONTROL && (event.GetKeyCode() == 'C' || event.GetKeyCode() == WXK_INSERT)) return;
  event.Skip();
}

bool GridRowsInput::MoveByKey(const wxKeyEvent& event) {
  const std::optional<int> row =
      RowAfter(event.GetKeyCode(), State.Selection.GetCurrent(), View->CountFullRows(), State.Selection.GetRows());
  if (!row || event.AltDown()) return false;
  ChangeByUser([&](RowSelection& selection) {
    if (event.ShiftDown()) {
      selection.Extend(*row, event.CmdDown());
    } else if (event.CmdDown() && !IsHomeOrEnd(event.GetKeyCode())) {
      selection.MoveCurrent(*row);
    } else {
      selection.SelectOnly(*row);
    }
  });
  return true;
}

bool GridRowsInput::SelectByKey(const wxKeyEvent& event) {
  const int current = State.Selection.GetCurrent();
  if (event.GetKeyCode() == 'A' && event.GetModifiers() == wxMOD_CONTROL) {
    Owner.SelectAll();
  } else if (event.GetKeyCode() == WXK_SPACE && current >= 0) {
    ChangeByUser([&](RowSelection& selection) {
      if (event.CmdDown()) {
        selection.Toggle(current);
      } else if (event.ShiftDown()) {
        selection.Extend(current, false);
      } else {
        selection.SelectOnly(current);
      }
    });
  } else {
    return false;
  }
  return true;
}

bool GridRowsInput::FilterByKey(const wxKeyEvent& event) {
  return event.GetKeyCode() == 'F' && event.GetModifiers() == wxMOD_CONTROL && Filters.EditAgain();
}

// Otherwise wxGrid moves its own cursor.
bool GridRowsInput::LeaveOrScrollByKey(const wxKeyEvent& event) {
  switch (event.GetKeyCode()) {
    case WXK_LEFT:
    case WXK_NUMPAD_LEFT:
      View->ScrollColumns(-kColumnSteps);
      return true;
    case WXK_RIGHT:
    case WXK_NUMPAD_RIGHT:
      View->ScrollColumns(kColumnSteps);
      return true;
    case WXK_TAB:
      Owner.Navigate(event.ShiftDown() ? wxNavigationKeyEvent::IsBackward : wxNavigationKeyEvent::IsForward);
      return true;
    case WXK_SPACE:
    case WXK_RETURN:
    case WXK_NUMPAD_ENTER:
      return true;
    default:
      return false;
  }
}

// Mouse and keys on a grid, on its headers and on its rows.
#pragma once

#include <wx/event.h>
#include <wx/timer.h>

#include "toolkit/grid/filter_fields.h"
#include "toolkit/grid/grid_speaker.h"
#include "toolkit/grid/grid_state.h"
#include "toolkit/grid/grid_view.h"

// A click on a header sorts, Ctrl and a click selects the column, the right edge resizes it, a drag moves it; a press
// on a field of the filter bar edits the field.
class GridHeaderInput {
 public:
  GridHeaderInput(CQORPGridCtrl& owner, GridState& state, GridFilterBar& filters, GridSpeaker& speaker)
      : Owner(owner), State(state), Filters(filters), Speaker(speaker) {}

  // The view must outlive the input.
  void SetView(GridView& view) { View = &view; }
  // Handles the mouse in a window of headers.
  void Attach(wxWindow& header);
  // True if the key was handled.
  bool OnKey(const wxKeyEvent& event);
  // Makes the first column the current one if none is visible.
  void EnsureCurrentColumn();
  // Cancels a press or a drag.
  void StopDragging();

 private:
  enum class Action { None, Press, Move, Resize };

  void OnLeftDown(wxMouseEvent& event, wxWindow& window);
  void OnMotion(wxMouseEvent& event, wxWindow& window);
  void OnLeftUp(wxMouseEvent& event, wxWindow& window);
  void Sort(int column);
  void Select(int column);
  void ChooseColumn(int by);
  void MoveColumn(int by);
  void WidenColumn(int steps);
  void DragTo(int x);
  void ResizeTo(int widthPx);
  void Drop(int column, int place);
  int PlaceOfEdgeAt(int x) const;

  CQORPGridCtrl& Owner;
  GridState& State;
  GridFilterBar& Filters;
  GridSpeaker& Speaker;
  GridView* View = nullptr;

  // From press to release; x is that of the ColumnStrip.
  Action Doing = Action::None;
  wxWindow* Captured = nullptr;
  int Column = -1;
  int PressedX = 0;
  int PressedWidth = 0;
};

// Mouse and keys on rows move the current row, select and scroll.
class GridRowsInput {
 public:
  GridRowsInput(CQORPGridCtrl& owner, GridState& state, GridFilterBar& filters, GridHeaderInput& headers,
                GridSpeaker& speaker);

  // The view must outlive the input.
  void SetView(GridView& view) { View = &view; }
  // Handles mouse and keys in a window of rows.
  void Attach(wxWindow& rows);
  void StopDragging();

  // Makes the change, scrolls to the current row and repaints the changed rows.
  template <typename Change>
  void ChangeSelection(Change change) {
    const RowSelection before = State.Selection;
    change(State.Selection);
    ShowChange(before);
  }

 private:
  // The same by the user.
  template <typename Change>
  void ChangeByUser(Change change) {
    const int before = State.Selection.GetCurrent();
    ChangeSelection(change);
    State.Selection.GetCurrent() == before ? Speaker.ColumnMoved() : Speaker.RowMoved();
  }
  void OnLeftDown(wxMouseEvent& event, wxWindow& window);
  void OnMotion(wxMouseEvent& event);
  void ExtendToPointer();
  void OnRightDown(wxMouseEvent& event);
  void OnKeyDown(wxKeyEvent& event);
  bool MoveByKey(const wxKeyEvent& event);
  bool SelectByKey(const wxKeyEvent& event);
  bool FilterByKey(const wxKeyEvent& event);
  bool LeaveOrScrollByKey(const wxKeyEvent& event);
  void SetCurrentColumn(const wxWindow& window, int x);
  void ShowChange(const RowSelection& before);

  CQORPGridCtrl& Owner;
  GridState& State;
  GridFilterBar& Filters;
  GridHeaderInput& Headers;
  GridSpeaker& Speaker;
  GridView* View = nullptr;
  wxWindow* Dragging = nullptr;
  bool KeepsOthers = false;
  int PointerY = 0;
  wxTimer Repeat;  // extends the selection while the pointer rests outside
};

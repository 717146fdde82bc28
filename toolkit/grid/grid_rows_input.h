// GridRowsInput: mouse and keys on the rows of a grid. They move the current row, select and scroll.
#pragma once

#include <wx/event.h>
#include <wx/timer.h>

#include "toolkit/grid/filter_fields.h"
#include "toolkit/grid/grid_header_input.h"
#include "toolkit/grid/grid_state.h"
#include "toolkit/grid/grid_view.h"

class GridRowsInput {
 public:
  GridRowsInput(CQORPGridCtrl& owner, GridState& state, GridFilterBar& filters, GridHeaderInput& headers);

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
  GridView* View = nullptr;
  wxWindow* Dragging = nullptr;
  bool KeepsOthers = false;
  int PointerY = 0;
  wxTimer Repeat;  // extends the selection while the pointer rests outside
};

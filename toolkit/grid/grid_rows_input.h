// GridRowsInput: what mouse and keys do to the rows of a grid: move the current row, select, scroll.
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

  // The view must outlive the input's use.
  void SetView(GridView& view) { View = &view; }
  // A window that rows are painted in.
  void Attach(wxWindow& rows);
  void StopDragging();

  // Makes the change, brings the current row into view and repaints what changed.
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
  wxTimer Repeat;  // goes on extending while the pointer rests outside
};

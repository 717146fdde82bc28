// GridHeaderInput: mouse and keys on the headers of a grid. A click sorts, Ctrl and a click selects the column, the
// right edge resizes it, a drag moves it; a press on a field of the filter bar edits the field.
#pragma once

#include <wx/event.h>

#include "toolkit/grid/filter_fields.h"
#include "toolkit/grid/grid_state.h"
#include "toolkit/grid/grid_view.h"

class GridHeaderInput {
 public:
  GridHeaderInput(CQORPGridCtrl& owner, GridState& state, GridFilterBar& filters)
      : Owner(owner), State(state), Filters(filters) {}

  // The view must outlive the input's use.
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
  GridView* View = nullptr;

  // From press to release; x is that of the ColumnStrip.
  Action Doing = Action::None;
  wxWindow* Captured = nullptr;
  int Column = -1;
  int PressedX = 0;
  int PressedWidth = 0;
};

// GridHeaderInput: what the mouse does to the headers of a grid: a click sorts, with Ctrl it selects the column, the
// right edge resizes, a drag moves the column, among the locked ones as a locked one. A press on a field of the filter
// bar edits it. Painting is not here: grid_painting.h.
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
  // A window that headers are painted in.
  void Attach(wxWindow& header);
  // True for a key of its own.
  bool OnKey(const wxKeyEvent& event);
  // Without a current column in view the first one becomes it.
  void EnsureCurrentColumn();
  // Forgets what the button was pressed on.
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
  int PlaceUnder(int x) const;     // -1 for none
  int PlaceOfEdgeAt(int x) const;  // of the column that ends there; -1 for none
  int DropPlaceAt(int x) const;

  CQORPGridCtrl& Owner;
  GridState& State;
  GridFilterBar& Filters;
  GridView* View = nullptr;

  // From press to release; x counts along the strip of all headers.
  Action Doing = Action::None;
  wxWindow* Captured = nullptr;
  int Column = -1;
  int PressedX = 0;
  int PressedWidth = 0;
};

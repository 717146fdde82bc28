// GridHeader: paints the header of a grid: titles, sort marks with their priority, the place where a dragged column
// would go, and the narrow header of the rows. It paints into the upper part of the space that wxGrid has for labels,
// so that a row of fields can stand in the lower one. What a click does is not here: grid_header_input.h. Used on the
// calling thread of the windows only.
#pragma once

#include <wx/dc.h>

#include "toolkit/grid_cells.h"
#include "toolkit/grid_state.h"

class GridHeader {
 public:
  GridHeader(const wxWindow& owner, const GridState& state) : Owner(owner), State(state) {}

  int HeaderHeight(int textHeight) const { return textHeight + Owner.FromDIP(10); }
  int RowHeight(int textHeight) const { return textHeight + Owner.FromDIP(5); }
  int RowHeaderWidth() const { return Owner.FromDIP(18); }
  void FontChanged() { Titles.Forget(); }

  // In the font of the device.
  void DrawColumn(wxDC& dc, const wxRect& rect, int column, int place);
  void DrawRow(wxDC& dc, const wxRect& rect, bool current) const;
  void DrawCorner(wxDC& dc, const wxRect& rect) const;

 private:
  void DrawFace(wxDC& dc, const wxRect& rect, ColorRef color) const;
  // Gives back the width that it took at the right.
  int DrawSortMark(wxDC& dc, const wxRect& rect, int column) const;
  void DrawDropMark(wxDC& dc, const wxRect& rect, int place) const;

  const wxWindow& Owner;
  const GridState& State;
  FittedTexts Titles;
};

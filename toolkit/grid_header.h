// GridHeader: paints the header of a grid: titles, marks of filter and sort with its priority, the place where a
// dragged column would go, the fields of the filter bar, and the narrow header of the rows. Titles and fields share the
// space that wxGrid has for labels. What a click does is not here: grid_header_input.h, filter_bar.h. Used on the
// calling thread of the windows only.
#pragma once

#include <wx/dc.h>

#include "toolkit/grid_cells.h"
#include "toolkit/grid_state.h"

class GridHeader {
 public:
  GridHeader(const wxWindow& owner, const GridState& state) : Owner(owner), State(state) {}

  int HeaderHeight(int textHeight) const { return textHeight + Owner.FromDIP(10); }
  int FieldHeight(int textHeight) const { return textHeight + Owner.FromDIP(7); }
  int RowHeight(int textHeight) const { return textHeight + Owner.FromDIP(5); }
  int RowHeaderWidth() const { return Owner.FromDIP(18); }
  void FontChanged() { Titles.Forget(); }

  // In the font of the device.
  void DrawColumn(wxDC& dc, const wxRect& rect, int column, int place);
  void DrawField(wxDC& dc, const wxRect& rect, int column);
  void DrawRow(wxDC& dc, const wxRect& rect, bool current) const;
  void DrawCorner(wxDC& dc, const wxRect& rect) const;

 private:
  void DrawFace(wxDC& dc, const wxRect& rect, ColorRef color) const;
  void DrawTitle(wxDC& dc, const wxRect& rect, int column);
  // These give back the width that they took at the right.
  int DrawSortMark(wxDC& dc, const wxRect& rect, int column) const;
  int DrawFilterMark(wxDC& dc, const wxRect& rect, int column) const;
  void DrawCurrentMark(wxDC& dc, const wxRect& rect, int column) const;
  void DrawDropMark(wxDC& dc, const wxRect& rect, int place) const;

  const wxWindow& Owner;
  const GridState& State;
  FittedTexts Titles;
};

// GridHeader: paints the header of a grid: titles, marks of filter and sort with its priority, the place where a
// dragged column would go, the fields of the filter bar, and the narrow header of the rows. Titles and fields share the
// space that wxGrid has for labels. What a click does is not here: grid_header_input.h, filter_fields.h.
#pragma once

#include <wx/dc.h>
#include <wx/grid.h>

#include <string>
#include <unordered_map>

#include "toolkit/grid/grid_state.h"
#include "toolkit/system/make_child.h"

// GridCells: paints the cells of a grid. FittedTexts: texts cut to the width of their cell.

// Promises: a text that is too long for its width ends in an ellipsis; control characters become blanks.
//
// Measuring a text costs as much as drawing it, so what was found is kept, up to a bound, by text and width.
class FittedTexts {
 public:
  struct Fitted {
    wxString Text;
    wxSize SizePx;
  };
  // In the font that the device has now.
  const Fitted& Fit(wxDC& dc, const std::wstring& text, int widthPx);
  void Forget() { Known.clear(); }

 private:
  std::unordered_map<std::wstring, Fitted> Known;  // by text and, as a last character, width
};

class GridCells : public wxGridCellRenderer {
 public:
  GridCells(const CQORPGridCtrl& owner, GridState& state, GridTable& table)
      : Owner(owner), State(state), Table(table) {}

  void Draw(wxGrid& grid, wxGridCellAttr& attr, wxDC& dc, const wxRect& rect, int row, int place,
            bool isSelected) override;
  wxSize GetBestSize(wxGrid& grid, wxGridCellAttr& attr, wxDC& dc, int row, int place) override;
  wxGridCellRenderer* Clone() const override { return &MakeChild<GridCells>(Owner, State, Table); }
  void FontChanged() { Texts.Forget(); }

 private:
  bool IsSelected(int row, int column) const;
  CellMarks MarksOf(int row, int column) const;
  void DrawText(wxDC& dc, const wxRect& cell, const std::wstring& text, int align);
  void DrawFrame(wxDC& dc, const wxRect& cell, int row, int column) const;

  const CQORPGridCtrl& Owner;
  GridState& State;
  GridTable& Table;
  FittedTexts Texts;
};

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

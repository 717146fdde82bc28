// The painting of a grid. GridHeader paints titles, marks of filter and sort, the drop mark of a dragged column, the
// fields of the filter bar, row headers, and why a grid is empty; titles and fields share the label area of wxGrid.
// GridCells paints cells.
#pragma once

#include <wx/dc.h>
#include <wx/grid.h>

#include <string>
#include <unordered_map>

#include "toolkit/grid/grid_state.h"
#include "toolkit/system/make_child.h"

// FittedTexts: texts cut to a width. A text that is too long ends in an ellipsis; control characters become blanks.
//
// Measuring a text costs as much as drawing it, so results are cached by text and width, up to a limit.
class FittedTexts {
 public:
  struct Fitted {
    wxString Text;
    wxSize SizePx;
  };
  // In the present font of the device.
  const Fitted& Fit(wxDC& dc, const std::wstring& text, int widthPx);
  void Forget() { Known.clear(); }

 private:
  std::unordered_map<std::wstring, Fitted> Known;  // by text followed by the width as a character
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
  CellMarks MarksOf(int row, int column, const std::wstring& text) const;
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
  // The whole area of the rows, with why there are none.
  void DrawEmpty(wxDC& dc, const wxRect& rect, const std::wstring& text);

 private:
  void DrawFace(wxDC& dc, const wxRect& rect, ColorRef color) const;
  void DrawTitle(wxDC& dc, const wxRect& rect, int column);
  // These return the width that they used at the right.
  int DrawSortMark(wxDC& dc, const wxRect& rect, int column) const;
  int DrawFilterMark(wxDC& dc, const wxRect& rect, int column) const;
  void DrawCurrentMark(wxDC& dc, const wxRect& rect, int column) const;
  void DrawDropMark(wxDC& dc, const wxRect& rect, int place) const;

  const wxWindow& Owner;
  const GridState& State;
  FittedTexts Titles;
};

// GridCells: paints the cells of a grid. FittedTexts: texts cut to the width of their cell. Not the header:
// grid_header.h. Used on the calling thread of the windows only.
#pragma once

#include <wx/grid.h>

#include <string>
#include <unordered_map>

#include "toolkit/grid_state.h"
#include "toolkit/grid_table.h"

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
  wxGridCellRenderer* Clone() const override { return new GridCells(Owner, State, Table); }
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

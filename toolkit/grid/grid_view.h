// GridView: the wxGrid inside a grid, used as scroller and painter: it shows the visible columns in the order of the
// screen, keeps the first of them still, and keeps the rows in view where they are when others come in on top. What
// mouse and keys do is not here: grid_rows_input.h, grid_header_input.h. wxGrid's own column order, hidden columns,
// selection, cursor, editors and native header are not used: they do not work together.
#pragma once

#include <wx/grid.h>

#include <functional>

#include "toolkit/grid/grid_painting.h"
#include "toolkit/grid/grid_state.h"
#include "toolkit/model/column_strip.h"

class GridView : public wxGrid {
 public:
  // Told of each pair of windows, that of the rows and that of their header, when it is made, before the frozen pair
  // goes, and when columns are elsewhere, also by scrolling, or look otherwise.
  struct Listener {
    std::function<void(wxWindow& rows, wxWindow& header)> WindowsMade;
    std::function<void()> FrozenWindowsGo;
    std::function<void()> ColumnsMoved;
  };

  GridView(CQORPGridCtrl& owner, GridState& state, Listener listener);

  // Brings columns, widths, header and frozen part up to what the state says.
  void ApplyState();
  void ApplyWidth(int column);
  void SetRows(int rows, int inserted, int firstInserted);
  void SetFontAndSizes(const wxFont& font);
  void ThemeChanged();
  void RepaintRows();
  void RepaintRow(int row);  // with its neighbours, whose frames may change
  void RepaintHeader();

  int GetFirstRow() const;
  int CountFullRows() const;
  void ShowRow(int row);
  void ShowColumn(int column);
  void ScrollColumns(int steps);
  // The row at that height of a window of rows, also above, below and behind all rows: then none of them.
  int RowAtHeight(int y) const;

  // The headers as the user sees them now.
  ColumnStrip Strip() const;
  // From an x of a header window to that of the strip.
  int StripX(const wxWindow& header, int x) const;
  int StripWidth() const;

  GridTable& Table() const { return *Cells.Table; }
  wxWindow* RowsWindow(int column) const;
  wxWindow* HeaderWindow(int column) const;
  wxRect CellRect(int row, int column) const;
  wxRect HeaderRect(int column) const;
  wxRect FilterRect(int column) const;
  // The whole field of a column that is shown, in view or not.
  wxRect FieldSpace(int column) const;
  // Headers end and the fields of the filter bar begin at that height.
  int TitleHeight() const { return TitlePx; }

  void ScrollWindow(int dx, int dy, const wxRect* rect) override;
  wxGridCellRenderer* GetDefaultRendererForCell(int row, int place) const override;
  void DrawColLabel(wxDC& dc, int place) override;
  void DrawRowLabel(wxDC& dc, int row) override;
  void DrawCornerLabel(wxDC& dc) override;
  void DrawCellHighlight(wxDC&, const wxGridCellAttr*) override {}

 private:
  struct Parts {
    GridTable* Table = nullptr;     // wxGrid deletes it
    GridCells* Renderer = nullptr;  // counts its users
  };
  bool IsFrozenPlace(int place) const { return place >= 0 && place < m_numFrozenCols; }
  void SetWidth(int column);
  wxRect InView(int column, wxRect rect) const;
  wxRect SpaceOf(int column, int top, int height) const;
  int WantedFrozen() const;
  std::vector<int> ColumnWidths() const;
  void ApplyFreeze();
  void FreezeQuickly(int count);
  void ApplyHeaderSizes();

  CQORPGridCtrl& Owner;
  GridState& State;
  Listener Told;
  Parts Cells;
  GridHeader Header;
  int TitlePx = 0;  // 0 where hidden
  int FieldPx = 0;
};

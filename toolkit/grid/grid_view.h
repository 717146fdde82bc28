// GridView: the wxGrid inside a grid, which scrolls and paints: the visible columns in display order, of which the
// first may be frozen. The rows in view stay in place if rows are inserted above them. Column order, hidden columns,
// selection, cursor, editors and native header of wxGrid are not used, as they do not work together.
#pragma once

#include <wx/grid.h>

#include <functional>

#include "toolkit/grid/grid_painting.h"
#include "toolkit/grid/grid_state.h"
#include "toolkit/model/columns_info.h"

class GridView : public wxGrid {
 public:
  // Called for each pair of windows, rows and header, when it is made; before the frozen pair is destroyed; and after
  // columns moved, were scrolled or changed their look.
  struct Listener {
    std::function<void(wxWindow& rows, wxWindow& header)> WindowsMade;
    std::function<void()> FrozenWindowsGo;
    std::function<void()> ColumnsMoved;
  };

  GridView(CQORPGridCtrl& owner, GridState& state, Listener listener);

  // Updates columns, widths, header and frozen part from the state.
  void ApplyState();
  void ApplyWidth(int column);
  void SetRows(int rows, int inserted, int firstInserted);
  void SetFontAndSizes(const wxFont& font);
  void ThemeChanged();
  void RepaintRows();
  void RepaintRow(int row);  // and its neighbours, whose frames may change
  void RepaintHeader();

  int GetFirstRow() const;
  int CountFullRows() const;
  void ShowRow(int row);
  void ShowColumn(int column);
  void ScrollColumns(int steps);
  // The row at y of a window of rows, which may be above the first or below the last row.
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
  // The whole field of a visible column, also if it is scrolled out of view.
  wxRect FieldSpace(int column) const;
  // The height of a header without its field.
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
  void TellWhyEmpty();
  void OnPaintRows(wxPaintEvent& event);

  CQORPGridCtrl& Owner;
  GridState& State;
  Listener Told;
  Parts Cells;
  GridHeader Header;
  int TitlePx = 0;  // 0 if hidden
  int FieldPx = 0;
};

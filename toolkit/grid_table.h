// GridTable: what wxGrid sees of a grid: so many rows, and the visible columns in the order of the screen. It holds no
// cell: a value is asked for when it is painted. Used on the calling thread of the windows only.
#pragma once

#include <wx/grid.h>

#include <vector>

#include "toolkit/grid_state.h"

class GridTable : public wxGridTableBase {
 public:
  explicit GridTable(GridState& state) : State(state) {}

  // The columns as they stand on the screen now; a place is an index into them.
  const std::vector<int>& Columns() const noexcept { return Shown; }
  int ColumnAt(int place) const;
  int PlaceOf(int column) const;  // -1 for one that is not shown

  // The next two tell wxGrid what changed.
  void ShowColumns(std::vector<int> columns);
  void SetRows(int rows, int inserted, int firstInserted);

  // Asks the callback. The cell is valid until the next call.
  const CQORPGridCell& Cell(int row, int column);

  int GetNumberRows() override { return Rows; }
  int GetNumberCols() override { return static_cast<int>(Shown.size()); }
  wxString GetValue(int row, int place) override { return Cell(row, ColumnAt(place)).Text; }
  void SetValue(int, int, const wxString&) override {}
  // An empty cell would have its neighbours asked for text that flows over.
  bool IsEmptyCell(int, int) override { return false; }
  wxGridCellAttr* GetAttr(int, int, wxGridCellAttr::wxAttrKind) override { return nullptr; }
  bool CanHaveAttributes() override { return false; }

 private:
  void Tell(int message, int first, int second = -1);

  GridState& State;
  std::vector<int> Shown;
  int Rows = 0;
  CQORPGridCell Scratch;
};

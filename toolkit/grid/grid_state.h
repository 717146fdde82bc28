// GridState: the data that the parts of one grid share: columns, selection, options, and the drag in progress. The
// control owns it.
#pragma once

#include <wx/grid.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "foundations/text_tools.h"
#include "toolkit/grid/grid_ctrl.h"
#include "toolkit/model/cell_colors.h"
#include "toolkit/model/columns_info.h"
#include "toolkit/model/grid_search.h"
#include "toolkit/model/row_selection.h"

struct GridFilters {
  std::wstring TextOf(int column) const {
    const auto at = Texts.find(column);
    return at == Texts.end() ? std::wstring() : at->second;
  }

  bool Shown = false;
  std::wstring Prompt;                // in an empty field
  std::map<int, std::wstring> Texts;  // by column; without empty texts
  int LastEdited = -1;
};

// What is searched for, and the cell that was found last.
struct GridFound {
  // That cell, as long as it shows the text.
  bool Marks(int row, int column, const std::wstring& text) const {
    return Shown && Cell == GridCellPlace{row, column} && LowerWide(text).find(Wanted) != std::wstring::npos;
  }

  bool Shown = false;
  std::wstring Wanted;  // in lower case
  GridCellPlace Cell;
};

struct GridState {
  CQORPGridColumnsInfo Columns;
  RowSelection Selection;
  CQORPGridCtrl::DisplayCallback Display;
  GridTheme Theme;
  GridFilters Filters;
  GridFound Find;

  bool MultipleSort = false;
  bool HeaderShown = true;
  bool RowHeaderShown = true;
  bool GridLines = true;
  bool MarkSorted = false;
  bool WholeRow = true;
  bool Alternate = false;
  int FreezeCount = 0;
  int CurrentColumn = -1;

  int DraggedColumn = -1;
  int DropPlace = -1;  // it goes before the column at this place
};

// GridTable: the table of the wxGrid, with the visible columns in display order. It stores no cells, but asks for each
// one when it is painted.
class GridTable : public wxGridTableBase {
 public:
  explicit GridTable(GridState& state) : State(state) {}

  // The columns in display order; a place is an index into them.
  const std::vector<int>& Columns() const noexcept { return Shown; }
  int ColumnAt(int place) const;
  int PlaceOf(int column) const;  // -1 for a hidden one

  // These two notify wxGrid.
  void ShowColumns(std::vector<int> columns);
  void SetRows(int rows, int inserted, int firstInserted);

  // Asks the callback. The cell is valid until the next call.
  const CQORPGridCell& Cell(int row, int column);

  int GetNumberRows() override { return Rows; }
  int GetNumberCols() override { return static_cast<int>(Shown.size()); }
  wxString GetValue(int row, int place) override { return Cell(row, ColumnAt(place)).Text; }
  void SetValue(int, int, const wxString&) override {}
  // If a cell is empty, wxGrid asks its neighbours for overflowing text.
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

inline int GridTable::ColumnAt(int place) const {
  return place >= 0 && place < static_cast<int>(Shown.size()) ? Shown[static_cast<std::size_t>(place)] : -1;
}

inline int GridTable::PlaceOf(int column) const {
  const auto at = std::ranges::find(Shown, column);
  return at == Shown.end() ? -1 : static_cast<int>(at - Shown.begin());
}

inline void GridTable::Tell(int message, int first, int second) {
  wxGridTableMessage change(this, message, first, second);
  GetView()->ProcessTableMessage(change);
}

inline void GridTable::ShowColumns(std::vector<int> columns) {
  const int before = GetNumberCols();
  Shown = std::move(columns);
  const int now = GetNumberCols();
  if (now > before) Tell(wxGRIDTABLE_NOTIFY_COLS_APPENDED, now - before);
  if (now < before) Tell(wxGRIDTABLE_NOTIFY_COLS_DELETED, now, before - now);
}

inline void GridTable::SetRows(int rows, int inserted, int firstInserted) {
  if (inserted > 0) {
    Rows += inserted;
    Tell(wxGRIDTABLE_NOTIFY_ROWS_INSERTED, firstInserted, inserted);
  }
  const int before = Rows;
  Rows = rows;
  if (rows > before) Tell(wxGRIDTABLE_NOTIFY_ROWS_APPENDED, rows - before);
  if (rows < before) Tell(wxGRIDTABLE_NOTIFY_ROWS_DELETED, rows, before - rows);
}

inline const CQORPGridCell& GridTable::Cell(int row, int column) {
  Scratch.Text.clear();
  Scratch.Background.reset();
  Scratch.TextColor.reset();
  if (State.Display && column >= 0 && !State.Display(row, column, Scratch)) Scratch = {};
  return Scratch;
}

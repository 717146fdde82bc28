#include "toolkit/grid/grid_state.h"

#include <algorithm>

int GridTable::ColumnAt(int place) const {
  return place >= 0 && place < static_cast<int>(Shown.size()) ? Shown[static_cast<std::size_t>(place)] : -1;
}

int GridTable::PlaceOf(int column) const {
  const auto at = std::ranges::find(Shown, column);
  return at == Shown.end() ? -1 : static_cast<int>(at - Shown.begin());
}

void GridTable::Tell(int message, int first, int second) {
  wxGridTableMessage change(this, message, first, second);
  GetView()->ProcessTableMessage(change);
}

void GridTable::ShowColumns(std::vector<int> columns) {
  const int before = GetNumberCols();
  Shown = std::move(columns);
  const int now = GetNumberCols();
  if (now > before) Tell(wxGRIDTABLE_NOTIFY_COLS_APPENDED, now - before);
  if (now < before) Tell(wxGRIDTABLE_NOTIFY_COLS_DELETED, now, before - now);
}

void GridTable::SetRows(int rows, int inserted, int firstInserted) {
  if (inserted > 0) {
    Rows += inserted;
    Tell(wxGRIDTABLE_NOTIFY_ROWS_INSERTED, firstInserted, inserted);
  }
  const int before = Rows;
  Rows = rows;
  if (rows > before) Tell(wxGRIDTABLE_NOTIFY_ROWS_APPENDED, rows - before);
  if (rows < before) Tell(wxGRIDTABLE_NOTIFY_ROWS_DELETED, rows, before - rows);
}

const CQORPGridCell& GridTable::Cell(int row, int column) {
  Scratch.Text.clear();
  Scratch.Background.reset();
  Scratch.TextColor.reset();
  if (State.Display && column >= 0 && !State.Display(row, column, Scratch)) Scratch = {};
  return Scratch;
}

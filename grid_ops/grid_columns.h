// What the writers of a book's files ask the grid for, as values: its columns and the rows that are selected. Not a
// control and not the table of columns: trade_columns.h. Plain data.
#pragma once

#include <string>
#include <vector>

// One column by its index, which never changes; Order is its place on the screen.
struct GridColumn {
  std::string Name;  // the title over the column
  bool Visible = true;
  int Order = 0;
  bool Selected = false;
};
using GridColumns = std::vector<GridColumn>;

// Rows that are selected together, both ends included. A range that starts below 0 or ends above its start holds none.
struct GridRowRange {
  int Top = -1;
  int Bottom = -1;
};

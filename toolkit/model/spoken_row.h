// RowSpeech: what a screen reader says of a grid, in short sentences: the current cell first, then what is beside it.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/model/columns_info.h"
#include "toolkit/model/row_selection.h"

// Cell is called only for the current row, once for each visible column; its text is used before the next call.
struct SpokenGrid {
  const CQORPGridColumnsInfo& Columns;
  const RowSelection& Selection;
  int CurrentColumn = -1;
  std::function<std::wstring_view(int row, int column)> Cell;
};

// Another row:         Side: Buy, row 3 of 13,612, Quantity: 2, Price: 1313.25
// Another column:      Price, sorted descending: 1313.25, column 4 of 9
// Other texts:         Quantity: 3, Price: 1313.5
// Another selection:   not selected
//
// Empty cells are left out, except the current one. Rows that are inserted or removed elsewhere say nothing, as the
// current row is compared by its texts; its place is told with the next sentence. A sentence has at most about 500
// characters.
class RowSpeech {
 public:
  // The user has gone to another row: it is said even if it has the texts of the one before.
  void MoveRow() { Moved = true; }
  // Rows were inserted before this one.
  void RowsInserted(int before, int rows);
  // The next sentence says everything.
  void Forget() { Known = false; }
  // What differs from what was said; empty if nothing does.
  std::wstring Next(const SpokenGrid& grid);

 private:
  struct Cell {
    int Column = -1;
    std::wstring Text;
    bool operator==(const Cell&) const = default;
  };
  struct Look {
    int Row = -1;
    bool Selected = false;
    std::wstring Title;       // of the current column, with its sort; empty without one
    std::wstring Place;       // of that column
    std::vector<Cell> Cells;  // of the current row, in display order
  };
  static Look LookAt(const SpokenGrid& grid);
  static std::wstring Whole(const SpokenGrid& grid, const Look& now, bool withColumn, bool withRow);
  bool IsNew(const Cell& cell) const;
  bool HasNewTexts(const Look& now) const;
  std::wstring Changes(const SpokenGrid& grid, const Look& now) const;

  bool Known = false;
  bool Moved = false;
  Look Last;
};

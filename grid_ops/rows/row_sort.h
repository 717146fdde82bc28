// The order of a book's rows by its sort columns.
#pragma once

#include <span>
#include <vector>

#include "grid_ops/columns/trade_columns.h"

// A sort column and its state: 1 is rising, any other falling.
struct SortState {
  int Column;
  int State;
};

// Stable sort by the first column that differs. Texts compare as bytes up to their NUL, numbers as numbers. About ten
// nanoseconds per record for each eight bytes of column that differ; needs 32 bytes per record.
void SortRows(std::vector<TradeRecord*>& records, std::span<const SortState> sort);

enum class SortStep { Remove, Rising, Falling };

// BookSort: the sort columns of a book with the state of each, which its headers show.
class BookSort {
 public:
  // The state of each column as a profile restored it; columns that sort enter the list in column order.
  void Begin(std::vector<int> states);
  // A click on a header. With multiple sort columns: none, rising, falling, none. Intentional: with a single one the
  // state toggles between rising and falling, and the list stays as it is.
  SortStep Toggle(int column, bool multiple);
  // Removes the columns whose state is 0 now. False if none of the list is.
  bool Keep(std::vector<int> states);

  int StateOf(int column) const noexcept;
  // The list with its states, for the compare.
  std::vector<SortState> States() const;

  std::vector<int> SortColumns;  // in order of priority

 private:
  std::vector<int> ColumnStates;
};

// RowSelection: which rows of a grid are selected and which is the current one, as ranges of row numbers.
#pragma once

#include <vector>

struct RowRange {
  int First = -1;
  int Last = -1;  // included
  bool operator==(const RowRange&) const = default;
};

// Promises: ranges stand in rising order, do not touch each other and lie within the rows; the current row is one of
// the rows, or -1. A row asked for beyond the rows is the nearest one.
//
// Costs: every operation is linear in the number of ranges, Contains in its logarithm; the number of rows plays no
// part. A selection that is being extended is the ranges that were there before and the run from the anchor to the
// current row.
class RowSelection {
 public:
  int GetRows() const noexcept { return Rows; }
  // Rows at the end come or go; selection and current row keep to those that are left.
  void SetRows(int rows);
  // So many new rows before that one: what stands from there on moves down with its row, and none of them is selected.
  void InsertRows(int before, int rows);

  int GetCurrent() const noexcept { return Current; }
  const std::vector<RowRange>& GetRanges() const noexcept { return Ranges; }
  bool Contains(int row) const;

  // The row becomes current; the anchor too, but for Extend and SelectAll.
  void SelectOnly(int row);
  void Toggle(int row);
  void MoveCurrent(int row);  // selects nothing
  // From the anchor to the row; keepOthers leaves what was selected before the anchor was set.
  void Extend(int row, bool keepOthers);
  void SelectAll();  // the current row stays
  void Clear();      // the current row too

 private:
  int Nearest(int row) const;
  void SetCurrent(int row);

  int Rows = 0;
  int Current = -1;
  int Anchor = -1;
  std::vector<RowRange> Ranges;
  std::vector<RowRange> Kept;  // selected when the anchor was set
};

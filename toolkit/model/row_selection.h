// RowSelection: the selected rows of a grid as ranges, and the current row.
#pragma once

#include <vector>

struct RowRange {
  int First = -1;
  int Last = -1;  // included
  bool operator==(const RowRange&) const = default;
};

// Ranges are sorted, do not touch each other and lie within the rows; the current row is one of the rows, or -1. A row
// out of range means the nearest one.
//
// Every operation is linear in the number of ranges, Contains is logarithmic; the number of rows does not matter. An
// extended selection consists of the kept ranges and the range from the anchor to the current row.
class RowSelection {
 public:
  int GetRows() const noexcept { return Rows; }
  // Adds or removes rows at the end; selection and current row are clipped.
  void SetRows(int rows);
  // Inserts unselected rows before that one; selection and current row move with their rows.
  void InsertRows(int before, int rows);

  int GetCurrent() const noexcept { return Current; }
  const std::vector<RowRange>& GetRanges() const noexcept { return Ranges; }
  bool Contains(int row) const;

  // These make the row current and, except Extend and SelectAll, the anchor.
  void SelectOnly(int row);
  void Toggle(int row);
  void MoveCurrent(int row);  // selects nothing
  // Selects from the anchor to the row; keepOthers keeps the ranges from when the anchor was set.
  void Extend(int row, bool keepOthers);
  void SelectAll();  // keeps the current row
  void Clear();      // also the current row

 private:
  int Nearest(int row) const;
  void SetCurrent(int row);

  int Rows = 0;
  int Current = -1;
  int Anchor = -1;
  std::vector<RowRange> Ranges;
  std::vector<RowRange> Kept;  // selected when the anchor was set
};

// SelectionTotals: what the selected rows of a book come to, by side.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "platform/locale.h"

class BookRows;
struct TradeRecord;

// Selected rows, the last one included.
struct RowSpan {
  int First = 0;
  int Last = -1;
  bool operator==(const RowSpan&) const = default;
};

struct SelectionTotals {
  // As BookTotals sums, but quantities do not wrap around, and the average is that of the prices by quantity, whatever
  // the multipliers.
  struct Side {
    std::int64_t Rows = 0;
    std::int64_t Quantity = 0;
    double Amount = 0;    // price times quantity times multiplier
    double Weighted = 0;  // price times quantity
    double Average() const noexcept { return Quantity == 0 ? 0 : Weighted / static_cast<double>(Quantity); }
  };

  // "5 rows", "Buy 3: 1,500 at 101.75, amt 152,625.00" and the same for sells; without sides that have no rows.
  std::vector<std::wstring> Texts(const NumberMarks& marks) const;

  std::int64_t Rows = 0;  // of either side and of none
  Side Buy, Sell;
};

// Rows that do not exist count nothing. About ten milliseconds for a million rows.
SelectionTotals SumSelection(const BookRows& rows, std::span<const RowSpan> selected);

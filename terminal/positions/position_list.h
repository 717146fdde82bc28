// PositionList: the positions of the day as rows of a list, with their texts, values and signs.
#pragma once

#include <span>
#include <string>

#include "terminal/lists/list_source.h"
#include "terminal/positions/position_table.h"

class PositionList : public ListSource {
 public:
  static constexpr std::size_t kClientColumn = 4;  // empty unless rows are by client

  // The ledger must outlive the list.
  explicit PositionList(const TradeLedger& ledger) : Table(ledger) {}

  // The next TakeChanges has other rows.
  void Use(const PositionSettings& settings) { Table.Use(settings); }
  const PositionSettings& Settings() const noexcept { return Table.Settings(); }

  std::span<const ListColumn> Columns() const override;
  ListRow EndRow() const override { return Table.Rows(); }
  std::wstring Text(ListRow row, std::size_t column) const override;
  SheetValue Value(ListRow row, std::size_t column) const override;
  ListChanges TakeChanges() override;

  // Of a net quantity or a profit: -1, 0 or 1. 0 in other columns.
  int SignAt(ListRow row, std::size_t column) const;
  const LedgerSecurity& SecurityAt(ListRow row) const { return Table.SecurityAt(static_cast<std::uint32_t>(row)); }
  PositionSums Sum(std::span<const std::uint32_t> rows) const { return Table.Sum(rows); }
  // Grows with each change.
  std::uint64_t Version() const noexcept { return Changes; }

 private:
  PositionTable Table;
  std::uint64_t Changes = 0;
};

// A profit as lists and sums show it.
std::wstring ProfitText(double profit);
// -1, 0 or 1, of the number as it is shown.
int SignOf(double profit);

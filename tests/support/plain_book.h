// A book without a window: rows, totals and line of totals, as the trade cache tells them.
#pragma once

#include "grid_ops/rows/book_rows.h"
#include "grid_ops/rows/book_totals.h"

class PlainBook : public TradeBook, SecurityMasters {
 public:
  explicit PlainBook(const TradeCache& cache) : Rows(cache) {}
  bool FilterBarActive() const override { return Rows.Filters.Active(); }
  void MakeRoom(std::size_t rows) override { Rows.MakeRoom(rows); }
  bool AdmitRow(TradeRecord& record) override { return Rows.AdmitRow(record); }
  void UpdateTotals(const TradeRecord& record) override { Totals.UpdateTotals(record, Basis(), Line); }
  void RefilterRow(TradeRecord& record) override { Rows.RefilterRow(record); }
  void CopyAllRows(const TradeNumberMap& trades, std::int32_t next) override { Rows.CopyAllRows(trades, next); }
  void ClearRows() override { Rows.ClearRows(); }
  std::optional<double> MultiplierOf(const FilterKey&) const override { return std::nullopt; }

  BookRows Rows;
  BookTotals Totals;
  SummaryLine Line;

 private:
  AverageBasis Basis() const { return {Rows.Filtered, NoKey, NoKey, *this}; }
  static inline const FilterKey NoKey{};
};

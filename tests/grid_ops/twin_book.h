// TwinBook: a book and its slow twin, told the same by a test or by a trade cache, and Desk: a cache with such books.
// Not the rules: those are in grid_ops and, once more, in SlowBook. One thread.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "grid_ops/rows/book_rows.h"
#include "grid_ops/rows/book_totals.h"
#include "tests/grid_ops/slow_book.h"

FilterKey KeyOf(const SlowKey& key);

class TwinBook : public TradeBook {
 public:
  TwinBook(const TradeCache& cache, const SlowMarket& market) : Fast(cache), Slow(cache, market), Market(market) {}

  bool HasGrid() const override { return true; }
  bool HasWindow() const override { return true; }
  bool FilterActive() const override { return Fast.Filters.Active(); }
  void MakeRoom(std::size_t rows) override { Fast.MakeRoom(rows); }
  bool AdmitRow(TradeRecord& record) override;
  void UpdateTotals(const TradeRecord& record) override;
  void RefilterRow(TradeRecord& record) override {
    Both([&](auto& book) { book.RefilterRow(record); });
  }
  void CopyAllRows(const TradeNumberMap& trades, std::int32_t next) override {
    Fast.CopyAllRows(trades, next);
    Slow.CopyAllRows();
  }
  void ClearRows() override {
    Both([](auto& book) { book.ClearRows(); });
  }

  template <typename Act>
  void Both(Act act) {
    act(Fast);
    act(Slow);
  }
  void CollectSecurityRows() {
    Both([](auto& book) { book.CollectSecurityRows(); });
  }
  void RebuildRows() {
    Both([](auto& book) { book.RebuildRows(); });
  }
  void Change(int column, const std::wstring& text) {
    EXPECT_EQ(Fast.OnFilterBarChanged(column, text), Slow.OnFilterBarChanged(column, text));
  }
  void ClearFilters();
  void Sort(const SlowSort& sort);
  // No security: the book is not kept to one.
  void KeepTo(const SlowKey& security);
  void CountTotals(bool showAll);

  // Empty, or the first difference; the line counts as read.
  std::string Difference();
  // Rows as key=id, keys near the highest as ^ and their distance from it, and the next key.
  std::string RowText() const;
  std::string LineText() const;

 private:
  template <typename Act>
  void Total(Act act);

  BookRows Fast;
  SlowBook Slow;
  const SlowMarket& Market;
  BookTotals Totals;
  SummaryLine Line;
};

struct Desk {
  CQORTradeImpl Decoder;
  TradeBooks Books;
  TradeCache Cache{Decoder, Books, {}};
  SlowMarket Market;
  std::vector<std::unique_ptr<TwinBook>> Twins;
  unsigned Executions = 0;

  Desk() { Cache.AutoTradeWriteCSV = false; }
  TwinBook& Open(const std::string& key);
  void Play(unsigned number, const std::string& fields = {});
  // A live trade, each with an execution of its own.
  void Trade(std::uint32_t id, const std::string& fields);
};

// TwinBook: a book and its SlowBook, driven alike by a test or a trade cache. Desk: a cache with such books.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "grid_ops/rows/book_rows.h"
#include "grid_ops/rows/book_totals.h"
#include "tests/grid_ops/slow_book.h"
#include "tests/support/wire_bytes.h"

FilterKey KeyOf(const SlowKey& key);

// Delivers a whole message to the cache: 8111, 8112, 9101, 9112 or 30022.
void DeliverMessage(TradeCache& cache, std::string_view message);

class TwinBook : public TradeBook {
 public:
  TwinBook(const TradeCache& cache, const SlowMarket& market) : Fast(cache), Slow(cache, market), Market(market) {}

  bool FilterBarActive() const override { return Fast.Filters.Active(); }
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
  void Change(int column, const std::wstring& text) {
    EXPECT_EQ(Fast.OnFilterBarChanged(column, text), Slow.OnFilterBarChanged(column, text));
  }
  void ClearFilters();
  void Sort(const SlowSort& sort);
  // An empty key makes it a book of all securities.
  void KeepTo(const SlowKey& security);
  void CountTotals(bool showAll);

  // The first difference, or empty.
  std::string Difference();
  // Rows as key=id and the next key; a key near the highest is ^ and its distance from it.
  std::string RowText() const;
  // The eight controls in order: text, + or - for the colour, * if changed since the last call.
  std::string TakeLine();

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
  void Play(unsigned number, const std::string& fields = {}) { DeliverMessage(Cache, WireMessage(number, fields)); }
  // A live trade with a new execution.
  void Trade(std::uint32_t id, const std::string& fields);
};

// Filter, sort and totals of a book of a million trades, compared with SQLite and with a walk that only reads the
// fields.
#include <benchmark/benchmark.h>

#include <numeric>

#include "benchmarks/million_trades.h"
#include "benchmarks/sqlite_peer.h"
#include "grid_ops/rows/book_rows.h"
#include "grid_ops/rows/book_totals.h"
#include "grid_ops/rows/record_search.h"
#include "grid_ops/rows/selection_totals.h"

namespace {

constexpr int kSymbol = TradeColumnIndex("colSymbol"), kPrice = TradeColumnIndex("colPrice"),
              kClient = TradeColumnIndex("colClientID"), kSide = TradeColumnIndex("colSide");

BookRows& Book() {
  static BookRows book(MillionTrades());
  return book;
}

// An item is a walk over the whole book.
void SetWalks(benchmark::State& state) {
  state.SetItemsProcessed(state.iterations());
}

using FieldText = std::pair<int, const wchar_t*>;

void FilterBook(benchmark::State& state, const std::vector<FieldText>& fields) {
  BookRows& book = Book();
  book.Filters.Clear();
  for (const auto& [column, text] : fields) book.Filters.Change(column, text);
  for (auto _ : state) book.OnFilterBarUpdate();
  state.counters["rows"] = static_cast<double>(book.RowCount());
  book.Filters.Clear();
  SetWalks(state);
}

void SortBook(benchmark::State& state, const std::vector<SortState>& sort) {
  BookRows& book = Book();
  for (auto _ : state) {
    state.PauseTiming();
    book.CopyAllRows();
    state.ResumeTiming();
    book.ResortRows(sort);
  }
  SetWalks(state);
}

void AskSqlite(benchmark::State& state, const std::string& query) {
  SqlitePeer& peer = SqlitePeer::Get();
  std::size_t rows = 0;
  for (auto _ : state) rows = peer.TakeRows(query);
  state.counters["rows"] = static_cast<double>(rows);
  SetWalks(state);
}

// The rows with a text in any column.
std::string FindQuery(const std::string& text) {
  std::string query = "SELECT rowid FROM trades WHERE ";
  for (int column = 0; column < kTradeColumnCount; ++column)
    query += (column == 0 ? "\"" : " OR \"") + std::string(kTradeColumns[column].Title) + "\" LIKE '%" + text + "%'";
  return query;
}

// The lower bound of filter and sort: reads the field of each record once, prefetched.
void WalkField(benchmark::State& state, const ColumnField& field) {
  const std::vector<TradeRecord*>& trades = MillionTrades().TradeNumbers.All();
  std::uint64_t sum = 0;
  for (auto _ : state)
    for (std::size_t i = 0; i < trades.size(); ++i) {
      if (i + 24 < trades.size()) __builtin_prefetch(FieldPlace(*trades[i + 24], field));
      sum += FieldAs<std::uint64_t>(*trades[i], field);
    }
  benchmark::DoNotOptimize(sum);
  SetWalks(state);
}

// Texts that no row has, in all 37 columns.
void FindInBook(benchmark::State& state, const wchar_t* text) {
  BookRows& book = Book();
  book.CopyAllRows();
  std::vector<int> columns(kTradeColumnCount);
  std::iota(columns.begin(), columns.end(), 0);
  for (auto _ : state) {
    RecordSearch search(text, columns, "Default");
    if (FindRow(book, search, 0, 1, static_cast<int>(book.RowCount())) >= 0) state.SkipWithError("a row has the text");
  }
  SetWalks(state);
}

// The lower bound of a search: reads each line of memory of all records once.
void WalkRecords(benchmark::State& state) {
  const std::vector<TradeRecord*>& trades = MillionTrades().TradeNumbers.All();
  std::uint64_t sum = 0;
  for (auto _ : state)
    for (const TradeRecord* record : trades)
      for (std::size_t at = 0; at + 8 <= sizeof *record; at += 64)
        sum += LoadValue<std::uint64_t>(reinterpret_cast<const char*>(record) + at);
  benchmark::DoNotOptimize(sum);
  SetWalks(state);
}

// What a library offers: the bytes of all records, case and meaning apart.
void FindBytes(benchmark::State& state, const char* text) {
  const std::vector<TradeRecord*>& trades = MillionTrades().TradeNumbers.All();
  std::size_t found = 0;
  for (auto _ : state)
    for (const TradeRecord* record : trades)
      found +=
          std::string_view(reinterpret_cast<const char*>(record), sizeof *record).find(text) != std::string_view::npos;
  benchmark::DoNotOptimize(found);
  SetWalks(state);
}

class NoMasters : public SecurityMasters {
 public:
  std::optional<double> MultiplierOf(const FilterKey&) const override { return {}; }
};

void RecountTotals(benchmark::State& state) {
  BookRows& book = Book();
  book.CopyAllRows();
  BookTotals totals;
  SummaryLine line;
  const NoMasters masters;
  const FilterKey none{};
  for (auto _ : state) totals.RecountTotals(book.Rows, {false, none, none, masters}, line);
  if (totals.BuyQty == 0) state.SkipWithError("no trade was counted");
  SetWalks(state);
}

void SumSelected(benchmark::State& state) {
  BookRows& book = Book();
  book.CopyAllRows();
  const RowSpan all{0, static_cast<int>(book.RowCount()) - 1};
  for (auto _ : state)
    if (SumSelection(book, std::span(&all, 1)).Rows == 0) state.SkipWithError("no row was counted");
  SetWalks(state);
}

// A thousand rows at the beginning, in the middle or at the end, because the place of a record in its page affects the
// copy.
void CopyRecord(benchmark::State& state, std::size_t firstRow) {
  constexpr std::size_t kAround = 1000;
  BookRows& book = Book();
  book.CopyAllRows();
  for (auto _ : state)
    for (std::size_t i = 0; i < kAround; ++i) {
      const TradeRecord* record = book.RecordAt(firstRow + i);
      if (record == nullptr) state.SkipWithError("the row is not there");
      TradeRecord copy = *record;
      benchmark::DoNotOptimize(copy);
    }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kAround));
}

const std::vector<FieldText> kOneText = {{kSymbol, L"nif"}};
const std::vector<FieldText> kThreeTexts = {{kSymbol, L"n"}, {kSide, L"buy"}, {kClient, L"c01"}};

BENCHMARK_CAPTURE(FilterBook, OneText, kOneText)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FilterBook, ThreeTexts, kThreeTexts)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(AskSqlite, FilterOneText, "SELECT rowid FROM trades WHERE Symbol LIKE '%nif%'")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(AskSqlite, FilterThreeTexts,
                  "SELECT rowid FROM trades WHERE Symbol LIKE '%n%' AND Side LIKE '%buy%' AND ClientID LIKE '%c01%'")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(WalkField, Symbol, kTradeColumns[kSymbol].Value)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(WalkField, Price, kTradeColumns[kPrice].Value)->Unit(benchmark::kMillisecond);

BENCHMARK_CAPTURE(FindInBook, Letters, L"dealerx")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FindInBook, Digits, L"77777777")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FindInBook, Name, L"buyx")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FindBytes, Letters, "dealerx")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FindBytes, Digits, "77777777")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(AskSqlite, FindLetters, FindQuery("dealerx"))->Unit(benchmark::kMillisecond);
BENCHMARK(WalkRecords)->Unit(benchmark::kMillisecond);

const std::vector<SortState> kByPrice = {{kPrice, 1}};
const std::vector<SortState> kBySymbol = {{kSymbol, 1}};
const std::vector<SortState> kByBoth = {{kSymbol, 1}, {kPrice, 1}};

BENCHMARK_CAPTURE(SortBook, Price, kByPrice)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SortBook, Symbol, kBySymbol)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SortBook, SymbolAndPrice, kByBoth)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(AskSqlite, SortPrice, "SELECT rowid FROM trades ORDER BY Price")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(AskSqlite, SortSymbol, "SELECT rowid FROM trades ORDER BY Symbol")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(AskSqlite, SortSymbolAndPrice, "SELECT rowid FROM trades ORDER BY Symbol, Price")
    ->Unit(benchmark::kMillisecond);

BENCHMARK(RecountTotals)->Unit(benchmark::kMillisecond);
BENCHMARK(SumSelected)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(AskSqlite, Totals,
                  "SELECT sum(Quantity), sum(Quantity * Price * Multiplier) FROM trades GROUP BY Side")
    ->Unit(benchmark::kMillisecond);

BENCHMARK_CAPTURE(CopyRecord, FirstRow, 0);
BENCHMARK_CAPTURE(CopyRecord, MiddleRow, kMillion / 2);
BENCHMARK_CAPTURE(CopyRecord, LastRow, kMillion - 1000);

}  // namespace

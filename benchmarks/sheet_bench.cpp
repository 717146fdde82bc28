// Saved tables of 100,000 rows and eleven columns: the workbook beside the CSV of the same table.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <span>
#include <vector>

#include "benchmarks/bench_process.h"
#include "benchmarks/million_trades.h"
#include "platform/locale.h"
#include "terminal/sheets/sheet.h"

namespace {

constexpr std::size_t kRows = 100'000;

// Trades as a grid of the terminal would give them.
class TradeSheet : public SheetSource {
 public:
  std::size_t Rows() const override { return kRows; }
  std::span<const SheetColumn> Columns() const override { return Heads; }
  SheetValue ValueAt(std::size_t row, std::size_t column) const override {
    if (column == 0) Record = DayRecord(static_cast<std::uint32_t>(row));
    switch (column) {
      case 0:
        return static_cast<std::int64_t>(row) + 1;
      case 1:
        return static_cast<std::int64_t>(row % 86'400);
      case 2:
        return CodePageToWide(Record.Exchange);
      case 3:
        return CodePageToWide(Record.SecurityID);
      case 4:
        return CodePageToWide(Record.Symbol);
      case 5:
        return CodePageToWide(Record.ExchangeOrderNo);
      case 6:
        return CodePageToWide(Record.ExchangeTradeID);
      case 7:
        return CodePageToWide(Record.ClientID);
      case 8:
        return std::int64_t{Record.Quantity};
      case 9:
        return Record.Price;
      default:
        return Record.Price * Record.Quantity;
    }
  }

 private:
  mutable TradeRecord Record{};
  const std::vector<SheetColumn> Heads = {
      {L"No.", SheetKind::Whole, 0, 8},       {L"Time", SheetKind::TimeOfDay, 0, 10},
      {L"Exchange", SheetKind::Text, 0, 10},  {L"Security", SheetKind::Text, 0, 16},
      {L"Symbol", SheetKind::Text, 0, 10},    {L"Order", SheetKind::Text, 0, 16},
      {L"Trade", SheetKind::Text, 0, 12},     {L"Client", SheetKind::Text, 0, 10},
      {L"Quantity", SheetKind::Whole, 0, 10}, {L"Price", SheetKind::Decimal, 2, 12},
      {L"Amount", SheetKind::Decimal, 2, 16},
  };
};

const std::filesystem::path& Folder() {
  static const BenchFolder folder("sheet_bench_");
  return folder.Path;
}

void Save(benchmark::State& state, const char* name) {
  const TradeSheet sheet;
  for (auto _ : state) SaveSheet(sheet, Folder() / name);
  state.counters["MB"] = static_cast<double>(std::filesystem::file_size(Folder() / name)) / 1e6;
  state.SetItemsProcessed(state.iterations());
}

void SaveWorkbook(benchmark::State& state) {
  Save(state, "table.xlsx");
}
void SaveCsv(benchmark::State& state) {
  Save(state, "table.csv");
}

BENCHMARK(SaveWorkbook)->Unit(benchmark::kMillisecond);
BENCHMARK(SaveCsv)->Unit(benchmark::kMillisecond);

}  // namespace

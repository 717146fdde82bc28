// Exports of a million trades: the CSV of all columns, compared with the SQLite shell, and the two exchange trade
// files; each compared with writing the same bytes in blocks. Measures real time, because the system takes most of it.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "benchmarks/bench_process.h"
#include "benchmarks/million_trades.h"
#include "benchmarks/sqlite_peer.h"
#include "grid_ops/columns/trade_columns.h"
#include "grid_ops/exports/csv_export.h"
#include "grid_ops/exports/exchange_files.h"

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kBlockSize = 256 * 1024;
constexpr const char* kLayout =
    "Security name,\r\nBook Type\r\nMarket Type\r\nExchangeTradeID\r\nExchangeOrderNo\r\nSymbol\r\nSecurityType\r\n"
    "OptionType\r\nStrikePrice\r\nExpiryDate\r\nUserID\r\nBranch No\r\nSide\r\nQuantity\r\nPrice\r\nPro/Client\r\n"
    "ClientID\r\nMemberID\r\nOpenClose\r\nExchangeTradeTime";

const fs::path& Folder() {
  static const BenchFolder folder("export_bench_");
  return folder.Path;
}

GridColumns AllColumns() {
  GridColumns columns;
  for (const TradeColumn& column : kTradeColumns)
    columns.push_back({std::string(column.Title), true, static_cast<int>(columns.size()), false});
  return columns;
}

// Runs the export and counts its megabytes; the removal of its files is not measured.
template <typename Export>
void MeasureExport(benchmark::State& state, const fs::path& made, Export run) {
  for (auto _ : state) {
    run();
    state.PauseTiming();
    state.counters["MB"] = 0;
    for (const auto& entry : fs::recursive_directory_iterator(made))
      if (entry.is_regular_file()) state.counters["MB"] += static_cast<double>(entry.file_size()) / 1e6;
    fs::remove_all(made);
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations());
}

void ExportAllColumns(const fs::path& file) {
  static const GridColumns columns = AllColumns();
  fs::create_directories(file.parent_path());
  ExportGridCsv("All Columns", file, {columns, {}, {}, "Default", MillionTrades().LiveTrades});
}

void ExportExchangeFiles() {
  static const GridColumns columns = AllColumns();
  static const PriceDivisors noDivisors;
  std::ofstream(Folder() / "EXCHANGETRADEFORMAT.TXT", std::ios::binary) << kLayout;
  WriteExchangeTradeFiles({columns, MillionTrades().LiveTrades, noDivisors, Folder(), {}, 0});
}

void WriteBlocks(benchmark::State& state, const fs::path& path, const std::string& bytes) {
  const int file = open(path.c_str(), O_CREAT | O_TRUNC | O_WRONLY, 0600);
  for (std::size_t at = 0; at < bytes.size(); at += kBlockSize)
    if (write(file, bytes.data() + at, std::min(kBlockSize, bytes.size() - at)) < 0)
      state.SkipWithError("cannot write");
  close(file);
}

void ExportCsv(benchmark::State& state) {
  MillionTrades();
  MeasureExport(state, Folder() / "csv", [] { ExportAllColumns(Folder() / "csv" / "all.csv"); });
}

void WriteCsvBytes(benchmark::State& state) {
  ExportAllColumns(Folder() / "csv" / "all.csv");
  const std::string bytes = BytesOf(Folder() / "csv" / "all.csv");
  if (static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), '\n')) != kMillion)
    state.SkipWithError("the file does not have a line for each trade");
  MeasureExport(state, Folder() / "csv", [&] {
    fs::create_directories(Folder() / "csv");
    WriteBlocks(state, Folder() / "csv" / "all.csv", bytes);
  });
}

void SqliteShellCsv(benchmark::State& state) {
  const fs::path database = Folder() / "trades.db";
  const fs::path script = Folder() / "export.sql";
  if (!fs::exists(database)) SqlitePeer::Get().SaveTo(database);
  std::ofstream(script) << ".headers on\n.mode csv\n.output " << (Folder() / "csv" / "shell.csv").string()
                        << "\nSELECT * FROM trades;\n";
  const std::string command = "sqlite3 '" + database.string() + "' < '" + script.string() + "'";
  MeasureExport(state, Folder() / "csv", [&] {
    fs::create_directories(Folder() / "csv");
    if (std::system(command.c_str()) != 0) state.SkipWithError("the sqlite3 shell failed");
  });
}

void ExportExchange(benchmark::State& state) {
  MillionTrades();
  MeasureExport(state, Folder() / "ExchangeTradeFormat", ExportExchangeFiles);
}

void WriteExchangeBytes(benchmark::State& state) {
  const fs::path made = Folder() / "ExchangeTradeFormat";
  const std::string name = TradeFileName(kExchangeDate, 0);
  ExportExchangeFiles();
  const std::string derivatives = BytesOf(made / "FO" / name);
  const std::string cash = BytesOf(made / "CM" / name);
  MeasureExport(state, made, [&] {
    fs::create_directories(made);
    WriteBlocks(state, made / "derivatives", derivatives);
    WriteBlocks(state, made / "cash", cash);
  });
}

BENCHMARK(ExportCsv)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(WriteCsvBytes)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(SqliteShellCsv)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1)->Repetitions(3);
BENCHMARK(ExportExchange)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(WriteExchangeBytes)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

// Live trades with the daily file on, beside writing the same lines with one call of the system each.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "benchmarks/sample_messages.h"
#include "trade_data/cache/trade_cache.h"

namespace {

constexpr std::size_t kTrades = 100'000;
constexpr const char* kAllColumns[] = {"Server",
                                       "UserID",
                                       "VELDTradeID",
                                       "VELDOrderID",
                                       "OrderID",
                                       "ExchangeOrderID",
                                       "ExchangeTradeID",
                                       "OrderTime",
                                       "ExchangeOrderTime",
                                       "ExchangeTradeTime",
                                       "Exchange",
                                       "SecurityID",
                                       "Symbol",
                                       "ExpiryDate",
                                       "SecurityType",
                                       "Side",
                                       "OrderType",
                                       "Quantity",
                                       "PendingQuantity",
                                       "Price",
                                       "StrikePrice",
                                       "CTCLId",
                                       "ClientID",
                                       "ReferenceText",
                                       "MemberID",
                                       "StrategyID",
                                       "OptionType",
                                       "ProductType",
                                       "OpenClose",
                                       "ManagerID",
                                       "Pancard",
                                       "TerminalInfo",
                                       "Multiplier",
                                       "AlgoID"};
static_assert(std::size(kAllColumns) == 34);

// A working folder of its own, gone with the program.
class BenchFolder {
 public:
  BenchFolder() : Path(std::filesystem::temp_directory_path() / ("tradebook_bench_" + std::to_string(getpid()))) {
    std::filesystem::create_directories(Path);
    std::ofstream names(Path / "TradeHeaderFile.txt");
    for (const char* name : kAllColumns) names << name << '\n';
  }
  ~BenchFolder() { std::filesystem::remove_all(Path); }
  const std::filesystem::path Path;
};

const std::filesystem::path& Folder() {
  static const BenchFolder folder;
  return folder.Path;
}

void PlayLive(TradeCache& cache) {
  const std::vector<std::uint8_t>& messages = SampleMessages(kTrades, 9101);
  for (std::size_t i = 0; i < kTrades; ++i) {
    CQORPacketReader reader(&messages[i * kSampleMessageSize], kSampleMessageSize);
    OpenSample(reader, 9101);
    cache.OnTrade(reader);
  }
}

// The lines that the live trades leave in the daily file.
std::vector<std::string> DailyLines() {
  CQORTradeImpl decoder;
  const TradeBooks noBooks;
  TradeCache cache(decoder, noBooks, Folder());
  cache.OnDownloadEnd();
  PlayLive(cache);
  std::vector<std::string> lines;
  for (const auto& entry : std::filesystem::directory_iterator(Folder())) {
    if (entry.path().extension() != ".CSV") continue;
    std::ifstream written(entry.path(), std::ios::binary);
    for (std::string line; std::getline(written, line, '\n');) lines.push_back(line + '\n');
  }
  return lines;
}

void LiveWithDailyFile(benchmark::State& state) {
  SampleMessages(kTrades, 9101);
  CQORTradeImpl decoder;
  const TradeBooks noBooks;
  for (auto _ : state) {
    state.PauseTiming();
    TradeCache cache(decoder, noBooks, Folder());
    cache.OnDownloadEnd();
    state.ResumeTiming();
    PlayLive(cache);
    state.PauseTiming();
    if (cache.TradeNumbers.Size() != kTrades) state.SkipWithError("not every trade has a number");
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kTrades));
}

void WriteSameLines(benchmark::State& state) {
  static const std::vector<std::string> lines = DailyLines();
  if (lines.size() != kTrades + 1) state.SkipWithError("the daily file does not have a line for each trade");
  const std::string path = (Folder() / "same_lines.txt").string();
  for (auto _ : state) {
    const int file = open(path.c_str(), O_CREAT | O_TRUNC | O_WRONLY, 0600);
    for (const std::string& line : lines)
      if (write(file, line.data(), line.size()) < 0) state.SkipWithError("cannot write");
    close(file);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kTrades));
}

BENCHMARK(LiveWithDailyFile)->Unit(benchmark::kMillisecond);
BENCHMARK(WriteSameLines)->Unit(benchmark::kMillisecond);

}  // namespace

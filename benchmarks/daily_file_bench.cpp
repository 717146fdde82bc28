// Live trades with the daily file on, compared with one system call per line.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "benchmarks/bench_process.h"
#include "benchmarks/sample_messages.h"
#include "trade_data/cache/trade_cache.h"

namespace {

constexpr std::size_t kTrades = 100'000;
constexpr const char* kHeaderFile =
    "Server\nUserID\nVELDTradeID\nVELDOrderID\nOrderID\nExchangeOrderID\nExchangeTradeID\nOrderTime\nExchangeOrderTime"
    "\n"
    "ExchangeTradeTime\nExchange\nSecurityID\nSymbol\nExpiryDate\nSecurityType\nSide\nOrderType\nQuantity\n"
    "PendingQuantity\nPrice\nStrikePrice\nCTCLId\nClientID\nReferenceText\nMemberID\nStrategyID\nOptionType\n"
    "ProductType\nOpenClose\nManagerID\nPancard\nTerminalInfo\nMultiplier\nAlgoID\n";

// Has a header file with all 34 columns.
const std::filesystem::path& Folder() {
  static const BenchFolder folder("bench_");
  static const bool written = static_cast<bool>(std::ofstream(folder.Path / "TradeHeaderFile.txt") << kHeaderFile);
  if (!written) throw std::runtime_error("the header file cannot be written");
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

// The lines of the live trades in the daily file.
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

// A download of the day: messages 8111, then 8112, without the daily file.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>

#include "benchmarks/bench_process.h"
#include "benchmarks/sample_messages.h"
#include "trade_data/cache/trade_cache.h"

namespace {

constexpr std::size_t kTrades = 1'000'000;

void PlayDownload(TradeCache& cache, const std::uint8_t* messages, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    CQORPacketReader reader(messages + i * kSampleMessageSize, kSampleMessageSize);
    OpenSample(reader, 8111);
    cache.OnTrade(reader);
  }
  cache.OnDownloadEnd();
}

// A million trades in caches of the given size, all kept: any size reads the same messages and fills as much fresh
// memory, so that only the size of the maps differs.
void Download(benchmark::State& state) {
  const auto size = static_cast<std::size_t>(state.range(0));
  const std::vector<std::uint8_t>& messages = SampleMessages(kTrades, 8111);
  CQORTradeImpl decoder;
  const TradeBooks noBooks;
  double bytesPerTrade = 0;  // of the first run; later runs reuse memory of the allocator
  for (auto _ : state) {
    state.PauseTiming();
    std::vector<std::unique_ptr<TradeCache>> caches;
    const double before = ResidentBytes();
    state.ResumeTiming();
    for (std::size_t first = 0; first < kTrades; first += size) {
      caches.push_back(std::make_unique<TradeCache>(decoder, noBooks, "."));
      caches.back()->AutoTradeWriteCSV = false;
      PlayDownload(*caches.back(), &messages[first * kSampleMessageSize], size);
    }
    state.PauseTiming();
    for (const auto& cache : caches)
      if (cache->TradeNumbers.Size() != size) state.SkipWithError("not every trade has a number");
    bytesPerTrade = std::max(bytesPerTrade, (ResidentBytes() - before) / static_cast<double>(kTrades));
    caches.clear();
    state.ResumeTiming();
  }
  state.counters["bytesPerTrade"] = bytesPerTrade;
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kTrades));
}

BENCHMARK(Download)->Arg(kTrades)->Arg(10'000)->Unit(benchmark::kMillisecond);

}  // namespace

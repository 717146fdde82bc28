// A live trade with ten open books, one of them sorted and one filtered, compared with no book: decoded, stored,
// offered to the books and added to their totals, without the daily file.
#include <benchmark/benchmark.h>

#include <memory>

#include "benchmarks/million_trades.h"
#include "benchmarks/sample_messages.h"
#include "tests/support/plain_book.h"

namespace {

constexpr std::size_t kTrades = 100'000;
constexpr std::size_t kBooks = 10;

void LiveTrades(benchmark::State& state, std::size_t books) {
  const std::vector<std::uint8_t>& messages = SampleMessages(kTrades, 9101);
  CQORTradeImpl decoder;
  for (auto _ : state) {
    state.PauseTiming();
    TradeBooks booksByKey;
    TradeCache cache(decoder, booksByKey, ".");
    cache.AutoTradeWriteCSV = false;
    cache.OnDownloadEnd();
    std::vector<std::unique_ptr<PlainBook>> open;
    for (std::size_t i = 0; i < books; ++i) {
      open.push_back(std::make_unique<PlainBook>(cache));
      booksByKey[std::to_string(i)] = open.back().get();
    }
    PlayTrade(cache, DayRecord(static_cast<std::uint32_t>(kTrades)));
    if (books > 1) {
      const SortState byPrice[] = {{TradeColumnIndex("colPrice"), 1}};
      open[0]->Rows.ResortRows(byPrice);
      open[1]->Rows.OnFilterBarChanged(TradeColumnIndex("colSide"), L"buy");
    }
    state.ResumeTiming();
    for (std::size_t i = 0; i < kTrades; ++i) {
      CQORPacketReader reader(&messages[i * kSampleMessageSize], kSampleMessageSize);
      OpenSample(reader, 9101);
      cache.OnTrade(reader);
    }
    state.PauseTiming();
    for (const auto& book : open)
      if (book->Rows.RowCount() < kTrades / 3) state.SkipWithError("a book lacks rows");
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kTrades));
}

BENCHMARK_CAPTURE(LiveTrades, NoBook, 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LiveTrades, TenBooks, kBooks)->Unit(benchmark::kMillisecond);

}  // namespace

// Mapping of execution reports to trade messages, beside QuickFIX, which parses the same texts in the session before
// it.
#include <benchmark/benchmark.h>

#include "benchmarks/quickfix_peer.h"
#include "feeds/fix/fix_text.h"
#include "feeds/fix/trade_mapper.h"

namespace {

constexpr std::size_t kReports = 20'000;
constexpr std::size_t kReportFields = 42;
constexpr std::size_t kBatchBytes = std::size_t{1} << 18;

const FixReports& Reports() {
  static const FixReports reports(kReports);
  return reports;
}

// Each execution is a new one: a day from its begin, with all that the mapper keeps.
void MapReport(benchmark::State& state) {
  const FixReports& reports = Reports();
  std::vector<std::uint8_t> messages;
  std::size_t trades = 0;
  for (auto _ : state) {
    TradeMapper mapper({}, [&](std::uint64_t place) { return reports.TextOf(place); });
    for (std::size_t i = 0; i < kReports; ++i) {
      if (messages.size() > kBatchBytes) messages.clear();
      trades += mapper.Map(reports.TextOf(i), i, messages).Messages;
    }
  }
  if (trades != state.iterations() * kReports) state.SkipWithError("a report is no trade");
  state.SetItemsProcessed(static_cast<std::int64_t>(trades));
}

// The floor: the fields alone.
void WalkReport(benchmark::State& state) {
  const FixReports& reports = Reports();
  std::size_t fields = 0;
  constexpr std::uint8_t kNoMark = 1;
  FixTagOrder order;
  for (auto _ : state)
    for (std::size_t i = 0; i < kReports; ++i) {
      FixText text(reports.TextOf(i), order);
      text.ForEach(kNoMark, [&](const FixField& field) {
        benchmark::DoNotOptimize(field.Value.data());
        ++fields;
      });
    }
  if (fields < state.iterations() * kReports * kReportFields) state.SkipWithError("a report has too few fields");
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kReports));
}

void SessionParsesReport(benchmark::State& state) {
  const FixReports& reports = Reports();
  std::size_t at = 0;
  for (auto _ : state) {
    if (reports.ParseAsSession(at) < kReportFields) state.SkipWithError("a report has too few fields");
    at = (at + 1) % kReports;
  }
  state.SetItemsProcessed(state.iterations());
}

BENCHMARK(MapReport)->Unit(benchmark::kMillisecond);
BENCHMARK(WalkReport)->Unit(benchmark::kMillisecond);
BENCHMARK(SessionParsesReport);

}  // namespace

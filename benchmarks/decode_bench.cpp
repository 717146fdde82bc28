// Decoding of a trade message, compared with a copy of its bytes and with QuickFIX. Reads 450 megabytes of messages in
// sequence, so that each comes from memory and not from a cache.
#include <benchmark/benchmark.h>

#include <cstring>

#include "benchmarks/quickfix_peer.h"
#include "benchmarks/sample_messages.h"
#include "trade_data/records/trade_impl.h"

namespace {

constexpr std::size_t kMessages = 1'000'000;
constexpr std::size_t kFixMessages = 20'000;

void CopyMessage(benchmark::State& state) {
  const std::vector<std::uint8_t>& messages = SampleMessages(kMessages, 8111);
  std::uint8_t copy[kSampleMessageSize];
  for (auto _ : state)
    for (std::size_t i = 0; i < kMessages; ++i) {
      std::memcpy(copy, &messages[i * kSampleMessageSize], kSampleMessageSize);
      benchmark::DoNotOptimize(copy);
    }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kMessages));
}

void DecodeTrade(benchmark::State& state) {
  const std::vector<std::uint8_t>& messages = SampleMessages(kMessages, 8111);
  CQORTradeImpl decoder;
  TradeRecord record;
  for (auto _ : state)
    for (std::size_t i = 0; i < kMessages; ++i) {
      std::memset(&record, 0, sizeof record);
      CQORPacketReader reader(&messages[i * kSampleMessageSize], kSampleMessageSize);
      OpenSample(reader, 8111);
      decoder.DecodeMessage(reader, record);
      benchmark::DoNotOptimize(record);
    }
  if (record.VELDTradeID != kMessages) state.SkipWithError("the last record is not the last message");
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kMessages));
}

void ParseFixReport(benchmark::State& state) {
  const FixReports reports(kFixMessages);
  std::size_t at = 0;
  for (auto _ : state) {
    if (reports.ParseAndCountFields(at) < kSampleFieldCount) state.SkipWithError("a report has too few fields");
    at = (at + 1) % kFixMessages;
  }
  state.SetItemsProcessed(state.iterations());
}

BENCHMARK(CopyMessage)->Unit(benchmark::kMillisecond);
BENCHMARK(DecodeTrade)->Unit(benchmark::kMillisecond);
BENCHMARK(ParseFixReport);

}  // namespace

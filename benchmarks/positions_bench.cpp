// The terminal's ledger and its positions: what a trade costs from its message on, and from the ledger on, beside one
// search in a map of hashes and one addition for each trade of the same day.
#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>
#include <unordered_map>

#include "benchmarks/million_trades.h"
#include "terminal/positions/position_table.h"

namespace {

constexpr std::size_t kPrints = 10'000;  // made at a time, so that they do not fill the memory

template <std::size_t To, std::size_t From>
void Copy(char (&to)[To], const char (&from)[From]) {
  std::memcpy(to, from, std::min(To, From) - 1);
}

TradePrint PrintOf(std::uint32_t i) {
  const TradeRecord record = DayRecord(i);
  TradePrint print;
  Copy(print.Exchange, record.Exchange);
  Copy(print.SecurityID, record.SecurityID);
  Copy(print.Symbol, record.Symbol);
  Copy(print.ClientID, record.ClientID);
  Copy(print.ExchangeOrderNo, record.ExchangeOrderNo);
  Copy(print.ExchangeTradeID, record.ExchangeTradeID);
  std::strcpy(print.Time, "20131007-09:30:00");
  print.Quantity = record.Quantity;
  print.Price = record.Price;
  print.Number = i + 1;
  print.Multiplier = record.Multiplier;
  print.Side = record.Side;
  return print;
}

std::vector<TradePrint> Prints(std::size_t first) {
  std::vector<TradePrint> prints;
  for (std::size_t i = 0; i < kPrints; ++i) prints.push_back(PrintOf(static_cast<std::uint32_t>(first + i)));
  return prints;
}

std::unique_ptr<TradeLedger> LedgerOf(std::size_t trades) {
  auto ledger = std::make_unique<TradeLedger>();
  ledger->OnDownloadEndSent();
  for (std::size_t first = 0; first < trades; first += kPrints)
    for (const TradePrint& print : Prints(first)) ledger->OnTradeSent(print);
  return ledger;
}

const TradeLedger& MillionInALedger() {
  static const std::unique_ptr<TradeLedger> ledger = LedgerOf(kMillion);
  return *ledger;
}

// The last ten thousand trades of a day of that size.
void LedgerOfATrade(benchmark::State& state) {
  const auto before = static_cast<std::size_t>(state.range(0)) - kPrints;
  const std::vector<TradePrint> prints = Prints(before);
  for (auto _ : state) {
    state.PauseTiming();
    auto ledger = LedgerOf(before);
    state.ResumeTiming();
    for (const TradePrint& print : prints) ledger->OnTradeSent(print);
    state.PauseTiming();
    state.counters["bytesPerTrade"] =
        static_cast<double>(ledger->MemoryBytes()) / static_cast<double>(ledger->Trades().size());
    ledger.reset();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kPrints));
}

// All trades of the day; a download comes so.
void PositionOfATrade(benchmark::State& state) {
  const TradeLedger& ledger = MillionInALedger();
  const PositionSettings settings{state.range(0) != 0,
                                  state.range(1) != 0 ? CostMethod::FirstInFirstOut : CostMethod::Average};
  for (auto _ : state) {
    PositionTable table(ledger);
    table.Use(settings);
    benchmark::DoNotOptimize(table.TakeChanges());
    state.counters["rows"] = table.Rows();
    state.counters["bytes"] = static_cast<double>(table.MemoryBytes());
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kMillion));
}

// A beat with a thousand trades late in the day, when a million have come before.
void BeatOfPositions(benchmark::State& state) {
  auto ledger = LedgerOf(kMillion - kPrints);
  PositionTable table(*ledger);
  table.Use({.ByClient = true, .Method = CostMethod::FirstInFirstOut});
  table.TakeChanges();
  const std::vector<TradePrint> prints = Prints(kMillion - kPrints);
  std::size_t next = 0;
  for (auto _ : state) {
    state.PauseTiming();
    for (std::size_t i = 0; i < 1000 && next < kPrints; ++i) ledger->OnTradeSent(prints[next++]);
    state.ResumeTiming();
    benchmark::DoNotOptimize(table.TakeChanges());
  }
  state.SetItemsProcessed(state.iterations() * 1000);
}

void SearchAndAdd(benchmark::State& state) {
  const TradeLedger& ledger = MillionInALedger();
  for (auto _ : state) {
    std::unordered_map<std::uint64_t, double> sums;
    for (const LedgerTrade& trade : ledger.Trades())
      sums[(std::uint64_t{trade.Security} << 32) | (state.range(0) != 0 ? trade.Client : 0)] +=
          trade.Price * trade.Quantity * trade.Multiplier;
    benchmark::DoNotOptimize(sums.size());
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kMillion));
}

BENCHMARK(SearchAndAdd)->ArgName("byClient")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(PositionOfATrade)
    ->ArgNames({"byClient", "firstOut"})
    ->ArgsProduct({{0, 1}, {0, 1}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BeatOfPositions)->Iterations(10)->Unit(benchmark::kMicrosecond);
BENCHMARK(LedgerOfATrade)->Arg(2 * kPrints)->Arg(kMillion)->Iterations(3)->Unit(benchmark::kMicrosecond);

}  // namespace

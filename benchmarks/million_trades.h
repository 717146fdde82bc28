// A day of a million trades for benchmarks: two hundred securities of four exchanges, realistic order numbers, clients
// and times, prices that move in ticks. The same in every run.
#pragma once

#include "trade_data/cache/trade_cache.h"

inline constexpr std::size_t kMillion = 1'000'000;

// Record i of the day, in order of time.
TradeRecord DayRecord(std::uint32_t i);

// The whole day, played as messages into a cache after its download. Created once.
const TradeCache& MillionTrades();

// Delivers the message 9101 of the record to the cache.
void PlayTrade(TradeCache& cache, const TradeRecord& record);

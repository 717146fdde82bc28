// A day of a million trades to measure books with: two hundred securities of four exchanges, order numbers, clients and
// times as a day has them, prices that walk in ticks. The same numbers in every run.
#pragma once

#include "trade_data/cache/trade_cache.h"

inline constexpr std::size_t kMillion = 1'000'000;

// Record i of the day, in order of time.
TradeRecord DayRecord(std::uint32_t i);

// The whole day, played as messages into a cache whose download has ended. Made once.
const TradeCache& MillionTrades();

// The message 9101 of a record, into a cache.
void PlayTrade(TradeCache& cache, const TradeRecord& record);

// The columns of the market watch: titles, widths, text and order of each. Not the rows: market_watch.h. Pure; any
// thread.
#pragma once

#include <cstddef>
#include <string>

#include "terminal/market_watch.h"

struct WatchColumn {
  const wchar_t* Title;
  int WidthPx;    // on a screen of 96 dots an inch
  bool ToRight;   // numbers
  bool OfTrades;  // empty until the security has traded
  std::string (*Text)(const WatchRow& row);
  int (*Compare)(const WatchRow& left, const WatchRow& right);  // below 0: left comes first when rising
  Trend (*TrendOf)(const WatchRow& row);                        // null: always None
};

inline constexpr std::size_t kWatchColumnCount = 11;
extern const WatchColumn kWatchColumns[kWatchColumnCount];

// At least two and at most four decimals, and a comma at the thousands.
std::string PriceText(double price);

// Samples for the tests of the writers: a trade with a value in every field, the columns of a grid, the trades of a
// cache.
#pragma once

#include <cstring>
#include <deque>
#include <string>
#include <string_view>

#include "grid_ops/columns/trade_columns.h"
#include "grid_ops/exports/csv_export.h"
#include "grid_ops/exports/trade_file_text.h"
#include "tests/support/sample_trade.h"
#include "trade_data/cache/trade_cache.h"

template <std::size_t kSize>
void PutText(char (&field)[kSize], std::string_view text) {
  std::memset(field, 0, kSize);
  text.copy(field, kSize - 1);
}

// The wire sample with dates in its times and blanks after its symbol.
inline TradeRecord FullTrade() {
  TradeRecord record = SampleRecord();
  PutText(record.OrderTime, "20240229-10:15:00");
  PutText(record.ExchangeOrderTime, "20240229-10:15:01");
  PutText(record.ExchangeTradeTime, "20240229-10:15:02");
  PutText(record.Symbol, "ABCD  ");
  return record;
}

inline GridColumns ColumnsOfGrid(int count = kTradeColumnCount) {
  GridColumns columns;
  for (int i = 0; i < count; ++i) columns.push_back({std::string(kTradeColumns[i].Title), true, i, false});
  return columns;
}

inline const PriceDivisors kNoDivisors;

struct SampleTrades {
  TradeRecord& Add(const char* server, std::int32_t id, const TradeRecord& record = FullTrade()) {
    TradeRecord& added = Records.emplace_back(record);
    added.VELDTradeID = static_cast<std::uint32_t>(id);
    ByServer[server].Insert(id, &added);
    return added;
  }
  std::deque<TradeRecord> Records;
  ServerTrades ByServer;
};

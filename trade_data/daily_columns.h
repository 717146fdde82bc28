// The columns of the daily file: their names, a vocabulary of the file's own, and how each writes its value.
// Not the file: that is DailyFile. Pure; any thread.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "trade_data/line_buffer.h"
#include "trade_data/trade_record.h"

struct DailyColumn {
  std::string_view Name;
  // Appends the column's value for the record. No text is quoted or escaped.
  void (*Append)(LineBuffer& line, const TradeRecord& record, std::string_view serverName);
};

// The most characters that any column writes.
constexpr std::size_t LongestDailyValue(std::string_view serverName) {
  return std::max({sizeof TradeRecord::ReferenceText, kLongestDouble, serverName.size()});
}

// The column of that name, compared whole and case-sensitively; null for a name that is none.
const DailyColumn* FindDailyColumn(std::string_view name) noexcept;

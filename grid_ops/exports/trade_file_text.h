// The fixed fields of the exchange trade files: what a column of a trade prints in the file of derivatives (FO) and in
// that of the cash market (CM), by the rules of kTradeColumns. A field never cuts its value: a number that is wider
// than its field stands whole, without blanks in front. Pure; one thread at a time.
#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <string_view>

#include "grid_ops/columns/cell_text.h"
#include "grid_ops/columns/stored_time.h"

// What prices are divided by, by the alias of a linked master, or by its symbol where it has no alias. Each grid has
// such a map; the plug-in leaves it empty.
using PriceDivisors = std::map<std::string, double, std::less<>>;

// What the cells of one file run share.
struct TradeFileSource {
  const PriceDivisors& Divisors;
  std::string_view Server;
  std::string_view Fallback;  // the text of an index without a rule; the two files have none
  StoredTimeText& Times;
};

// Prints to a place with room for LongestTradeFileCell characters and returns the end. Files of a million trades ask
// once for the printer of each column; an index that is no column prints the fallback.
using FileCellPrinter = char* (*)(char* to, const TradeFileSource& source, const TradeRecord& record);
FileCellPrinter TradeCellPrinterFO(int column) noexcept;
FileCellPrinter TradeCellPrinterCM(int column) noexcept;
inline void AppendTradeCellFO(LineBuffer& line, const TradeFileSource& source, const TradeRecord& record, int column) {
  line.EndAt(TradeCellPrinterFO(column)(line.Tail(), source, record));
}
inline void AppendTradeCellCM(LineBuffer& line, const TradeFileSource& source, const TradeRecord& record, int column) {
  line.EndAt(TradeCellPrinterCM(column)(line.Tail(), source, record));
}
constexpr std::size_t LongestTradeFileCell(std::string_view server, std::string_view fallback) {
  return std::max(LongestTradeCell(server), fallback.size());
}

std::string TradeCellTextFO(const PriceDivisors& divisors, std::string_view server, const TradeRecord& record,
                            int column, std::string_view fallback);
std::string TradeCellTextCM(const PriceDivisors& divisors, std::string_view server, const TradeRecord& record,
                            int column, std::string_view fallback);

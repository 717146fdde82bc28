// The fixed-width cells of the exchange trade files: the text of a column in the file of derivatives (FO) and in that
// of the cash market (CM), by the rules of kTradeColumns. A text that is wider than its cell is printed whole.
#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <string_view>

#include "grid_ops/columns/cell_text.h"

// The divisors of prices, by the alias of a linked master, or by its symbol if the alias is empty. Always empty in this
// plug-in.
using PriceDivisors = std::map<std::string, double, std::less<>>;

// StoredTimeText: "20260301-09:15:30" as "01 MAR 2026 09:15:30", for many times of few days.
//
// The result of ParseTimeText and FormatTimeText in upper case, for any text. It caches one day, because the times of a
// day differ in the clock alone, which text and result share; other texts are converted if they differ from the one
// before.
class StoredTimeText {
 public:
  // 20 characters, all blanks for a time before 1970. Valid until the next call.
  std::string_view Of(std::string_view stored);

 private:
  bool KnowsDay(std::string_view stored);
  static std::string Convert(std::string_view stored);

  std::string Stored, Text = Convert({});  // the last text and its result
  std::string Day, DayText;                // "yyyyMMdd-" of the cached day, and a result of that day
};

// The inputs that all cells of a file share.
struct TradeFileSource {
  const PriceDivisors& Divisors;
  std::string_view Server;
  std::string_view Fallback;  // the text of an index without a rule; empty in both files
  StoredTimeText& Times;
};

// Prints a cell and returns the end. Requires room for LongestTradeFileCell characters. A writer of many lines gets the
// printer of each column once; the printer of an unknown column prints the fallback.
using FileCellPrinter = char* (*)(char* to, const TradeFileSource& source, const TradeRecord& record);
FileCellPrinter TradeCellPrinterFO(int column) noexcept;
FileCellPrinter TradeCellPrinterCM(int column) noexcept;
constexpr std::size_t LongestTradeFileCell(std::string_view server, std::string_view fallback) {
  return std::max(LongestTradeCell(server), fallback.size());
}

std::string TradeCellTextFO(const PriceDivisors& divisors, std::string_view server, const TradeRecord& record,
                            int column, std::string_view fallback);
std::string TradeCellTextCM(const PriceDivisors& divisors, std::string_view server, const TradeRecord& record,
                            int column, std::string_view fallback);

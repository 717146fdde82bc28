#include "terminal/day/trade_file.h"

#include <utility>

namespace {

constexpr CsvColumn<DayTrade> kColumns[] = {
    {"exchange_trade_time", &DayTrade::ExchangeTradeTime},
    {"exchange", &DayTrade::Exchange, 48},
    {"security_id", &DayTrade::SecurityID, 48},
    {"symbol", &DayTrade::Symbol, 32, true},
    {"security_type", &DayTrade::SecurityType, 16, true},
    {"expiry_date", &DayTrade::ExpiryDate, 32, true},
    {"option_type", &DayTrade::OptionType, 16, true},
    {"strike_price", &DayTrade::StrikePrice},
    {"side", &DayTrade::Side},
    {"quantity", &DayTrade::Quantity},
    {"price", &DayTrade::Price},
    {"multiplier", &DayTrade::Multiplier},
    {"exchange_order_no", &DayTrade::ExchangeOrderNo, 32},
    {"exchange_trade_id", &DayTrade::ExchangeTradeID, 32},
};

}  // namespace

TradeDay::TradeDay(const std::filesystem::path& file, BadLineReport& badLines)
    : Lines(file, ColumnNames(kColumns), badLines) {}

bool TradeDay::Next(DayTrade& trade) {
  return NextCsvRecord(Lines, kColumns, trade);
}

std::uint64_t CountTradeLines(const std::filesystem::path& file) {
  FileBytes bytes(file);
  std::uint64_t lines = 0;
  bool filled = false;  // the line counted now has a character
  for (std::string_view window = bytes.Peek(1); !window.empty(); window = bytes.Peek(1)) {
    for (const char c : window) {
      if (c == '\n')
        lines += std::exchange(filled, false) ? 1 : 0;
      else if (c != '\r')
        filled = true;
    }
    bytes.Drop(window.size());
  }
  lines += filled ? 1 : 0;
  return lines == 0 ? 0 : lines - 1;
}

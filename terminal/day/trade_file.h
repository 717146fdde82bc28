// TradeDay: a CSV file of executed trades, one trade at a time.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "terminal/day/csv_file.h"

struct DayTrade {
  DayTime ExchangeTradeTime;
  std::string Exchange;
  std::string SecurityID;
  std::string Symbol;
  std::string SecurityType;
  std::string ExpiryDate;
  std::string OptionType;
  double StrikePrice = 0;
  TradeSide Side = TradeSide::Buy;
  std::uint32_t Quantity = 0;
  double Price = 0;
  double Multiplier = 0;
  std::string ExchangeOrderNo;
  std::string ExchangeTradeID;
};

class TradeDay {
 public:
  // Bad lines are reported, a file that is no such CSV is a TerminalError.
  TradeDay(const std::filesystem::path& file, BadLineReport& badLines);

  // Fills trade, whose texts are reused; false at the end of the day.
  bool Next(DayTrade& trade);
  // Reports the line of the trade given last.
  void Report(const std::string& reason) { Lines.Report(reason); }

 private:
  CsvReader Lines;
};

// The number of lines behind the header that are not empty: how many trades the day has, but for bad lines.
std::uint64_t CountTradeLines(const std::filesystem::path& file);

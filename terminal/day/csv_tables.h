// The CSV files of a day: executed trades, which are read one at a time, and the securities and the desk, which are
// read whole.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host_link/host_functions/terminal_functions.h"
#include "terminal/common/errors.h"
#include "terminal/day/csv_reader.h"

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
  // Reports bad lines. Throws TerminalError if the file is no such CSV.
  TradeDay(const std::filesystem::path& file, BadLineReport& badLines);

  // Fills trade and reuses its texts; false at the end of the day.
  bool Next(DayTrade& trade);
  // Reports the line of the last trade.
  void Report(const std::string& reason) { Lines.Report(reason); }

 private:
  CsvReader Lines;
};

// Counts the lines after the header that are not empty: the trades and the bad lines.
std::uint64_t CountTradeLines(const std::filesystem::path& file);

// Exchange and id as one text. A control character, which no field of a file holds, keeps the two parts apart.
std::string SecurityKey(std::string_view exchange, std::string_view securityId);

inline constexpr std::size_t kMasterRecordSize = kMasterMultiplierOffset + sizeof(double);

struct Security {
  std::string Exchange;
  std::string SecurityID;
  std::string Symbol;
  std::string Name;
  std::string SecurityType;
  std::string ExpiryDate;
  std::string OptionType;
  double StrikePrice = 0;
  double Multiplier = 0;
  // Name and multiplier at the places of terminal_functions.h, zeros elsewhere.
  std::array<std::uint8_t, kMasterRecordSize> MasterRecord{};
};

// The securities of the day with the master record of each, which plug-ins get by address: both keep their addresses
// for the life of the object. Find is one hash of exchange and id.
class SecurityList {
 public:
  SecurityList() = default;
  // Reports bad lines and repeated securities. Throws TerminalError.
  SecurityList(const std::filesystem::path& file, BadLineReport& badLines);
  SecurityList(const SecurityList&) = delete;
  SecurityList& operator=(const SecurityList&) = delete;

  const Security* Find(std::string_view exchange, std::string_view securityId) const;
  // In the order of the file.
  const std::deque<Security>& All() const noexcept { return Rows; }

 private:
  std::deque<Security> Rows;
  std::unordered_map<std::string, const Security*> ByKey;
};

// OrderDesk: users, clients, members and products of orders, which market data does not have. Each exchange order takes
// one line of the desk file, always the same one.

// Codes as a trade message carries them.
struct DeskLine {
  std::string UserID;
  std::string ManagerID;
  std::string MemberID;
  std::string ClientID;
  std::string CTCLID;
  std::uint32_t ProductType = 0;
  std::uint8_t OrderType = 0;
  std::uint8_t OpenClose = 0;
  std::uint32_t StrategyID = 0;
  std::string Pancard;
  std::string TerminalInfo;
  std::string AlgoID;
  std::uint16_t AlgoCategory = 0;
  std::string ParticipantID;
  std::string ReferenceText;
};

class OrderDesk {
 public:
  // Reports bad lines. Throws TerminalError if no line is good.
  OrderDesk(const std::filesystem::path& file, BadLineReport& badLines);

  const DeskLine& LineOf(std::string_view exchangeOrderNo) const noexcept;

 private:
  std::vector<DeskLine> Lines;
};

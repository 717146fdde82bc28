// TradeMessages: makes the wire message of each trade of a day, with the numbers that the terminal gives.
//
//   trade message := 10002 key-section body-section
//   key-section   := 55001 20008 20009 55101 55100 65535
//   body-section  := security, trade and desk fields, and 55109 once more at the end
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

#include "host_link/messages/packet_reader.h"
#include "host_link/messages/packet_writer.h"
#include "terminal/day/csv_tables.h"

// Trades and orders are numbered from 1. All fills of an exchange order carry the same numbers, the time of the first
// fill as order time and the same desk line. Texts go out at their own length. Keeps one entry for each exchange order.
class TradeMessages {
 public:
  TradeMessages(const OrderDesk& desk, const SecurityList& securities) : Desk(desk), Securities(securities) {}

  // Adds every field of the trade's message to an empty writer; number is its message number.
  void Write(const DayTrade& trade, std::uint16_t number, CQORPacketWriter& writer);

 private:
  struct Order {
    std::uint32_t Number;
    std::string Time;
  };
  const Order& OrderOf(const DayTrade& trade);

  const OrderDesk& Desk;
  const SecurityList& Securities;
  std::unordered_map<std::string, Order> Orders;  // by exchange order number
  std::uint32_t LastTradeID = 0;
};

// TradePrint: the market data of a trade message; texts end with a NUL.
struct TradePrint {
  static constexpr std::uint16_t kLongestText = 48;
  using Text = char[kLongestText + 1];

  Text Exchange{};
  Text SecurityID{};
  Text Symbol{};
  Text Name{};
  Text ExpiryDate{};
  Text Time{};
  std::uint32_t Quantity = 0;
  double Price = 0;
  std::uint32_t Number = 0;  // VELDTradeID
};

// Walks a message after ParseHeader and leaves the reader unchanged. Missing fields stay empty or 0.
TradePrint ReadTradePrint(CQORPacketReader& message);
// The same for the number alone, which stands near the begin.
std::uint32_t ReadTradeNumber(const CQORPacketReader& message);

// Is told of each trade before the plug-in. One whose number has come replaces that trade: a correction, or a bust with
// the quantity 0.
class TradeListener {
 public:
  virtual ~TradeListener() = default;
  virtual void OnTradeSent(const TradePrint& print) = 0;
};

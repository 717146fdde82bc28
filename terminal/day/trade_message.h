// TradeMessages: makes the wire message of each trade of a day, with the numbers that the terminal gives.
//
//   trade message := 10002 key-section body-section
//   key-section   := 55001 20008 20009 55101 55100 65535
//   body-section  := security, trade and desk fields, and 55109 once more at the end
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

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

// TradePrint: what a trade message says of the trade and of whose it is; texts end with a NUL.
struct TradePrint {
  static constexpr std::uint16_t kLongestText = 48;
  static constexpr std::uint16_t kLongestClient = 20;
  static constexpr std::uint16_t kLongestKey = 32;
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
  double Multiplier = 0;
  std::uint8_t Side = 0;  // 1 is a buy, 2 a sell
  char ClientID[kLongestClient + 1]{};
  char ExchangeOrderNo[kLongestKey + 1]{};  // this and the next are the key of an execution
  char ExchangeTradeID[kLongestKey + 1]{};
};

// Walks a message after ParseHeader and leaves the reader unchanged. Missing fields stay empty or 0.
TradePrint ReadTradePrint(CQORPacketReader& message);
// The same for the number alone, which stands near the begin.
std::uint32_t ReadTradeNumber(const CQORPacketReader& message);

// Message 9112. A field of the trade that a message lacks keeps the value of an earlier one.
struct TradeAmendment {
  TradePrint Trade;
  std::uint32_t Number = 0;       // of the trade that it changes
  std::uint32_t NewQuantity = 0;  // of a known trade; 0 leaves it
  std::uint32_t AddQuantity = 0;  // of a trade that is not known; 0 for none
};

// Walks a message after ParseHeader and leaves the reader unchanged.
void ReadTradeAmendment(CQORPacketReader& message, TradeAmendment& amendment);

// Is told of the messages of a day before the plug-in.
class TradeListener {
 public:
  virtual ~TradeListener() = default;
  // One whose number has come replaces that trade: a correction, or a bust with the quantity 0.
  virtual void OnTradeSent(const TradePrint& print) = 0;
  // Message 9112 after ParseHeader; leaves the reader unchanged.
  virtual void OnAmendmentSent(CQORPacketReader& /*message*/) {}
  // Message 8112.
  virtual void OnDownloadEndSent() {}
  // The trades come once more, or those of another day: message 30022, or the day begins.
  virtual void OnStartOver() {}
};

// Tells several listeners, in their order.
class TradeListeners : public TradeListener {
 public:
  // They must outlive the list.
  void Add(TradeListener& listener) { All.push_back(&listener); }
  void OnTradeSent(const TradePrint& print) override;
  void OnAmendmentSent(CQORPacketReader& message) override;
  void OnDownloadEndSent() override;
  void OnStartOver() override;

 private:
  std::vector<TradeListener*> All;
};

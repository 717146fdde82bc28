// TradePrint: what a trade message says of the market: the security, the price, the quantity and the time. Not who
// stands behind the trade. One thread.
#pragma once

#include <cstdint>
#include <string>

#include "host_link/packet_reader.h"

struct TradePrint {
  std::string Exchange;
  std::string SecurityID;
  std::string Symbol;
  std::string Name;
  std::string ExpiryDate;
  std::string Time;
  std::uint32_t Quantity = 0;
  double Price = 0;
};

// Walks a message whose header has been parsed and leaves the reader where it stands. A field that is missing leaves
// its member empty or 0.
TradePrint ReadTradePrint(CQORPacketReader& message);

// Who is told of the trades that a day sends.
class TradeListener {
 public:
  virtual ~TradeListener() = default;
  virtual void OnTradeSent(const TradePrint& print) = 0;
};

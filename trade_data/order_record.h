// OrderRecord: the flat record of one order, the twin of TradeRecord. Not its way over the wire: order_fields.h.
// Plain data; whoever holds a record decides its threads.
//
// Packed, 1316 bytes, copied whole. A field means what the field of the same tag means in TradeRecord; those named
// after their tag are kept and mean nothing here. Texts hold one character less than their size; a record is zeroed
// before it is decoded into.
#pragma once

#include <cstddef>
#include <cstdint>

#include "trade_data/trade_record.h"

#pragma pack(push, 1)
struct OrderRecord {
  std::uint32_t Value20083;
  char UserID[21];
  char ManagerID[21];
  std::uint32_t VELDOrderID;
  std::uint32_t OrderID;
  std::uint32_t Reserved;
  std::uint32_t Value20010;
  char ExchangeOrderNo[33];
  char Text55099[33];
  char OrderTime[23];
  char ExchangeOrderTime[23];
  char Exchange[49];
  char SecurityID[49];
  char SecurityType[17];
  char Symbol[33];
  char ExpiryDate[33];
  char OptionType[17];
  double StrikePrice;
  std::uint8_t Value104;
  std::uint64_t Value50003;
  std::uint8_t Side;
  std::uint32_t Value20012;
  std::uint32_t PendingQuantity;
  std::uint32_t Quantity;
  std::uint32_t Value20015;
  double Price;
  double Value40003;
  char ClientID[21];
  char MemberID[21];
  char Text55134[21];
  char CTCLID[21];
  std::uint8_t OrderType;
  std::uint8_t Value107;
  std::uint8_t Value108;
  std::uint32_t ProductType;
  char TerminalInfo[25];
  char Pancard[17];
  char AlgoID[17];
  std::uint16_t AlgoCategory;
  char ParticipantID[17];
  std::uint8_t Value5011;
  std::uint8_t Value5012;
  char Text55178[21];
  char Text55179[21];
  std::uint32_t Value20052;
  char ReferenceText[65];
  char Text55111[513];
  std::uint16_t Value11111;
  std::uint32_t Value20066;
  std::uint32_t StrategyID;
  std::uint32_t Value20081;
  std::uint32_t Value20082;
  char Text55151[33];
  std::uint8_t Value113;
  std::uint8_t OpenClose;
  std::uint8_t Spare[21];
  const SecurityMaster* MasterRecord;
  double Value40049;
  std::uint32_t Value20101;
  std::uint8_t Tail[5];
};
#pragma pack(pop)

static_assert(sizeof(OrderRecord) == 1316 && alignof(OrderRecord) == 1);
static_assert(offsetof(OrderRecord, VELDOrderID) == 46 && offsetof(OrderRecord, ExchangeOrderNo) == 62 &&
              offsetof(OrderRecord, Exchange) == 174 && offsetof(OrderRecord, StrikePrice) == 372 &&
              offsetof(OrderRecord, Value50003) == 381 && offsetof(OrderRecord, Price) == 406 &&
              offsetof(OrderRecord, ProductType) == 509 && offsetof(OrderRecord, AlgoCategory) == 572 &&
              offsetof(OrderRecord, Text55111) == 704 && offsetof(OrderRecord, StrategyID) == 1223 &&
              offsetof(OrderRecord, Spare) == 1270 && offsetof(OrderRecord, MasterRecord) == 1291 &&
              offsetof(OrderRecord, Value20101) == 1307 && offsetof(OrderRecord, Tail) == 1311);

// Tag, kind and place of every field of a trade message, sorted by tag: the key section's five and the body's others.
//
//   trade message := 10002 key-section body-section
//   key-section   := 55001 20008 20009 55101 55100 65535
//   body-section  := every other field, to the end of the message
#pragma once

#include <cstring>
#include "host_link/messages/message_table.h"

#include "host_link/messages/wire_fields.h"
#include "trade_data/records/trade_record.h"

inline constexpr WireField kTradeKeyFields[] = {
    {10002, Field::Dropped16, 0},  // the message number, which the reader has read
    {20008, Field::U32, offsetof(TradeRecord, VELDTradeID)},
    {20009, Field::U32, offsetof(TradeRecord, VELDOrderID)},
    {55001, Field::Text, offsetof(TradeRecord, UserID), 20},
    {55100, Field::Text, offsetof(TradeRecord, ExchangeOrderNo), 32},
    {55101, Field::Text, offsetof(TradeRecord, ExchangeTradeID), 32},
};
static_assert(FieldsFit(kTradeKeyFields, sizeof(TradeRecord)) && ReadsSection(9101, 0, kTradeKeyFields));

inline constexpr WireField kTradeBodyFields[] = {
    {101, Field::U8, offsetof(TradeRecord, Side)},
    {102, Field::U8, offsetof(TradeRecord, OrderType)},
    {115, Field::U8, offsetof(TradeRecord, OpenClose)},
    {11115, Field::U16, offsetof(TradeRecord, AlgoCategory)},
    {20007, Field::Dropped32, 0},  // the number of a master record; none is attached here
    {20011, Field::U32, offsetof(TradeRecord, OrderID)},
    {20013, Field::U32, offsetof(TradeRecord, PendingQuantity)},
    {20014, Field::U32, offsetof(TradeRecord, Quantity)},
    {20036, Field::U32, offsetof(TradeRecord, Value20036)},
    {20068, Field::U32, offsetof(TradeRecord, StrategyID)},
    {20081, Field::U32, offsetof(TradeRecord, Value20081)},
    {20082, Field::U32, offsetof(TradeRecord, Value20082)},
    {20083, Field::U32, offsetof(TradeRecord, Value20083)},
    {20084, Field::U32, offsetof(TradeRecord, ProductType)},
    {20101, Field::U32, offsetof(TradeRecord, Value20101)},
    {40002, Field::Double, offsetof(TradeRecord, Price)},
    {40004, Field::Double, offsetof(TradeRecord, StrikePrice)},
    {40008, Field::Double, offsetof(TradeRecord, Multiplier)},
    {55010, Field::Text, offsetof(TradeRecord, Exchange), 48},
    {55012, Field::Text, offsetof(TradeRecord, CTCLID), 20},
    {55018, Field::Text, offsetof(TradeRecord, ManagerID), 20},
    {55102, Field::Text, offsetof(TradeRecord, ClientID), 20},
    {55103, Field::Text, offsetof(TradeRecord, Symbol), 32},
    {55104, Field::Text, offsetof(TradeRecord, SecurityID), 48},
    {55105, Field::Text, offsetof(TradeRecord, SecurityType), 16},
    {55106, Field::Text, offsetof(TradeRecord, OptionType), 16},
    {55107, Field::Text, offsetof(TradeRecord, Text55107), 48},
    {55109, Field::Text, offsetof(TradeRecord, ReferenceText), 64},
    {55116, Field::Text, offsetof(TradeRecord, OrderTime), 22},
    {55117, Field::Text, offsetof(TradeRecord, ExchangeOrderTime), 22},
    {55118, Field::Text, offsetof(TradeRecord, ExchangeTradeTime), 22},
    {55123, Field::Text, offsetof(TradeRecord, Pancard), 16},
    {55124, Field::Text, offsetof(TradeRecord, TerminalInfo), 24},
    {55131, Field::Text, offsetof(TradeRecord, MemberID), 20},
    {55143, Field::Text, offsetof(TradeRecord, ExpiryDate), 32},
    {55151, Field::Text, offsetof(TradeRecord, Text55151), 32},
    {55328, Field::Text, offsetof(TradeRecord, AlgoID), 16},
    {55329, Field::Text, offsetof(TradeRecord, ParticipantID), 16},
};
static_assert(FieldsFit(kTradeBodyFields, sizeof(TradeRecord)) && ReadsSection(9101, 1, kTradeBodyFields));

inline constexpr FieldIndex kTradeKeyIndex(kTradeKeyFields);
inline constexpr FieldIndex kTradeBodyIndex(kTradeBodyFields);

// Copies the fields of the record's security that its master, if it has one, overrides.
template <typename Record>
Record WithMasterFields(const Record& record) noexcept {
  Record merged = record;
  const SecurityMaster* master = record.MasterRecord;
  if (master == nullptr) return merged;
  std::memcpy(merged.Exchange, master->Exchange, sizeof merged.Exchange);
  std::memcpy(merged.SecurityID, master->SecurityID, sizeof merged.SecurityID);
  std::memcpy(merged.SecurityType, master->SecurityType, sizeof merged.SecurityType);
  std::memcpy(merged.Symbol, master->Symbol, sizeof merged.Symbol);
  std::memcpy(merged.ExpiryDate, master->ExpiryDate, sizeof merged.ExpiryDate);
  std::memcpy(merged.OptionType, master->OptionType, sizeof merged.OptionType);
  merged.StrikePrice = master->StrikePrice;
  if constexpr (requires { merged.Text55107; }) {
    std::memcpy(merged.Text55107, master->Text55107, sizeof merged.Text55107);
    merged.Multiplier = master->Multiplier;
  }
  return merged;
}

// The one list of a trade's fields in tests: tag, place in the record, longest text, and one trade byte by byte, in the
// order in which a trade is written. Values differ, and none has the byte of the field mark.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

#include "trade_data/records/trade_record.h"

struct SampleField {
  int Tag;
  std::size_t Offset;
  std::string_view Head;  // mark, tag and, of a text, its count
  std::string_view Value;
  std::size_t Limit = 0;  // of a text: its longest
  std::string Wire() const { return std::string(Head) + std::string(Value); }
  bool IsText() const { return Limit > 0; }
};

// The fields of the key section are the first five.
inline constexpr std::size_t kSampleKeyFields = 5;
using std::literals::operator""sv;
inline constexpr SampleField kSampleFields[] = {
    {55001, offsetof(TradeRecord, UserID), "#\xD9\xD6\x05\x00"sv, "USER1"sv, 20},
    {20008, offsetof(TradeRecord, VELDTradeID), "#\x28\x4E"sv, "\x04\x03\x02\x81"sv},
    {20009, offsetof(TradeRecord, VELDOrderID), "#\x29\x4E"sv, "\x05\x09\x02\x01"sv},
    {55101, offsetof(TradeRecord, ExchangeTradeID), "#\x3D\xD7\x09\x00"sv, "XTRADE-77"sv, 32},
    {55100, offsetof(TradeRecord, ExchangeOrderNo), "#\x3C\xD7\x10\x00"sv, "1100000000012345"sv, 32},
    {55010, offsetof(TradeRecord, Exchange), "#\xE2\xD6\x05\x00"sv, "NSEFO"sv, 48},
    {55104, offsetof(TradeRecord, SecurityID), "#\x40\xD7\x05\x00"sv, "35001"sv, 48},
    {55105, offsetof(TradeRecord, SecurityType), "#\x41\xD7\x06\x00"sv, "OPTSTK"sv, 16},
    {55103, offsetof(TradeRecord, Symbol), "#\x3F\xD7\x04\x00"sv, "ABCD"sv, 32},
    {55143, offsetof(TradeRecord, ExpiryDate), "#\x67\xD7\x09\x00"sv, "29FEB2024"sv, 32},
    {55106, offsetof(TradeRecord, OptionType), "#\x42\xD7\x02\x00"sv, "CE"sv, 16},
    {40004, offsetof(TradeRecord, StrikePrice), "#\x44\x9C"sv, "\x00\x00\x00\x00\x00\x25\xA3\x40"sv},
    {40008, offsetof(TradeRecord, Multiplier), "#\x48\x9C"sv, "\x00\x00\x00\x00\x00\x00\xD0\x3F"sv},
    {55107, offsetof(TradeRecord, Text55107), "#\x43\xD7\x0E\x00"sv, "ABCD 2450.5 CE"sv, 48},
    {55118, offsetof(TradeRecord, ExchangeTradeTime), "#\x4E\xD7\x08\x00"sv, "10:15:02"sv, 22},
    {20011, offsetof(TradeRecord, OrderID), "#\x2B\x4E"sv, "\x67\x12\x00\x00"sv},
    {55116, offsetof(TradeRecord, OrderTime), "#\x4C\xD7\x08\x00"sv, "10:15:00"sv, 22},
    {55117, offsetof(TradeRecord, ExchangeOrderTime), "#\x4D\xD7\x08\x00"sv, "10:15:01"sv, 22},
    {101, offsetof(TradeRecord, Side), "#\x65\x00"sv, "\x02"sv},
    {102, offsetof(TradeRecord, OrderType), "#\x66\x00"sv, "\x04"sv},
    {20084, offsetof(TradeRecord, ProductType), "#\x74\x4E"sv, "\x03\x00\x00\x00"sv},
    {20014, offsetof(TradeRecord, Quantity), "#\x2E\x4E"sv, "\x96\x00\x00\x00"sv},
    {20013, offsetof(TradeRecord, PendingQuantity), "#\x2D\x4E"sv, "\x32\x00\x00\x00"sv},
    {20036, offsetof(TradeRecord, Value20036), "#\x44\x4E"sv, "\x01\x00\x00\x36"sv},
    {40002, offsetof(TradeRecord, Price), "#\x42\x9C"sv, "\x00\x00\x00\x00\x00\x70\x59\x40"sv},
    {55018, offsetof(TradeRecord, ManagerID), "#\xEA\xD6\x03\x00"sv, "MGR"sv, 20},
    {55102, offsetof(TradeRecord, ClientID), "#\x3E\xD7\x08\x00"sv, "CLIENT07"sv, 20},
    {55131, offsetof(TradeRecord, MemberID), "#\x5B\xD7\x05\x00"sv, "MEM12"sv, 20},
    {55012, offsetof(TradeRecord, CTCLID), "#\xE4\xD6\x0C\x00"sv, "400123456789"sv, 20},
    {55109, offsetof(TradeRecord, ReferenceText), "#\x45\xD7\x0A\x00"sv, "ref, first"sv, 64},
    {20068, offsetof(TradeRecord, StrategyID), "#\x64\x4E"sv, "\x44\x00\x00\x00"sv},
    {20081, offsetof(TradeRecord, Value20081), "#\x71\x4E"sv, "\x01\x00\x00\x81"sv},
    {20082, offsetof(TradeRecord, Value20082), "#\x72\x4E"sv, "\x01\x00\x00\x82"sv},
    {55151, offsetof(TradeRecord, Text55151), "#\x6F\xD7\x04\x00"sv, "t151"sv, 32},
    {115, offsetof(TradeRecord, OpenClose), "#\x73\x00"sv, "\x05"sv},
    {20101, offsetof(TradeRecord, Value20101), "#\x85\x4E"sv, "\x01\x01\x01\x01"sv},
    {55124, offsetof(TradeRecord, TerminalInfo), "#\x54\xD7\x04\x00"sv, "T-24"sv, 24},
    {55123, offsetof(TradeRecord, Pancard), "#\x53\xD7\x0A\x00"sv, "PANCD1234F"sv, 16},
    {55328, offsetof(TradeRecord, AlgoID), "#\x20\xD8\x05\x00"sv, "ALGO9"sv, 16},
    {11115, offsetof(TradeRecord, AlgoCategory), "#\x6B\x2B"sv, "\x03\x02"sv},
    {55329, offsetof(TradeRecord, ParticipantID), "#\x21\xD8\x06\x00"sv, "PART01"sv, 16},
    {20083, offsetof(TradeRecord, Value20083), "#\x73\x4E"sv, "\x01\x00\x00\x83"sv},
};
inline constexpr std::string_view kSampleNumber = "#\x12\x27\xAF\x1F";  // 10002: 8111
inline constexpr std::string_view kSampleTerminator = "#\xFF\xFF";

inline const SampleField* FindSampleField(int tag) {
  const auto* found = std::find_if(kSampleFields, std::end(kSampleFields), [&](const auto& f) { return f.Tag == tag; });
  return found == std::end(kSampleFields) ? nullptr : found;
}

inline std::string SampleMessageBody() {
  std::string body(kSampleNumber);
  for (std::size_t i = 0; i < std::size(kSampleFields); ++i) {
    if (i == kSampleKeyFields) body += kSampleTerminator;
    body += kSampleFields[i].Wire();
  }
  return body;
}

inline void PutSampleField(TradeRecord& record, const SampleField& field) {
  std::memcpy(reinterpret_cast<char*>(&record) + field.Offset, field.Value.data(), field.Value.size());
}

inline TradeRecord SampleRecord() {
  TradeRecord record{};
  for (const SampleField& field : kSampleFields) PutSampleField(record, field);
  return record;
}

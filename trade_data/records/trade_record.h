// TradeRecord: the flat record of one executed trade, and the texts of its coded fields.
//
// Packed, 750 bytes, copied with one block copy. Texts are single-byte, end with a NUL and hold one character less than
// their size. Decoders require a zeroed record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

// The fields of a security that a linked master record overrides. The plug-in does not link any.
struct SecurityMaster {
  std::uint32_t SecurityNumber;  // 0: none
  char Exchange[49];
  char SecurityID[49];
  char SecurityType[17];
  char Symbol[33];
  char ExpiryDate[33];
  char OptionType[17];
  char Text55107[49];
  double StrikePrice;
  double Multiplier;
  char Alias[33] = {};  // another name to find a price's divisor by; may be empty
};

#pragma pack(push, 1)
struct TradeRecord {
  char UserID[21];
  char ManagerID[21];
  std::uint32_t VELDTradeID;  // the terminal's number of the trade; maps sort it as a signed number
  std::uint32_t VELDOrderID;  // the terminal's number of the order
  std::uint32_t Reserved;
  char ExchangeTradeID[33];
  char ExchangeTradeTime[23];  // like the other times in the exchange's own format
  std::uint32_t OrderID;
  char OrderTime[23];
  char ExchangeOrderNo[33];
  char ExchangeOrderTime[23];
  char Exchange[49];
  char SecurityID[49];
  char SecurityType[17];
  char Symbol[33];
  char ExpiryDate[33];
  char OptionType[17];
  double StrikePrice;
  char Text55107[49];  // the security's name; no screen shows it
  std::uint8_t Side;
  std::uint8_t OrderType;
  std::uint32_t Quantity;
  std::uint32_t PendingQuantity;
  std::uint32_t Value20036;  // like the other Value and Text fields kept and never shown
  double Price;
  std::uint32_t ProductType;
  std::uint8_t OpenClose;
  char ClientID[21];
  char MemberID[21];
  char CTCLID[21];
  char ReferenceText[65];
  std::uint32_t Value20083;
  std::uint32_t StrategyID;
  std::uint32_t Value20081;
  std::uint32_t Value20082;
  char Text55151[33];
  double Multiplier;
  const SecurityMaster* MasterRecord;
  std::uint32_t Value20101;
  char TerminalInfo[25];
  char Pancard[17];
  char AlgoID[17];
  std::uint16_t AlgoCategory;
  char ParticipantID[17];
};
#pragma pack(pop)

static_assert(sizeof(TradeRecord) == 750 && alignof(TradeRecord) == 1);
static_assert(offsetof(TradeRecord, VELDTradeID) == 42 && offsetof(TradeRecord, ExchangeTradeID) == 54 &&
              offsetof(TradeRecord, OrderID) == 110 && offsetof(TradeRecord, Exchange) == 193 &&
              offsetof(TradeRecord, StrikePrice) == 391 && offsetof(TradeRecord, Side) == 448 &&
              offsetof(TradeRecord, Price) == 462 && offsetof(TradeRecord, ClientID) == 475 &&
              offsetof(TradeRecord, ReferenceText) == 538 && offsetof(TradeRecord, Multiplier) == 652 &&
              offsetof(TradeRecord, MasterRecord) == 660 && offsetof(TradeRecord, TerminalInfo) == 672 &&
              offsetof(TradeRecord, ParticipantID) == 733);

// The key of every per-trade map: ids above 0x7FFFFFFF sort below 0.
inline std::int32_t TradeIdOf(const TradeRecord& record) noexcept {
  return static_cast<std::int32_t>(record.VELDTradeID);
}

// The master's value where a master is linked, else the record's own.
inline const char* ExchangeOf(const TradeRecord& record) noexcept {
  return record.MasterRecord != nullptr ? record.MasterRecord->Exchange : record.Exchange;
}
inline const char* SecurityIDOf(const TradeRecord& record) noexcept {
  return record.MasterRecord != nullptr ? record.MasterRecord->SecurityID : record.SecurityID;
}
inline const char* SecurityTypeOf(const TradeRecord& record) noexcept {
  return record.MasterRecord != nullptr ? record.MasterRecord->SecurityType : record.SecurityType;
}
inline const char* SymbolOf(const TradeRecord& record) noexcept {
  return record.MasterRecord != nullptr ? record.MasterRecord->Symbol : record.Symbol;
}
inline const char* ExpiryDateOf(const TradeRecord& record) noexcept {
  return record.MasterRecord != nullptr ? record.MasterRecord->ExpiryDate : record.ExpiryDate;
}
inline const char* OptionTypeOf(const TradeRecord& record) noexcept {
  return record.MasterRecord != nullptr ? record.MasterRecord->OptionType : record.OptionType;
}
inline double StrikePriceOf(const TradeRecord& record) noexcept {
  return record.MasterRecord != nullptr ? record.MasterRecord->StrikePrice : record.StrikePrice;
}
inline double MultiplierOf(const TradeRecord& record) noexcept {
  return record.MasterRecord != nullptr ? record.MasterRecord->Multiplier : record.Multiplier;
}

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

// A code of a field and its text, as screens and files show it.
struct CodeText {
  std::uint32_t Code;
  std::string_view Text;
};

inline constexpr CodeText kSides[] = {{1, "Buy"}, {2, "Sell"}};
inline constexpr CodeText kProductTypes[] = {{1, "NORMAL"}, {2, "DELIVERY"}, {3, "INTRADAY"}};
inline constexpr CodeText kOpenCloses[] = {
    {1, "Open"},           {2, "Close"},    {3, "ForceClose"},      {4, "CloseToday"},
    {5, "CloseYesterday"}, {6, "ForceOff"}, {7, "LocalForceClose"},
};
inline constexpr CodeText kOrderTypes[] = {
    {1, "Market"},
    {2, "Limit"},
    {3, "StopMarket"},
    {4, "StopLimit"},
    {11, "OCO"},
    {74, "MIT"},
    {78, "NegotiatedDealOrder"},
    {80, "PreOpenOrder"},
    {82, "MITLimit"},
    {87, "AuctionBuyIn"},
    {88, "AuctionSellOut"},
    {89, "AuctionTradingBuyIn"},
    {90, "AuctionTradingSellOut"},
    {101, "MultiLeg"},
    {102, "Spread"},
};

template <std::size_t Count>
constexpr std::string_view TextOfCode(const CodeText (&table)[Count], std::uint32_t code,
                                      std::string_view other) noexcept {
  for (const CodeText& row : table)
    if (row.Code == code) return row.Text;
  return other;
}

constexpr std::string_view SideText(std::uint8_t side) noexcept {
  return TextOfCode(kSides, side, "Both");
}
constexpr std::string_view OrderTypeText(std::uint8_t orderType) noexcept {
  return TextOfCode(kOrderTypes, orderType, "");
}
constexpr std::string_view ProductTypeText(std::uint32_t productType) noexcept {
  return TextOfCode(kProductTypes, productType, "*");
}
constexpr std::string_view OpenCloseText(std::uint8_t openClose) noexcept {
  return TextOfCode(kOpenCloses, openClose, "NONE");
}

// The 37 columns of a book, one row each: the only source of the rules of a column for display, filter, sort, column
// profile, CSV exports and trade files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

#include "trade_data/records/trade_record.h"

// A value in a record: its form and place.
struct ColumnField {
  enum class Kind : std::uint8_t {
    None,
    Server,
    Text,
    Integer,
    Short,
    Double,
    Side,
    OrderType,
    ProductType,
    OpenClose
  };
  static constexpr std::uint16_t kNoMaster = 0xFFFF;

  Kind Form = Kind::None;
  std::uint16_t Offset = 0;                // in the record
  std::uint16_t Size = 0;                  // bytes, the NUL of a text included
  std::uint16_t MasterOffset = kNoMaster;  // of the field of a linked master that replaces it in trade files
};

// The place of "HH:mm:ss" in "yyyyMMdd-HH:mm:ss".
inline constexpr std::uint16_t kClockPlace = 9, kClockLength = 8;

// Titles are aligned like their cells.
enum class ColumnAlign : std::uint8_t { Left = 0, Right = 1, Centre = 2 };

// How the grid shows a column and the filter bar compares it.
enum class GridCell : std::uint8_t {
  Shown,        // the value, filtered as text
  WholeNumber,  // the value, filtered as a whole number
  Clock,        // the time of day of a date and time, filtered as text
  Blank,        // nothing; every filter accepts it
};

// How the CSV exports print the value.
enum class PlainCell : std::uint8_t { Value, Decimals6, Dated, Trimmed, Quoted, Empty };

// How a trade file prints the value.
struct FixedCell {
  enum class Rule : std::uint8_t {
    Value,       // unchanged, padded with trailing blanks to Width
    Time,        // date and time in words, in upper case, padded to Width
    Expiry,      // the linked master's if the caller gives a fallback
    Symbol,      // without trailing blanks; a linked master's is padded to Width
    OptionType,  // "XX" becomes one blank; padded to Width
    SideDigit,
    Price,   // two decimals, padded with leading blanks to Width; a longer number is not cut
    Strike,  // the same; no strike becomes one blank
    Quoted,
    OpenOrClose,
    AlwaysN,
    Empty,
    Pancard,  // the value of the next column
    Fallback,
  };
  Rule How = Rule::Value;
  std::uint8_t Width = 0;
};

struct TradeColumn {
  std::string_view Key;    // in the column profile
  std::string_view Title;  // in the grid, in the header of exports, and in description files
  int WidthPx;
  ColumnAlign Align;
  bool Visible;  // without a stored profile
  ColumnField Value;
  ColumnField Order;  // compared by a sort
  GridCell Grid;
  PlainCell Plain;
  FixedCell FO;  // derivatives trade file
  FixedCell CM;  // cash-market trade file
};

namespace trade_columns {

template <typename Type>
constexpr ColumnField::Kind KindOf() {
  if constexpr (std::is_array_v<Type>)
    return ColumnField::Kind::Text;
  else if constexpr (std::is_same_v<Type, double>)
    return ColumnField::Kind::Double;
  else if constexpr (std::is_same_v<Type, std::uint16_t>)
    return ColumnField::Kind::Short;
  else
    return ColumnField::Kind::Integer;
}

constexpr FixedCell As(FixedCell::Rule rule, std::uint8_t width = 0) {
  return {rule, width};
}
constexpr FixedCell Pad(std::uint8_t width) {
  return {FixedCell::Rule::Value, width};
}

#define FIELD(name)                                                                               \
  ColumnField {                                                                                   \
    KindOf<decltype(TradeRecord::name)>(), offsetof(TradeRecord, name), sizeof(TradeRecord::name) \
  }
#define MASTERED(name)                                                                             \
  ColumnField {                                                                                    \
    KindOf<decltype(TradeRecord::name)>(), offsetof(TradeRecord, name), sizeof(TradeRecord::name), \
        static_cast<std::uint16_t>(offsetof(SecurityMaster, name))                                 \
  }
#define CODED(name)                                                                 \
  ColumnField {                                                                     \
    ColumnField::Kind::name, offsetof(TradeRecord, name), sizeof(TradeRecord::name) \
  }

using enum ColumnAlign;
using enum FixedCell::Rule;
inline constexpr bool kShown = true, kHidden = false;
inline constexpr GridCell kText = GridCell::Shown, kNumber = GridCell::WholeNumber, kClock = GridCell::Clock,
                          kBlank = GridCell::Blank;
inline constexpr PlainCell kValue = PlainCell::Value, kDecimals6 = PlainCell::Decimals6;
inline constexpr FixedCell kSame{};  // the value unchanged
inline constexpr ColumnField kNothing{}, kServer{.Form = ColumnField::Kind::Server};
inline constexpr ColumnField kClockOfOrder{ColumnField::Kind::Text, offsetof(TradeRecord, OrderTime) + kClockPlace,
                                           kClockLength};

// clang-format off
inline constexpr TradeColumn kTable[] = {
    {"colServer", "Server", 60, Left, kHidden, kServer, kNothing, kText, kValue, kSame, kSame},
    {"colUserID", "UserID", 60, Left, kHidden, FIELD(UserID), FIELD(UserID), kText, kValue, Pad(5), Pad(5)},
    {"colVELDTradeID", "VELDTradeID", 53, Right, kShown, FIELD(VELDTradeID), FIELD(VELDTradeID), kText, kValue,
     Pad(8), Pad(8)},
    {"colVELDOrderID", "VELDOrderID", 53, Right, kShown, FIELD(VELDOrderID), FIELD(VELDOrderID), kText, kValue,
     Pad(10), Pad(10)},
    {"colOrderID", "OrderID", 70, Right, kShown, FIELD(OrderID), FIELD(OrderID), kText, kValue, kSame, kSame},
    {"colExchangeOrderNo", "ExchangeOrderNo", 60, Right, kShown, FIELD(ExchangeOrderNo), FIELD(ExchangeOrderNo), kText,
     kValue, Pad(16), Pad(16)},
    // Intentional: sorts by the order number, not the trade's.
    {"colExchangeTradeID", "ExchangeTradeID", 60, Right, kShown, FIELD(ExchangeTradeID), FIELD(ExchangeOrderNo), kText,
     kValue, Pad(8), Pad(16)},
    {"colOrderTime", "OrderTime", 60, Left, kShown, FIELD(OrderTime), FIELD(OrderTime), kText, kValue, kSame, kSame},
    {"colExchangeOrderTime", "ExchangeOrderTime", 60, Right, kShown, FIELD(ExchangeOrderTime), FIELD(ExchangeOrderTime),
     kText, kValue, As(Time, 20), As(Time, 20)},
    // Intentional: sorts by the order's time, not the trade's.
    {"colExchangeTradeTime", "ExchangeTradeTime", 150, Right, kShown, FIELD(ExchangeTradeTime),
     FIELD(ExchangeOrderTime), kText, PlainCell::Dated, As(Time, 20), As(Time, 20)},
    {"colExchange", "Exchange", 48, Left, kShown, MASTERED(Exchange), FIELD(Exchange), kText, kValue, kSame, kSame},
    {"colSecurityID", "SecurityID", 100, Right, kShown, MASTERED(SecurityID), FIELD(SecurityID), kText, kValue, kSame,
     kSame},
    {"colSymbol", "Symbol", 47, Left, kShown, MASTERED(Symbol), FIELD(Symbol), kText, PlainCell::Trimmed,
     As(Symbol, 10), As(Symbol, 10)},
    {"colExpiryDate", "ExpiryDate", 69, Centre, kShown, MASTERED(ExpiryDate), FIELD(ExpiryDate), kText, kValue,
     As(Expiry), kSame},
    {"colSecurityType", "SecurityType", 80, Left, kShown, MASTERED(SecurityType), FIELD(SecurityType), kText, kValue,
     Pad(6), As(Empty)},
    {"colOptionType", "OptionType", 80, Left, kShown, MASTERED(OptionType), FIELD(OptionType), kText, kValue,
     As(OptionType, 2), As(Empty)},
    {"colSide", "Side", 40, Left, kShown, CODED(Side), CODED(Side), kText, kValue, As(SideDigit), As(SideDigit)},
    {"colOrderType", "OrderType", 55, Left, kShown, CODED(OrderType), CODED(OrderType), kText, kValue, kSame, kSame},
    {"colQuantity", "Quantity", 47, Right, kShown, FIELD(Quantity), FIELD(Quantity), kText, kValue, Pad(9), Pad(9)},
    {"colPendingQuantity", "PendingQuantity", 45, Right, kShown, FIELD(PendingQuantity), FIELD(PendingQuantity), kText,
     kValue, kSame, kSame},
    {"colPrice", "Price", 65, Right, kShown, FIELD(Price), FIELD(Price), kText, kDecimals6, As(Price, 12),
     As(Price, 12)},
    {"colStrikePrice", "StrikePrice", 80, Right, kShown, MASTERED(StrikePrice), FIELD(StrikePrice), kNumber, kDecimals6,
     As(Strike, 10), As(Empty)},
    {"colClientID", "ClientID", 80, Left, kShown, FIELD(ClientID), FIELD(ClientID), kText, kValue, Pad(10), Pad(10)},
    {"colReferenceText", "ReferenceText", 150, Left, kShown, FIELD(ReferenceText), FIELD(ReferenceText), kText,
     PlainCell::Quoted, As(Quoted), As(Quoted)},
    {"colManagerID", "ManagerID", 150, Left, kShown, FIELD(ManagerID), FIELD(ManagerID), kText, kValue, kSame, kSame},
    {"colMemberID", "MemberID", 150, Left, kShown, FIELD(MemberID), FIELD(MemberID), kText, kValue, Pad(12), Pad(12)},
    // Intentional: the title is the key; the headers of all exports repeat it.
    {"colStrategyID", "colStrategyID", 150, Left, kShown, FIELD(StrategyID), FIELD(StrategyID), kText, kValue, kSame,
     kSame},
    {"colCTCLID", "CTCLID", 150, Left, kShown, FIELD(CTCLID), FIELD(CTCLID), kText, kValue, Pad(5), Pad(5)},
    {"colProductType", "ProductType", 150, Left, kShown, CODED(ProductType), CODED(ProductType), kText, kValue, kSame,
     kSame},
    {"colOpenClose", "OpenClose", 150, Left, kShown, CODED(OpenClose), CODED(OpenClose), kText, kValue,
     As(OpenOrClose, 5), As(AlwaysN)},
    {"colMultiplier", "Multiplier", 50, Right, kShown, MASTERED(Multiplier), FIELD(Multiplier), kText, kValue, kSame,
     As(Pancard)},
    {"colPancard", "Pancard", 150, Left, kShown, FIELD(Pancard), FIELD(Pancard), kText, kValue, kSame, kSame},
    {"colTerminalInfo", "TerminalInfo", 150, Right, kShown, FIELD(TerminalInfo), FIELD(TerminalInfo), kText, kValue,
     kSame, kSame},
    {"colAlgoID", "AlgoID", 150, Left, kShown, FIELD(AlgoID), FIELD(AlgoID), kText, kValue, kSame, kSame},
    // Intentional: the grid shows neither of these two columns, files do.
    {"colAlgoCategory", "AlgoCategory", 120, Left, kShown, FIELD(AlgoCategory), FIELD(AlgoCategory), kBlank, kValue,
     kSame, kSame},
    {"colParticipantID", "ParticipantID", 150, Left, kShown, FIELD(ParticipantID), FIELD(ParticipantID), kBlank, kValue,
     kSame, kSame},
    {"colTime", "Time", 60, Left, kShown, FIELD(OrderTime), kClockOfOrder, kClock, PlainCell::Empty, As(Fallback),
     As(Fallback)},
};
// clang-format on
#undef FIELD
#undef MASTERED
#undef CODED

}  // namespace trade_columns

inline constexpr auto& kTradeColumns = trade_columns::kTable;
inline constexpr int kTradeColumnCount = static_cast<int>(std::size(kTradeColumns));
static_assert(kTradeColumnCount == 37);

constexpr bool IsTradeColumn(int column) {
  return column >= 0 && column < kTradeColumnCount;
}

// The index of a column by its key, at compile time.
consteval int TradeColumnIndex(std::string_view key) {
  for (int i = 0; i < kTradeColumnCount; ++i)
    if (kTradeColumns[i].Key == key) return i;
  throw "no column has this key";
}
static_assert(TradeColumnIndex("colStrikePrice") == 21 && TradeColumnIndex("colTime") == 36);

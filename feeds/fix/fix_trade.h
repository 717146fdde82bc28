// The mapping: which FIX fields each field of a trade message comes from, and TradeFrame, which writes the message.
//
// A "slot" is one FIX field that is read, or one thing that a venue may choose to send elsewhere. The rows of
// kTradeFieldRows say everything else; the reader (fix_report.h) and the writer loop over them.
#pragma once

#include <array>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

#include "trade_data/records/trade_impl.h"

// What the reader fills beside plain FIX fields: parties of a role and choices of a venue. Above every FIX tag that has
// a slot.
enum FixSource : std::uint16_t {
  kMemberParty = 60001,
  kUserParty,
  kOtherUserParty,
  kCtclParty,
  kClientChoice,
  kUserChoice,
  kCtclChoice,
  kDefaultExchange,
  kDefaultUser,
};

struct FixSlot {
  std::uint16_t Tag;
  bool OfSide = false;  // in a TradeCaptureReport it belongs to the side that it stands in
};

// Sorted by tag. The choices are copies of the field that the venue sends.
inline constexpr FixSlot kFixSlots[] = {
    {1, true},
    {11, true},
    {17},
    {19},
    {20},
    {30},
    {31},
    {32},
    {37, true},
    {40, true},
    {48},
    {54, true},
    {55},
    {58, true},
    {60},
    {77, true},
    {150},
    {151, true},
    {167},
    {198, true},
    {200},
    {201},
    {202},
    {207},
    {231},
    {487},
    {541},
    {571},
    {572},
    {856},
    {939},
    {1003},
    {kMemberParty, true},
    {kUserParty, true},
    {kOtherUserParty, true},
    {kCtclParty, true},
    {kClientChoice, true},
    {kUserChoice, true},
    {kCtclChoice, true},
    {kDefaultExchange},
    {kDefaultUser},
};
inline constexpr std::size_t kFixSlotCount = std::size(kFixSlots);

// The slot of a FIX tag or source; kFixSlotCount if there is none.
constexpr std::size_t FixSlotOf(std::uint32_t tag) noexcept {
  std::size_t slot = 0;
  while (slot < kFixSlotCount && kFixSlots[slot].Tag != tag) ++slot;
  return slot;
}

// The values of one execution, as views of its text. An empty value is as good as none.
class FixValues {
 public:
  bool Has(std::size_t slot) const noexcept { return (Present >> slot & 1) != 0; }
  std::string_view ValueOf(std::size_t slot) const noexcept { return Has(slot) ? Values[slot] : std::string_view(); }
  // Requires: the value is not empty.
  void Put(std::size_t slot, std::string_view value) noexcept { Present |= Keep(slot, value); }

  // The same in two parts, so that a walk over many values has Present in a register: the bit to set, 0 if the value is
  // empty, is returned.
  std::uint64_t Keep(std::size_t slot, std::string_view value) noexcept {
    Values[slot] = value;
    return std::uint64_t{!value.empty()} << slot;
  }
  std::uint64_t Present = 0;  // bit n: slot n has a value

  template <std::uint16_t kTag>
  std::string_view At() const noexcept {
    static_assert(FixSlotOf(kTag) < kFixSlotCount);
    return ValueOf(FixSlotOf(kTag));
  }
  template <std::uint16_t kTag>
  void Set(std::string_view value) noexcept {
    constexpr std::size_t kSlot = FixSlotOf(kTag);
    static_assert(kSlot < kFixSlotCount);
    Present &= ~(std::uint64_t{1} << kSlot);
    if (!value.empty()) Put(kSlot, value);
  }
  void FillFrom(const FixValues& other) noexcept {
    for (std::size_t i = 0; i < kFixSlotCount; ++i)
      if (!Has(i) && other.Has(i)) Put(i, other.Values[i]);
  }

 private:
  static_assert(kFixSlotCount < 64);
  std::array<std::string_view, kFixSlotCount> Values;
};

// How a value becomes one of the wire. The numbers and ids that the mapper gives come from TradeNumbers.
enum class FixKind : std::uint8_t {
  Text,
  Time,
  Price,  // told if it is wrong, as are all but those that a trade must have
  Quantity,
  LastPrice,  // those that a trade must have, which TradeAmounts holds
  LastQuantity,
  Side,         // 1, 3: 1; 2, 5, 6: 2
  OrderType,    // 1 to 4; anything else is 0
  OpenClose,    // O: 1, C: 2; anything else is 0
  OptionType,   // 0: PE, 1: CE; anything else is XX
  Multiplier,   // a price, or the venue's default
  Terminator,   // of the key section
  TradeNumber,  // VELDTradeID
  OrderNumber,  // VELDOrderID
  ClientOrder,  // OrderID
  TradeId,      // ExchangeTradeID
  OrderId,      // ExchangeOrderNo
};

// The first source that has a value is taken.
struct TradeFieldRow {
  std::uint16_t Tag;
  FixKind Kind;
  std::uint16_t Sources[4] = {};
};

// In the order of the wire.
inline constexpr TradeFieldRow kTradeFieldRows[] = {
    {55001, FixKind::Text, {kUserChoice, kUserParty, kOtherUserParty, kDefaultUser}},  // UserID
    {20008, FixKind::TradeNumber},
    {20009, FixKind::OrderNumber},
    {55101, FixKind::TradeId},
    {55100, FixKind::OrderId},
    {65535, FixKind::Terminator},
    {55010, FixKind::Text, {207, 30, kDefaultExchange}},  // Exchange
    {55104, FixKind::Text, {48, 55}},                     // SecurityID
    {55105, FixKind::Text, {167}},                        // SecurityType
    {55103, FixKind::Text, {55}},                         // Symbol
    {55143, FixKind::Text, {541, 200}},                   // ExpiryDate
    {55106, FixKind::OptionType, {201}},
    {40004, FixKind::Price, {202}},  // StrikePrice
    {40008, FixKind::Multiplier, {231}},
    {55118, FixKind::Time, {60}},  // ExchangeTradeTime
    {20011, FixKind::ClientOrder, {11}},
    {101, FixKind::Side, {54}},
    {102, FixKind::OrderType, {40}},
    {20014, FixKind::LastQuantity, {32}},
    {20013, FixKind::Quantity, {151}},  // PendingQuantity
    {40002, FixKind::LastPrice, {31}},
    {55102, FixKind::Text, {kClientChoice}},            // ClientID
    {55131, FixKind::Text, {kMemberParty}},             // MemberID
    {55012, FixKind::Text, {kCtclChoice, kCtclParty}},  // CTCLID
    {55109, FixKind::Text, {58}},                       // ReferenceText
    {115, FixKind::OpenClose, {77}},
};

// A copy: with -fsanitize=undefined gcc 12 takes no comparison of addresses for a constant.
constexpr std::optional<WireField> WireFieldOf(std::uint16_t tag) noexcept {
  for (const WireField& field : kTradeKeyFields)
    if (field.Tag == tag) return field;
  for (const WireField& field : kTradeBodyFields)
    if (field.Tag == tag) return field;
  return std::nullopt;
}

constexpr bool IsTradeText(FixKind kind) noexcept {
  return kind == FixKind::Text || kind == FixKind::Time || kind == FixKind::OptionType || kind == FixKind::TradeId ||
         kind == FixKind::OrderId;
}

// Every row is a field of the trade message, texts are texts there, and every source has a slot.
constexpr bool FitsTradeMessage() {
  for (const TradeFieldRow& row : kTradeFieldRows) {
    for (const std::uint16_t source : row.Sources)
      if (source != 0 && FixSlotOf(source) == kFixSlotCount) return false;
    if (row.Kind == FixKind::Terminator) continue;
    const std::optional<WireField> field = WireFieldOf(row.Tag);
    if (!field || IsTradeText(row.Kind) != (field->Kind == Field::Text)) return false;
  }
  return true;
}
static_assert(FitsTradeMessage());

// The longest text of a field of the trade message.
template <std::uint16_t kTag>
constexpr std::size_t LongestText() noexcept {
  static_assert(WireFieldOf(kTag).has_value() && WireFieldOf(kTag)->Kind == Field::Text);
  return WireFieldOf(kTag)->Limit;
}

// 31 and 32, read once.
struct TradeAmounts {
  double Price = 0;
  std::uint32_t Quantity = 0;
};

// What the mapper gives a trade.
struct TradeNumbers {
  std::uint32_t Trade = 0;
  std::uint32_t Order = 0;
  std::uint32_t ClientOrder = 0;
  std::string_view TradeId;
  std::string_view OrderId;
  TradeAmounts Amounts;
  double Multiplier = 1;  // of a text without one
  bool IsPlain = false;   // no value has control characters: they need not be looked for
};

// True without control characters, which would end a record's text or a line of the daily file.
bool IsPlainText(std::string_view text) noexcept;
// A copy that is plain, with question marks for control characters, cut at that many characters.
std::string PlainText(std::string_view text, std::size_t longest);

// Appends a sentence, separated from the one before.
void TellReason(std::string& reason, std::string_view sentence);

// What forbids a trade, as a sentence; empty if it has all that a trade must have: 31, 32, 54, and 48 or 55. Only a
// bust may have the quantity 0, and has it always.
std::string MistakeOfTrade(const FixValues& values, bool isBust, TradeAmounts& amounts);
// "TAG=VALUE MISTAKE".
std::string Sentence(std::string_view tag, std::string_view value, std::string_view mistake);

// 1 for a buy, 2 for a sell, 0 for any other side.
std::uint8_t SideCode(std::string_view side) noexcept;

// One plain message 9101, written field by field into a block of its own.
class TradeFrame {
 public:
  // Requires: MistakeOfTrade found none. Adds to the reason what does not fit: texts are cut at their limit and control
  // characters become question marks; numbers that cannot be read become 0.
  void Write(const FixValues& values, const TradeNumbers& numbers, std::string& reason);
  const std::uint8_t* Data() const noexcept { return Bytes.data(); }
  std::size_t Size() const noexcept { return Used; }

 private:
  static constexpr std::size_t kLargest = [] {
    std::size_t size = kHeaderSize + 5 + sizeof(std::uint64_t);  // PutText stores whole words
    for (const TradeFieldRow& row : kTradeFieldRows)
      size += 5 + (row.Kind == FixKind::Terminator ? 0 : PlaceSize(*WireFieldOf(row.Tag)));
    return size;
  }();

  struct Step;
  struct Taken;
  // Each returns where the next field goes: a number in a register and no member, which each store might change.
  template <typename Value>
  static std::uint8_t* Put(std::uint8_t* place, std::uint16_t tag, Value value) noexcept;
  static std::uint8_t* PutText(std::uint8_t* place, std::uint16_t tag, std::string_view text) noexcept;
  static std::uint8_t* PutTold(std::uint8_t* place, const Step& step, const Taken& taken, bool isPlain,
                               std::string& reason);
  static std::uint8_t* PutValue(std::uint8_t* place, const Step& step, const Taken& taken, bool isPlain,
                                std::string& reason);
  template <std::size_t kRow>
  static std::uint8_t* PutRow(std::uint8_t* place, const FixValues& values, const TradeNumbers& numbers,
                              std::string& reason);

  std::array<std::uint8_t, kLargest> Bytes;
  std::size_t Used = 0;
};

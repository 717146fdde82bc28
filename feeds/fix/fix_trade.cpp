#include "feeds/fix/fix_trade.h"

#include <algorithm>
#include <utility>

#include "feeds/fix/fix_values.h"
#include "feeds/fix/id_table.h"

namespace {

constexpr std::uint16_t kTradeMessage = 9101;

// What a venue may send elsewhere is told by the name of the trade's field.
std::string NameOfSource(std::uint16_t source) {
  static constexpr const char* kNames[] = {"MemberID", "UserID", "UserID",   "CTCLID", "ClientID",
                                           "UserID",   "CTCLID", "Exchange", "UserID"};
  static_assert(std::size(kNames) == kDefaultUser - kMemberParty + 1);
  return source < kMemberParty ? std::to_string(source) : kNames[source - kMemberParty];
}

// The high bit of at least one byte if any is a control character.
constexpr std::uint64_t ControlBytes(std::uint64_t word) noexcept {
  return ((word - kByteOnes * 0x20) & ~word & kByteHighs) | ZeroBytes(word ^ (kByteOnes * 0x7F));
}

std::uint8_t CodeOf(std::string_view value, std::string_view first) noexcept {
  for (std::size_t i = 0; i < first.size(); ++i)
    if (value.size() == 1 && value[0] == first[i]) return static_cast<std::uint8_t>(i + 1);
  return 0;
}

std::string_view OptionTypeOf(std::string_view putOrCall) noexcept {
  if (putOrCall == "0") return "PE";
  return putOrCall == "1" ? "CE" : "XX";
}

}  // namespace

// A row with its sources as slots and the limit of its text, so that writing a field searches nothing.
struct TradeFrame::Step {
  std::uint16_t Tag;
  FixKind Kind;
  std::uint8_t SourceCount;
  std::uint8_t Limit;
  std::uint8_t Slots[std::size(TradeFieldRow{}.Sources)];

  static constexpr Step Of(const TradeFieldRow& row) {
    const std::optional<WireField> field = WireFieldOf(row.Tag);
    Step step{row.Tag, row.Kind, 0, static_cast<std::uint8_t>(field ? field->Limit : 0), {}};
    for (const std::uint16_t source : row.Sources)
      if (source != 0) step.Slots[step.SourceCount++] = static_cast<std::uint8_t>(FixSlotOf(source));
    return step;
  }
};

// A value with the source that it comes from.
struct TradeFrame::Taken {
  std::string_view Value;
  std::uint16_t Source = 0;

  static Taken Of(const Step& step, const FixValues& values) noexcept {
    for (std::size_t i = 0; i < step.SourceCount; ++i)
      if (values.Has(step.Slots[i])) return {values.ValueOf(step.Slots[i]), kFixSlots[step.Slots[i]].Tag};
    return {};
  }
  void Tell(std::string& reason, std::string_view mistake) const {
    TellReason(reason, Sentence(NameOfSource(Source), Value, mistake));
  }
  double Price(double missing, std::string& reason) const {
    double price = missing;
    if (Value.empty()) return missing;
    if (const char* mistake = ReadPrice(Value, price); mistake != nullptr)
      Tell(reason, mistake);
    else
      TellDigits(reason);
    return price;
  }
  void TellDigits(std::string& reason) const {
    if (ExceedsDouble(Value)) Tell(reason, "has more digits than are kept");
  }
  std::uint32_t Quantity(std::string& reason) const {
    std::uint32_t quantity = 0;
    if (Value.empty()) return 0;
    if (const char* mistake = ReadQuantity(Value, quantity); mistake != nullptr) Tell(reason, mistake);
    return quantity;
  }
};

void TellReason(std::string& reason, std::string_view sentence) {
  if (!reason.empty()) reason += "; ";
  reason += sentence;
}

bool IsPlainText(std::string_view text) noexcept {
  for (; text.size() >= 8; text.remove_prefix(8))
    if (ControlBytes(LoadValue<std::uint64_t>(text.data())) != 0) return false;
  return ControlBytes(LoadShortText(text) | (kByteOnes * ' ') << (8 * text.size())) == 0;
}

std::string PlainText(std::string_view text, std::size_t longest) {
  std::string plain(text.substr(0, longest));
  for (char& byte : plain)
    if (!IsPlainText({&byte, 1})) byte = '?';
  return plain;
}

std::string Sentence(std::string_view tag, std::string_view value, std::string_view mistake) {
  constexpr std::size_t kMostShown = 64;
  return std::string(tag)
      .append("=")
      .append(PlainText(value, kMostShown))
      .append(value.size() > kMostShown ? "... " : " ")
      .append(mistake);
}

std::uint8_t SideCode(std::string_view side) noexcept {
  if (side.size() != 1) return 0;
  switch (side[0]) {
    case '1':
    case '3':
      return 1;
    case '2':
    case '5':
    case '6':
      return 2;
  }
  return 0;
}

std::string MistakeOfTrade(const FixValues& values, bool isBust, TradeAmounts& amounts) {
  const std::string_view side = values.At<54>(), priceText = values.At<31>(), quantityText = values.At<32>();
  if (values.At<48>().empty() && values.At<55>().empty()) return "48 and 55 are missing";
  if (side.empty()) return "54 is missing";
  if (SideCode(side) == 0) return Sentence("54", side, "is no side of a trade");
  if (priceText.empty()) return "31 is missing";
  if (const char* mistake = ReadPrice(priceText, amounts.Price)) return Sentence("31", priceText, mistake);
  amounts.Quantity = 0;
  if (isBust) return {};
  if (quantityText.empty()) return "32 is missing";
  if (const char* mistake = ReadQuantity(quantityText, amounts.Quantity)) return Sentence("32", quantityText, mistake);
  return amounts.Quantity == 0 ? std::string("32 is 0") : std::string();
}

template <typename Value>
inline std::uint8_t* TradeFrame::Put(std::uint8_t* place, std::uint16_t tag, Value value) noexcept {
  // Mark and tag at once, with a byte that the value overwrites.
  StoreValue(place, kFieldMark | std::uint32_t{tag} << 8);
  StoreValue(place + 3, value);
  return place + 3 + sizeof value;
}

// Requires: at most the field's limit.
[[gnu::always_inline]] inline std::uint8_t* TradeFrame::PutText(std::uint8_t* place, std::uint16_t tag,
                                                                std::string_view text) noexcept {
  place = Put(place, tag, static_cast<std::uint16_t>(text.size()));
  if (text.size() < 8) {
    StoreValue(place, LoadShortText(text));
    return place + text.size();
  }
  // Texts are short: eight bytes at a time, the last eight over some that are there.
  std::uint8_t* const end = place + text.size();
  for (const char* from = text.data(); end - place > 8; from += 8, place += 8)
    StoreValue(place, LoadValue<std::uint64_t>(from));
  StoreValue(end - 8, LoadValue<std::uint64_t>(text.data() + text.size() - 8));
  return end;
}

std::uint8_t* TradeFrame::PutTold(std::uint8_t* place, const Step& step, const Taken& taken, bool isPlain,
                                  std::string& reason) {
  if (!isPlain) taken.Tell(reason, "has control characters");
  if (taken.Value.size() > step.Limit) taken.Tell(reason, "is cut to " + std::to_string(step.Limit) + " characters");
  return PutText(place, step.Tag, PlainText(taken.Value, step.Limit));
}

[[gnu::always_inline]] inline std::uint8_t* TradeFrame::PutValue(std::uint8_t* place, const Step& step,
                                                                 const Taken& taken, bool isPlain,
                                                                 std::string& reason) {
  isPlain = isPlain || IsPlainText(taken.Value);
  if (isPlain && taken.Value.size() <= step.Limit) return PutText(place, step.Tag, taken.Value);
  return PutTold(place, step, taken, isPlain, reason);
}

// Made for each row: its kind, tag, sources and limit are constants there.
template <std::size_t kRow>
inline std::uint8_t* TradeFrame::PutRow(std::uint8_t* place, const FixValues& values, const TradeNumbers& numbers,
                                        std::string& reason) {
  static constexpr Step step = Step::Of(kTradeFieldRows[kRow]);
  const Taken taken = Taken::Of(step, values);
  switch (step.Kind) {
    case FixKind::Text:
      return PutValue(place, step, taken, numbers.IsPlain, reason);
    case FixKind::Time:
      // The format has no room for fractions beyond a millisecond's, which is no loss to tell.
      if (IsFixTime(taken.Value)) return PutText(place, step.Tag, taken.Value.substr(0, step.Limit));
      if (!taken.Value.empty()) taken.Tell(reason, "is no time");
      return PutValue(place, step, taken, numbers.IsPlain, reason);
    case FixKind::OptionType:
      return PutText(place, step.Tag, OptionTypeOf(taken.Value));
    case FixKind::TradeId:
      return PutText(place, step.Tag, numbers.TradeId);
    case FixKind::OrderId:
      return PutText(place, step.Tag, numbers.OrderId);
    case FixKind::Price:
      return Put(place, step.Tag, taken.Price(0, reason));
    case FixKind::Multiplier:
      return Put(place, step.Tag, taken.Price(numbers.Multiplier, reason));
    case FixKind::Quantity:
      return Put(place, step.Tag, taken.Quantity(reason));
    case FixKind::LastPrice:
      taken.TellDigits(reason);
      return Put(place, step.Tag, numbers.Amounts.Price);
    case FixKind::LastQuantity:
      return Put(place, step.Tag, numbers.Amounts.Quantity);
    case FixKind::Side:
      return Put(place, step.Tag, SideCode(taken.Value));
    case FixKind::OrderType:
      return Put(place, step.Tag, CodeOf(taken.Value, "1234"));
    case FixKind::OpenClose:
      return Put(place, step.Tag, CodeOf(taken.Value, "OC"));
    case FixKind::Terminator:
      return Put(place, step.Tag, std::uint8_t{0}) - 1;
    case FixKind::TradeNumber:
      return Put(place, step.Tag, numbers.Trade);
    case FixKind::OrderNumber:
      return Put(place, step.Tag, numbers.Order);
    case FixKind::ClientOrder:
      return Put(place, step.Tag, numbers.ClientOrder);
  }
  return place;
}

void TradeFrame::Write(const FixValues& values, const TradeNumbers& numbers, std::string& reason) {
  Bytes[0] = kFieldMark;
  StoreValue(&Bytes[kProtocolOffset], kProtocolWord);
  StoreValue(&Bytes[kModeOffset], kModePlain);
  Bytes[kSecondMarkOffset] = kFieldMark;
  StoreValue(&Bytes[kLengthTagOffset], kLengthTag);
  std::uint8_t* place = Put(&Bytes[kHeaderSize], 10002, kTradeMessage);
  [&]<std::size_t... kRows>(std::index_sequence<kRows...>) {
    ((place = PutRow<kRows>(place, values, numbers, reason)), ...);
  }
  (std::make_index_sequence<std::size(kTradeFieldRows)>());
  Used = static_cast<std::size_t>(place - Bytes.data());
  StoreValue(&Bytes[kLengthOffset], static_cast<std::uint16_t>(Used - kHeaderSize));
}

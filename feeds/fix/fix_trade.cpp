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
  if (value.size() != 1) return 0;
  const std::size_t found = first.find(value[0]);
  return found == std::string_view::npos ? std::uint8_t{0} : static_cast<std::uint8_t>(found + 1);
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
    else if (ExceedsDouble(Value))
      Tell(reason, "has more digits than are kept");
    return price;
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

std::string MistakeOfTrade(const FixValues& values, bool isBust) {
  std::uint32_t quantity = 0;
  double price = 0;
  const std::string_view side = values.At<54>(), priceText = values.At<31>(), quantityText = values.At<32>();
  if (values.At<48>().empty() && values.At<55>().empty()) return "48 and 55 are missing";
  if (side.empty()) return "54 is missing";
  if (SideCode(side) == 0) return Sentence("54", side, "is no side of a trade");
  if (priceText.empty()) return "31 is missing";
  if (const char* mistake = ReadPrice(priceText, price)) return Sentence("31", priceText, mistake);
  if (isBust) return {};
  if (quantityText.empty()) return "32 is missing";
  if (const char* mistake = ReadQuantity(quantityText, quantity)) return Sentence("32", quantityText, mistake);
  return quantity == 0 ? "32 is 0" : "";
}

template <typename Value>
void TradeFrame::Put(std::uint16_t tag, Value value) noexcept {
  std::uint8_t* place = &Bytes[Used];
  place[0] = kFieldMark;
  StoreValue(place + 1, tag);
  StoreValue(place + 3, value);
  Used += 3 + sizeof value;
}

// Requires: at most the field's limit.
void TradeFrame::PutText(std::uint16_t tag, std::string_view text) noexcept {
  Put(tag, static_cast<std::uint16_t>(text.size()));
  // Texts are short: eight bytes at a time, the last ones with what is overwritten next.
  std::uint8_t* place = &Bytes[Used];
  Used += text.size();
  for (; text.size() >= 8; text.remove_prefix(8), place += 8) StoreValue(place, LoadValue<std::uint64_t>(text.data()));
  StoreValue(place, LoadShortText(text));
}

void TradeFrame::PutMark(std::uint16_t tag) noexcept {
  Bytes[Used] = kFieldMark;
  StoreValue(&Bytes[Used + 1], tag);
  Used += 3;
}

void TradeFrame::PutTold(const Step& step, const Taken& taken, bool isPlain, std::string& reason) {
  isPlain = isPlain || IsPlainText(taken.Value);
  if (!isPlain) taken.Tell(reason, "has control characters");
  if (taken.Value.size() > step.Limit) taken.Tell(reason, "is cut to " + std::to_string(step.Limit) + " characters");
  PutText(step.Tag, PlainText(taken.Value, step.Limit));
}

inline void TradeFrame::PutValue(const Step& step, const Taken& taken, bool isPlain, std::string& reason) {
  if (isPlain && taken.Value.size() <= step.Limit) return PutText(step.Tag, taken.Value);
  PutTold(step, taken, isPlain, reason);
}

// Made for each row: its kind, tag, sources and limit are constants there.
template <std::size_t kRow>
inline void TradeFrame::WriteRow(const FixValues& values, const TradeNumbers& numbers, std::string& reason) {
  static constexpr Step step = Step::Of(kTradeFieldRows[kRow]);
  const Taken taken = Taken::Of(step, values);
  switch (step.Kind) {
    case FixKind::Text:
      return PutValue(step, taken, numbers.IsPlain, reason);
    case FixKind::Time:
      // The format has no room for fractions beyond a millisecond's, which is no loss to tell.
      if (IsFixTime(taken.Value)) return PutText(step.Tag, taken.Value.substr(0, step.Limit));
      if (!taken.Value.empty()) taken.Tell(reason, "is no time");
      return PutValue(step, taken, numbers.IsPlain, reason);
    case FixKind::OptionType:
      return PutText(step.Tag, OptionTypeOf(taken.Value));
    case FixKind::TradeId:
      return PutText(step.Tag, numbers.TradeId);
    case FixKind::OrderId:
      return PutText(step.Tag, numbers.OrderId);
    case FixKind::Price:
      return Put(step.Tag, taken.Price(0, reason));
    case FixKind::Multiplier:
      return Put(step.Tag, taken.Price(numbers.Multiplier, reason));
    case FixKind::Quantity:
      return Put(step.Tag, taken.Quantity(reason));
    case FixKind::Side:
      return Put(step.Tag, SideCode(taken.Value));
    case FixKind::OrderType:
      return Put(step.Tag, CodeOf(taken.Value, "1234"));
    case FixKind::OpenClose:
      return Put(step.Tag, CodeOf(taken.Value, "OC"));
    case FixKind::Terminator:
      return PutMark(step.Tag);
    case FixKind::TradeNumber:
      return Put(step.Tag, numbers.Trade);
    case FixKind::OrderNumber:
      return Put(step.Tag, numbers.Order);
    case FixKind::ClientOrder:
      return Put(step.Tag, numbers.ClientOrder);
  }
}

void TradeFrame::Write(const FixValues& values, const TradeNumbers& numbers, std::string& reason) {
  Bytes[0] = kFieldMark;
  StoreValue(&Bytes[kProtocolOffset], kProtocolWord);
  StoreValue(&Bytes[kModeOffset], kModePlain);
  Bytes[kSecondMarkOffset] = kFieldMark;
  StoreValue(&Bytes[kLengthTagOffset], kLengthTag);
  Used = kHeaderSize;
  Put(10002, kTradeMessage);
  [&]<std::size_t... kRows>(std::index_sequence<kRows...>) {
    (WriteRow<kRows>(values, numbers, reason), ...);
  }
  (std::make_index_sequence<std::size(kTradeFieldRows)>());
  StoreValue(&Bytes[kLengthOffset], static_cast<std::uint16_t>(Used - kHeaderSize));
}

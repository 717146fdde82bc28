#include "feeds/fix/fix_report.h"

#include <charconv>

#include "feeds/fix/fix_values.h"

namespace {

// The marks of tags, what the walk does with their fields: stores it in the slot of that number, or one of these. Bit
// 7: a choice takes it too.
constexpr std::uint8_t kIsChoice = 0x80;
constexpr std::uint8_t kNothing = kFixSlotCount, kPartyId = 0x7E, kPartyRole = 0x7D, kSideGroup = 0x7C,
                       kSideStart = 0x7B;
static_assert(kNothing < kSideStart);

constexpr std::string_view kHead = "8=FIX\0019=0\00135=8\001", kTrailer = "10=000\001";

std::uint16_t OrElse(std::uint16_t choice, std::uint16_t standard) noexcept {
  return choice != 0 ? choice : standard;
}

// 0 for anything else.
std::uint32_t NumberOf(std::string_view text) noexcept {
  std::uint32_t number = 0;
  const auto [last, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && last == text.data() + text.size() ? number : 0;
}

void AddPair(std::string& text, std::uint32_t tag, std::string_view value) {
  text.append(std::to_string(tag)).append("=").append(value).push_back(kSoh);
}

FixReportType TypeOf(std::string_view value) noexcept {
  if (value == "8") return FixReportType::Execution;
  return value == "AE" ? FixReportType::TradeCapture : FixReportType::Other;
}

// A value that decides; the first row that holds does.
struct KindRow {
  std::size_t Slot;
  std::string_view Value;
  FixReportKind Kind;
};

constexpr KindRow kExecutionKinds[] = {
    {FixSlotOf(20), "3", FixReportKind::NoTrade},      // status
    {FixSlotOf(150), "I", FixReportKind::NoTrade},     // order status
    {FixSlotOf(20), "1", FixReportKind::Bust},         // cancel
    {FixSlotOf(150), "H", FixReportKind::Bust},        // trade cancel
    {FixSlotOf(20), "2", FixReportKind::Correction},   // correct
    {FixSlotOf(150), "G", FixReportKind::Correction},  // trade correct
};

constexpr KindRow kCaptureKinds[] = {
    {FixSlotOf(939), "1", FixReportKind::NoTrade},     // rejected
    {FixSlotOf(856), "3", FixReportKind::NoTrade},     // declined
    {FixSlotOf(856), "1", FixReportKind::NoTrade},     // alleged by the other side
    {FixSlotOf(856), "11", FixReportKind::NoTrade},    // alleged, new
    {FixSlotOf(856), "12", FixReportKind::NoTrade},    // alleged, addendum
    {FixSlotOf(856), "13", FixReportKind::NoTrade},    // alleged, replaced
    {FixSlotOf(856), "14", FixReportKind::NoTrade},    // alleged, cancelled
    {FixSlotOf(856), "15", FixReportKind::NoTrade},    // alleged, broken
    {FixSlotOf(487), "1", FixReportKind::Bust},        // cancel
    {FixSlotOf(487), "4", FixReportKind::Bust},        // reverse
    {FixSlotOf(487), "5", FixReportKind::Bust},        // cancel as a party backs out
    {FixSlotOf(856), "6", FixReportKind::Bust},        // cancel
    {FixSlotOf(856), "7", FixReportKind::Bust},        // break
    {FixSlotOf(150), "H", FixReportKind::Bust},        // trade cancel
    {FixSlotOf(487), "2", FixReportKind::Correction},  // replace
    {FixSlotOf(856), "5", FixReportKind::Correction},  // replaced
    {FixSlotOf(150), "G", FixReportKind::Correction},  // trade correct
};

template <std::size_t Count>
const KindRow* FindKind(const KindRow (&rows)[Count], const FixValues& values) noexcept {
  for (const KindRow& row : rows)
    if (const std::string_view value = values.ValueOf(row.Slot); !value.empty() && value[0] == row.Value[0])
      if (value == row.Value) return &row;
  return nullptr;
}

constexpr bool IsLetter(std::string_view value, char letter) noexcept {
  return value.size() == 1 && value[0] == letter;
}

// A quantity that cannot be read is one: the trade is refused then, with a word.
bool HasQuantity(const FixValues& values) noexcept {
  std::uint32_t quantity = 0;
  const std::string_view text = values.At<32>();
  return !text.empty() && (ReadQuantity(text, quantity) != nullptr || quantity != 0);
}

FixReportKind KindOfFill(const FixValues& values, std::string& mistake) {
  const std::string_view type = values.At<150>(), transaction = values.At<20>();
  const bool isFill =
      IsLetter(type, 'F') || ((IsLetter(type, '1') || IsLetter(type, '2') || type.empty()) && HasQuantity(values));
  if (!isFill) return FixReportKind::NoTrade;
  if (type.empty())
    mistake = "150 is missing";
  else if (!transaction.empty() && transaction != "0")
    mistake = Sentence("20", transaction, "is not known");
  return mistake.empty() ? FixReportKind::Trade : FixReportKind::Refused;
}

}  // namespace

struct FixReportReader::Walk {
  explicit Walk(FixReport& report) : Report(report) {}

  FixReport& Report;
  FixValues* Side = nullptr;   // the last side
  std::string_view LastParty;  // 448
  bool HasSides = false;       // 552 was there
  bool HasTooMany = false;

  void Store(std::size_t slot, std::string_view value) noexcept {
    if (value.empty()) return;
    FixValues& target = Side != nullptr && kFixSlots[slot].OfSide ? *Side : Report.Common;
    if (!target.Has(slot))
      target.Put(slot, value);
    else if (target.ValueOf(slot) != value && kFixSlots[slot].Tag < kMemberParty)
      Report.Twice = kFixSlots[slot].Tag;
  }
  void StartSide(std::string_view value) {
    HasTooMany = HasTooMany || Report.Sides.size() == kMostSides;
    if (HasSides && !HasTooMany) Side = &Report.Sides.emplace_back();
    LastParty = {};
    Store(FixSlotOf(54), value);
  }
};

FixReportReader::FixReportReader(const MappingChoices& choices)
    : Choices{{{kClientChoice, choices.ClientTag}, {kUserChoice, choices.UserTag}, {kCtclChoice, choices.CtclTag}}},
      // A chosen tag stands for the party.
      Parties{{{kMemberParty, OrElse(choices.MemberRole, 1)},
               {kUserParty, choices.UserTag != 0 ? std::uint16_t{0} : OrElse(choices.UserRole, 12)},
               {kOtherUserParty, choices.UserTag + choices.UserRole != 0 ? std::uint16_t{0} : std::uint16_t{36}},
               {kCtclParty, choices.CtclTag != 0 ? std::uint16_t{0} : OrElse(choices.CtclRole, 38)}}} {
  for (std::uint32_t tag = 0; tag <= FixTagOrder::kTags; ++tag) Tags.MarkOf(tag) = kNothing;
  for (std::size_t slot = 0; slot < kFixSlotCount; ++slot)
    if (kFixSlots[slot].Tag < kMemberParty) Tags.MarkOf(kFixSlots[slot].Tag) = static_cast<std::uint8_t>(slot);
  Tags.MarkOf(54) = kSideStart;
  Tags.MarkOf(448) = kPartyId;
  Tags.MarkOf(452) = kPartyRole;
  Tags.MarkOf(552) = kSideGroup;
  for (const Choice& choice : Choices)
    if (choice.Tag != 0) Tags.MarkOf(choice.Tag) |= kIsChoice;
}

// Most values go nowhere or straight to a slot of their own.
bool FixReportReader::ReadBody(FixText& fields, FixReport& report) const {
  Walk walk(report);
  std::uint64_t present = 0;
  fields.ForEach(kNothing, [&](const FixField& field) {
    if (field.Mark < kNothing && (present >> field.Mark & 1) == 0) {
      present |= report.Common.Keep(field.Mark, field.Value);
      return;
    }
    if (walk.Side == nullptr) report.Common.Present = present;
    TakeRare(walk, field.Mark, field.Tag, field.Value);
    // From the first side on all values take this way, so that the short one does not ask for sides.
    present = walk.Side == nullptr ? report.Common.Present : ~std::uint64_t{0};
  });
  if (walk.Side == nullptr) report.Common.Present = present;
  return walk.HasTooMany;
}

std::string FixReportReader::Read(std::string_view text, FixReport& report) {
  report.Type = FixReportType::Other;
  report.Common.Present = 0;
  report.Sides.clear();
  report.SidesTold = report.Twice = 0;
  report.IsPlain = false;
  FixText fields(text, Tags);
  FixField field;
  if (!fields.Next(field) || field.Tag != 35) return "the text does not begin with 8, 9 and 35";
  report.Type = TypeOf(field.Value);
  if (report.Type == FixReportType::Other) return {};
  const bool hasTooMany = ReadBody(fields, report);
  report.IsPlain = fields.IsPlain();
  if (hasTooMany) return "the report has more than " + std::to_string(kMostSides) + " sides";
  return fields.IsWhole() ? std::string() : "the text is garbled at byte " + std::to_string(fields.Place());
}

void FixReportReader::TakeRare(Walk& walk, std::uint8_t mark, std::uint32_t tag, std::string_view value) const {
  if (value.empty()) return;
  if ((mark & kIsChoice) != 0) TakeChoices(walk, tag, value);
  switch (const std::uint8_t slot = mark & static_cast<std::uint8_t>(~kIsChoice)) {
    case kNothing:
      return;
    case kPartyId:
      walk.LastParty = value;
      return;
    case kPartyRole:
      return TakeParty(walk, value);
    case kSideGroup:
      walk.HasSides = walk.Report.Type == FixReportType::TradeCapture;
      walk.Report.SidesTold = NumberOf(value);
      return;
    case kSideStart:
      return walk.StartSide(value);
    default:
      walk.Store(slot, value);
  }
}

void FixReportReader::TakeChoices(Walk& walk, std::uint32_t tag, std::string_view value) const {
  for (const Choice& choice : Choices)
    if (choice.Tag == tag) walk.Store(FixSlotOf(choice.Source), value);
}

void FixReportReader::TakeParty(Walk& walk, std::string_view role) const {
  const std::uint32_t number = NumberOf(role);
  for (const Party& party : Parties)
    if (party.Role == number && number != 0) walk.Store(FixSlotOf(party.Source), walk.LastParty);
}

std::string FixReportReader::TextOf(const FixValues& values) const {
  std::string text(kHead);
  const auto valueOf = [&](std::uint16_t source) { return values.ValueOf(FixSlotOf(source)); };
  for (std::size_t slot = 0; slot < kFixSlotCount; ++slot)
    if (kFixSlots[slot].Tag < kMemberParty && values.Has(slot))
      AddPair(text, kFixSlots[slot].Tag, values.ValueOf(slot));
  for (const Choice& choice : Choices)
    if (FixSlotOf(choice.Tag) == kFixSlotCount && !valueOf(choice.Source).empty())
      AddPair(text, choice.Tag, valueOf(choice.Source));
  for (const Party& party : Parties)
    if (!valueOf(party.Source).empty()) {
      AddPair(text, 448, valueOf(party.Source));
      AddPair(text, 452, std::to_string(party.Role));
    }
  return text.append(kTrailer);
}

FixReportKind KindOfReport(FixReportType type, const FixValues& values, std::string& mistake) {
  const bool isCapture = type == FixReportType::TradeCapture;
  const KindRow* row = isCapture ? FindKind(kCaptureKinds, values) : FindKind(kExecutionKinds, values);
  if (row != nullptr) return row->Kind;
  return isCapture ? FixReportKind::Trade : KindOfFill(values, mistake);
}

#include "feeds/fix/trade_mapper.h"

#include <array>
#include <initializer_list>
#include <utility>

#include "feeds/fix/fix_report.h"
#include "feeds/fix/fix_text.h"
#include "feeds/fix/known_trades.h"

namespace {

// The kind of an id stands before it in keys that are not of an order and execution.
constexpr std::string_view kReportIdKey = "\001571", kTradeIdKey = "\0011003", kReusedKey = "\001reused";
constexpr std::string_view kSideLetters[] = {"", "B", "S"};

// One execution of a report: all of an ExecutionReport, or one side of a TradeCaptureReport.
struct Execution {
  FixValues& Values;
  std::uint64_t Place;
  IdKey Order;                  // 37, or what stands for it
  IdKey Client;                 // 11
  IdKey Own;                    // of the order id and the own id
  std::string_view Id;          // 17, or what stands for it
  std::string_view ShownId;     // with the side if the report has several
  std::string_view Side = {};   // "B", "S", "B2": of a TradeCaptureReport; empty for an ExecutionReport
  std::uint16_t SidePlace = 0;  // in group 552
  FixReportKind Kind = FixReportKind::NoTrade;

  bool IsSide() const noexcept { return !Side.empty(); }
  bool IsBust() const noexcept { return Kind == FixReportKind::Bust; }
};

constexpr unsigned Gravity(ReportOutcome outcome) noexcept {
  switch (outcome) {
    case ReportOutcome::NoTrade:
      return 0;
    case ReportOutcome::Repeat:
      return 1;
    case ReportOutcome::Trade:
    case ReportOutcome::Correction:
    case ReportOutcome::Bust:
      return 2;
    case ReportOutcome::Unknown:
      return 3;
    case ReportOutcome::Refused:
      return 4;
  }
  return 4;
}

constexpr ReportOutcome OutcomeOf(FixReportKind kind) noexcept {
  switch (kind) {
    case FixReportKind::Trade:
      return ReportOutcome::Trade;
    case FixReportKind::Correction:
      return ReportOutcome::Correction;
    case FixReportKind::Bust:
      return ReportOutcome::Bust;
    case FixReportKind::NoTrade:
      return ReportOutcome::NoTrade;
    case FixReportKind::Refused:
      return ReportOutcome::Refused;
  }
  return ReportOutcome::Refused;
}

std::string_view FirstOf(std::initializer_list<std::string_view> values) noexcept {
  for (const std::string_view value : values)
    if (!value.empty()) return value;
  return {};
}

std::string MistakeOfIds(const FixValues& values) {
  static constexpr std::uint16_t kIds[] = {11, 17, 19, 37, 198, 571, 572, 1003};
  for (const std::uint16_t tag : kIds)
    if (const std::string_view id = values.ValueOf(FixSlotOf(tag)); id.size() > KnownTrades::kLongestId)
      return Sentence(std::to_string(tag), id, "is too long for an id");
  return {};
}

// An off-book trade has no order: what it was agreed under, or the trade itself, stands for it.
void FillCaptureIds(FixValues& values) noexcept {
  values.Set<17>(FirstOf({values.At<17>(), values.At<1003>(), values.At<571>()}));
  values.Set<37>(FirstOf({values.At<37>(), values.At<198>(), values.At<11>(), values.At<17>()}));
}

}  // namespace

struct TradeMapper::State {
  State(MappingChoices choices, TextAt textAt)
      : Choices(std::move(choices)),
        ChoicesArePlain(IsPlainText(Choices.Exchange) && IsPlainText(Choices.UserID)),
        TextOfPlace(std::move(textAt)),
        Reader(Choices) {}

  Execution ExecutionOf(FixValues& values, std::uint64_t place, std::string_view side = {});
  void MapExecutionReport(std::uint64_t place);
  void MapCaptureReport(std::uint64_t place);
  void AddKnownSides(FixReportKind kind, std::uint64_t place);
  void MapSides(FixReportKind kind, std::uint64_t place);
  void MapSide(FixReportKind kind, std::uint64_t place, std::uint16_t sidePlace, const std::string& side);

  void MapExecution(const Execution& execution);
  void MapTrade(const Execution& execution);
  void MapChange(const Execution& execution);
  void MapUnknownChange(const Execution& execution);
  void ChangeTrade(const Execution& execution, std::uint32_t trade);

  void SetIdentity(const IdKey& key);
  bool IsRepeatedChange(const Execution& execution);
  bool Find(const IdKey& key, KnownExecution& known) const noexcept;
  bool FindExecution(const Execution& execution, std::string_view id, KnownExecution& known);
  bool FindAsOther(const Execution& execution, std::string_view id, KnownExecution& known);
  bool FindChanged(const Execution& execution, KnownExecution& known);
  std::uint32_t AddTrade(const Execution& execution);
  void NameReports(const Execution& execution, const KnownExecution& known);
  void FillFromKnown(FixValues& values, std::uint32_t trade);
  void Show(const Execution& execution, std::uint32_t trade, const IdKey& client, const IdKey* newKey = nullptr);

  // The keys are views of Key, or of the text that is passed.
  IdKey KeyOf(std::initializer_list<std::string_view> parts);
  IdKey KeyOf(const Execution& execution, std::string_view id) { return KeyOf(execution, id, execution.Side); }
  IdKey KeyOf(const Execution& execution, std::string_view id, std::string_view side) {
    return KeyOf(execution.Order.Text, id, side, Key);
  }
  static IdKey KeyOf(std::string_view orderId, std::string_view id, std::string_view side, std::string& text);
  IdKey ReportKeyOf(const Execution& execution, std::string_view reportId);
  void Tell(ReportOutcome outcome, std::string_view sentence = {});

  const MappingChoices Choices;
  const bool ChoicesArePlain;
  const TextAt TextOfPlace;
  FixReportReader Reader;
  KnownTrades Known;
  TradeFrame Frame;
  TradeAmounts Amounts;  // of the trade that is mapped
  FixReport Report;
  // Of a trade that is corrected: its report and the text that the values are views of.
  FixReport KnownReport;
  std::string KnownText;
  std::string Key;
  std::string OwnKey;  // of a new trade
  std::string IdentityText;
  IdKey Identity{IdentityText};  // of a correction or bust itself
  std::string BustText;
  bool HasCaptures = false;
  std::size_t TextSize = 0;
  MappedReport Result;
  std::vector<std::uint8_t>* Messages = nullptr;
};

TradeMapper::TradeMapper(MappingChoices choices, TextAt textAt)
    : Self(std::make_unique<State>(std::move(choices), std::move(textAt))) {}
TradeMapper::~TradeMapper() = default;

MappedReport TradeMapper::Map(std::string_view text, std::uint64_t place, std::vector<std::uint8_t>& messages) {
  State& self = *Self;
  self.Result = {};
  self.Messages = &messages;
  self.TextSize = text.size();
  const std::string mistake = self.Reader.Read(text, self.Report);
  if (!mistake.empty())
    self.Tell(ReportOutcome::Refused, mistake);
  else if (self.Report.Type == FixReportType::Execution)
    self.MapExecutionReport(place);
  else if (self.Report.Type == FixReportType::TradeCapture)
    self.MapCaptureReport(place);
  return std::move(self.Result);
}

void TradeMapper::State::Tell(ReportOutcome outcome, std::string_view sentence) {
  if (Gravity(outcome) > Gravity(Result.Outcome)) Result.Outcome = outcome;
  if (!sentence.empty()) TellReason(Result.Reason, sentence);
}

IdKey TradeMapper::State::KeyOf(std::initializer_list<std::string_view> parts) {
  Key.clear();
  for (const std::string_view part : parts) {
    if (!Key.empty()) Key += kSoh;
    Key += part;
  }
  return IdKey(Key);
}

IdKey TradeMapper::State::KeyOf(std::string_view orderId, std::string_view id, std::string_view side,
                                std::string& text) {
  text.resize(orderId.size() + id.size());
  orderId.copy(text.data(), orderId.size());
  id.copy(text.data() + orderId.size(), id.size());
  if (!side.empty()) text.append(1, kSoh).append(side);
  return IdKey(text, orderId.size());
}

IdKey TradeMapper::State::ReportKeyOf(const Execution& execution, std::string_view reportId) {
  return KeyOf({kReportIdKey, reportId, execution.Side});
}

// Requires: the last one is not used any more.
Execution TradeMapper::State::ExecutionOf(FixValues& values, std::uint64_t place, std::string_view side) {
  const std::string_view order = values.At<37>(), id = values.At<17>();
  const Execution execution{values, place, IdKey(order), IdKey(values.At<11>()), KeyOf(order, id, side, OwnKey),
                            id,     id,    side};
  Known.ExpectOrder(execution.Order);
  Known.ExpectClientOrder(execution.Client);
  Known.ExpectExecution(execution.Own);
  return execution;
}

void TradeMapper::State::MapExecutionReport(std::uint64_t place) {
  std::string mistake;
  Execution execution = ExecutionOf(Report.Common, place);
  execution.Kind = KindOfReport(Report.Type, Report.Common, mistake);
  if (execution.Kind == FixReportKind::NoTrade || execution.Kind == FixReportKind::Refused)
    return Tell(OutcomeOf(execution.Kind), mistake);
  MapExecution(execution);
}

void TradeMapper::State::MapCaptureReport(std::uint64_t place) {
  std::string mistake;
  const FixReportKind kind = KindOfReport(Report.Type, Report.Common, mistake);
  if (kind == FixReportKind::NoTrade) return;
  if (Report.SidesTold != Report.Sides.size())
    TellReason(Result.Reason, "552 tells " + std::to_string(Report.SidesTold) + " sides, " +
                                  std::to_string(Report.Sides.size()) + " came");
  if (Report.Sides.empty() && !Report.Common.At<54>().empty()) Report.Sides.emplace_back();
  if (Report.Sides.empty()) AddKnownSides(kind, place);
  if (Report.Sides.empty()) return Tell(ReportOutcome::Refused, "54 is missing");
  MapSides(kind, place);
}

// A correction or bust without sides is one of all sides that are known.
void TradeMapper::State::AddKnownSides(FixReportKind kind, std::uint64_t place) {
  if (kind == FixReportKind::Trade || !MistakeOfIds(Report.Common).empty()) return;
  FillCaptureIds(Report.Common);
  if (Report.Common.At<17>().empty()) return;
  for (const std::string_view side : {"1", "2"}) {
    KnownExecution known;
    if (FindChanged(ExecutionOf(Report.Common, place, kSideLetters[SideCode(side)]), known))
      Report.Sides.emplace_back().Set<54>(side);
  }
}

// Sides of one code are told apart by their order.
void TradeMapper::State::MapSides(FixReportKind kind, std::uint64_t place) {
  unsigned counts[std::size(kSideLetters)] = {};
  for (std::uint16_t i = 0; i < Report.Sides.size(); ++i) {
    FixValues& values = Report.Sides[i];
    values.FillFrom(Report.Common);
    const std::uint8_t code = SideCode(values.At<54>());
    std::string side(kSideLetters[code]);
    if (++counts[code] > 1) side += std::to_string(counts[code]);
    if (code == 0)
      Tell(ReportOutcome::Refused, Sentence("54", values.At<54>(), "is no side of a trade"));
    else
      MapSide(kind, place, i, side);
  }
}

void TradeMapper::State::MapSide(FixReportKind kind, std::uint64_t place, std::uint16_t sidePlace,
                                 const std::string& side) {
  FixValues& values = Report.Sides[sidePlace];
  FillCaptureIds(values);
  // The trade keeps its id where it is corrected: the report's own tells the two apart.
  const bool isChange = kind != FixReportKind::Trade;
  std::string shownId(isChange ? FirstOf({values.At<571>(), values.At<17>()}) : values.At<17>());
  if (Report.Sides.size() > 1) shownId += "-" + side;
  HasCaptures = true;
  Execution execution = ExecutionOf(values, place, side);
  execution.ShownId = shownId;
  execution.SidePlace = sidePlace;
  execution.Kind = kind;
  MapExecution(execution);
}

void TradeMapper::State::MapExecution(const Execution& execution) {
  if (TextSize > KnownTrades::kLongestId)
    if (const std::string mistake = MistakeOfIds(execution.Values); !mistake.empty())
      return Tell(ReportOutcome::Refused, mistake);
  if (execution.Id.empty())
    return Tell(ReportOutcome::Refused, execution.IsSide() ? "17, 571 and 1003 are missing" : "17 is missing");
  if (execution.Order.Text.empty()) return Tell(ReportOutcome::Refused, "37 is missing");
  if (execution.Kind == FixReportKind::Trade)
    MapTrade(execution);
  else
    MapChange(execution);
}

void TradeMapper::State::MapTrade(const Execution& execution) {
  // Ahead of the search: the tables are on their way from far memory meanwhile.
  const std::string mistake = MistakeOfTrade(execution.Values, false, Amounts);
  KnownExecution known;
  if (Known.Find(execution.Own, known) || FindAsOther(execution, execution.Id, known)) {
    Tell(ReportOutcome::Repeat);
    if (known.Kind != FixReportKind::Trade)
      TellReason(Result.Reason, Sentence("17", execution.Id, "came behind its correction and is not shown"));
    return;
  }
  if (!mistake.empty()) return Tell(ReportOutcome::Refused, mistake);
  const std::uint32_t trade = AddTrade(execution);
  Known.NameNew(execution.Own, {trade, execution.Kind});
  NameReports(execution, {trade, execution.Kind});
  Show(execution, trade, execution.Client, execution.IsSide() || known.SharesText ? nullptr : &execution.Own);
  Tell(ReportOutcome::Trade);
}

void TradeMapper::State::MapChange(const Execution& execution) {
  if (IsRepeatedChange(execution)) return Tell(ReportOutcome::Repeat);
  KnownExecution known;
  if (FindChanged(execution, known))
    ChangeTrade(execution, known.Trade);
  else
    MapUnknownChange(execution);
}

// Some venues give a correction or bust the id of the trade: then time, price and quantity tell it from its repeat.
bool TradeMapper::State::IsRepeatedChange(const Execution& execution) {
  constexpr std::size_t kLongestPart = 64;
  const FixValues& values = execution.Values;
  KnownExecution known;
  const std::string_view reportId = execution.IsSide() ? values.At<571>() : std::string_view();
  SetIdentity(reportId.empty() ? KeyOf(execution, execution.Id) : ReportKeyOf(execution, reportId));
  if (!Known.Find(Identity, known)) return false;
  if (known.Kind == execution.Kind) return true;
  SetIdentity(KeyOf({kReusedKey, execution.Order.Text, execution.Id, execution.Side, execution.IsBust() ? "bust" : "",
                     values.At<60>().substr(0, kLongestPart), values.At<31>().substr(0, kLongestPart),
                     values.At<32>().substr(0, kLongestPart)}));
  return Known.Find(Identity, known);
}

void TradeMapper::State::SetIdentity(const IdKey& key) {
  IdentityText = key.Text;
  Identity = key;
  Identity.Text = IdentityText;
}

bool TradeMapper::State::Find(const IdKey& key, KnownExecution& known) const noexcept {
  return Known.Find(key, known) && known.Trade != KnownExecution::kNoTrade;
}

bool TradeMapper::State::FindExecution(const Execution& execution, std::string_view id, KnownExecution& known) {
  return Known.Find(KeyOf(execution, id), known) || FindAsOther(execution, id, known);
}

// Finds what came as an ExecutionReport from a side of a TradeCaptureReport, and the other way round.
bool TradeMapper::State::FindAsOther(const Execution& execution, std::string_view id, KnownExecution& known) {
  if (!execution.IsSide() && !HasCaptures) return false;
  const std::uint8_t side = SideCode(execution.Values.At<54>());
  KnownExecution other;
  if (execution.IsSide()) {
    if (execution.Side.size() != 1 || !Find(KeyOf(execution, id, {}), other) || Known.At(other.Trade).Side != side)
      return false;
  } else if (side == 0 || !Known.Find(KeyOf(execution, id, kSideLetters[side]), other)) {
    return false;
  }
  known = other;
  return true;
}

bool TradeMapper::State::FindChanged(const Execution& execution, KnownExecution& known) {
  const auto isTrade = [&](bool found) { return found && known.Trade != KnownExecution::kNoTrade; };
  const FixValues& values = execution.Values;
  const std::string_view named = values.At<19>();
  if (!named.empty() && isTrade(FindExecution(execution, named, known))) return true;
  if (!execution.IsSide()) return named.empty() && isTrade(FindExecution(execution, execution.Id, known));
  for (const std::string_view report : {values.At<572>(), values.At<571>()})
    if (!report.empty() && Find(ReportKeyOf(execution, report), known)) return true;
  const std::string_view tradeId = values.At<1003>();
  return (!tradeId.empty() && Find(KeyOf({kTradeIdKey, tradeId, execution.Side}), known)) ||
         isTrade(FindExecution(execution, execution.Id, known));
}

void TradeMapper::State::MapUnknownChange(const Execution& execution) {
  const FixValues& values = execution.Values;
  const std::string_view named = FirstOf({values.At<19>(), values.At<572>(), execution.Id});
  std::string sentence = (execution.IsBust() ? "bust of " : "correction of ") +
                         PlainText(named, KnownTrades::kLongestId) + ", which never came";
  const std::string mistake = MistakeOfTrade(values, false, Amounts);
  if (execution.IsBust() || !mistake.empty()) {
    Known.Name(Identity, {KnownExecution::kNoTrade, execution.Kind});
    if (!execution.IsBust()) sentence += ", is not shown: " + mistake;
    return Tell(ReportOutcome::Unknown, sentence);
  }
  const std::uint32_t trade = AddTrade(execution);
  const KnownExecution known{trade, execution.Kind};
  Show(execution, trade, IdKey(values.At<11>()));
  Known.Name(Identity, known);
  Known.Name(KeyOf(execution, execution.Id), known);
  NameReports(execution, known);
  if (!values.At<19>().empty()) Known.Name(KeyOf(execution, values.At<19>()), known);
  if (execution.IsSide() && !values.At<572>().empty()) Known.Name(ReportKeyOf(execution, values.At<572>()), known);
  Tell(ReportOutcome::Unknown, sentence + ", is shown as a new trade");
}

// A bust has the price of what it busts: its own fields may be 0.
void TradeMapper::State::ChangeTrade(const Execution& execution, std::uint32_t trade) {
  FixValues& values = execution.Values;
  if (execution.IsBust()) {
    BustText.assign("bust ").append(FirstOf({values.At<19>(), values.At<572>(), execution.Id}));
    values.Set<31>({});
  }
  FillFromKnown(values, trade);
  if (execution.IsBust()) {
    values.Set<32>("0");
    values.Set<58>(BustText);
  }
  if (const std::string mistake = MistakeOfTrade(values, execution.IsBust(), Amounts); !mistake.empty())
    return Tell(ReportOutcome::Refused, mistake);
  if (!execution.IsBust()) Known.KeepCorrected(trade, Reader.TextOf(values));
  Show(execution, trade, IdKey(values.At<11>()));
  Known.Name(Identity, {trade, execution.Kind});
  Tell(OutcomeOf(execution.Kind));
}

std::uint32_t TradeMapper::State::AddTrade(const Execution& execution) {
  return Known.Add(
      {execution.Place, Known.OrderNumber(execution.Order), execution.SidePlace, SideCode(execution.Values.At<54>())});
}

void TradeMapper::State::NameReports(const Execution& execution, const KnownExecution& known) {
  if (!execution.IsSide()) return;
  const FixValues& values = execution.Values;
  if (!values.At<571>().empty()) Known.Name(ReportKeyOf(execution, values.At<571>()), known);
  if (!values.At<1003>().empty()) Known.Name(KeyOf({kTradeIdKey, values.At<1003>(), execution.Side}), known);
}

// The order stays that of the trade.
void TradeMapper::State::FillFromKnown(FixValues& values, std::uint32_t trade) {
  const std::string* corrected = Known.CorrectedText(trade);
  KnownText = corrected != nullptr ? *corrected : TextOfPlace(Known.At(trade).Place);
  if (!Reader.Read(KnownText, KnownReport).empty() || KnownReport.Type == FixReportType::Other)
    return TellReason(Result.Reason, "the text of the trade before its correction cannot be read");
  const std::size_t side = Known.At(trade).SidePlace;
  FixValues known = side < KnownReport.Sides.size() ? KnownReport.Sides[side] : KnownReport.Common;
  known.FillFrom(KnownReport.Common);
  if (KnownReport.Type == FixReportType::TradeCapture) FillCaptureIds(known);
  values.FillFrom(known);
  values.Set<37>(known.At<37>());
}

// Before its execution is named, or with the key that is new: a named one would count as shown.
void TradeMapper::State::Show(const Execution& execution, std::uint32_t trade, const IdKey& client,
                              const IdKey* newKey) {
  FixValues& values = execution.Values;
  values.Set<kDefaultExchange>(Choices.Exchange);
  values.Set<kDefaultUser>(Choices.UserID);
  if (Choices.ClientTag == 0) values.Set<kClientChoice>(values.At<1>());
  std::string& reason = Result.Reason;
  if (Report.Twice != 0) TellReason(reason, std::to_string(Report.Twice) + " is there twice, the first is taken");
  const std::uint32_t order = Known.At(trade).Order;
  const bool isPlain = Report.IsPlain && execution.Kind == FixReportKind::Trade;
  const std::string_view shownOrder = Known.ShownOrder(values.At<37>(), order, isPlain, reason);
  if (shownOrder.data() != execution.Order.Text.data()) newKey = nullptr;
  const std::string_view shownTrade = Known.ShownTrade(shownOrder, execution.ShownId, newKey, isPlain, reason);
  Frame.Write(values,
              {trade + 1, order, Known.ClientOrderNumber(client), shownTrade, shownOrder, Amounts, Choices.Multiplier,
               isPlain && ChoicesArePlain},
              reason);
  Messages->insert(Messages->end(), Frame.Data(), Frame.Data() + Frame.Size());
  ++Result.Messages;
}

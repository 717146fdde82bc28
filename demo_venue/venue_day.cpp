#include "demo_venue/venue_day.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace {

constexpr std::uint64_t kMadeUpPerSecond = 200;

struct MadeUpSecurity {
  const char* Symbol;
  const char* Type;
  const char* Expiry;
  const char* Option;
  double Strike;
  double Multiplier;
};

constexpr MadeUpSecurity kMadeUpSecurities[] = {
    {"OAK", "EQ", "", "XX", 0, 1},
    {"ELM", "EQ", "", "XX", 0, 1},
    {"TIN", "FUTCOM", "202609", "XX", 0, 50},
    {"OAK", "OPTSTK", "20260918", "CE", 102.5, 100},
    {"ELM", "OPTSTK", "20260918", "PE", 98, 100},
};

std::string TimeOfMadeUp(std::uint64_t index) {
  const auto second = static_cast<unsigned>(index / kMadeUpPerSecond % kSecondsPerDay);
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "20260302-%02u:%02u:%02u", second / 3600, second / 60 % 60, second % 60);
  return text.data();
}

DayTrade MadeUpTrade(std::uint64_t index) {
  const MadeUpSecurity& security = kMadeUpSecurities[index % std::size(kMadeUpSecurities)];
  DayTrade trade;
  trade.ExchangeTradeTime.Text = TimeOfMadeUp(index);
  trade.Exchange = "GROVE";
  trade.Symbol = security.Symbol;
  trade.SecurityID = std::string(security.Symbol) + security.Expiry;
  trade.SecurityType = security.Type;
  trade.ExpiryDate = security.Expiry;
  trade.OptionType = security.Option;
  trade.StrikePrice = security.Strike;
  trade.Multiplier = security.Multiplier;
  trade.Side = index % 3 == 0 ? TradeSide::Sell : TradeSide::Buy;
  trade.Quantity = static_cast<std::uint32_t>(1 + index % 500);
  trade.Price = static_cast<double>(10000 + index * 37 % 2000) / 100;
  trade.ExchangeOrderNo = std::to_string(2000000000000 + index / 3);
  trade.ExchangeTradeID = std::to_string(1000000 + index);
  return trade;
}

}  // namespace

VenueDay::VenueDay(const std::filesystem::path& trades, const std::filesystem::path& desk, BadLineReport& badLines)
    : Desk(desk, badLines) {
  TradeDay day(trades, badLines);
  double passed = 0;
  for (DayTrade trade; day.Next(trade);) {
    if (!Trades.empty()) {
      const std::int64_t before = Trades.back().ExchangeTradeTime.Seconds;
      const std::int64_t now = trade.ExchangeTradeTime.Seconds;
      if (DateOf(before) == DateOf(now) && now > before) passed += static_cast<double>(now - before);
    }
    Seconds.push_back(passed);
    Trades.push_back(trade);
  }
}

VenueDay::VenueDay(std::uint64_t count, const std::filesystem::path& desk, BadLineReport& badLines)
    : Desk(desk, badLines), MadeUp(count) {}

DayTrade VenueDay::At(std::uint64_t index) const {
  return MadeUp ? MadeUpTrade(index) : Trades[index];
}

double VenueDay::SecondsUntil(std::uint64_t index) const {
  return MadeUp ? static_cast<double>(index) / kMadeUpPerSecond : Seconds[index];
}

const char* MessageTypeOf(ReportStyle style) {
  return style.Capture ? "AE" : "8";
}

namespace {

// How a form of report says what it is.
struct FormRow {
  const char* Suffix;    // of the execution's id; a correction or bust has one of its own and names the first in 19
  const char* ExecType;  // 150
  const char* OldType;   // 20
  const char* Capture;   // 487
};

constexpr FormRow kForms[] = {
    {"", "F", "0", "0"}, {"-C", "G", "2", "2"}, {"-B", "H", "1", "1"},
    {"", "F", "0", "0"}, {"", "F", "0", "0"},   {"-S", "F", "0", "0"},
};
static_assert(std::size(kForms) == static_cast<std::size_t>(ReportForm::Stray) + 1);

bool NamesAnother(ReportForm form) {
  return form == ReportForm::Correction || form == ReportForm::Bust;
}

// FIX knows limit and market, and opened or closed; other codes of a desk have no value there.
const char* OrderTypeOf(const DeskLine& desk) {
  constexpr const char* kTypes[] = {"", "1", "2", "3", "4"};
  return desk.OrderType < std::size(kTypes) ? kTypes[desk.OrderType] : "";
}

const char* OpenCloseOf(const DeskLine& desk) {
  return desk.OpenClose == 1 ? "O" : desk.OpenClose == 2 ? "C" : "";
}

void AddParty(VenueText& text, std::string_view id, int role) {
  text.Add(448, id).Add(447, "D").Add(452, static_cast<std::uint64_t>(role));
}

// Firm, trader and account as parties of roles 1, 12 and 38.
void AddParties(VenueText& text, const DeskLine& desk, bool more) {
  text.Add(453, more ? 4 : 3);
  AddParty(text, desk.MemberID, 1);
  AddParty(text, desk.UserID, 12);
  AddParty(text, desk.CTCLID, 38);
  if (!more) return;
  AddParty(text, "CLEARER", 4);
  text.Add(802, 1).Add(523, "DESK 7").Add(803, 4);
}

void AddSecurity(VenueText& text, const DayTrade& trade) {
  text.Add(55, trade.Symbol).Add(48, trade.SecurityID).Add(22, "8").Add(167, trade.SecurityType);
  if (!trade.ExpiryDate.empty()) text.Add(trade.ExpiryDate.size() == 6 ? 200 : 541, trade.ExpiryDate);
  if (trade.OptionType != "XX") text.Add(201, trade.OptionType == "PE" ? "0" : "1").AddNumber(202, trade.StrikePrice);
  text.AddNumber(231, trade.Multiplier).Add(207, trade.Exchange);
}

void AddFill(VenueText& text, const DayTrade& trade) {
  text.Add(32, trade.Quantity).AddNumber(31, trade.Price).Add(60, trade.ExchangeTradeTime.Text);
}

void AddNote(VenueText& text, ReportForm form, const DeskLine& desk) {
  if (form == ReportForm::EmptyField)
    text.Add(58, "");
  else
    text.AddIfFilled(58, desk.ReferenceText);
}

void AddOrder(VenueText& text, ReportForm form, const DayTrade& trade, const DeskLine& desk) {
  text.Add(37, trade.ExchangeOrderNo).Add(11, "D" + trade.ExchangeOrderNo);
  AddParties(text, desk, form == ReportForm::MoreParties);
  text.AddIfFilled(1, desk.ClientID).AddIfFilled(40, OrderTypeOf(desk)).AddIfFilled(77, OpenCloseOf(desk));
}

void AddCapture(VenueText& text, ReportForm form, const std::string& id, const DayTrade& trade, const DeskLine& desk) {
  const FormRow& row = kForms[static_cast<std::size_t>(form)];
  text.Add(571, id).Add(487, row.Capture).Add(150, row.ExecType);
  if (NamesAnother(form)) text.Add(572, trade.ExchangeTradeID).Add(19, trade.ExchangeTradeID);
  text.Add(17, id).Add(570, "N");
  AddSecurity(text, trade);
  AddFill(text, trade);
  text.Add(552, 1).Add(54, static_cast<std::uint64_t>(trade.Side));
  AddOrder(text, form, trade, desk);
  AddNote(text, form, desk);
}

void AddExecution(VenueText& text, ReportForm form, bool oldTypes, const std::string& id, const DayTrade& trade,
                  const DeskLine& desk) {
  const FormRow& row = kForms[static_cast<std::size_t>(form)];
  text.Add(17, id);
  if (NamesAnother(form)) text.Add(19, trade.ExchangeTradeID);
  if (oldTypes) text.Add(20, row.OldType);
  text.Add(150, oldTypes ? "2" : row.ExecType).Add(39, "2").Add(54, static_cast<std::uint64_t>(trade.Side));
  AddOrder(text, form, trade, desk);
  AddSecurity(text, trade);
  AddFill(text, trade);
  text.Add(38, trade.Quantity).Add(151, 0).Add(14, trade.Quantity).AddNumber(6, trade.Price);
  AddNote(text, form, desk);
}

}  // namespace

void AddReport(VenueText& text, ReportForm form, ReportStyle style, DayTrade trade, const DeskLine& desk) {
  if (form == ReportForm::Correction) {
    constexpr double kDecimals = 1e6;  // so that the sum is a short decimal as well
    trade.Quantity += 1;
    trade.Price = std::round((trade.Price + 0.5) * kDecimals) / kDecimals;
  }
  const std::string id = trade.ExchangeTradeID + kForms[static_cast<std::size_t>(form)].Suffix;
  if (style.Capture)
    AddCapture(text, form, id, trade, desk);
  else
    AddExecution(text, form, style.OldTypes, id, trade, desk);
}

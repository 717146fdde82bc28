#include "terminal/watch/market_watch.h"

#include <algorithm>
#include <utility>

#include "platform/locale.h"
#include "terminal/common/numbers.h"
#include "terminal/day/csv_reader.h"

namespace {

Trend TrendOf(double from, double to) {
  if (to > from) return Trend::Up;
  return to < from ? Trend::Down : Trend::None;
}

}  // namespace

Trend WatchRow::ChangeTrend() const noexcept {
  return TrendOf(First, Last);
}

void MarketWatch::Fill(const SecurityList& securities) {
  Securities.clear();
  ByKey.clear();
  ByNumber.clear();
  for (const Security& security : securities.All()) Add(security);
  AllChanged = true;
}

template <typename Told>
WatchRow& MarketWatch::Add(const Told& security) {
  ByKey.emplace(SecurityKey(security.Exchange, security.SecurityID), Securities.size());
  WatchRow& row = Securities.emplace_back();
  row.Exchange = security.Exchange;
  row.SecurityID = security.SecurityID;
  row.Symbol = security.Symbol;
  row.Name = security.Name;
  row.ExpiryDate = security.ExpiryDate;
  return row;
}

void MarketWatch::ForgetTrades() {
  for (WatchRow& row : Securities) {
    row.First = row.Last = 0;
    row.Trades = row.Quantity = 0;
    row.Tick = Trend::None;
    row.Time.clear();
    row.TradedBeat = 0;
    row.LastNumber = 0;
  }
  ByNumber.clear();
  AllChanged = true;
}

WatchRow& MarketWatch::RowFor(const TradePrint& print) {
  const auto place = ByKey.find(SecurityKey(print.Exchange, print.SecurityID));
  return place == ByKey.end() ? Add(print) : Securities[place->second];
}

void MarketWatch::OnTradeSent(const TradePrint& print) {
  const auto former = print.Number == 0 ? ByNumber.end() : ByNumber.find(print.Number);
  if (former != ByNumber.end()) return Replace(former->second, print);
  WatchRow& row = RowFor(print);
  if (print.Number != 0)
    ByNumber.emplace(print.Number, CountedTrade{static_cast<ListRow>(&row - Securities.data()), print.Quantity});
  Count(row, print);
}

void MarketWatch::Count(WatchRow& row, const TradePrint& print) {
  if (row.Trades == 0) row.First = row.Last = print.Price;
  if (const Trend tick = TrendOf(row.Last, print.Price); tick != Trend::None) row.Tick = tick;
  row.Last = print.Price;
  row.LastNumber = print.Number;
  row.Quantity += print.Quantity;
  row.Time = print.Time;
  ++row.Trades;
  NoteTraded(row);
}

void MarketWatch::NoteTraded(WatchRow& row) {
  if (std::exchange(row.TradedBeat, Beat) != Beat) Traded.push_back(static_cast<ListRow>(&row - Securities.data()));
}

// A trade of one security never becomes one of another.
void MarketWatch::Replace(CountedTrade& former, const TradePrint& print) {
  WatchRow& row = Securities[former.Row];
  const bool wasBust = former.Quantity == 0;
  const bool isBust = print.Quantity == 0;
  row.Quantity += print.Quantity;
  row.Quantity -= former.Quantity;
  row.Trades += wasBust ? 1 : 0;
  row.Trades -= isBust ? 1 : 0;
  if (!isBust && row.LastNumber == print.Number) {
    if (const Trend tick = TrendOf(row.Last, print.Price); tick != Trend::None) row.Tick = tick;
    row.Last = print.Price;
  }
  former.Quantity = print.Quantity;
  NoteTraded(row);
}

std::optional<ListRow> MarketWatch::Find(const std::string& securityId) const {
  const auto at = std::ranges::find(Securities, securityId, &WatchRow::SecurityID);
  return at == Securities.end() ? std::nullopt : std::optional(static_cast<ListRow>(at - Securities.begin()));
}

ListChanges MarketWatch::TakeChanges() {
  ListChanges changes{std::exchange(AllChanged, false), Traded};
  changes.Rows.insert(changes.Rows.end(), TradedBefore.begin(), TradedBefore.end());
  TradedBefore = std::exchange(Traded, {});
  ++Beat;
  return changes;
}

namespace {

template <std::string WatchRow::*Member>
std::wstring Own(const WatchRow& row) {
  return CodePageToWide(row.*Member);
}
template <std::wstring (*Text)(const WatchRow& row)>
SheetValue AsText(const WatchRow& row) {
  return Text(row);
}

double Percent(const WatchRow& row) {
  return row.First == 0 ? 0 : row.Change() / row.First * 100;
}

constexpr int kPercentDecimals = 2;

std::wstring PercentText(const WatchRow& row) {
  const double shown = Percent(row) >= 0.005 ? 1 : 0;
  return WithSign(shown, DecimalText(Percent(row), kPercentDecimals));
}

std::wstring TimeOfDay(const WatchRow& row) {
  const std::size_t dash = row.Time.find('-');
  return CodePageToWide(dash == std::string::npos ? row.Time : row.Time.substr(dash + 1));
}

SheetValue TimeValue(const WatchRow& row) {
  DayTime time;
  return ParseDayTime(row.Time, time) ? SheetValue(time.Seconds) : SheetValue();
}

template <std::uint64_t WatchRow::*Member>
std::wstring Counted(const WatchRow& row) {
  return CountText(row.*Member);
}
template <std::uint64_t WatchRow::*Member>
SheetValue AsCount(const WatchRow& row) {
  return static_cast<std::int64_t>(row.*Member);
}

Trend TickOf(const WatchRow& row) {
  return row.Tick;
}
Trend ChangeOf(const WatchRow& row) {
  return row.ChangeTrend();
}

// One row feeds display, sort, storage and sheets.
struct WatchColumn {
  ListColumn Shown;
  bool OfTrades;  // empty until the security has traded
  std::wstring (*Text)(const WatchRow& row);
  SheetValue (*Value)(const WatchRow& row);
  Trend (*TrendOf)(const WatchRow& row) = nullptr;  // null: always None
};

template <std::string WatchRow::*Member>
constexpr WatchColumn TextColumn(const wchar_t* title, int widthPx) {
  return {{title, widthPx}, false, Own<Member>, AsText<Own<Member>>};
}

constexpr WatchColumn kColumns[] = {
    TextColumn<&WatchRow::Exchange>(L"Exchange", 82),
    TextColumn<&WatchRow::SecurityID>(L"Security", 176),
    TextColumn<&WatchRow::Symbol>(L"Symbol", 72),
    TextColumn<&WatchRow::Name>(L"Name", 290),
    TextColumn<&WatchRow::ExpiryDate>(L"Expiry", 80),
    {{L"Last", 92, SheetKind::Decimal, 4},
     true,
     [](const WatchRow& row) { return PriceText(row.Last); },
     [](const WatchRow& row) { return SheetValue(row.Last); },
     TickOf},
    {{L"Change", 82, SheetKind::Decimal, 4},
     true,
     [](const WatchRow& row) { return WithSign(row.Change(), PriceText(row.Change())); },
     [](const WatchRow& row) { return SheetValue(row.Change()); },
     ChangeOf},
    {{L"Change %", 84, SheetKind::Decimal, kPercentDecimals},
     true,
     PercentText,
     [](const WatchRow& row) { return SheetValue(Percent(row)); },
     ChangeOf},
    {{L"Quantity", 92, SheetKind::Whole}, true, Counted<&WatchRow::Quantity>, AsCount<&WatchRow::Quantity>},
    {{L"Trades", 72, SheetKind::Whole}, true, Counted<&WatchRow::Trades>, AsCount<&WatchRow::Trades>},
    {{L"Time", 82, SheetKind::DateTime}, true, TimeOfDay, TimeValue},
};

}  // namespace

std::span<const ListColumn> MarketWatch::Columns() const {
  static constexpr auto kShown = ListColumnsOf(kColumns);
  return kShown;
}

std::wstring MarketWatch::Text(ListRow row, std::size_t column) const {
  const WatchColumn& told = kColumns[column];
  return told.OfTrades && At(row).Trades == 0 ? std::wstring() : told.Text(At(row));
}

SheetValue MarketWatch::Value(ListRow row, std::size_t column) const {
  const WatchColumn& told = kColumns[column];
  return told.OfTrades && At(row).Trades == 0 ? SheetValue() : told.Value(At(row));
}

Trend MarketWatch::TrendAt(ListRow row, std::size_t column) const {
  const WatchColumn& told = kColumns[column];
  return told.TrendOf == nullptr || At(row).Trades == 0 ? Trend::None : told.TrendOf(At(row));
}

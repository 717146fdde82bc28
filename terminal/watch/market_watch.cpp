#include "terminal/watch/market_watch.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numeric>
#include <utility>

#include "terminal/common/errors.h"

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
  Order.clear();
  ByKey.clear();
  ByNumber.clear();
  for (const Security& security : securities.All()) Add(security);
  ApplySort();
}

template <typename Told>
WatchRow& MarketWatch::Add(const Told& security) {
  ByKey.emplace(SecurityKey(security.Exchange, security.SecurityID), Securities.size());
  Order.push_back(Securities.size());
  Changed = true;
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
  Changed = true;
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
    ByNumber.emplace(print.Number, CountedTrade{static_cast<std::size_t>(&row - Securities.data()), print.Quantity});
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
  row.TradedBeat = LastTraded = Beat;
  Changed = true;
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
  row.TradedBeat = LastTraded = Beat;
  Changed = true;
}

int MarketWatch::RowOf(const std::string& securityId) const {
  for (int row = 0; row < Rows(); ++row)
    if (RowAt(row).SecurityID == securityId) return row;
  return -1;
}

int MarketWatch::RowOfIdentity(std::size_t identity) const {
  const auto place = std::find(Order.begin(), Order.end(), identity);
  return place == Order.end() ? -1 : static_cast<int>(place - Order.begin());
}

void MarketWatch::SortBy(std::optional<int> column, bool rising) {
  SortedBy = column;
  Rising = rising;
  Changed = true;
  ApplySort();
}

void MarketWatch::ApplySort() {
  std::iota(Order.begin(), Order.end(), std::size_t{0});
  if (!SortedBy) return;
  const WatchColumn& column = kWatchColumns[static_cast<std::size_t>(*SortedBy)];
  const auto hasValue = [&](std::size_t at) { return !column.OfTrades || Securities[at].Trades != 0; };
  const auto traded = std::stable_partition(Order.begin(), Order.end(), hasValue);
  std::stable_sort(Order.begin(), traded, [&](std::size_t left, std::size_t right) {
    const int order = column.Compare(Securities[left], Securities[right]);
    return Rising ? order < 0 : order > 0;
  });
}

// One change follows the last trade: its row is no longer fresh.
bool MarketWatch::TakeChanges() {
  const bool changed = std::exchange(Changed, false) || LastTraded + 1 == Beat;
  ++Beat;
  if (changed && SortedBy) ApplySort();
  return changed;
}

namespace {

template <std::string WatchRow::*Member>
std::string Own(const WatchRow& row) {
  return row.*Member;
}
template <std::string WatchRow::*Member>
int ByText(const WatchRow& left, const WatchRow& right) {
  return (left.*Member).compare(right.*Member);
}

template <typename Value>
int Order(Value left, Value right) {
  return left < right ? -1 : (right < left ? 1 : 0);
}

double Percent(const WatchRow& row) {
  return row.First == 0 ? 0 : row.Change() / row.First * 100;
}

std::string Signed(double value, const std::string& text) {
  return (value > 0 ? "+" : "") + text;
}

std::string PercentText(const WatchRow& row) {
  char text[64];
  std::snprintf(text, sizeof text, "%.2f", Percent(row));
  return std::string(text) == "-0.00" ? "0.00" : Signed(Percent(row) >= 0.005 ? 1 : 0, text);
}

std::string TimeOfDay(const WatchRow& row) {
  const std::size_t dash = row.Time.find('-');
  return dash == std::string::npos ? row.Time : row.Time.substr(dash + 1);
}

Trend TickOf(const WatchRow& row) {
  return row.Tick;
}
Trend ChangeOf(const WatchRow& row) {
  return row.ChangeTrend();
}

}  // namespace

std::string PriceText(double price) {
  char text[400];
  std::snprintf(text, sizeof text, "%.4f", std::fabs(price));
  std::string digits = text;
  const std::size_t point = digits.find('.');
  if (!std::isfinite(price) || point == std::string::npos) return std::isfinite(price) ? digits : "";
  while (digits.size() > point + 3 && digits.ends_with('0')) digits.pop_back();
  const bool negative = price < 0 && digits.find_first_not_of("0.") != std::string::npos;
  for (std::size_t place = point; place > 3; place -= 3) digits.insert(place - 3, 1, ',');
  return (negative ? "-" : "") + digits;
}

const WatchColumn kWatchColumns[kWatchColumnCount] = {
    {L"Exchange", 82, false, false, Own<&WatchRow::Exchange>, ByText<&WatchRow::Exchange>, nullptr},
    {L"Security", 176, false, false, Own<&WatchRow::SecurityID>, ByText<&WatchRow::SecurityID>, nullptr},
    {L"Symbol", 72, false, false, Own<&WatchRow::Symbol>, ByText<&WatchRow::Symbol>, nullptr},
    {L"Name", 290, false, false, Own<&WatchRow::Name>, ByText<&WatchRow::Name>, nullptr},
    {L"Expiry", 80, false, false, Own<&WatchRow::ExpiryDate>, ByText<&WatchRow::ExpiryDate>, nullptr},
    {L"Last", 92, true, true, [](const WatchRow& row) { return PriceText(row.Last); },
     [](const WatchRow& left, const WatchRow& right) { return Order(left.Last, right.Last); }, TickOf},
    {L"Change", 82, true, true, [](const WatchRow& row) { return Signed(row.Change(), PriceText(row.Change())); },
     [](const WatchRow& left, const WatchRow& right) { return Order(left.Change(), right.Change()); }, ChangeOf},
    {L"Change %", 84, true, true, PercentText,
     [](const WatchRow& left, const WatchRow& right) { return Order(Percent(left), Percent(right)); }, ChangeOf},
    {L"Quantity", 92, true, true, [](const WatchRow& row) { return WithThousands(row.Quantity); },
     [](const WatchRow& left, const WatchRow& right) { return Order(left.Quantity, right.Quantity); }, nullptr},
    {L"Trades", 72, true, true, [](const WatchRow& row) { return WithThousands(row.Trades); },
     [](const WatchRow& left, const WatchRow& right) { return Order(left.Trades, right.Trades); }, nullptr},
    {L"Time", 82, true, true, TimeOfDay, ByText<&WatchRow::Time>, nullptr},
};

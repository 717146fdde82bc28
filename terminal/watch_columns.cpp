#include "terminal/watch_columns.h"

#include <cmath>
#include <cstdio>

#include "terminal/thousands.h"

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

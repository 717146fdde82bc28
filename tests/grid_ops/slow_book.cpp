#include "tests/grid_ops/slow_book.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <set>

#include "foundations/text_tools.h"

namespace {

// t text, i whole number, h short, d double, k strike; S, O, P, C the coded fields; s server, c time of day.
struct Cell {
  char Kind;
  std::size_t Offset, Size;
};
#define CELL(kind, field) (Cell{kind, offsetof(TradeRecord, field), sizeof(TradeRecord::field)})
// clang-format off
constexpr Cell kCells[] = {
    Cell{'s', 0, 0}, CELL('t', UserID), CELL('i', VELDTradeID), CELL('i', VELDOrderID), CELL('i', OrderID),
    CELL('t', ExchangeOrderNo), CELL('t', ExchangeTradeID), CELL('t', OrderTime), CELL('t', ExchangeOrderTime),
    CELL('t', ExchangeTradeTime), CELL('t', Exchange), CELL('t', SecurityID), CELL('t', Symbol),
    CELL('t', ExpiryDate), CELL('t', SecurityType), CELL('t', OptionType), CELL('S', Side), CELL('O', OrderType),
    CELL('i', Quantity), CELL('i', PendingQuantity), CELL('d', Price), CELL('k', StrikePrice), CELL('t', ClientID),
    CELL('t', ReferenceText), CELL('t', ManagerID), CELL('t', MemberID), CELL('i', StrategyID), CELL('t', CTCLID),
    CELL('P', ProductType), CELL('C', OpenClose), CELL('d', Multiplier), CELL('t', Pancard), CELL('t', TerminalInfo),
    CELL('t', AlgoID), CELL('h', AlgoCategory), CELL('t', ParticipantID), CELL('c', OrderTime)};
// clang-format on
#undef CELL
constexpr int kColumns = 37;
static_assert(std::size(kCells) == kColumns);

std::string TextIn(const TradeRecord& record, std::size_t offset, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(&record) + offset, size);
  return text.substr(0, text.find('\0'));
}

double NumberIn(const TradeRecord& record, const Cell& cell) {
  const auto as = [&](auto number) {
    std::memcpy(&number, reinterpret_cast<const char*>(&record) + cell.Offset, sizeof number);
    return static_cast<double>(number);
  };
  if (cell.Kind == 'd' || cell.Kind == 'k') return as(double{});
  return cell.Size == 4 ? as(std::int32_t{}) : cell.Size == 2 ? as(std::int16_t{}) : as(std::uint8_t{});
}

std::string Printed(const char* format, double number) {
  char text[400];
  std::snprintf(text, sizeof text, format, number);
  return std::isnan(number) ? "nan" : text;
}

std::string CellText(const std::string& server, const TradeRecord& record, int column) {
  const Cell& cell = kCells[column];
  if (cell.Kind == 's') return server;
  if (cell.Kind == 'i') return Printed("%.0f", NumberIn(record, cell));
  if (cell.Kind == 'd') return Printed("%.15g", NumberIn(record, cell) == 0 ? 0 : NumberIn(record, cell));
  if (cell.Kind == 'S') return std::string(SideText(record.Side));
  if (cell.Kind == 'O') return std::string(OrderTypeText(record.OrderType));
  if (cell.Kind == 'P') return std::string(ProductTypeText(record.ProductType));
  if (cell.Kind == 'C') return std::string(OpenCloseText(record.OpenClose));
  const std::string text = TextIn(record, cell.Offset, cell.Size);
  return cell.Kind == 'c' && text.size() >= 17 ? text.substr(9, 8) : text;
}

bool MatchText(const std::wstring& filter, const std::wstring& cell) {
  const auto holds = [&cell](std::wstring_view piece) { return cell.find(piece) != std::wstring::npos; };
  std::size_t pos = 0;
  while (!filter.empty()) {
    const std::size_t found = filter.find(L"or", pos);
    if (found == std::wstring::npos) break;
    const std::wstring_view piece = TrimWide(std::wstring_view(filter).substr(pos, found - pos));
    if (!piece.empty() && holds(piece)) return false;
    pos = found + 2;
  }
  const std::wstring_view last = TrimWide(std::wstring_view(filter).substr(pos));
  return !(last.empty() && pos > 0) && holds(last);
}

// Halves go to the even number.
std::int32_t WholeNumber(double value) {
  const bool fits = value >= -2147483648.5 && value < 2147483647.5;
  return fits ? static_cast<std::int32_t>(value - std::remainder(value, 1.0)) : 0;
}

bool MatchStrike(const std::wstring& filter, double strike) {
  const std::size_t start = filter.find_first_not_of(L" <>=");
  if (start == std::wstring::npos) return true;
  const std::int32_t value = WholeNumber(strike), number = WideToNumber(filter.substr(start));
  if (filter.find(L'<') != std::wstring::npos) return value < number;
  if (filter.find(L'>') != std::wstring::npos) return value > number;
  if (filter.find(L'!') != std::wstring::npos) return value != number;
  return value == number;
}

template <typename Value>
int Order(const Value& first, const Value& second) {
  return first < second ? -1 : first != second ? 1 : 0;
}

int CompareColumn(const TradeRecord& a, const TradeRecord& b, int column) {
  if (column < 0 || column >= kColumns || kCells[column].Kind == 's') return 0;
  // Columns 6 and 9 compare the number and time of the order, not of the trade.
  const Cell& cell = kCells[column == 6 || column == 9 ? column - 1 : column];
  const std::size_t offset = cell.Offset + (cell.Kind == 'c' ? 9 : 0), size = cell.Kind == 'c' ? 8 : cell.Size;
  if (cell.Kind == 't' || cell.Kind == 'c') return Order(TextIn(a, offset, size), TextIn(b, offset, size));
  return Order(NumberIn(a, cell), NumberIn(b, cell));
}

}  // namespace

void PutCell(TradeRecord& record, int column, std::string_view bytes) {
  if (column < 0 || column >= kColumns || bytes.empty()) return;
  std::memcpy(reinterpret_cast<char*>(&record) + kCells[column].Offset, bytes.data(),
              std::min(bytes.size(), kCells[column].Size));
}

bool SlowMatch(const std::string& server, const TradeRecord& record, int column, const std::wstring& filter) {
  if (column < 0 || column >= kColumns || column == 34 || column == 35) return true;
  if (kCells[column].Kind == 'k') return MatchStrike(filter, record.StrikePrice);
  return MatchText(LowerWide(filter), LowerWide(NarrowToWide(CellText(server, record, column))));
}

int SlowCompare(const TradeRecord& first, const TradeRecord& second, const SlowSort& sort) {
  for (const auto& [column, state] : sort) {
    const int order = state == 1 ? CompareColumn(first, second, column) : CompareColumn(second, first, column);
    if (order != 0) return order;
  }
  return 0;
}

std::map<std::int32_t, TradeRecord*> SlowBook::Trades() const {
  std::map<std::int32_t, TradeRecord*> trades;
  for (std::size_t i = 0; i < Cache.TradeNumbers.Size(); ++i)
    trades[Cache.TradeNumbers.NumberAt(i)] = Cache.TradeNumbers.RecordAt(i);
  return trades;
}

template <typename Offer>
void SlowBook::CollectRows(Offer offer) {
  Rows.clear();
  NextRowKey = 0x7FFFFFFF;
  const auto trades = Trades();
  for (auto trade = trades.rbegin(); trade != trades.rend(); ++trade) offer(*trade->second);
}

bool SlowBook::PassesFilters(const TradeRecord& record) const {
  return std::all_of(Filters.begin(), Filters.end(),
                     [&](const auto& filter) { return SlowMatch("Default", record, filter.first, filter.second); });
}

bool SlowBook::AdmitRow(TradeRecord& record) {
  if ((Filtered && !IsOfSecurity(record)) || !PassesFilters(record)) return false;
  Insert(record);
  return true;
}

void SlowBook::RefilterRow(TradeRecord& record) {
  if (!Filters.empty()) {
    if (PassesFilters(record)) Insert(record);
    return;
  }
  NextRowKey = 0x7FFFFFFF;
  const bool known = std::any_of(Rows.begin(), Rows.end(), [&](const auto& row) { return row.second == &record; });
  if (!known) Insert(record);
}

void SlowBook::RebuildRows() {
  CollectRows([this](TradeRecord& record) { AdmitRow(record); });
}

void SlowBook::CopyAllRows() {
  Rows = Trades();
  NextRowKey = Cache.NextTradeNumber;
}

void SlowBook::CollectSecurityRows() {
  CollectRows([this](TradeRecord& record) {
    if (IsOfSecurity(record)) Insert(record);
  });
}

bool SlowBook::OnFilterBarChanged(int column, const std::wstring& text) {
  if (column < 0 || column > kColumns) return false;
  const std::wstring lower = LowerWide(text);
  const auto known = std::find_if(Filters.begin(), Filters.end(), [&](const auto& f) { return f.first == column; });
  if (known == Filters.end() ? lower.empty() : known->second == lower) return false;
  if (known != Filters.end()) Filters.erase(known);
  if (!lower.empty()) Filters.emplace_back(column, lower);
  OnFilterBarUpdate();
  return true;
}

void SlowBook::OnFilterBarUpdate() {
  if (!Filters.empty()) return CollectRows([this](TradeRecord& record) { RefilterRow(record); });
  if (NextRowKey != Cache.NextTradeNumber) CopyAllRows();
}

void SlowBook::ResortRows(const SlowSort& sort) {
  if (sort.empty() && !Filters.empty()) return OnFilterBarUpdate();
  const auto before = [&sort](auto* first, auto* second) { return SlowCompare(*first, *second, sort) < 0; };
  std::multiset<TradeRecord*, decltype(before)> sorted(before);
  for (const auto& [key, record] : Rows) sorted.insert(record);
  Rows.clear();
  for (TradeRecord* record : sorted) Rows.emplace(static_cast<std::int32_t>(Rows.size()), record);
  if (sort.empty()) Rows = Trades();
}

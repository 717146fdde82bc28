#include "tests/grid_ops/twin_book.h"

#include <cmath>
#include <cstring>

#include "tests/support/wire_bytes.h"

namespace {

struct Masters : SecurityMasters {
  explicit Masters(const SlowMarket& market) : Market(market) {}
  std::optional<double> MultiplierOf(const FilterKey& security) const override {
    const auto found = Market.Multipliers.find({security.Exchange, security.SecurityID});
    return found == Market.Multipliers.end() ? std::nullopt : std::optional(found->second);
  }
  const SlowMarket& Market;
};

bool SameBits(double first, double second) {
  return std::memcmp(&first, &second, sizeof first) == 0 || (std::isnan(first) && std::isnan(second));
}

}  // namespace

FilterKey KeyOf(const SlowKey& key) {
  FilterKey filter{};
  std::strcpy(filter.Exchange, key.first.c_str());
  std::strcpy(filter.SecurityID, key.second.c_str());
  return filter;
}

bool TwinBook::AdmitRow(TradeRecord& record) {
  const bool entered = Slow.AdmitRow(record);
  EXPECT_EQ(Fast.AdmitRow(record), entered);
  return entered;
}

template <typename Act>
void TwinBook::Total(Act act) {
  const FilterKey selected = KeyOf(Market.Selected), restored = KeyOf(Market.Restored);
  const Masters masters(Market);
  act(AverageBasis{Fast.Filtered, selected, restored, masters});
}

void TwinBook::UpdateTotals(const TradeRecord& record) {
  Total([&](const AverageBasis& basis) { Totals.UpdateTotals(record, basis, Line); });
  Slow.UpdateTotals(record);
}

void TwinBook::CountTotals(bool showAll) {
  Total([&](const AverageBasis& basis) {
    showAll ? Totals.RecountTotals(Fast.Rows, basis, Line) : Totals.ResumTotals(Fast.Rows, basis, Line);
  });
  Slow.CountTotals();
}

void TwinBook::ClearFilters() {
  Fast.OnFilterBarClearAll();
  if (Slow.Filters.empty()) return;
  Slow.Filters.clear();
  Slow.OnFilterBarUpdate();
}

void TwinBook::Sort(const SlowSort& sort) {
  std::vector<SortState> states;
  for (const auto& [column, state] : sort) states.push_back({column, state});
  Fast.ResortRows(states);
  Slow.ResortRows(sort);
}

void TwinBook::KeepTo(const SlowKey& security) {
  Both([&](auto& book) { book.Filtered = !security.first.empty(); });
  Slow.Security = security;
  Fast.Security = KeyOf(security);
}

std::string TwinBook::Difference() {
  std::size_t row = 0;
  for (const auto& [key, record] : Slow.Rows) {
    if (Fast.RecordAt(row) == nullptr || std::memcmp(Fast.RecordAt(row), record, sizeof *record) != 0)
      return "record of row " + std::to_string(row);
    if (Fast.Rows.KeyAt(row++) != key) return "key behind row " + std::to_string(row);
  }
  if (Fast.RowCount() != row || Fast.RecordAt(row) != nullptr) return "a row beyond the end";
  if (Fast.NextRowKey != Slow.NextRowKey) return "next key";
  const std::pair<const char*, double> totals[] = {
      {"BuyQty", Totals.BuyQty},   {"BuyAmt", Totals.BuyAmt},   {"BuyAvg", Totals.BuyAvg}, {"SellQty", Totals.SellQty},
      {"SellAmt", Totals.SellAmt}, {"SellAvg", Totals.SellAvg}, {"NetQty", Totals.NetQty}, {"NetAmt", Totals.NetAmt}};
  for (const auto& [name, total] : totals)
    if (!SameBits(total, Slow.Totals[name])) return name;
  const std::map<int, std::wstring> filters(Slow.Filters.begin(), Slow.Filters.end());
  for (int column = -1; column <= 38; ++column)
    if (Fast.Filters.TextOf(column) != (filters.contains(column) ? filters.at(column) : L"")) return "filter text";
  return "";
}

std::string TwinBook::RowText() const {
  const auto name = [](std::int32_t key) {
    return key > 0x40000000 ? "^" + std::to_string(0x7FFFFFFF - key) : std::to_string(key);
  };
  std::string text;
  for (std::size_t row = 0; row < Fast.RowCount(); ++row)
    text += name(Fast.Rows.KeyAt(row)) + "=" + std::to_string(TradeIdOf(*Fast.Rows.RecordAt(row))) + " ";
  return text + "next " + name(Fast.NextRowKey);
}

std::string TwinBook::TakeLine() {
  std::string text;
  for (int i = 0; i < 8; ++i) {
    const auto value = static_cast<SummaryValue>(i);
    const SummaryLine::Control& control = Line.Of(value);
    const std::wstring wide = Line.TextOf(value);
    text.append(wide.begin(), wide.end());
    if (control.Color) text += *control.Color == TradeColor::Buy ? "+" : "-";
    text += control.Changed ? "* " : " ";
  }
  Line.ClearChanged();
  return text;
}

TwinBook& Desk::Open(const std::string& key) {
  Twins.push_back(std::make_unique<TwinBook>(Cache, Market));
  Books[key] = Twins.back().get();
  return *Twins.back();
}

void DeliverMessage(TradeCache& cache, std::string_view message) {
  CQORPacketReader reader(reinterpret_cast<const std::uint8_t*>(message.data()),
                          static_cast<std::uint16_t>(message.size()));
  std::uint16_t needed = 0, consumed = 0;
  ASSERT_TRUE(reader.ParseHeader(needed, consumed));
  const unsigned number = reader.MessageNumber;
  if (number == 8111 || number == 9101) cache.OnTrade(reader);
  if (number == 9112) cache.OnTradeAmend(reader);
  if (number == 8112) cache.OnDownloadEnd();
  if (number == 30022) cache.OnClearTrades();
}

void Desk::Trade(std::uint32_t id, const std::string& fields) {
  Play(9101, WireU32(20008, id) + WireText(55101, std::to_string(++Executions)) + WireTerminator() + fields);
}

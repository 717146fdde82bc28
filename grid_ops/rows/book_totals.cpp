#include "grid_ops/rows/book_totals.h"

#include "foundations/text_tools.h"

namespace {

constexpr std::uint8_t kBuy = 1, kSell = 2;
constexpr std::size_t kAhead = 16;

double AmountOf(const TradeRecord& record) noexcept {
  return static_cast<std::int32_t>(+record.Quantity) * record.Price * record.Multiplier;
}

// Quantities wrap around at 32 bits.
void AddQuantity(std::int32_t& total, const TradeRecord& record) noexcept {
  total = static_cast<std::int32_t>(static_cast<std::uint32_t>(total) + record.Quantity);
}

double Average(double amount, std::int32_t quantity, double multiplier) noexcept {
  return quantity == 0 ? 0 : amount / quantity / multiplier;
}

void Fetch(const TradeRecord* record) noexcept {
  __builtin_prefetch(&record->Side);
  __builtin_prefetch(&record->Price);
  __builtin_prefetch(&record->Multiplier);
}

// True if the value was written.
template <typename Total>
bool ShowTotal(SummaryLine& line, SummaryValue value, Total total, Total& shown, bool always) {
  if (!always && total == shown) return false;
  line.Show(value, total);
  shown = total;
  return true;
}

TradeColor ColorOfSign(bool negative) noexcept {
  return negative ? TradeColor::Sell : TradeColor::Buy;
}

}  // namespace

std::wstring SummaryLine::TextOf(SummaryValue value) const {
  const Control& control = Of(value);
  if (!control.Written) return {};
  switch (value) {
    case SummaryValue::BuyQty:
    case SummaryValue::SellQty:
    case SummaryValue::NetQty:
      return std::to_wstring(static_cast<std::int32_t>(control.Number));
    case SummaryValue::BuyAmt:
    case SummaryValue::BuyAvg:
    case SummaryValue::SellAmt:
    case SummaryValue::SellAvg:
    case SummaryValue::NetAmt:
      break;
  }
  return DoubleToWide(control.Number);
}

std::wstring SummaryLine::AllTotals(bool averages) const {
  std::wstring all;
  for (std::size_t i = 0; i < Controls.size(); ++i) {
    const auto value = static_cast<SummaryValue>(i);
    if (!averages && (value == SummaryValue::BuyAvg || value == SummaryValue::SellAvg)) continue;
    all.append(all.empty() ? L"" : L"\n").append(LabelOf(value)).append(L" ").append(TextOf(value));
  }
  return all;
}

void BookTotals::AddRow(const TradeRecord& record) noexcept {
  if (record.Side == kBuy) {
    AddQuantity(BuyQty, record);
    BuyAmt += AmountOf(record);
  } else if (record.Side == kSell) {
    AddQuantity(SellQty, record);
    SellAmt += AmountOf(record);
  }
}

void BookTotals::AverageBy(double multiplier) noexcept {
  BuyAvg = Average(BuyAmt, BuyQty, multiplier);
  SellAvg = Average(SellAmt, SellQty, multiplier);
}

void BookTotals::Net() noexcept {
  NetAmt = SellAmt - BuyAmt;
  NetQty = static_cast<std::int32_t>(static_cast<std::uint32_t>(BuyQty) - static_cast<std::uint32_t>(SellQty));
}

bool BookTotals::Sum(const RowMap& rows, const AverageBasis& basis) {
  BuyQty = SellQty = NetQty = 0;
  BuyAmt = SellAmt = NetAmt = BuyAvg = SellAvg = 0;
  const TradeRecord* lastBuy = nullptr;
  rows.ForEach(kAhead, Fetch, [&](const TradeRecord& record) {
    AddRow(record);
    if (record.Side == kBuy) lastBuy = &record;
  });
  // Intentional: divides by the multiplier of the last buy, and averages no sells.
  if (lastBuy != nullptr) BuyAvg = Average(BuyAmt, BuyQty, lastBuy->Multiplier);
  if (!basis.Filtered) return false;
  const auto multiplier = basis.Masters.MultiplierOf(basis.Selected.Complete() ? basis.Selected : basis.Restored);
  if (multiplier) AverageBy(*multiplier);
  return multiplier.has_value();
}

void BookTotals::ShowAverages(SummaryLine& line) const {
  line.Show(SummaryValue::BuyAvg, BuyAvg);
  line.Show(SummaryValue::SellAvg, SellAvg);
}

void BookTotals::RecountTotals(const RowMap& rows, const AverageBasis& basis, SummaryLine& line) {
  Sum(rows, basis);
  for (const SummaryValue value : {SummaryValue::BuyQty, SummaryValue::BuyAmt, SummaryValue::BuyAvg})
    line.Paint(value, TradeColor::Buy);
  for (const SummaryValue value : {SummaryValue::SellQty, SummaryValue::SellAmt, SummaryValue::SellAvg})
    line.Paint(value, TradeColor::Sell);
  ShowAverages(line);
  Net();
  line.Paint(SummaryValue::NetQty, ColorOfSign(NetQty < 0));
  line.Paint(SummaryValue::NetAmt, ColorOfSign(NetAmt < 0));
  ShowTotals(line, true);
}

void BookTotals::ResumTotals(const RowMap& rows, const AverageBasis& basis, SummaryLine& line) {
  if (Sum(rows, basis)) ShowAverages(line);
  ShowChanges(line);
}

void BookTotals::UpdateTotals(const TradeRecord& record, const AverageBasis& basis, SummaryLine& line) {
  AddRow(record);
  if (basis.Selected.Complete()) {
    AverageBy(record.Multiplier);
    ShowAverages(line);
  }
  ShowChanges(line);
}

bool BookTotals::ShowTotals(SummaryLine& line, bool always) {
  ShowTotal(line, SummaryValue::BuyQty, BuyQty, ShownBuyQty, always);
  ShowTotal(line, SummaryValue::BuyAmt, BuyAmt, ShownBuyAmt, always);
  ShowTotal(line, SummaryValue::SellQty, SellQty, ShownSellQty, always);
  ShowTotal(line, SummaryValue::SellAmt, SellAmt, ShownSellAmt, always);
  ShowTotal(line, SummaryValue::NetQty, NetQty, ShownNetQty, always);
  return ShowTotal(line, SummaryValue::NetAmt, NetAmt, ShownNetAmt, always);
}

// Net is painted each time, NetAmt only if its text changed.
void BookTotals::ShowChanges(SummaryLine& line) {
  line.Paint(SummaryValue::BuyAvg, TradeColor::Buy);
  line.Paint(SummaryValue::SellAvg, TradeColor::Sell);
  Net();
  line.Paint(SummaryValue::NetQty, ColorOfSign(NetQty < 0));
  if (ShowTotals(line, false)) line.Paint(SummaryValue::NetAmt, ColorOfSign(NetAmt < 0));
}

#include "grid_ops/rows/selection_totals.h"

#include <algorithm>
#include <array>

#include "foundations/text_tools.h"
#include "grid_ops/rows/book_rows.h"

namespace {

constexpr std::size_t kDigitsApart = 3;

// With two decimals at most.
std::wstring Marked(double number, bool decimals, const NumberMarks& marks) {
  std::wstring text = DoubleToWide(number);
  const std::size_t point = text.find(L'.');
  if (point == std::wstring::npos) return text;
  if (decimals)
    text[point] = marks.Decimal;
  else
    text.resize(point);
  const std::size_t first = text.front() == L'-' ? 1 : 0;
  for (std::size_t at = point; at > first + kDigitsApart; at -= kDigitsApart)
    text.insert(at - kDigitsApart, 1, marks.Thousands);
  return text;
}

std::wstring Counted(std::int64_t count, const NumberMarks& marks) {
  return Marked(static_cast<double>(count), false, marks);
}

std::wstring TextOfSide(const wchar_t* name, const SelectionTotals::Side& side, const NumberMarks& marks) {
  return name + Counted(side.Rows, marks) + L": " + Counted(side.Quantity, marks) + L" at " +
         Marked(side.Average(), true, marks) + L", amt " + Marked(side.Amount, true, marks);
}

void AddRecord(SelectionTotals& totals, const TradeRecord& record) noexcept {
  constexpr std::uint8_t kBuySide = 1, kSellSide = 2;
  ++totals.Rows;
  if (record.Side != kBuySide && record.Side != kSellSide) return;
  SelectionTotals::Side& side = record.Side == kBuySide ? totals.Buy : totals.Sell;
  const auto quantity = static_cast<std::int32_t>(+record.Quantity);
  ++side.Rows;
  side.Quantity += quantity;
  side.Weighted += quantity * record.Price;
  side.Amount += quantity * record.Price * record.Multiplier;
}

void FetchSums(const TradeRecord* record) noexcept {
  __builtin_prefetch(&record->Side);
  __builtin_prefetch(&record->Price);
  __builtin_prefetch(&record->Multiplier);
}

}  // namespace

std::vector<std::wstring> SelectionTotals::Texts(const NumberMarks& marks) const {
  std::vector<std::wstring> texts{Counted(Rows, marks) + (Rows == 1 ? L" row" : L" rows")};
  if (Buy.Rows > 0) texts.push_back(TextOfSide(L"Buy ", Buy, marks));
  if (Sell.Rows > 0) texts.push_back(TextOfSide(L"Sell ", Sell, marks));
  return texts;
}

SelectionTotals SumSelection(const BookRows& rows, std::span<const RowSpan> selected) {
  constexpr std::size_t kAtATime = 256, kFetchedAhead = 16;
  std::array<TradeRecord*, kAtATime> records;
  SelectionTotals totals;
  for (const RowSpan& span : selected)
    for (int row = std::max(span.First, 0); row <= span.Last;) {
      const std::size_t wanted = std::min(kAtATime, static_cast<std::size_t>(span.Last - row) + 1);
      const std::size_t count = rows.CopyRecords(static_cast<std::size_t>(row), std::span(records).first(wanted));
      if (count == 0) break;
      for (std::size_t i = 0; i < count; ++i) {
        if (i + kFetchedAhead < count) FetchSums(records[i + kFetchedAhead]);
        if (records[i] != nullptr) AddRecord(totals, *records[i]);
      }
      row += static_cast<int>(count);
    }
  return totals;
}

#include <algorithm>
#include <string>

#include "foundations/text_tools.h"
#include "fuzz/fuzz_functions.h"
#include "grid_ops/rows/column_filter.h"
#include "tests/grid_ops/slow_book.h"

namespace {

constexpr std::size_t kLargestInput = 4096;
constexpr int kChoices = kTradeColumnCount + 2;  // one index below the columns, and their count

// A byte of 1 stands for a letter that no western code page has.
std::wstring FilterOf(std::string bytes) {
  std::wstring filter = NarrowToWide(std::move(bytes));
  std::replace(filter.begin(), filter.end(), L'\1', L'\x416');
  return filter;
}

}  // namespace

int FuzzFilterText(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const int column = data[0] % kChoices - 1;
  const std::string texts(reinterpret_cast<const char*>(data) + 1, std::min(size, kLargestInput) - 1);
  const std::size_t end = std::min(texts.find('\n'), texts.size());
  const std::wstring filter = FilterOf(texts.substr(0, end));
  const std::string cell = texts.substr(std::min(end + 1, texts.size()));
  TradeRecord record{};
  PutCell(record, column, cell);
  const std::string server(cell.c_str());

  const bool expected = SlowMatch(server, record, column, filter);
  RequireProperty(ColumnFilter(column, filter).Accepts(server, record) == expected, "the slow way agrees");
  FilterBar bar;
  const bool changed = bar.Change(column, filter);
  RequireProperty(changed == (column >= 0 && !filter.empty()), "a text in a column's field is a change");
  RequireProperty(bar.Accepts(server, record) == (!changed || expected), "a filter bar asks the same");
  RequireProperty(!bar.Change(column, filter), "the same text again is none");
  return 0;
}

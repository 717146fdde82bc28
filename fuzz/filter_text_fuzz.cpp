#include <algorithm>
#include <string>

#include "foundations/text_tools.h"
#include "fuzz/fuzz_functions.h"
#include "grid_ops/rows/column_filter.h"
#include "tests/grid_ops/slow_book.h"

int FuzzFilterText(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t kLongestTexts = 4096;
  if (size == 0) return 0;
  const int column = data[0] % (kTradeColumnCount + 2) - 1;  // also one below the columns, and their count
  const std::string texts(reinterpret_cast<const char*>(data) + 1, std::min(size, kLongestTexts) - 1);
  const std::size_t end = std::min(texts.find('\n'), texts.size());
  std::wstring filter = NarrowToWide(texts.substr(0, end));
  // A byte of 1 stands for a letter that no western code page has.
  std::replace(filter.begin(), filter.end(), L'\1', L'\x416');
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

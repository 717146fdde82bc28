// FilterBar: the texts in a book's filter bar and the filters made of them. Not the row of edit fields on the screen.
// Used on the terminal's calling thread only.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "grid_ops/column_filter.h"

class FilterBar {
 public:
  // Takes the text of a column's field, empty for none; false when that changes nothing, be it that the column is below
  // 0 or above the count of columns. The count itself passes as a column, and accepts every record: meant so.
  bool Change(int column, const std::wstring& text);
  void Clear() noexcept { Fields.clear(); }

  // A field holds text.
  bool Active() const noexcept { return !Fields.empty(); }
  // In lower case; empty where the field is.
  std::wstring TextOf(int column) const;

  // Every field accepts the record.
  bool Accepts(std::string_view serverName, const TradeRecord& record) const noexcept {
    for (const Field& field : Fields)
      if (!field.Filter.Accepts(serverName, record)) return false;
    return true;
  }
  void Prefetch(const TradeRecord* record) const noexcept {
    for (const Field& field : Fields) field.Filter.Prefetch(record);
  }

 private:
  struct Field {
    int Column;
    std::wstring Text;  // never empty
    ColumnFilter Filter;
  };
  std::vector<Field> Fields;  // in the order in which they were filled
};

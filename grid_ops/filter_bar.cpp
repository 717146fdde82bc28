#include "grid_ops/filter_bar.h"

#include <algorithm>

#include "foundations/wide_tools.h"

bool FilterBar::Change(int column, const std::wstring& text) {
  if (column < 0 || column > kTradeColumnCount) return false;
  const auto field =
      std::find_if(Fields.begin(), Fields.end(), [column](const Field& known) { return known.Column == column; });
  std::wstring lower = LowerWide(text);
  if (field == Fields.end()) {
    if (lower.empty()) return false;
    Fields.push_back({column, lower, ColumnFilter(column, lower)});
    return true;
  }
  if (field->Text == lower) return false;
  if (lower.empty())
    Fields.erase(field);
  else
    *field = {column, lower, ColumnFilter(column, lower)};
  return true;
}

std::wstring FilterBar::TextOf(int column) const {
  for (const Field& field : Fields)
    if (field.Column == column) return field.Text;
  return {};
}

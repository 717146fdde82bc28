#include "grid_base/windows/field_order.h"

#include <algorithm>

namespace {

// Removes the selected item and selects its successor, or the new last item.
std::wstring TakeSelected(CheckList& list) {
  const int selected = list.GetCurSel();
  std::wstring text = list.GetItemText(selected);
  list.DeleteItem(selected);
  list.SetCurSel(std::min(selected, list.GetItemCount() - 1));
  return text;
}

}  // namespace

FieldOrder::FieldOrder(CQORPGridColumnsInfo& columns, const ColumnTable& table, CheckList& shown, CheckList& hidden)
    : Columns(columns), Table(table), Shown(shown), Unshown(hidden), SavedOrder(columns.GetColumnOrderArray()) {}

void FieldOrder::Fill() {
  std::map<int, std::wstring> shown;  // by order; of two equals the later one counts
  for (int column = 0; column < Columns.GetColumnCount(); ++column) {
    const int order = Columns.GetColumnOrder(column);
    if (order == -1) {
      Unshown.InsertItem(Unshown.GetItemCount(), Columns.GetColumnName(column));
      continue;
    }
    shown[order] = Columns.GetColumnName(column);
  }
  for (const auto& [order, header] : shown) {
    Shown.InsertItem(order, header);
    Shown.SetCheck(order, true);
  }
}

// The item moves in any case; in the grid, locked columns precede the others whatever the list says.
bool FieldOrder::MoveBy(int by) {
  const int from = Shown.GetCurSel();
  const int to = from + by;
  if (from < 0 || to < 0 || to >= Shown.GetItemCount()) return false;
  const bool checked = Shown.GetCheck(from);
  const std::wstring header = Shown.GetItemText(from);
  Shown.DeleteItem(from);
  Shown.InsertItem(to, header);
  Shown.SetCheck(to, checked);
  Shown.SetCurSel(to);
  Columns.SetColumnDisplayPos(to, FindColumn(header, Wanted::Any));
  return true;
}

bool FieldOrder::Hide() {
  if (Shown.GetCurSel() < 0) return false;
  const std::wstring header = TakeSelected(Shown);
  const int bottom = Unshown.GetItemCount();
  // Intentional: inserts at the top, but clears the check at the bottom.
  Unshown.InsertItem(0, header);
  Unshown.SetCheck(bottom, false);
  const int column = FindColumn(header, Wanted::Visible);
  if (column < 0) return false;
  Columns.SetColumnVisible(column, false);
  return true;
}

bool FieldOrder::Show() {
  if (Unshown.GetCurSel() < 0) return false;
  const std::wstring header = TakeSelected(Unshown);
  const int end = Shown.GetItemCount();
  Shown.InsertItem(end, header);
  Shown.SetCheck(end, true);
  const int column = FindColumn(header, Wanted::Hidden);
  if (column < 0) return false;
  Columns.SetColumnVisible(column, true);
  Columns.SetColumnDisplayPos(Columns.GetColumnCount(), column);
  return true;
}

bool FieldOrder::Restore() {
  if (SavedOrder.empty()) return false;
  Columns.SetColumnOrderArray(SavedOrder);
  return true;
}

int FieldOrder::FindColumn(const std::wstring& header, Wanted wanted) const {
  const auto fits = [&](const auto& entry) {
    const bool visible = Columns.GetColumnVisible(entry.first);
    return entry.second.Header == header && (wanted == Wanted::Any || visible == (wanted == Wanted::Visible));
  };
  const auto found = std::ranges::find_if(Table, fits);
  return found == Table.end() ? -1 : found->first;
}

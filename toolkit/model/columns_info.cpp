#include "toolkit/model/columns_info.h"

#include <algorithm>
#include <cstdlib>

const CQORPGridColumnsInfo::Column* CQORPGridColumnsInfo::Find(int column) const {
  return column >= 0 && column < GetColumnCount() ? &Columns[static_cast<std::size_t>(column)] : nullptr;
}

CQORPGridColumnsInfo::Column* CQORPGridColumnsInfo::Find(int column) {
  return column >= 0 && column < GetColumnCount() ? &Columns[static_cast<std::size_t>(column)] : nullptr;
}

void CQORPGridColumnsInfo::InsertColumn(int column, const std::wstring& name, int widthPx) {
  if (column != GetColumnCount()) return;
  Columns.push_back({.Name = name, .WidthPx = std::max(widthPx, 0)});
  Order.push_back(column);
}

std::wstring CQORPGridColumnsInfo::GetColumnName(int column) const {
  const Column* found = Find(column);
  return found ? found->Name : std::wstring();
}

int CQORPGridColumnsInfo::GetColumnWidth(int column) const {
  const Column* found = Find(column);
  return found ? found->WidthPx : 0;
}

void CQORPGridColumnsInfo::SetColumnWidth(int column, int widthPx) {
  if (Column* found = Find(column)) found->WidthPx = std::max(widthPx, 0);
}

bool CQORPGridColumnsInfo::GetColumnVisible(int column) const {
  const Column* found = Find(column);
  return found && found->Visible;
}

void CQORPGridColumnsInfo::SetColumnVisible(int column, bool visible) {
  if (Column* found = Find(column)) found->Visible = visible;
}

int CQORPGridColumnsInfo::GetColumnAlign(int column) const {
  const Column* found = Find(column);
  return found ? found->Align : 0;
}

void CQORPGridColumnsInfo::SetColumnAlign(int column, int align) {
  if (Column* found = Find(column)) found->Align = align;
}

bool CQORPGridColumnsInfo::GetColumnLocked(int column) const {
  const Column* found = Find(column);
  return found && found->Locked;
}

void CQORPGridColumnsInfo::SetColumnLocked(int column, bool locked) {
  if (Column* found = Find(column)) found->Locked = locked;
}

bool CQORPGridColumnsInfo::IsColumnSelected(int column) const {
  const Column* found = Find(column);
  return found && found->Selected;
}

void CQORPGridColumnsInfo::SelectColumn(int column, bool selected) {
  if (Column* found = Find(column)) found->Selected = selected;
}

void CQORPGridColumnsInfo::ClearColumnSelection() {
  for (Column& column : Columns) column.Selected = false;
}

int CQORPGridColumnsInfo::GetColumnOrder(int column) const {
  const std::vector<int> shown = DisplayColumns();
  const auto at = std::ranges::find(shown, column);
  return at == shown.end() ? -1 : static_cast<int>(at - shown.begin());
}

std::vector<int> CQORPGridColumnsInfo::DisplayColumns() const {
  std::vector<int> shown;
  std::ranges::copy_if(Order, std::back_inserter(shown), [this](int column) { return Find(column)->Visible; });
  std::stable_partition(shown.begin(), shown.end(), [this](int column) { return Find(column)->Locked; });
  return shown;
}

// The new place is relative to a neighbour of the same kind, locked or not, as the two kinds never mix.
void CQORPGridColumnsInfo::SetColumnDisplayPos(int place, int column) {
  const Column* moved = Find(column);
  if (moved == nullptr) return;
  std::vector<int> others = DisplayColumns();
  std::erase(others, column);
  const int locked = static_cast<int>(std::ranges::count_if(others, [this](int other) { return Find(other)->Locked; }));
  const int first = moved->Locked ? 0 : locked;
  const int end = moved->Locked ? locked : static_cast<int>(others.size());
  if (first == end) return;
  place = std::clamp(place, first, end);
  const int neighbour = others[static_cast<std::size_t>(place < end ? place : place - 1)];
  std::erase(Order, column);
  const auto at = std::ranges::find(Order, neighbour);
  Order.insert(place < end ? at : at + 1, column);
}

bool CQORPGridColumnsInfo::DropColumn(int place, int column) {
  const std::vector<int> shown = DisplayColumns();
  const int from = GetColumnOrder(column);
  if (from < 0 || place == from || place == from + 1) return false;
  const auto locked = std::ranges::count_if(shown, [this](int other) { return Find(other)->Locked; });
  SetColumnLocked(column, place < locked || (GetColumnLocked(column) && place == locked));
  SetColumnDisplayPos(place > from ? place - 1 : place, column);
  return true;
}

// Locked columns come first, as on the screen, so that setting the present order is a no-op.
void CQORPGridColumnsInfo::SetColumnOrderArray(const std::vector<int>& order) {
  std::vector<int> wanted;
  const auto add = [this, &wanted](int column) {
    if (Find(column) != nullptr && std::ranges::find(wanted, column) == wanted.end()) wanted.push_back(column);
  };
  std::ranges::for_each(order, add);
  std::ranges::for_each(DisplayColumns(), add);
  auto next = wanted.begin();
  std::vector<int> result = Order;
  std::stable_partition(result.begin(), result.end(), [this](int column) { return Find(column)->Locked; });
  for (int& column : result)
    if (std::ranges::find(wanted, column) != wanted.end()) column = *next++;
  Order = std::move(result);
}

int CQORPGridColumnsInfo::GetColumnState(int column) const {
  const Column* found = Find(column);
  return found ? found->Sort : 0;
}

void CQORPGridColumnsInfo::SetSortColumn(int column, bool rising, bool multiple) {
  Column* found = Find(column);
  if (found == nullptr) return;
  if (!multiple) {
    for (Column& other : Columns) other.Sort = 0;
    SortOrder.clear();
  }
  found->Sort = rising ? 1 : -1;
  if (std::ranges::find(SortOrder, column) == SortOrder.end()) SortOrder.push_back(column);
}

void CQORPGridColumnsInfo::RemoveSortColumn(int column) {
  if (Column* found = Find(column)) found->Sort = 0;
  std::erase(SortOrder, column);
}

int CQORPGridColumnsInfo::GetSortPriority(int column) const {
  const auto at = std::ranges::find(SortOrder, column);
  return at == SortOrder.end() ? -1 : static_cast<int>(at - SortOrder.begin());
}

ColumnStrip::ColumnStrip(std::span<const int> widths, int frozen, int scrolledPx) {
  int left = 0;
  for (const int width : widths) {
    const bool isFrozen = static_cast<int>(Spans.size()) < frozen;
    const int seen = isFrozen ? left : left - scrolledPx;
    Spans.push_back({seen, seen + width});
    left += width;
    if (isFrozen) Frozen = Spans.size(), FrozenPx = left;
  }
}

int ColumnStrip::PlaceAt(int x) const {
  const auto at = std::ranges::find_if(Spans, [x](const ColumnSpan& span) { return x >= span.Left && x < span.Right; });
  return at == Spans.end() ? -1 : static_cast<int>(at - Spans.begin());
}

int ColumnStrip::PlaceOfEdgeAt(int x, int nearPx) const {
  for (int place = static_cast<int>(Spans.size()) - 1; place >= 0; --place) {
    const int right = SpanOf(place).Right;
    if (std::abs(x - right) <= nearPx && right >= FrozenPx) return place;
  }
  const int place = PlaceAt(x);
  return place >= 0 && SpanOf(place).Right - x <= nearPx ? place : -1;
}

int ColumnStrip::DropPlaceAt(int x) const {
  const auto isBehind = [x](const ColumnSpan& span) { return x < (span.Left + span.Right) / 2; };
  // Frozen columns cover what is scrolled under them.
  const auto end = x < FrozenPx ? Spans.begin() + static_cast<std::ptrdiff_t>(Frozen) : Spans.end();
  return static_cast<int>(std::find_if(Spans.begin(), end, isBehind) - Spans.begin());
}

int CountFrozen(std::span<const int> widths, int wanted, int roomPx) {
  int count = std::clamp(wanted, 0, std::max(static_cast<int>(widths.size()) - 1, 0));
  int right = 0;
  for (int place = 0; place < count; ++place) {
    right += widths[static_cast<std::size_t>(place)];
    if (right >= roomPx) count = place;
  }
  return count;
}

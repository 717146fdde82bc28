#include "terminal/lists/list_rows.h"

#include <algorithm>
#include <compare>
#include <unordered_set>
#include <utility>

#include "foundations/text_tools.h"

ListRows::ListRows(ListSource& source, ListOrder order) : Rows(source), Order(order) {
  Collect();
}

std::optional<std::size_t> ListRows::PlaceOf(ListRow row) const {
  const auto at = std::ranges::find(Shown, row);
  return at == Shown.end() ? std::nullopt : std::optional(static_cast<std::size_t>(at - Shown.begin()));
}

bool ListRows::Passes(ListRow row) const {
  return std::ranges::all_of(Filters, [&](const auto& filter) {
    return LowerWide(Rows.Text(row, filter.first)).find(filter.second.Lower) != std::wstring::npos;
  });
}

void ListRows::Collect() {
  Shown.clear();
  End = Rows.EndRow();
  for (ListRow row = Rows.FirstRow(); row < End; ++row)
    if (Passes(row)) Shown.push_back(row);
  if (Order == ListOrder::NewestFirst) std::ranges::reverse(Shown);
  if (SortedBy) Sort();
}

namespace {

double NumberOf(const SheetValue& value) {
  if (const auto* whole = std::get_if<std::int64_t>(&value)) return static_cast<double>(*whole);
  const auto* number = std::get_if<double>(&value);
  return number == nullptr ? 0 : *number;
}

bool IsBefore(const SheetValue& left, const SheetValue& right) {
  const auto* leftText = std::get_if<std::wstring>(&left);
  const auto* rightText = std::get_if<std::wstring>(&right);
  if (leftText != nullptr && rightText != nullptr) return *leftText < *rightText;
  return NumberOf(left) < NumberOf(right);
}

bool IsNothing(const SheetValue& value) {
  return std::holds_alternative<std::monostate>(value);
}

}  // namespace

// Requires: the rows are in the order of the source.
void ListRows::Sort() {
  std::vector<std::pair<SheetValue, ListRow>> keys;
  keys.reserve(Shown.size());
  for (const ListRow row : Shown) keys.emplace_back(Rows.Value(row, *SortedBy), row);
  std::stable_sort(keys.begin(), keys.end(), [this](const auto& left, const auto& right) {
    if (IsNothing(left.first) || IsNothing(right.first)) return !IsNothing(left.first) && IsNothing(right.first);
    return Rising ? IsBefore(left.first, right.first) : IsBefore(right.first, left.first);
  });
  std::ranges::transform(keys, Shown.begin(), [](const auto& key) { return key.second; });
}

ListRows::Update ListRows::TakeChanges() {
  const ListChanges changes = Rows.TakeChanges();
  const bool isPlain = Filters.empty() && !SortedBy;
  if (!changes.All && (isPlain || changes.Rows.empty()) && (!SortedBy || End == Rows.EndRow())) {
    Update update = AddNew();
    const std::unordered_set<ListRow> changed(changes.Rows.begin(), changes.Rows.end());
    for (std::size_t place = 0; !changed.empty() && place < Shown.size(); ++place)
      if (changed.contains(Shown[place])) update.Texts.push_back(place);
    return update;
  }
  if (changes.All) {
    Collect();
    return {.Moved = true};
  }
  return CollectAgain(changes.Rows);
}

// Rows that went at the begin of the source stand at one end.
ListRows::Update ListRows::AddNew() {
  Update update;
  const ListRow first = Rows.FirstRow();
  if (const auto gone = std::erase_if(Shown, [first](ListRow row) { return row < first; }); gone != 0)
    update.Moved = Order == ListOrder::OldestFirst || SortedBy.has_value();
  std::vector<ListRow> added;
  for (ListRow row = std::max(End, first); row < Rows.EndRow(); ++row)
    if (Passes(row)) added.push_back(row);
  End = Rows.EndRow();
  if (Order == ListOrder::NewestFirst) {
    Shown.insert(Shown.begin(), added.rbegin(), added.rend());
    update.AddedFirst = added.size();
  } else {
    Shown.insert(Shown.end(), added.begin(), added.end());
    update.AddedLast = added.size();
  }
  return update;
}

ListRows::Update ListRows::CollectAgain(const std::vector<ListRow>& changed) {
  const std::vector<ListRow> before = Shown;
  Collect();
  if (Shown != before) return {.Moved = true};
  Update update;
  const std::unordered_set<ListRow> rows(changed.begin(), changed.end());
  for (std::size_t place = 0; place < Shown.size(); ++place)
    if (rows.contains(Shown[place])) update.Texts.push_back(place);
  return update;
}

void ListRows::SetFilter(std::size_t column, const std::wstring& text) {
  if (text.empty())
    Filters.erase(column);
  else
    Filters[column] = {text, LowerWide(text)};
  Collect();
}

void ListRows::ClearFilters() {
  Filters.clear();
  Collect();
}

std::wstring ListRows::FilterOf(std::size_t column) const {
  const auto at = Filters.find(column);
  return at == Filters.end() ? std::wstring() : at->second.Typed;
}

void ListRows::SortBy(std::optional<std::size_t> column, bool rising) {
  SortedBy = column;
  Rising = rising;
  Collect();
}

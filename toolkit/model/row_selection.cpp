#include "toolkit/model/row_selection.h"

#include <algorithm>

namespace {

std::vector<RowRange> Joined(std::vector<RowRange> ranges) {
  std::ranges::sort(ranges, {}, &RowRange::First);
  std::vector<RowRange> joined;
  for (const RowRange& range : ranges) {
    if (!joined.empty() && range.First <= joined.back().Last + 1)
      joined.back().Last = std::max(joined.back().Last, range.Last);
    else
      joined.push_back(range);
  }
  return joined;
}

std::vector<RowRange> Without(const std::vector<RowRange>& ranges, int row) {
  std::vector<RowRange> left;
  for (const RowRange& range : ranges) {
    if (row < range.First || row > range.Last) {
      left.push_back(range);
      continue;
    }
    if (range.First < row) left.push_back({range.First, row - 1});
    if (row < range.Last) left.push_back({row + 1, range.Last});
  }
  return left;
}

void Clip(std::vector<RowRange>& ranges, int rows) {
  std::erase_if(ranges, [rows](const RowRange& range) { return range.First >= rows; });
  if (!ranges.empty()) ranges.back().Last = std::min(ranges.back().Last, rows - 1);
}

std::vector<RowRange> MovedDown(const std::vector<RowRange>& ranges, int from, int rows) {
  std::vector<RowRange> moved;
  for (const RowRange& range : ranges) {
    if (range.First < from) moved.push_back({range.First, std::min(range.Last, from - 1)});
    if (range.Last >= from) moved.push_back({std::max(range.First, from) + rows, range.Last + rows});
  }
  return moved;
}

}  // namespace

int RowSelection::Nearest(int row) const {
  return std::clamp(row, Rows == 0 ? -1 : 0, Rows - 1);
}

void RowSelection::SetCurrent(int row) {
  Current = Anchor = Nearest(row);
}

void RowSelection::SetRows(int rows) {
  Rows = std::max(rows, 0);
  Current = std::min(Current, Rows - 1);
  Anchor = std::min(Anchor, Rows - 1);
  Clip(Ranges, Rows);
  Clip(Kept, Rows);
}

void RowSelection::InsertRows(int before, int rows) {
  Rows += rows;
  if (Current >= before) Current += rows;
  if (Anchor >= before) Anchor += rows;
  Ranges = MovedDown(Ranges, before, rows);
  Kept = MovedDown(Kept, before, rows);
}

bool RowSelection::Contains(int row) const {
  const auto next = std::ranges::upper_bound(Ranges, row, {}, &RowRange::First);
  return next != Ranges.begin() && row <= std::prev(next)->Last;
}

void RowSelection::SelectOnly(int row) {
  Clear();
  SetCurrent(row);
  if (Current >= 0) Ranges = {{Current, Current}};
}

void RowSelection::Toggle(int row) {
  if (Rows == 0) return;
  SetCurrent(row);
  if (Contains(Current)) {
    Ranges = Without(Ranges, Current);
  } else {
    Ranges.push_back({Current, Current});
    Ranges = Joined(Ranges);
  }
  Kept = Ranges;
}

void RowSelection::MoveCurrent(int row) {
  SetCurrent(row);
  Kept = Ranges;
}

void RowSelection::Extend(int row, bool keepOthers) {
  if (Rows == 0) return;
  Current = Nearest(row);
  if (Anchor < 0) Anchor = Current;
  if (!keepOthers) Kept.clear();
  Ranges = Kept;
  Ranges.push_back({std::min(Anchor, Current), std::max(Anchor, Current)});
  Ranges = Joined(Ranges);
}

void RowSelection::SelectAll() {
  Kept.clear();
  Ranges.clear();
  if (Rows > 0) Ranges = {{0, Rows - 1}};
  if (Current < 0) SetCurrent(0);
}

void RowSelection::Clear() {
  Ranges.clear();
  Kept.clear();
  Current = Anchor = -1;
}

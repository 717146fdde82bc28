// CQORPGridColumnsInfo: the columns of a grid as values: titles, widths, order on the screen, and which are visible,
// locked, sorted and selected. Column indexes never change. An invalid index is ignored; its getters return an empty
// value. ColumnStrip: the visible columns from left to right as the user sees them, and what the mouse points at.
#pragma once

#include <span>
#include <string>
#include <vector>

class CQORPGridColumnsInfo {
 public:
  // Appends the column; on the screen it is the last one. A no-op unless the index is the number of columns.
  void InsertColumn(int column, const std::wstring& name, int widthPx);
  int GetColumnCount() const noexcept { return static_cast<int>(Columns.size()); }

  std::wstring GetColumnName(int column) const;
  // A hidden column keeps its width.
  int GetColumnWidth(int column) const;
  void SetColumnWidth(int column, int widthPx);
  bool GetColumnVisible(int column) const;
  void SetColumnVisible(int column, bool visible);
  // 0 left, 1 right, 2 centre.
  int GetColumnAlign(int column) const;
  void SetColumnAlign(int column, int align);
  // Locked columns precede the others.
  bool GetColumnLocked(int column) const;
  void SetColumnLocked(int column, bool locked);
  bool IsColumnSelected(int column) const;
  void SelectColumn(int column, bool selected);
  void ClearColumnSelection();
  // Grouping is not offered: always -1.
  int GetGroupColumnPos(int /*column*/) const { return -1; }

  // The column's place among the visible columns, from 0; -1 for a hidden one.
  int GetColumnOrder(int column) const;
  // Moves the column to that place among the visible ones; the others keep their order.
  void SetColumnDisplayPos(int place, int column);
  // Moves the visible column before the one that is at that place now; the number of visible columns for the end. Among
  // locked columns it becomes locked, elsewhere unlocked; at the boundary it stays what it is. False if nothing moves.
  bool DropColumn(int place, int column);
  // The visible columns in the order of the screen: locked ones first.
  std::vector<int> DisplayColumns() const;
  std::vector<int> GetColumnOrderArray() const { return DisplayColumns(); }
  // Puts these columns into that order; visible columns that are missing follow them. No column is shown or hidden, and
  // hidden ones that are missing keep their places.
  void SetColumnOrderArray(const std::vector<int>& order);

  // 1 rising, -1 falling, 0 not sorted by.
  int GetColumnState(int column) const;
  // Without multiple, all other columns lose their sort.
  void SetSortColumn(int column, bool rising, bool multiple);
  void RemoveSortColumn(int column);
  // The column's place among the sort columns, which are in the order in which they were set, from 0; -1 for none.
  int GetSortPriority(int column) const;

 private:
  struct Column {
    std::wstring Name;
    int WidthPx = 0;
    int Align = 0;
    bool Visible = true;
    bool Locked = false;
    bool Selected = false;
    int Sort = 0;
  };
  const Column* Find(int column) const;
  Column* Find(int column);

  std::vector<Column> Columns;  // by index
  std::vector<int> Order;       // all columns as they stand on the screen, hidden ones among them
  std::vector<int> SortOrder;   // sort columns, the first first
};

// From the left edge of the first header, in pixels. Right is excluded.
struct ColumnSpan {
  int Left = 0;
  int Right = 0;
  bool operator==(const ColumnSpan&) const = default;
};

// A place is an index of a visible column. The first columns may be frozen; they cover those that are scrolled under
// them. Every question is linear in the number of columns.
class ColumnStrip {
 public:
  ColumnStrip(std::span<const int> widths, int frozen, int scrolledPx);

  const ColumnSpan& SpanOf(int place) const { return Spans[static_cast<std::size_t>(place)]; }
  int FrozenWidth() const noexcept { return FrozenPx; }
  // The column at x; -1 for none.
  int PlaceAt(int x) const;
  // The column whose right edge is at most that far from x; -1 for none. The right one of two, as narrow columns would
  // stay narrow otherwise.
  int PlaceOfEdgeAt(int x, int nearPx) const;
  // The place before which a column that is dropped at x goes; the number of columns for the end.
  int DropPlaceAt(int x) const;

 private:
  std::vector<ColumnSpan> Spans;
  std::size_t Frozen = 0;
  int FrozenPx = 0;
};

// How many of the wanted columns can be frozen: one column scrolls in any case, and the frozen ones are narrower than
// the room.
int CountFrozen(std::span<const int> widths, int wanted, int roomPx);

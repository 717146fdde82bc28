// ColumnStrip: the visible columns of a grid from left to right as the user sees them, and what the mouse points at.
#pragma once

#include <span>
#include <vector>

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
  int FrozenPx = 0;
};

// How many of the wanted columns can be frozen: one column scrolls in any case, and the frozen ones are narrower than
// the room.
int CountFrozen(std::span<const int> widths, int wanted, int roomPx);

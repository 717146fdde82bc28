#include "toolkit/model/column_strip.h"

#include <algorithm>
#include <cstdlib>

ColumnStrip::ColumnStrip(std::span<const int> widths, int frozen, int scrolledPx) {
  int left = 0;
  for (const int width : widths) {
    const bool isFrozen = static_cast<int>(Spans.size()) < frozen;
    const int seen = isFrozen ? left : left - scrolledPx;
    Spans.push_back({seen, seen + width});
    left += width;
    if (isFrozen) FrozenPx = left;
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
  const auto isBehind = [this, x](const ColumnSpan& span) {
    return (x < FrozenPx && span.Left >= FrozenPx) || x < (span.Left + span.Right) / 2;
  };
  return static_cast<int>(std::ranges::find_if(Spans, isBehind) - Spans.begin());
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

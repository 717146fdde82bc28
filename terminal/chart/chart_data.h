// ChartData: the trades of one security in the order of their times. ChartValues: what a picture of them needs, by
// columns of pixels instead of trades.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

enum class ChartSide : std::uint8_t { None, Buy, Sell };

// Seconds count from the begin of 1970 on the exchange's clock.
struct ChartPoint {
  std::int64_t Seconds = 0;
  double Price = 0;
  std::uint32_t Quantity = 0;
  ChartSide Side = ChartSide::None;
  bool operator==(const ChartPoint&) const = default;
};

// A greater price cannot be drawn.
inline constexpr double kMostChartPrice = 1e15;

// Trades of one second keep the order in which they came. A trade without a quantity, as a busted one, or without a
// price that can be drawn is left out. Appending costs nothing more for trades that come in order; a late one is merged
// in O(n).
class ChartData {
 public:
  void Assign(std::vector<ChartPoint> points);
  void Append(std::span<const ChartPoint> points);
  void Clear() { Sorted.clear(); }
  std::span<const ChartPoint> Points() const noexcept { return Sorted; }

 private:
  std::vector<ChartPoint> Sorted;
};

// From is included, To is not.
struct ChartRange {
  double From = 0;
  double To = 0;
  double Length() const noexcept { return To - From; }
  bool operator==(const ChartRange&) const = default;
};

// The trades in one column of pixels; without any only Average has a meaning.
struct ChartColumn {
  std::uint32_t Trades = 0;
  double First = 0;
  double Low = 0;
  double High = 0;
  double Last = 0;
  double Average = 0;  // of the day so far, weighed by quantity; 0 before its first trade
  std::uint64_t Bought = 0;
  std::uint64_t Sold = 0;
  double BuyLow = 0;    // once Bought is not 0
  double SellHigh = 0;  // once Sold is not 0
  bool operator==(const ChartColumn&) const = default;
};

struct ChartTotals {
  std::uint64_t Trades = 0;
  std::uint64_t Quantity = 0;
  std::uint64_t Bought = 0;
  std::uint64_t Sold = 0;
  bool operator==(const ChartTotals&) const = default;
};

struct ChartValues {
  std::vector<ChartColumn> Columns;
  std::int64_t BarSeconds = 60;
  std::int64_t FirstBar = 0;         // where Bars begin
  std::vector<std::uint64_t> Bars;   // quantities; whole bars, also of the first and last one in the range
  std::optional<ChartPoint> Before;  // the last trade before the range
  std::optional<ChartPoint> After;   // the first trade behind it
  ChartTotals Totals;                // within the range
};

// The points are sorted. One pass over the points up to the end of the range, as the average begins with the day.
ChartValues ValuesOf(std::span<const ChartPoint> points, const ChartRange& range, int columns, std::int64_t barSeconds);

// The sorted points of the range.
std::span<const ChartPoint> PointsIn(std::span<const ChartPoint> points, const ChartRange& range);

// Marks of one side in one part of the width: where the lowest buy or the highest sell is.
struct ChartMark {
  int Column = 0;
  double Price = 0;
  std::uint64_t Quantity = 0;
  ChartSide Side = ChartSide::Buy;
  bool operator==(const ChartMark&) const = default;
};
// At most one for each side in as many columns; the parts stand at fixed times, so that marks move with their trades.
std::vector<ChartMark> MarksOf(const ChartValues& values, const ChartRange& range, int columnsPerMark);

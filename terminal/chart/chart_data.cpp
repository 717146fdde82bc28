#include "terminal/chart/chart_data.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

bool IsEarlier(const ChartPoint& left, const ChartPoint& right) {
  return left.Seconds < right.Seconds;
}

bool CanBeShown(const ChartPoint& point) {
  return point.Quantity != 0 && std::fabs(point.Price) <= kMostChartPrice;
}

}  // namespace

void ChartData::Assign(std::vector<ChartPoint> points) {
  Sorted = std::move(points);
  std::erase_if(Sorted, [](const ChartPoint& point) { return !CanBeShown(point); });
  if (!std::ranges::is_sorted(Sorted, IsEarlier)) std::ranges::stable_sort(Sorted, IsEarlier);
}

void ChartData::Append(std::span<const ChartPoint> points) {
  const auto before = static_cast<std::ptrdiff_t>(Sorted.size());
  std::ranges::copy_if(points, std::back_inserter(Sorted), CanBeShown);
  const auto added = Sorted.begin() + before;
  if (!std::is_sorted(added, Sorted.end(), IsEarlier)) std::stable_sort(added, Sorted.end(), IsEarlier);
  if (before == 0 || added == Sorted.end() || !IsEarlier(*added, *std::prev(added))) return;
  std::inplace_merge(std::upper_bound(Sorted.begin(), added, *added, IsEarlier), added, Sorted.end(), IsEarlier);
}

std::span<const ChartPoint> PointsIn(std::span<const ChartPoint> points, const ChartRange& range) {
  const auto placeOf = [&](double seconds) {
    return std::ranges::partition_point(
        points, [seconds](const ChartPoint& point) { return static_cast<double>(point.Seconds) < seconds; });
  };
  const auto first = placeOf(range.From);
  return {first, std::max(first, placeOf(range.To))};
}

namespace {

// The average price so far, weighed by quantity.
struct RunningAverage {
  void Add(const ChartPoint& point) {
    Amount += point.Price * point.Quantity;
    Quantity += point.Quantity;
  }
  double Value() const { return Quantity == 0 ? 0 : Amount / Quantity; }

  double Amount = 0;
  double Quantity = 0;
};

void AddTo(ChartColumn& column, const ChartPoint& point) {
  if (column.Trades++ == 0) column.First = column.Low = column.High = point.Price;
  column.Low = std::min(column.Low, point.Price);
  column.High = std::max(column.High, point.Price);
  column.Last = point.Price;
  if (point.Side == ChartSide::Buy) {
    column.BuyLow = column.Bought == 0 ? point.Price : std::min(column.BuyLow, point.Price);
    column.Bought += point.Quantity;
  } else if (point.Side == ChartSide::Sell) {
    column.SellHigh = column.Sold == 0 ? point.Price : std::max(column.SellHigh, point.Price);
    column.Sold += point.Quantity;
  }
}

// Fills the columns; a bound is computed once for each column, not for each trade.
void FillColumns(ChartValues& values, std::span<const ChartPoint> shown, const ChartRange& range,
                 RunningAverage average) {
  const double width = range.Length() / static_cast<double>(values.Columns.size());
  auto point = shown.begin();
  for (std::size_t at = 0; at < values.Columns.size(); ++at) {
    ChartColumn& column = values.Columns[at];
    const bool isLast = at + 1 == values.Columns.size();
    const double end = range.From + static_cast<double>(at + 1) * width;
    for (; point != shown.end() && (isLast || static_cast<double>(point->Seconds) < end); ++point) {
      AddTo(column, *point);
      average.Add(*point);
    }
    column.Average = average.Value();
    values.Totals.Trades += column.Trades;
    values.Totals.Bought += column.Bought;
    values.Totals.Sold += column.Sold;
  }
}

void FillBars(ChartValues& values, std::span<const ChartPoint> points, const ChartRange& range) {
  const auto step = static_cast<double>(values.BarSeconds);
  const double first = std::floor(range.From / step), end = std::ceil(range.To / step);
  values.FirstBar = static_cast<std::int64_t>(first) * values.BarSeconds;
  values.Bars.assign(static_cast<std::size_t>(end - first), 0);
  const auto shown = PointsIn(points, {first * step, end * step});
  auto point = shown.begin();
  std::int64_t barEnd = values.FirstBar;
  for (std::uint64_t& bar : values.Bars)
    for (barEnd += values.BarSeconds; point != shown.end() && point->Seconds < barEnd; ++point) bar += point->Quantity;
}

}  // namespace

ChartValues ValuesOf(std::span<const ChartPoint> points, const ChartRange& range, int columns,
                     std::int64_t barSeconds) {
  ChartValues values;
  if (columns <= 0 || barSeconds <= 0 || !(range.Length() > 0)) return values;
  values.BarSeconds = barSeconds;
  values.Columns.resize(static_cast<std::size_t>(columns));
  const std::span<const ChartPoint> shown = PointsIn(points, range);
  const std::size_t before = static_cast<std::size_t>(shown.data() - points.data());
  RunningAverage average;
  for (const ChartPoint& point : points.first(before)) average.Add(point);
  if (before > 0) values.Before = points[before - 1];
  if (before + shown.size() < points.size()) values.After = points[before + shown.size()];
  FillColumns(values, shown, range, average);
  for (const ChartPoint& point : shown) values.Totals.Quantity += point.Quantity;
  FillBars(values, points, range);
  return values;
}

std::vector<ChartMark> MarksOf(const ChartValues& values, const ChartRange& range, int columnsPerMark) {
  std::vector<ChartMark> marks;
  if (values.Columns.empty() || columnsPerMark <= 0) return marks;
  const double perColumn = range.Length() / static_cast<double>(values.Columns.size());
  const int begin = static_cast<int>(std::fmod(std::floor(range.From / perColumn), columnsPerMark));
  const auto add = [&](int column, double price, std::uint64_t quantity, ChartSide side, ChartMark*& open) {
    if (quantity == 0) return;
    if (open == nullptr) {
      marks.push_back({column, price, 0, side});
      open = &marks.back();
    }
    open->Quantity += quantity;
    const bool isBetter = side == ChartSide::Buy ? price < open->Price : price > open->Price;
    if (isBetter) open->Column = column, open->Price = price;
  };
  marks.reserve(2 * values.Columns.size());  // the open ones stay in place
  ChartMark* buy = nullptr;
  ChartMark* sell = nullptr;
  for (std::size_t at = 0; at < values.Columns.size(); ++at) {
    const ChartColumn& column = values.Columns[at];
    const int place = static_cast<int>(at);
    if ((place + begin) % columnsPerMark == 0) buy = sell = nullptr;
    add(place, column.BuyLow, column.Bought, ChartSide::Buy, buy);
    add(place, column.SellHigh, column.Sold, ChartSide::Sell, sell);
  }
  return marks;
}

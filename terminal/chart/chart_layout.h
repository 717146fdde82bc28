// What stands where in a chart: the range of time and its zoom, the scales of prices and volumes, ticks and their
// texts. Pure arithmetic; texts never follow the locale.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "terminal/chart/chart_data.h"

struct ChartPlace {
  int X = 0;
  int Y = 0;
  bool operator==(const ChartPlace&) const = default;
};

// In pixels; Right and Bottom are excluded.
struct ChartRect {
  int Left = 0;
  int Top = 0;
  int Right = 0;
  int Bottom = 0;
  int Width() const noexcept { return Right - Left; }
  int Height() const noexcept { return Bottom - Top; }
  bool Has(const ChartPlace& place) const noexcept {
    return place.X >= Left && place.X < Right && place.Y >= Top && place.Y < Bottom;
  }
  bool operator==(const ChartRect&) const = default;
};

struct ChartTick {
  double Value = 0;
  std::string Text;
  bool operator==(const ChartTick&) const = default;
};

// "1,234.50" with that many decimals.
std::string FixedText(double value, int decimals);
// With two to four decimals.
std::string ChartPriceText(double price);
// "2013-10-07" and "09:30:00".
std::string ChartDateText(double seconds);
std::string ChartTimeText(double seconds);

// At the round values between two prices, none nearer to the next than that part of the whole.
std::vector<ChartTick> PriceTicks(double low, double high, double leastPart);
// The same for times. Midnight shows its date where the range is longer than a day or holds two of them.
std::vector<ChartTick> TimeTicks(const ChartRange& range, double leastPart);
// The shortest of a minute, two, five and so on that is at least that long.
std::int64_t BarSecondsFor(double leastSeconds);

// From the first trade to the last, with a margin; empty without trades.
ChartRange FullRange(std::span<const ChartPoint> points);
// The range of these two times with a margin, within the full one.
ChartRange RangeAround(double first, double last, const ChartRange& full);
// Shorter or longer by the factor; the anchor stays where it is. Never longer than the full range.
ChartRange Zoomed(const ChartRange& range, const ChartRange& full, double factor, double anchor);
ChartRange Moved(const ChartRange& range, const ChartRange& full, double seconds);
// What is shown once the full range has grown: all of it if all was shown; a range at its end goes along.
ChartRange Followed(const ChartRange& range, const ChartRange& before, const ChartRange& now);

// What the scale of prices spans in a range, with a margin, and where the line between trades enters and leaves it.
struct ChartPrices {
  double Low = 0;
  double High = 0;
  std::optional<double> Entry;
  std::optional<double> Exit;
};
// Requires points.
ChartPrices PricesIn(std::span<const ChartPoint> points, const ChartRange& range);

// The scales of a chart that was drawn.
struct ChartLayout {
  ChartRect Prices;   // empty if there was nothing to draw
  ChartRect Volumes;  // below it; empty in a low chart
  ChartRange Range;
  double LowPrice = 0;
  double HighPrice = 0;

  bool IsEmpty() const noexcept { return Prices.Width() <= 0 || Prices.Height() <= 0; }
  // A time or price out of range is at the edge.
  int XOf(double seconds) const;
  int YOf(double price) const;
  double SecondsAt(int x) const;
  double PriceAt(int y) const;
};

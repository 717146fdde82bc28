// The chart without windows: its values against a slow way over all points, scales, zoom, and the picture as SVG.
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

#include "terminal/chart/svg_chart.h"

namespace {

using Texts = std::vector<std::string>;
constexpr std::int64_t kMidnight = 1'381'104'000;  // 2013-10-07

ChartPoint PointAt(double minutes, double price, std::uint32_t quantity = 1, ChartSide side = ChartSide::Buy) {
  return {kMidnight + static_cast<std::int64_t>(minutes * 60), price, quantity, side};
}

int Below(std::mt19937& random, unsigned bound) {
  return static_cast<int>(random() % bound);
}

// Trades that mostly come in order, some of them busted.
std::vector<ChartPoint> RandomPoints(std::mt19937& random, int count) {
  std::vector<ChartPoint> points;
  std::int64_t seconds = kMidnight;
  for (int at = 0; at < count; ++at) {
    seconds += Below(random, 40);
    const auto late = std::int64_t{Below(random, 8) == 0 ? Below(random, 900) : 0};
    points.push_back({seconds - late, 100 + Below(random, 500) / 8., static_cast<std::uint32_t>(Below(random, 5)),
                      static_cast<ChartSide>(Below(random, 3))});
  }
  return points;
}

std::vector<ChartPoint> SlowSorted(std::vector<ChartPoint> points) {
  std::vector<ChartPoint> sorted;
  for (const ChartPoint& point : points) {
    if (point.Quantity == 0) continue;
    auto place = sorted.end();
    while (place != sorted.begin() && std::prev(place)->Seconds > point.Seconds) --place;
    sorted.insert(place, point);
  }
  return sorted;
}

bool IsIn(const ChartPoint& point, double from, double to) {
  return static_cast<double>(point.Seconds) >= from && static_cast<double>(point.Seconds) < to;
}

ChartColumn SlowColumn(const std::vector<ChartPoint>& points, double from, double to) {
  ChartColumn column;
  double amount = 0, quantity = 0;
  for (const ChartPoint& point : points) {
    if (static_cast<double>(point.Seconds) < to) amount += point.Price * point.Quantity, quantity += point.Quantity;
    column.Average = quantity == 0 ? 0 : amount / quantity;
    if (!IsIn(point, from, to)) continue;
    const bool isFirst = column.Trades++ == 0;
    if (isFirst) column.First = point.Price;
    column.Last = point.Price;
    column.Low = isFirst ? point.Price : std::min(column.Low, point.Price);
    column.High = isFirst ? point.Price : std::max(column.High, point.Price);
    if (point.Side == ChartSide::Buy && (column.Bought == 0 || point.Price < column.BuyLow))
      column.BuyLow = point.Price;
    if (point.Side == ChartSide::Sell && (column.Sold == 0 || point.Price > column.SellHigh))
      column.SellHigh = point.Price;
    (point.Side == ChartSide::Buy ? column.Bought : column.Sold) += point.Side == ChartSide::None ? 0 : point.Quantity;
  }
  return column;
}

TEST(ChartDataTest, KeepsTradesInOrderOfTheirTimes) {
  for (unsigned seed = 0; seed < 20; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const std::vector<ChartPoint> all = RandomPoints(random, 200);
    ChartData data;
    data.Assign({all.begin(), all.begin() + 50});
    for (std::size_t at = 50; at < all.size();) {
      const std::size_t count = std::min<std::size_t>(random() % 30, all.size() - at);
      data.Append(std::span(all).subspan(at, count));
      at += count;
    }
    EXPECT_TRUE(std::ranges::equal(data.Points(), SlowSorted(all)));
    data.Assign(all);
    EXPECT_TRUE(std::ranges::equal(data.Points(), SlowSorted(all)));
  }
}

TEST(ChartDataTest, LeavesOutWhatHasNoPlace) {
  const double kNaN = std::numeric_limits<double>::quiet_NaN();
  ChartData data;
  data.Assign({PointAt(1, kNaN), PointAt(1, 2 * kMostChartPrice), PointAt(2, 5, 0), PointAt(3, 5)});
  data.Append(std::vector{PointAt(4, 1 / 0.), PointAt(4, 6, 0), PointAt(4, 7)});
  EXPECT_TRUE(std::ranges::equal(data.Points(), std::vector{PointAt(3, 5), PointAt(4, 7)}));
}

TEST(ChartDataTest, ValuesEqualASlowWayOverAllPoints) {
  for (unsigned seed = 0; seed < 30; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const std::vector<ChartPoint> points = SlowSorted(RandomPoints(random, 300));
    const double from = static_cast<double>(kMidnight) + Below(random, 4000) - 500,
                 length = 64. * (1 + Below(random, 90));
    const ChartRange range{from, from + length};
    const int columns = 1 << Below(random, 7);  // bounds without rounding
    const ChartValues values = ValuesOf(points, range, columns, 120);
    ASSERT_EQ(values.Columns.size(), static_cast<std::size_t>(columns));
    for (int at = 0; at < columns; ++at)
      EXPECT_EQ(values.Columns[static_cast<std::size_t>(at)],
                SlowColumn(points, from + at * length / columns, from + (at + 1) * length / columns));
    const ChartColumn all = SlowColumn(points, range.From, range.To);
    EXPECT_EQ(std::tuple(values.Totals.Trades, values.Totals.Bought, values.Totals.Sold),
              std::tuple(all.Trades, all.Bought, all.Sold));
    EXPECT_LE(static_cast<double>(values.FirstBar), range.From);
    EXPECT_GE(static_cast<double>(values.FirstBar) + 120. * static_cast<double>(values.Bars.size()), range.To);
    for (std::size_t bar = 0; bar < values.Bars.size(); ++bar) {
      const double begin = static_cast<double>(values.FirstBar) + 120. * static_cast<double>(bar);
      std::uint64_t quantity = 0;
      for (const ChartPoint& point : points) quantity += IsIn(point, begin, begin + 120) ? point.Quantity : 0;
      EXPECT_EQ(values.Bars[bar], quantity);
    }
    std::optional<ChartPoint> before, after;
    for (const ChartPoint& point : points) {
      if (static_cast<double>(point.Seconds) < range.From) before = point;
      if (!after && static_cast<double>(point.Seconds) >= range.To) after = point;
    }
    EXPECT_EQ(values.Before, before);
    EXPECT_EQ(values.After, after);
  }
}

TEST(ChartDataTest, HasNoValuesForRangesWithoutLength) {
  const std::vector points{PointAt(1, 5)};
  for (const auto& [range, columns, bar] : {std::tuple(ChartRange{5, 5}, 10, 60),
                                            {ChartRange{5, 4}, 10, 60},
                                            {ChartRange{5, 6}, 0, 60},
                                            {ChartRange{5, 6}, 10, 0}}) {
    const ChartValues values = ValuesOf(points, range, columns, bar);
    EXPECT_TRUE(values.Columns.empty() && values.Bars.empty());
  }
}

TEST(ChartLayoutTest, NumbersHaveSeparatorsInEveryLocale) {
  const std::tuple<double, int, const char*> fixed[] = {{0, 0, "0"},         {999, 0, "999"},
                                                        {1000, 0, "1,000"},  {-1000, 1, "-1,000.0"},
                                                        {-999, 0, "-999"},   {1234567.125, 2, "1,234,567.12"},
                                                        {-0.001, 2, "0.00"}, {1 / 0., 2, ""}};
  for (const auto& [value, decimals, text] : fixed) EXPECT_EQ(FixedText(value, decimals), text);
  const std::pair<double, const char*> prices[] = {
      {1313.4, "1,313.40"}, {1313.4375, "1,313.4375"}, {0.125, "0.125"}, {-2, "-2.00"}, {12345.67891, "12,345.6789"}};
  for (const auto& [value, text] : prices) EXPECT_EQ(ChartPriceText(value), text);
  const std::tuple<double, const char*, const char*> times[] = {{0, "1970-01-01", "00:00:00"},
                                                                {kMidnight - 1, "2013-10-06", "23:59:59"},
                                                                {kMidnight + 34'200.9, "2013-10-07", "09:30:00"},
                                                                {-1, "1969-12-31", "23:59:59"}};
  for (const auto& [seconds, date, time] : times) {
    EXPECT_EQ(ChartDateText(seconds), date);
    EXPECT_EQ(ChartTimeText(seconds), time);
  }
}

Texts TextsOf(const std::vector<ChartTick>& ticks) {
  Texts texts;
  for (const ChartTick& tick : ticks) texts.push_back(tick.Text);
  return texts;
}

TEST(ChartLayoutTest, TicksAreRoundValues) {
  const std::tuple<double, double, double, Texts> prices[] = {
      {1308, 1331, 0.2, {"1,310", "1,315", "1,320", "1,325", "1,330"}},
      {0.95, 1.45, 0.25, {"1.0", "1.2", "1.4"}},
      {-3, 3, 0.3, {"-2", "0", "2"}},
      {0, 0.35, 0.2, {"0.0", "0.1", "0.2", "0.3"}},
      {181.4, 183.3, 0.26, {"181.5", "182.0", "182.5", "183.0"}},
      {9.999, 10.001, 0.25, {"9.9990", "9.9995", "10.0000", "10.0005", "10.0010"}},
      {5, 5, 0.2, {}},
      {5, 6, 0, {}},
      {1e300, 2e300, 0.6, {}}};
  for (const auto& [low, high, part, texts] : prices) {
    if (texts.empty() && high > 1e200)
      EXPECT_EQ(PriceTicks(low, high, part).size(), 1U) << "ten to the 300th is not exact";
    else
      EXPECT_EQ(TextsOf(PriceTicks(low, high, part)), texts) << low;
  }
  const double day = static_cast<double>(kMidnight);
  const std::tuple<ChartRange, double, Texts> times[] = {
      {{day + 34'200, day + 34'245}, 0.3, {"09:30:00", "09:30:15", "09:30:30"}},
      {{day + 34'201, day + 37'800}, 0.3, {"10:00"}},
      {{day - 3 * 3600, day + 9 * 3600}, 0.3, {"10-07", "04:00", "08:00"}},
      {{day - 5 * 86'400., day + 5 * 86'400.}, 0.3, {"10-02", "10-06", "10-10"}},
      {{day, day}, 0.3, {}}};
  for (const auto& [range, part, texts] : times) {
    Texts told = TextsOf(TimeTicks(range, part));
    EXPECT_EQ(told, texts) << range.From - day;
  }
  EXPECT_EQ(BarSecondsFor(0), 60);
  EXPECT_EQ(BarSecondsFor(61), 120);
  EXPECT_EQ(BarSecondsFor(100'000), 2 * 86'400);
}

TEST(ChartLayoutTest, ZoomKeepsTheAnchorAndTheWholeDay) {
  const ChartRange full{1000, 2000};
  EXPECT_EQ(FullRange({}), ChartRange());
  EXPECT_EQ(FullRange(std::vector{PointAt(0, 1), PointAt(100, 1)}), (ChartRange{kMidnight - 120., kMidnight + 6120.}));
  const std::pair<ChartRange, ChartRange> cases[] = {{Zoomed(full, full, 0.5, 1500), {1250, 1750}},
                                                     {Zoomed(full, full, 0.5, 1000), {1000, 1500}},
                                                     {Zoomed({1200, 1400}, full, 0.5, 1250), {1225, 1325}},
                                                     {Zoomed({1200, 1400}, full, 3, 1250), {1100, 1700}},
                                                     {Zoomed({1200, 1400}, full, 10, 1250), full},
                                                     {Zoomed({1000, 1400}, full, 2, 1400), {1000, 1800}},
                                                     {Zoomed({1400, 1410}, full, 0.001, 1405), {1395, 1415}},
                                                     {Moved({1200, 1400}, full, 100), {1300, 1500}},
                                                     {Moved({1200, 1400}, full, 900), {1800, 2000}},
                                                     {Moved({1200, 1400}, full, -900), {1000, 1200}},
                                                     {Moved(full, full, 50), full},
                                                     {RangeAround(1300, 1200, full), {1180, 1320}},
                                                     {RangeAround(1100, 1900, full), {1080, 1920}},
                                                     {RangeAround(1000, 1000, full), {1000, 1040}},
                                                     {RangeAround(0, 9000, full), full},
                                                     {Followed(full, full, {1000, 2100}), {1000, 2100}},
                                                     {Followed({1900, 2000}, full, {1000, 2100}), {2000, 2100}},
                                                     {Followed({1200, 1400}, full, {1000, 2100}), {1200, 1400}},
                                                     {Followed({1200, 1400}, full, {1300, 2100}), {1300, 1500}},
                                                     {Followed({}, {}, full), full}};
  for (std::size_t at = 0; at < std::size(cases); ++at) EXPECT_EQ(cases[at].first, cases[at].second) << at;
}

TEST(ChartLayoutTest, PricesSpanTheLineWithinTheRange) {
  const std::vector points{PointAt(0, 10), PointAt(10, 20), PointAt(20, 5)};
  const auto in = [&](double from, double to) {
    return PricesIn(points, {kMidnight + from * 60, kMidnight + to * 60});
  };
  const std::pair<ChartPrices, ChartPrices> cases[] = {{in(-1, 21), {5 - 1.2, 20 + 1.2, {}, {}}},
                                                       {in(5, 15), {12.5 - 0.6, 20 + 0.6, 15, 12.5}},
                                                       {in(2, 4), {12 - 0.16, 14 + 0.16, 12, 14}},
                                                       {in(-5, -1), {10 - 0.01, 10 + 0.01, {}, {}}},
                                                       {in(30, 40), {5 - 0.01, 5 + 0.01, {}, {}}}};
  for (const auto& [prices, expected] : cases) {
    EXPECT_DOUBLE_EQ(prices.Low, expected.Low);
    EXPECT_DOUBLE_EQ(prices.High, expected.High);
    EXPECT_EQ(prices.Entry, expected.Entry);
    EXPECT_EQ(prices.Exit, expected.Exit);
  }
}

TEST(ChartLayoutTest, PlacesTellTimesAndPrices) {
  const ChartLayout layout{{10, 20, 111, 71}, {}, {1000, 2000}, 50, 100};
  EXPECT_EQ(layout.XOf(1500), 60);
  EXPECT_EQ(layout.XOf(0), 10);
  EXPECT_EQ(layout.XOf(9999), 110);
  EXPECT_EQ(layout.YOf(50), 70);
  EXPECT_EQ(layout.YOf(100), 20);
  EXPECT_EQ(layout.SecondsAt(60), 1500);
  EXPECT_EQ(layout.SecondsAt(-5), 1000);
  EXPECT_EQ(layout.PriceAt(45), 75);
  EXPECT_EQ(layout.PriceAt(500), 50);
}

TEST(ChartDataTest, MarksStandAtTheBestPriceOfTheirPart) {
  ChartValues values;
  values.Columns.resize(8);
  values.Columns[1] = {.Bought = 5, .BuyLow = 10};
  values.Columns[2] = {.Bought = 1, .Sold = 4, .BuyLow = 9, .SellHigh = 12};
  values.Columns[3] = {.Bought = 2, .Sold = 1, .BuyLow = 11, .SellHigh = 11};
  const auto buy = [](int column, double price, std::uint64_t quantity) {
    return ChartMark{column, price, quantity, ChartSide::Buy};
  };
  EXPECT_EQ(MarksOf(values, {0, 8}, 4), (std::vector{buy(2, 9, 8), {2, 12, 5, ChartSide::Sell}}));
  EXPECT_EQ(MarksOf(values, {1, 9}, 4),
            (std::vector{buy(2, 9, 6), {2, 12, 4, ChartSide::Sell}, buy(3, 11, 2), {3, 11, 1, ChartSide::Sell}}))
      << "parts stand at fixed times";
  EXPECT_TRUE(MarksOf({}, {0, 8}, 4).empty());
}

TEST(SvgChartTest, DrawsLineMarksBarsAndScales) {
  ChartData data;
  data.Assign({PointAt(0, 1010, 3, ChartSide::Sell), PointAt(0, 1000), PointAt(60, 1020, 1234)});
  const std::string svg = ChartSvg({"A&B", data.Points(), 2}, {607, 240});
  for (const char* piece :
       {"<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"607\" height=\"240\" viewBox=\"0 0 607 240\"",
        ">A&amp;B</text>", ">2013-10-07</text>", ">average 1,019.9596</text>", ">bought 1,235</text>", ">sold 3</text>",
        ">1,000</text>", ">1,010</text>", ">1,020.00</text>", ">00:10</text>", ">01:00</text>",
        ">quantity in 1 min</text>", ">1,234</text>", ">2 without time</text>",
        "<polyline points=\"17,96 17,159 528,34\" fill=\"none\" stroke=\"#303030\"",
        "<polyline points=\"17,112 527,112 528,34\" fill=\"none\" stroke=\"#d9730d\"",
        "<polygon points=\"17,161 15,165 19,165\" fill=\"#1f4fd8\"/>",
        "<polygon points=\"17,94 15,90 19,90\" fill=\"#d32626\"/>",
        "<rect x=\"528\" y=\"191\" width=\"7\" height=\"28\" fill=\"#a9b8cc\"/>"})
    EXPECT_NE(svg.find(piece), std::string::npos) << piece << "\n" << svg;
  EXPECT_EQ(svg.find(">A&B<"), std::string::npos);
  EXPECT_TRUE(svg.ends_with("</text>\n</svg>\n"));
  EXPECT_EQ(svg, ChartSvg({"A&B", data.Points(), 2}, {607, 240})) << "the same text each time";
}

// Notes the texts.
class NotingCanvas : public ChartCanvas {
 public:
  int TextWidth(const std::string& text) const override { return static_cast<int>(text.size()) * 6; }
  int TextHeight() const override { return 12; }
  void Line(const ChartPlace&, const ChartPlace&, ChartInk) override { ++Lines; }
  void Polyline(std::span<const ChartPlace>, ChartInk) override {}
  void Rect(const ChartRect&, ChartInk) override {}
  void Triangle(const std::array<ChartPlace, 3>&, ChartInk) override {}
  void Text(const ChartPlace&, const std::string& text, ChartAlign, ChartInk) override { Told += text + " "; }

  int Lines = 0;
  std::string Told;
};

TEST(ChartDrawingTest, PointerTellsTimeAndPrice) {
  const ChartLayout layout{{10, 20, 110, 71}, {10, 80, 110, 100}, {kMidnight + 0., kMidnight + 990.}, 1.2, 1.3};
  const std::tuple<ChartPlace, int, const char*> cases[] = {{{70, 70}, 2, "00:10:00 1.200 "},
                                                            {{10, 20}, 2, "00:00:00 1.300 "},
                                                            {{70, 90}, 1, "00:10:00 "},
                                                            {{9, 30}, 0, ""},
                                                            {{70, 100}, 0, ""},
                                                            {{110, 30}, 0, ""}};
  for (const auto& [pointer, lines, told] : cases) {
    NotingCanvas canvas;
    DrawPointer(layout, pointer, canvas);
    EXPECT_EQ(canvas.Told, told);
    EXPECT_EQ(canvas.Lines, lines);
  }
  NotingCanvas canvas;
  DrawPointer({}, {0, 0}, canvas);
  EXPECT_EQ(canvas.Told, "");
}

TEST(SvgChartTest, SaysWhyThereIsNoChart) {
  const std::vector points{PointAt(1, 5)};
  EXPECT_NE(ChartSvg({"A", {}, 0, "No security is selected"}, {300, 200}).find(">No security is selected</text>"),
            std::string::npos);
  for (const ChartSize& size : {ChartSize{0, 0}, {30, 300}, {300, 30}, {1, 1}})
    EXPECT_EQ(ChartSvg({"A", points}, size).find("polyline"), std::string::npos);
  EXPECT_EQ(ChartSvg({"A", points}, {300, 200}, ChartRange{60, 60}).find("polyline"), std::string::npos);
}

TEST(SvgChartTest, DrawsAnyPrices) {
  for (const auto& [low, high] :
       {std::pair(5., 5.), {0., 0.}, {-3., 4.}, {-kMostChartPrice, kMostChartPrice}, {1e-300, 2e-300}}) {
    ChartData data;
    data.Assign({PointAt(0, low), PointAt(1, high), PointAt(1, high, 0xFFFFFFFF, ChartSide::Sell)});
    EXPECT_NE(ChartSvg({"A", data.Points()}, {400, 300}).find("polyline"), std::string::npos) << low;
    EXPECT_NE(ChartSvg({"A", data.Points()}, {400, 300}, ChartRange{kMidnight + 10., kMidnight + 20.}).find("</svg>"),
              std::string::npos);
  }
}

TEST(SvgChartTest, EscapesTexts) {
  EXPECT_EQ(EscapedXml("a<b>&\"'\x01\n\x7F\xC3\xA4"), "a&lt;b&gt;&amp;&quot;&#39;\xC3\xA4");
}

}  // namespace

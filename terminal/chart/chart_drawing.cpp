#include "terminal/chart/chart_drawing.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "terminal/common/errors.h"

namespace {

constexpr int kVolumePercent = 22;   // of the height
constexpr int kLeastLinesHigh = 14;  // lines of text that leave room for volumes
constexpr int kLeastBarPx = 4;
constexpr double kLeastMinutesRange = 600;  // in a longer one the texts of times have no seconds

// Appends a place; between places at one height only the first and the last one count.
void AddTo(std::vector<ChartPlace>& line, const ChartPlace& place) {
  const std::size_t count = line.size();
  if (count > 0 && line.back() == place) return;
  if (count > 1 && line[count - 1].Y == place.Y && line[count - 2].Y == place.Y)
    line.back() = place;
  else
    line.push_back(place);
}

// One drawing; the steps follow each other in Draw.
class ChartDrawing {
 public:
  ChartDrawing(const ChartSource& source, const ChartRange& range, const ChartSize& size, ChartCanvas& canvas)
      : Source(source), Size(size), Canvas(canvas), LineHigh(canvas.TextHeight()) {
    Layout.Range = range;
  }
  ChartLayout Draw();

 private:
  void Place();
  void DrawPriceScale();
  void DrawTimeScale();
  void DrawBars();
  void DrawAverage();
  void DrawPrices();
  void DrawMarks();
  void DrawLastPrice();
  void DrawFigures();
  std::size_t ColumnBehindTrades() const;
  int XOfColumn(std::size_t column) const { return Layout.Prices.Left + static_cast<int>(column); }

  const ChartSource& Source;
  ChartSize Size;
  ChartCanvas& Canvas;
  int LineHigh;
  std::span<const ChartPoint> Shown;
  ChartPrices Ends;
  ChartLayout Layout;
  ChartValues Values;
  std::vector<ChartTick> Prices;
};

ChartLayout ChartDrawing::Draw() {
  Canvas.Rect({0, 0, Size.Width, Size.Height}, ChartInk::Paper);
  if (Source.Points.empty() || !(Layout.Range.Length() > 0)) {
    Canvas.Text({Size.Width / 2, std::max(0, (Size.Height - LineHigh) / 2)}, Source.WhyEmpty, ChartAlign::Centre,
                ChartInk::Faint);
    return {};
  }
  Place();
  if (Layout.Prices.Width() < 2 * LineHigh || Layout.Prices.Height() < 2 * LineHigh) return {};
  const double secondsPerPx = Layout.Range.Length() / Layout.Prices.Width();
  Values = ValuesOf(Source.Points, Layout.Range, Layout.Prices.Width(), BarSecondsFor(secondsPerPx * kLeastBarPx));
  DrawPriceScale();
  DrawTimeScale();
  DrawBars();
  DrawAverage();
  DrawPrices();
  DrawMarks();
  DrawLastPrice();
  DrawFigures();
  return Layout;
}

// The prices' own texts decide how wide their scale is.
void ChartDrawing::Place() {
  Shown = PointsIn(Source.Points, Layout.Range);
  Ends = PricesIn(Source.Points, Layout.Range);
  Layout.LowPrice = Ends.Low;
  Layout.HighPrice = Ends.High;
  const int top = LineHigh * 7 / 4, bottom = Size.Height - LineHigh * 3 / 2;
  const int all = bottom - top;
  const bool hasVolumes = Size.Height >= kLeastLinesHigh * LineHigh;
  const int volumes = hasVolumes ? all * kVolumePercent / 100 : 0;
  const int gap = hasVolumes ? LineHigh / 2 : 0;
  const int high = all - volumes - gap;
  Prices = PriceTicks(Ends.Low, Ends.High, high > 0 ? 2.2 * LineHigh / high : 1);
  int widest = Canvas.TextWidth(ChartPriceText(Source.Points.back().Price));
  for (const ChartTick& tick : Prices) widest = std::max(widest, Canvas.TextWidth(tick.Text));
  Layout.Prices = {LineHigh / 2, top, Size.Width - widest - LineHigh, top + high};
  if (hasVolumes) Layout.Volumes = {Layout.Prices.Left, bottom - volumes, Layout.Prices.Right, bottom};
}

void ChartDrawing::DrawPriceScale() {
  const ChartRect& plot = Layout.Prices;
  for (const ChartTick& tick : Prices) {
    const int y = Layout.YOf(tick.Value);
    Canvas.Line({plot.Left, y}, {plot.Right, y}, ChartInk::Grid);
    Canvas.Text({plot.Right + LineHigh / 2, y - LineHigh / 2}, tick.Text, ChartAlign::Left, ChartInk::Faint);
  }
  Canvas.Line({plot.Right, plot.Top}, {plot.Right, plot.Bottom}, ChartInk::Frame);
}

int BottomOf(const ChartLayout& layout) {
  return std::max(layout.Prices.Bottom, layout.Volumes.Bottom);
}

void ChartDrawing::DrawTimeScale() {
  const ChartRect& plot = Layout.Prices;
  const int bottom = BottomOf(Layout);
  const double wide = Canvas.TextWidth(Layout.Range.Length() > kLeastMinutesRange ? "00:00" : "00:00:00");
  for (const ChartTick& tick : TimeTicks(Layout.Range, 1.5 * wide / plot.Width())) {
    const int x = Layout.XOf(tick.Value);
    Canvas.Line({x, plot.Top}, {x, bottom}, ChartInk::Grid);
    const int half = Canvas.TextWidth(tick.Text) / 2;
    if (x - half >= 0 && x + half <= Size.Width)
      Canvas.Text({x, bottom + LineHigh / 4}, tick.Text, ChartAlign::Centre, ChartInk::Faint);
  }
  Canvas.Line({plot.Left, bottom}, {plot.Right, bottom}, ChartInk::Frame);
}

std::string DurationText(std::int64_t seconds) {
  constexpr std::pair<std::int64_t, const char*> kUnits[] = {{86'400, " days"}, {3600, " h"}, {60, " min"}};
  for (const auto& [length, name] : kUnits)
    if (seconds % length == 0) return std::to_string(seconds / length) + name;
  return {};
}

void ChartDrawing::DrawBars() {
  const ChartRect& plot = Layout.Volumes;
  if (plot.Height() <= 0 || Values.Bars.empty()) return;
  const std::uint64_t most = std::max<std::uint64_t>(1, *std::ranges::max_element(Values.Bars));
  const int full = plot.Height() - LineHigh;  // a line of text is above
  auto from = static_cast<double>(Values.FirstBar);
  for (const std::uint64_t bar : Values.Bars) {
    const int left = Layout.XOf(from), right = Layout.XOf(from += static_cast<double>(Values.BarSeconds));
    const auto high = static_cast<double>(full) * static_cast<double>(bar) / static_cast<double>(most);
    const int top = plot.Bottom - std::max(1, static_cast<int>(high));
    if (bar != 0) Canvas.Rect({left, top, std::max(left + 1, right - 1), plot.Bottom}, ChartInk::Volume);
  }
  Canvas.Line({plot.Right, plot.Top}, {plot.Right, plot.Bottom}, ChartInk::Frame);
  Canvas.Text({plot.Right + LineHigh / 2, plot.Top + LineHigh / 2}, WithThousands(most), ChartAlign::Left,
              ChartInk::Faint);
  Canvas.Text({plot.Left, plot.Top}, "quantity in " + DurationText(Values.BarSeconds), ChartAlign::Left,
              ChartInk::Faint);
}

std::size_t ChartDrawing::ColumnBehindTrades() const {
  std::size_t column = Values.Columns.size();
  while (column > 0 && Values.Columns[column - 1].Trades == 0) --column;
  return column;
}

// Where the average is out of the prices shown, as in a short range, there is no line.
void ChartDrawing::DrawAverage() {
  std::vector<ChartPlace> line;
  const auto end = [&] {
    if (line.size() > 1) Canvas.Polyline(line, ChartInk::Average);
    line.clear();
  };
  const std::size_t last = Values.After ? Values.Columns.size() : ColumnBehindTrades();
  bool hasBegun = Values.Before.has_value();
  for (std::size_t at = 0; at < last; ++at) {
    const ChartColumn& column = Values.Columns[at];
    hasBegun = hasBegun || column.Trades != 0;
    const bool isShown = hasBegun && column.Average >= Layout.LowPrice && column.Average <= Layout.HighPrice;
    if (!isShown) end();
    if (isShown) AddTo(line, {XOfColumn(at), Layout.YOf(column.Average)});
  }
  end();
}

// First, lowest, highest and last price of each column; the order of the middle ones keeps the line short.
void ChartDrawing::DrawPrices() {
  std::vector<ChartPlace> line;
  const auto add = [&](int x, double price) { AddTo(line, {x, Layout.YOf(price)}); };
  if (Ends.Entry) add(Layout.Prices.Left, *Ends.Entry);
  for (std::size_t at = 0; at < Values.Columns.size(); ++at) {
    const ChartColumn& column = Values.Columns[at];
    if (column.Trades == 0) continue;
    const bool rises = column.Last >= column.First;
    for (const double price :
         {column.First, rises ? column.Low : column.High, rises ? column.High : column.Low, column.Last})
      add(XOfColumn(at), price);
  }
  if (Ends.Exit) add(Layout.Prices.Right - 1, *Ends.Exit);
  if (line.size() > 1) Canvas.Polyline(line, ChartInk::Price);
}

// The tip is at the price; the bigger the quantity, the bigger the mark.
void ChartDrawing::DrawMarks() {
  const std::vector<ChartMark> marks = MarksOf(Values, Layout.Range, std::max(6, LineHigh * 3 / 4));
  std::uint64_t most = 1;
  for (const ChartMark& mark : marks) most = std::max(most, mark.Quantity);
  const ChartRect& plot = Layout.Prices;
  for (const ChartMark& mark : marks) {
    const double part = std::sqrt(static_cast<double>(mark.Quantity) / static_cast<double>(most));
    const int half = std::max(2, static_cast<int>(LineHigh * (0.15 + 0.2 * part)));
    const bool isBuy = mark.Side == ChartSide::Buy;
    const int x = plot.Left + mark.Column, tip = Layout.YOf(mark.Price) + (isBuy ? 2 : -2);
    const int base = std::clamp(tip + (isBuy ? 2 * half : -2 * half), plot.Top, plot.Bottom);
    Canvas.Triangle({{{x, tip}, {x - half, base}, {x + half, base}}}, isBuy ? ChartInk::Buy : ChartInk::Sell);
  }
}

// A label on the scale of prices.
void DrawPriceLabel(const ChartLayout& layout, double price, const std::string& text, ChartInk ink,
                    ChartCanvas& canvas) {
  const int high = canvas.TextHeight(), left = layout.Prices.Right + 1, y = layout.YOf(price);
  canvas.Rect({left, y - high / 2 - 1, left + canvas.TextWidth(text) + high - 2, y - high / 2 + high + 1}, ink);
  canvas.Text({layout.Prices.Right + high / 2, y - high / 2}, text, ChartAlign::Left, ChartInk::Paper);
}

void ChartDrawing::DrawLastPrice() {
  if (Values.After || Values.Totals.Trades == 0) return;
  const double price = Source.Points.back().Price;
  DrawPriceLabel(Layout, price, ChartPriceText(price), ChartInk::Price, Canvas);
}

// From the left, as many as there is room for.
void ChartDrawing::DrawFigures() {
  const ChartTotals& totals = Values.Totals;
  const double lastSeconds = Shown.empty() ? Layout.Range.To : static_cast<double>(Shown.back().Seconds);
  const std::string average = ChartPriceText(Values.Columns.back().Average);
  const std::pair<std::string, ChartInk> figures[] = {
      {Source.Title, ChartInk::Text},
      {ChartDateText(lastSeconds), ChartInk::Faint},
      {"average " + average, ChartInk::Average},
      {"bought " + WithThousands(totals.Bought), ChartInk::Buy},
      {"sold " + WithThousands(totals.Sold), ChartInk::Sell},
      {WithThousands(totals.Trades) + (totals.Trades == 1 ? " trade" : " trades"), ChartInk::Faint},
      {Source.Timeless == 0 ? "" : WithThousands(Source.Timeless) + " without time", ChartInk::Sell},
  };
  int x = LineHigh / 2;
  for (const auto& [text, ink] : figures) {
    if (text.empty()) continue;
    const int wide = Canvas.TextWidth(text);
    if (x + wide > Size.Width) return;
    Canvas.Text({x, LineHigh / 3}, text, ChartAlign::Left, ink);
    x += wide + LineHigh;
  }
}

}  // namespace

ChartLayout DrawChart(const ChartSource& source, const ChartRange& range, const ChartSize& size, ChartCanvas& canvas) {
  return ChartDrawing(source, range, size, canvas).Draw();
}

void DrawPointer(const ChartLayout& layout, const ChartPlace& pointer, ChartCanvas& canvas) {
  const ChartRect& plot = layout.Prices;
  const int bottom = BottomOf(layout);
  if (layout.IsEmpty() || !ChartRect{plot.Left, plot.Top, plot.Right, bottom}.Has(pointer)) return;
  const int high = canvas.TextHeight();
  canvas.Line({pointer.X, plot.Top}, {pointer.X, bottom}, ChartInk::Frame);
  const std::string time = ChartTimeText(layout.SecondsAt(pointer.X));
  const int half = canvas.TextWidth(time) / 2 + high / 4;
  const int x = std::clamp(pointer.X, half, std::max(half, plot.Right - half));
  canvas.Rect({x - half, bottom + 1, x + half, bottom + high + high / 4 + 2}, ChartInk::Faint);
  canvas.Text({x, bottom + high / 4}, time, ChartAlign::Centre, ChartInk::Paper);
  if (!plot.Has(pointer)) return;
  canvas.Line({plot.Left, pointer.Y}, {plot.Right, pointer.Y}, ChartInk::Frame);
  const double price = layout.PriceAt(pointer.Y), perPx = (layout.HighPrice - layout.LowPrice) / plot.Height();
  const int decimals = static_cast<int>(std::clamp(std::ceil(-std::log10(perPx)), 0., 9.));
  DrawPriceLabel(layout, price, FixedText(price, decimals), ChartInk::Faint, canvas);
}

// The chart of a million trades, from the data to a picture of 1,200 x 600 pixels, beside one pass over their prices.
// The picture is skipped without a display.
#include <benchmark/benchmark.h>
#include <wx/dcmemory.h>
#include <wx/font.h>

#include <algorithm>
#include <random>

#include "benchmarks/window_loop.h"
#include "terminal/chart/svg_chart.h"
#include "terminal/windows/frame/dc_canvas.h"

namespace {

constexpr int kTrades = 1'000'000;
constexpr ChartSize kSize{1200, 600};

// A walk of prices over a day, most trades in order.
const std::vector<ChartPoint>& MillionPoints() {
  static const std::vector<ChartPoint> points = [] {
    std::mt19937 random(1);
    std::vector<ChartPoint> made(kTrades);
    double price = 1300;
    for (std::size_t at = 0; at < made.size(); ++at) {
      price += (static_cast<double>(random() % 201) - 100) / 1000;
      const auto late = static_cast<std::int64_t>(random() % 100 == 0 ? random() % 60 : 0);
      made[at] = {static_cast<std::int64_t>(at * 86'400 / kTrades) - late, price,
                  static_cast<std::uint32_t>(1 + random() % 9), random() % 2 ? ChartSide::Buy : ChartSide::Sell};
    }
    return made;
  }();
  return points;
}

const ChartData& MillionTrades() {
  static const ChartData data = [] {
    ChartData made;
    made.Assign(MillionPoints());
    return made;
  }();
  return data;
}

void DrawMillionTrades(benchmark::State& state) {
  if (!StartWindows()) {
    state.SkipWithError("there is no display");
    return;
  }
  const ChartSource source{"COMEX GC201312", MillionTrades().Points()};
  for (auto _ : state) {
    wxBitmap bitmap(kSize.Width, kSize.Height, 24);
    wxMemoryDC dc(bitmap);
    DcCanvas canvas(dc, wxFontInfo(9), kLightChart);
    if (DrawChart(source, FullRange(source.Points), kSize, canvas).IsEmpty()) state.SkipWithError("nothing was drawn");
    dc.SelectObject(wxNullBitmap);
    benchmark::DoNotOptimize(bitmap.ConvertToImage().GetData());
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(DrawMillionTrades)->Unit(benchmark::kMillisecond);

void WriteSvgOfMillionTrades(benchmark::State& state) {
  const ChartSource source{"COMEX GC201312", MillionTrades().Points()};
  for (auto _ : state) benchmark::DoNotOptimize(ChartSvg(source, kSize));
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(WriteSvgOfMillionTrades)->Unit(benchmark::kMillisecond);

// Copies and sorts them, as for a security that is shown first.
void TakeMillionTrades(benchmark::State& state) {
  for (auto _ : state) {
    ChartData data;
    data.Assign(MillionPoints());
    benchmark::DoNotOptimize(data.Points().data());
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(TakeMillionTrades)->Unit(benchmark::kMillisecond);

void FindLowestAndHighest(benchmark::State& state) {
  const std::span<const ChartPoint> points = MillionTrades().Points();
  for (auto _ : state) {
    double low = points.front().Price, high = low;
    for (const ChartPoint& point : points) low = std::min(low, point.Price), high = std::max(high, point.Price);
    benchmark::DoNotOptimize(low + high);
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(FindLowestAndHighest)->Unit(benchmark::kMillisecond);

}  // namespace

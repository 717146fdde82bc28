// Draws the chart of a security: prices as a line, the average price of the day weighed by quantity, marks at buys and
// sells, quantities below, scales at the right and at the bottom, and a line of figures above.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "terminal/chart/chart_canvas.h"
#include "terminal/chart/chart_data.h"
#include "terminal/chart/chart_layout.h"

struct ChartSource {
  std::string Title;                   // UTF-8
  std::span<const ChartPoint> Points;  // as of ChartData
  std::uint64_t Timeless = 0;          // trades that have no time and so no place
  std::string WhyEmpty = "No trades yet";
};

struct ChartSize {
  int Width = 0;
  int Height = 0;
};

// Draws the trades of the range and returns where they stand. Without trades, or without room, the layout is empty.
ChartLayout DrawChart(const ChartSource& source, const ChartRange& range, const ChartSize& size, ChartCanvas& canvas);

// The crosshair with time and price at its ends; a no-op outside the prices and volumes.
void DrawPointer(const ChartLayout& layout, const ChartPlace& pointer, ChartCanvas& canvas);

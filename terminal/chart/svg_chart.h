// A chart as an SVG text, which needs no windows; equal charts have equal texts on every machine.
#pragma once

#include <optional>
#include <string>

#include "terminal/chart/chart_drawing.h"

// All trades without a range. The whole text of a file; it may as well stand within an HTML page.
std::string ChartSvg(const ChartSource& source, const ChartSize& size, std::optional<ChartRange> range = {},
                     const ChartTheme& theme = kLightChart);

// For the content of an element or a value in quotes; control characters, which XML cannot hold, are left out.
std::string EscapedXml(const std::string& text);

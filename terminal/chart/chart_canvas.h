// ChartCanvas: what a chart is drawn on: a window, a picture, an SVG text. Inks name the parts of a chart; a theme has
// their colours.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>

#include "terminal/chart/chart_layout.h"

enum class ChartInk : std::uint8_t { Paper, Grid, Frame, Text, Faint, Price, Average, Buy, Sell, Volume };
enum class ChartAlign : std::uint8_t { Left, Centre, Right };

// 0xRRGGBB, by ChartInk.
using ChartTheme = std::array<std::uint32_t, 10>;

inline constexpr ChartTheme kLightChart = {0xFFFFFF, 0xEBEBEB, 0xB0B0B0, 0x202020, 0x6A6A6A,
                                           0x303030, 0xD9730D, 0x1F4FD8, 0xD32626, 0xA9B8CC};
inline constexpr ChartTheme kDarkChart = {0x1E1E1E, 0x323232, 0x5A5A5A, 0xE6E6E6, 0xA0A0A0,
                                          0xDADADA, 0xF2A33A, 0x7FA8FF, 0xFF7B72, 0x4C5C73};

constexpr std::uint32_t ColorOf(const ChartTheme& theme, ChartInk ink) {
  return theme[static_cast<std::size_t>(ink)];
}

class ChartCanvas {
 public:
  virtual ~ChartCanvas() = default;

  // Of UTF-8 texts; all that has a size in a chart follows the height.
  virtual int TextWidth(const std::string& text) const = 0;
  virtual int TextHeight() const = 0;

  virtual void Line(const ChartPlace& from, const ChartPlace& to, ChartInk ink) = 0;
  virtual void Polyline(std::span<const ChartPlace> places, ChartInk ink) = 0;
  // These two are filled.
  virtual void Rect(const ChartRect& rect, ChartInk ink) = 0;
  virtual void Triangle(const std::array<ChartPlace, 3>& corners, ChartInk ink) = 0;
  // The place is the upper end of the text, at the side of the alignment.
  virtual void Text(const ChartPlace& place, const std::string& text, ChartAlign align, ChartInk ink) = 0;
};

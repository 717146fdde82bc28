#include "terminal/chart/svg_chart.h"

#include <algorithm>

namespace {

constexpr int kFontPx = 11;
constexpr int kTextHeight = 14;
constexpr int kCharacterPercent = 62;  // of the font's size, as digits of common fonts

std::string ColorText(std::uint32_t rgb) {
  std::string text = "#";
  for (int shift = 20; shift >= 0; shift -= 4) text += "0123456789abcdef"[rgb >> shift & 0xF];
  return text;
}

// Every coordinate is a whole number.
class SvgCanvas : public ChartCanvas {
 public:
  SvgCanvas(const ChartSize& size, const ChartTheme& theme) : Theme(theme) {
    const std::string width = std::to_string(size.Width), height = std::to_string(size.Height);
    Written = "<svg xmlns=\"http://www.w3.org/2000/svg\"" + Attribute("width", width) + Attribute("height", height) +
              Attribute("viewBox", "0 0 " + width + " " + height) + Attribute("font-size", std::to_string(kFontPx)) +
              " font-family=\"sans-serif\">\n";
  }
  std::string Finish() { return std::move(Written) + "</svg>\n"; }

  int TextWidth(const std::string& text) const override {
    const auto letters = std::ranges::count_if(text, [](char c) { return (c & 0xC0) != 0x80; });
    return static_cast<int>(letters) * kFontPx * kCharacterPercent / 100;
  }
  int TextHeight() const override { return kTextHeight; }

  void Line(const ChartPlace& from, const ChartPlace& to, ChartInk ink) override {
    const std::string path = "M" + PlaceText(from) + "L" + PlaceText(to);
    Written += "<path" + Attribute("d", path) + Stroke(ink) + " shape-rendering=\"crispEdges\"/>\n";
  }
  void Polyline(std::span<const ChartPlace> places, ChartInk ink) override {
    Written += "<polyline" + Attribute("points", PlacesText(places)) + Stroke(ink) + " stroke-linejoin=\"round\"/>\n";
  }
  void Rect(const ChartRect& rect, ChartInk ink) override {
    Written += "<rect" + Attribute("x", std::to_string(rect.Left)) + Attribute("y", std::to_string(rect.Top)) +
               Attribute("width", std::to_string(rect.Width())) + Attribute("height", std::to_string(rect.Height())) +
               Fill(ink) + "/>\n";
  }
  void Triangle(const std::array<ChartPlace, 3>& corners, ChartInk ink) override {
    Written += "<polygon" + Attribute("points", PlacesText(corners)) + Fill(ink) + "/>\n";
  }
  void Text(const ChartPlace& place, const std::string& text, ChartAlign align, ChartInk ink) override {
    constexpr const char* kAnchors[] = {"start", "middle", "end"};
    Written += "<text" + Attribute("x", std::to_string(place.X)) + Attribute("y", std::to_string(place.Y + kFontPx)) +
               Attribute("text-anchor", kAnchors[static_cast<std::size_t>(align)]) + Fill(ink) + ">" +
               EscapedXml(text) + "</text>\n";
  }

 private:
  static std::string Attribute(const char* name, const std::string& value) {
    return std::string(" ") + name + "=\"" + value + "\"";
  }
  static std::string PlaceText(const ChartPlace& place) {
    return std::to_string(place.X) + "," + std::to_string(place.Y);
  }
  static std::string PlacesText(std::span<const ChartPlace> places) {
    std::string text;
    for (const ChartPlace& place : places) text += (text.empty() ? "" : " ") + PlaceText(place);
    return text;
  }
  std::string Stroke(ChartInk ink) const {
    return " fill=\"none\"" + Attribute("stroke", ColorText(ColorOf(Theme, ink)));
  }
  std::string Fill(ChartInk ink) const { return Attribute("fill", ColorText(ColorOf(Theme, ink))); }

  const ChartTheme& Theme;
  std::string Written;
};

}  // namespace

std::string ChartSvg(const ChartSource& source, const ChartSize& size, std::optional<ChartRange> range,
                     const ChartTheme& theme) {
  SvgCanvas canvas(size, theme);
  DrawChart(source, range.value_or(FullRange(source.Points)), size, canvas);
  return canvas.Finish();
}

std::string EscapedXml(const std::string& text) {
  constexpr std::pair<char, const char*> kEscapes[] = {
      {'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'"', "&quot;"}, {'\'', "&#39;"}};
  std::string escaped;
  for (const char c : text) {
    const auto* escape = std::ranges::find(kEscapes, c, &std::pair<char, const char*>::first);
    if (escape != std::end(kEscapes))
      escaped += escape->second;
    else if (static_cast<unsigned char>(c) >= 0x20 && c != 0x7F)
      escaped += c;
  }
  return escaped;
}

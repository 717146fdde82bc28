#include "toolkit/model/cell_colors.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr ColorRef kBlack = 0, kWhite = 0xFFFFFF;
constexpr CellColors kFoundColors{0x4DD9FF, kBlack};  // amber, whatever the side of the row
constexpr double kLegible = 3;                        // large texts and marks, by WCAG 2.1
constexpr double kReadable = 4.5;
constexpr int kDarkenPercent = 58;
constexpr int kHighlightPercent = 55;
constexpr int kSortedPercent = 5;
constexpr int kAlternatePercent = 3;

int Channel(ColorRef color, int shift) {
  return static_cast<int>(color >> shift & 0xFF);
}

double Luminance(ColorRef color) {
  const auto linear = [color](int shift) {
    const double value = Channel(color, shift) / 255.0;
    return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(0) + 0.7152 * linear(8) + 0.0722 * linear(16);
}

ColorRef Readable(ColorRef text, ColorRef background) {
  if (Contrast(text, background) >= kReadable) return text;
  return Contrast(kWhite, background) >= Contrast(kBlack, background) ? kWhite : kBlack;
}

// Below a light text the colour gets darker; below a dark text it is mixed with the highlight.
ColorRef SelectedBackground(ColorRef background, ColorRef text, const GridTheme& theme) {
  return Luminance(text) > 0.4 ? Blend(background, kBlack, kDarkenPercent)
                               : Blend(background, theme.Highlight, kHighlightPercent);
}

}  // namespace

ColorRef Blend(ColorRef from, ColorRef to, int percent) {
  ColorRef blended = 0;
  for (const int shift : {0, 8, 16}) {
    const int channel = (Channel(from, shift) * (100 - percent) + Channel(to, shift) * percent + 50) / 100;
    blended |= static_cast<ColorRef>(channel) << shift;
  }
  return blended;
}

double Contrast(ColorRef one, ColorRef other) {
  const auto [dark, light] = std::minmax({Luminance(one), Luminance(other)});
  return (light + 0.05) / (dark + 0.05);
}

CellColors ColorsOf(std::optional<ColorRef> background, std::optional<ColorRef> text, const CellMarks& marks,
                    const GridTheme& theme) {
  if (marks.Found) return kFoundColors;
  const ColorRef ownText = text.value_or(theme.WindowText);
  if (background) {
    if (!marks.Selected) return {*background, ownText};
    const ColorRef selected = SelectedBackground(*background, ownText, theme);
    return {selected, Readable(ownText, selected)};
  }
  if (marks.Selected) return {theme.Highlight, theme.HighlightText};
  const int percent = (marks.Sorted ? kSortedPercent : 0) + (marks.Alternate ? kAlternatePercent : 0);
  return {Blend(theme.Window, theme.WindowText, percent), ownText};
}

ColorRef ReadableText(ColorRef text, ColorRef background) {
  const ColorRef end = Contrast(kWhite, background) >= Contrast(kBlack, background) ? kWhite : kBlack;
  int percent = 0;
  while (percent < 100 && Contrast(Blend(text, end, percent), background) < kLegible) percent += 10;
  return Blend(text, end, percent);
}

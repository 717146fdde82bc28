// The colours in which a cell is painted: its own, or the theme's, with the marks of selection over them. No state.
#pragma once

#include <cstdint>
#include <optional>

// 0x00BBGGRR.
using ColorRef = std::uint32_t;

// What a grid paints with where a cell says nothing.
struct GridTheme {
  ColorRef Window = 0xFFFFFF;
  ColorRef WindowText = 0;
  ColorRef Highlight = 0xD77800;
  ColorRef HighlightText = 0xFFFFFF;
  ColorRef Face = 0xF0F0F0;
  ColorRef FaceText = 0;
  ColorRef Line = 0xD8D8D8;
};

struct CellMarks {
  bool Selected = false;
  bool Sorted = false;     // stands in a column that the rows are sorted by
  bool Alternate = false;  // every other row
};

struct CellColors {
  ColorRef Background = 0;
  ColorRef Text = 0;
  bool operator==(const CellColors&) const = default;
};

// The colour that lies so many hundredths of the way from one to the other.
ColorRef Blend(ColorRef from, ColorRef to, int percent);
// From 1, no difference, to 21, black on white: relative luminances as the W3C's WCAG 2.1 defines them.
double Contrast(ColorRef one, ColorRef other);

// A row's own colours stay recognisable when it is selected, and its text is readable on them.
CellColors ColorsOf(std::optional<ColorRef> background, std::optional<ColorRef> text, const CellMarks& marks,
                    const GridTheme& theme);

// A text's colour as it is where it can be made out on the background, else as much nearer to white or black as that
// takes: the totals' blue on a dark screen.
ColorRef ReadableText(ColorRef text, ColorRef background);

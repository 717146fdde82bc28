// The colours of a cell: its own or those of the theme, changed by selection and other marks.
#pragma once

#include <cstdint>
#include <optional>

// 0x00BBGGRR.
using ColorRef = std::uint32_t;

// The colours of cells without their own, and of headers.
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
  bool Sorted = false;     // in a sort column
  bool Alternate = false;  // in every second row
  bool Found = false;      // by a search
};

struct CellColors {
  ColorRef Background = 0;
  ColorRef Text = 0;
  bool operator==(const CellColors&) const = default;
};

// The mixture with that percentage of the second colour.
ColorRef Blend(ColorRef from, ColorRef to, int percent);
// From 1, no difference, to 21, black on white: the contrast ratio of WCAG 2.1 by the W3C.
double Contrast(ColorRef one, ColorRef other);

// A selected row keeps its own colours recognisable, and its text is readable.
CellColors ColorsOf(std::optional<ColorRef> background, std::optional<ColorRef> text, const CellMarks& marks,
                    const GridTheme& theme);

// The colour of a text, mixed with white or black until it is legible on the background, such as blue totals on a dark
// screen.
ColorRef ReadableText(ColorRef text, ColorRef background);

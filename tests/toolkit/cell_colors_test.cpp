#include "toolkit/model/cell_colors.h"

#include <gtest/gtest.h>

namespace {

constexpr GridTheme kTheme;
constexpr ColorRef kBlue = 0xFF0000, kRed = 0x0000FF, kWhite = 0xFFFFFF, kPaleGreen = 0xC8F0C8;

TEST(CellColors, CellsAndThemeWithoutMarks) {
  EXPECT_EQ(ColorsOf(kBlue, kWhite, {}, kTheme), (CellColors{kBlue, kWhite}));
  EXPECT_EQ(ColorsOf({}, {}, {}, kTheme), (CellColors{kTheme.Window, kTheme.WindowText}));
  EXPECT_EQ(ColorsOf({}, kRed, {}, kTheme), (CellColors{kTheme.Window, kRed}));
  const CellMarks stripes{.Sorted = true, .Alternate = true};
  EXPECT_EQ(ColorsOf(kBlue, kWhite, stripes, kTheme), (CellColors{kBlue, kWhite})) << "only plain cells are tinted";
  EXPECT_EQ(ColorsOf({}, {}, stripes, kTheme), (CellColors{0xEBEBEB, kTheme.WindowText}));
}

TEST(CellColors, ASelectedRowDiffersAndStaysReadable) {
  const std::tuple<std::optional<ColorRef>, std::optional<ColorRef>, CellColors> cases[] = {
      {kBlue, kWhite, {0x6B0000, kWhite}},
      {kRed, kWhite, {0x00006B, kWhite}},
      {kPaleGreen, 0x000000, {0xD0AE5A, 0x000000}},
      {0x101010, 0x303030, {0x7D4907, kWhite}},  // as given it could not be read
      {{}, {}, {kTheme.Highlight, kWhite}},
  };
  for (const auto& [background, text, expected] : cases) {
    const CellColors colors = ColorsOf(background, text, {.Selected = true}, kTheme);
    EXPECT_EQ(colors, expected) << std::hex << colors.Background << ' ' << colors.Text;
    EXPECT_GE(Contrast(colors.Background, colors.Text), 4.4);
  }
}

TEST(CellColors, TextsAreMadeOutOnAnyBackground) {
  EXPECT_EQ(ReadableText(0xFF0000, 0xF4F5F6), 0xFF0000u);
  EXPECT_EQ(ReadableText(0x0000FF, 0xF4F5F6), 0x0000FFu);
  EXPECT_EQ(ReadableText(0xFF0000, 0x303030), 0xFF6666u) << "blue, but lighter";
  EXPECT_EQ(ReadableText(kWhite, kWhite), 0x808080u);
  EXPECT_NEAR(Contrast(0x777777, kWhite), 4.48, 0.01);
}

}  // namespace

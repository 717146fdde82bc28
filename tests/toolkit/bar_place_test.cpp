#include "toolkit/model/bar_place.h"

#include <gtest/gtest.h>

namespace {

TEST(BarPlace, IsOneLineOfText) {
  const BarPlace docked{.State = BarState::Docked,
                        .Shown = true,
                        .Left = -220,
                        .Top = 150,
                        .Width = 420,
                        .Height = 260,
                        .Side = DockSide::Bottom,
                        .Layer = 1,
                        .Row = 2,
                        .Position = 3,
                        .Proportion = 4,
                        .DockWidth = 300,
                        .DockHeight = 200};
  EXPECT_EQ(BarPlaceText(docked), L"1;docked;1;-220;150;420;260;bottom;1;2;3;4;300;200");
  const wchar_t* lines[] = {
      L"1;docked;1;-220;150;420;260;bottom;1;2;3;4;300;200", L"1;floating;0;-32767;32767;1;32767;left;0;0;0;0;1;1",
      L"1;tabbed;0;0;0;1;1;right;32767;32767;32767;100000000;32767;32767", L"1;docked;0;0;0;1;1;top;0;0;0;0;1;1"};
  for (const wchar_t* line : lines) {
    SCOPED_TRACE(testing::PrintToString(std::wstring(line)));
    ASSERT_TRUE(ParseBarPlace(line));
    EXPECT_EQ(BarPlaceText(*ParseBarPlace(line)), line);
  }
  EXPECT_EQ(ParseBarPlace(lines[0]), docked);
}

// Each is one change away from "1;docked;1;220;150;420;260;bottom;0;0;0;0;300;200".
TEST(BarPlace, RejectsOtherText) {
  const wchar_t* lines[] = {L"",
                            L"1",
                            L"2;docked;1;220;150;420;260;bottom;0;0;0;0;300;200",
                            L"1;docked;1;220;150;420;260;bottom;0;0;0;0;300",
                            L"1;docked;1;220;150;420;260;bottom;0;0;0;0;300;200;",
                            L"1;docked;1;220;150;420;260;bottom;0;0;0;0;300;200;1",
                            L"1;Docked;1;220;150;420;260;bottom;0;0;0;0;300;200",
                            L"1;docked;2;220;150;420;260;bottom;0;0;0;0;300;200",
                            L"1;docked;1;220;150;0;260;bottom;0;0;0;0;300;200",
                            L"1;docked;1;220;150;-4;260;bottom;0;0;0;0;300;200",
                            L"1;docked;1;32768;150;420;260;bottom;0;0;0;0;300;200",
                            L"1;docked;1;220;-32768;420;260;bottom;0;0;0;0;300;200",
                            L"1;docked;1;220;150;420;260;middle;0;0;0;0;300;200",
                            L"1;docked;1;220;150;420;260;bottom;-1;0;0;0;300;200",
                            L"1;docked;1;220;150;420;260;bottom;0;0;0;100000001;300;200",
                            L"1;docked;1;220;150;420;260;bottom;0;0;0;99999999999999999999;300;200",
                            L"1;docked;1;220;150;420;260;bottom;0;0;0;0;300;0",
                            L"1;docked;1;;150;420;260;bottom;0;0;0;0;300;200",
                            L"1;docked;1; 220;150;420;260;bottom;0;0;0;0;300;200",
                            L"1;docked;1;-;150;420;260;bottom;0;0;0;0;300;200",
                            L"1;docked;1;220;150;420;260;bottom;0;0;0;0;300;0x9"};
  for (const wchar_t* line : lines) EXPECT_FALSE(ParseBarPlace(line)) << testing::PrintToString(std::wstring(line));
}

TEST(BarPlace, KeepsAFloatingBarWhereTheMouseCanGripIt) {
  // A panel of 40 pixels takes the top of the first display; the second one stands to the left of it.
  const DisplayArea displays[] = {{{0, 0, 1000, 800}, {0, 40, 1000, 760}}, {{-500, 0, 500, 600}, {-500, 0, 500, 600}}};
  const struct {
    ScreenRect Wanted, Expected;
  } rows[] = {
      {{300, 200, 400, 300}, {300, 200, 400, 300}},
      {{300, 200, 0, 300}, {100, 100, 530, 300}},
      {{300, 200, 400, -1}, {100, 100, 530, 300}},
      {{-360, 10, 400, 300}, {-360, 10, 400, 300}},  // on the second display
      {{960, 200, 400, 300}, {960, 200, 400, 300}},  // 40 pixels in view
      {{961, 200, 400, 300}, {100, 100, 400, 300}},  // 39
      {{980, 200, 20, 300}, {980, 200, 20, 300}},    // narrow and in view as a whole
      {{981, 200, 20, 300}, {100, 100, 20, 300}},
      {{-900, 200, 440, 300}, {-900, 200, 440, 300}},  // the right end alone
      {{300, 28, 400, 300}, {300, 28, 400, 300}},      // half the grip below the panel
      {{300, 27, 400, 300}, {100, 100, 400, 300}},
      {{300, 788, 400, 300}, {300, 788, 400, 300}},
      {{300, 789, 400, 300}, {100, 100, 400, 300}},
      {{0, 40, 5000, 4000}, {0, 40, 1500, 800}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.Wanted.Left << ' ' << row.Wanted.Top << ' ' << row.Wanted.Width);
    EXPECT_EQ(UsableFloatRect(row.Wanted, displays), row.Expected);
  }
  EXPECT_EQ(UsableFloatRect({20, 20, 400, 300}, {}), (ScreenRect{100, 100, 400, 300}));
}

}  // namespace

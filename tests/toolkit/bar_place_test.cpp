#include "toolkit/model/bar_place.h"

#include <gtest/gtest.h>

namespace {

TEST(BarPlace, IsOneLineOfText) {
  const BarPlace docked{BarState::Docked, true, -220, 150, 420, 260, DockSide::Bottom, 1, 2, 3, 4, 300, 200};
  EXPECT_EQ(BarPlaceText(docked), L"1;docked;1;-220;150;420;260;bottom;1;2;3;4;300;200");
  const wchar_t* lines[] = {
      L"1;docked;1;-220;150;420;260;bottom;1;2;3;4;300;200", L"1;floating;0;-32767;32767;1;32767;left;0;0;0;0;1;1",
      L"1;tabbed;0;0;0;1;1;right;32767;32767;32767;100000000;32767;32767", L"1;docked;0;0;0;1;1;top;0;0;0;0;1;1"};
  for (const wchar_t* line : lines) {
    ASSERT_TRUE(ParseBarPlace(line)) << testing::PrintToString(std::wstring(line));
    EXPECT_EQ(BarPlaceText(*ParseBarPlace(line)), line);
  }
  EXPECT_EQ(ParseBarPlace(lines[0]), docked);
}

TEST(BarPlace, RejectsOtherText) {
  const std::vector<std::wstring> good{L"1",      L"docked", L"1", L"220", L"150", L"420", L"260",
                                       L"bottom", L"0",      L"0", L"0",   L"0",   L"300", L"200"};
  const auto join = [](const std::vector<std::wstring>& fields) {
    std::wstring line;
    for (const std::wstring& field : fields) line += field + L";";
    line.pop_back();
    return line;
  };
  ASSERT_TRUE(ParseBarPlace(join(good)));
  const std::pair<std::size_t, const wchar_t*> changes[] = {
      {0, L"2"},    {0, L""},       {1, L"Docked"}, {2, L"2"},      {3, L"32768"},      {3, L""},
      {3, L" 220"}, {3, L"-"},      {4, L"-32768"}, {5, L"0"},      {5, L"-4"},         {5, L"32768"},
      {6, L"0"},    {7, L"middle"}, {8, L"-1"},     {9, L"32768"},  {11, L"100000001"}, {11, L"99999999999999999999"},
      {12, L"0"},   {13, L"0x9"},   {13, L"200;"},  {13, L"200;1"},
  };
  for (const auto& [field, text] : changes) {
    std::vector<std::wstring> fields = good;
    fields[field] = text;
    EXPECT_FALSE(ParseBarPlace(join(fields))) << field << ' ' << testing::PrintToString(std::wstring(text));
  }
  for (auto end = good.end() - 1; end != good.begin(); --end) EXPECT_FALSE(ParseBarPlace(join({good.begin(), end})));
  EXPECT_FALSE(ParseBarPlace(L""));
}

TEST(BarPlace, KeepsAFloatingBarWhereTheMouseCanGripIt) {
  // A panel of 40 pixels takes the top of the first display; the second one stands to the left of it.
  const DisplayArea displays[] = {{{0, 0, 1000, 800}, {0, 40, 1000, 760}}, {{-500, 0, 500, 600}, {-500, 0, 500, 600}}};
  const std::pair<ScreenRect, ScreenRect> rows[] = {
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
  for (const auto& [wanted, expected] : rows)
    EXPECT_EQ(UsableFloatRect(wanted, displays), expected) << wanted.Left << ' ' << wanted.Top << ' ' << wanted.Width;
  EXPECT_EQ(UsableFloatRect({20, 20, 400, 300}, {}), (ScreenRect{100, 100, 400, 300}));
}

}  // namespace

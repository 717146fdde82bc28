#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "foundations/text_tools.h"
#include "toolkit/model/bar_place.h"
#include "toolkit/model/cell_colors.h"
#include "toolkit/model/copy_text.h"
#include "toolkit/model/dialog_parts.h"

namespace {

// Columns 0 to 5; 1 and 4 hidden; 3 and 5 locked: on the screen stand 3 5 0 2.
CQORPGridColumnsInfo SixColumns() {
  CQORPGridColumnsInfo columns;
  for (int column = 0; column < 6; ++column) columns.InsertColumn(column, L"Column", 10 + column);
  for (const int hidden : {1, 4}) columns.SetColumnVisible(hidden, false);
  for (const int locked : {3, 5}) columns.SetColumnLocked(locked, true);
  return columns;
}

using Places = std::vector<int>;

TEST(ColumnsInfo, PlacesKeepLockedColumnsBeforeTheOthers) {
  const std::tuple<int, int, Places> cases[] = {
      {0, 5, {5, 3, 0, 2}}, {1, 3, {5, 3, 0, 2}}, {3, 5, {3, 5, 0, 2}}, {9, 3, {5, 3, 0, 2}},  {2, 2, {3, 5, 2, 0}},
      {0, 2, {3, 5, 2, 0}}, {3, 0, {3, 5, 2, 0}}, {9, 0, {3, 5, 2, 0}}, {-1, 0, {3, 5, 0, 2}}, {0, -1, {3, 5, 0, 2}},
      {0, 6, {3, 5, 0, 2}}, {1, 5, {3, 5, 0, 2}}, {3, 4, {3, 5, 0, 2}},  // hidden: its place shows when it does
  };
  for (const auto& [place, column, expected] : cases) {
    CQORPGridColumnsInfo columns = SixColumns();
    columns.SetColumnDisplayPos(place, column);
    EXPECT_EQ(columns.DisplayColumns(), expected) << "column " << column << " to place " << place;
  }
  CQORPGridColumnsInfo columns = SixColumns();
  columns.SetColumnDisplayPos(3, 4);
  for (const int hidden : {4, 1}) columns.SetColumnVisible(hidden, true);
  EXPECT_EQ(columns.DisplayColumns(), (Places{3, 5, 0, 1, 4, 2}));
  columns.SetColumnLocked(3, false);
  EXPECT_EQ(columns.DisplayColumns(), (Places{5, 0, 1, 4, 2, 3})) << "an unlocked column goes back to its neighbours";
  EXPECT_EQ(columns.GetColumnOrder(3), 5);
  columns.SetColumnVisible(3, false);
  EXPECT_EQ(columns.GetColumnOrder(3), -1);
  EXPECT_EQ(columns.GetColumnWidth(3), 13) << "a hidden column keeps its width";
}

TEST(ColumnsInfo, ADroppedColumnIsLockedAmongLockedOnes) {
  const std::tuple<int, int, Places, bool, bool> cases[] = {
      {2, 0, {3, 5, 0, 2}, false, false}, {3, 0, {3, 5, 0, 2}, false, false}, {4, 0, {3, 5, 2, 0}, true, false},
      {1, 0, {3, 0, 5, 2}, true, true},   {0, 2, {2, 3, 5, 0}, true, true},   {2, 2, {3, 5, 2, 0}, true, false},
      {2, 3, {5, 3, 0, 2}, true, true},   {3, 3, {5, 0, 3, 2}, true, false},  {4, 5, {3, 0, 2, 5}, true, false},
      {2, 5, {3, 5, 0, 2}, false, true},  {0, 1, {3, 5, 0, 2}, false, false}, {0, 9, {3, 5, 0, 2}, false, false},
  };
  for (const auto& [place, column, expected, moves, locked] : cases) {
    CQORPGridColumnsInfo columns = SixColumns();
    EXPECT_EQ(columns.DropColumn(place, column), moves) << "column " << column << " before place " << place;
    EXPECT_EQ(columns.DisplayColumns(), expected);
    EXPECT_EQ(columns.GetColumnLocked(column), locked);
  }
}

TEST(ColumnsInfo, AnOrderComesBackForWhatIsVisible) {
  const std::tuple<Places, Places, Places> cases[] = {
      {{3, 5, 0, 2}, {3, 5, 0, 2}, {3, 5, 0, 1, 2, 4}}, {{5, 3, 2, 0}, {5, 3, 2, 0}, {5, 3, 2, 1, 0, 4}},
      {{2}, {3, 5, 2, 0}, {3, 5, 2, 1, 0, 4}},          {{2, 4, 0, 2, 9, -1}, {3, 5, 2, 0}, {3, 5, 2, 4, 0, 1}},
      {{}, {3, 5, 0, 2}, {3, 5, 0, 1, 2, 4}},
  };
  for (const auto& [order, expected, allShown] : cases) {
    CQORPGridColumnsInfo columns = SixColumns();
    columns.SetColumnOrderArray(order);
    EXPECT_EQ(columns.GetColumnOrderArray(), expected);
    for (const int hidden : {1, 4}) columns.SetColumnVisible(hidden, true);
    EXPECT_EQ(columns.DisplayColumns(), allShown);
  }
}

TEST(ColumnsInfo, SortColumnsKeepTheOrderInWhichTheyWereSet) {
  CQORPGridColumnsInfo columns = SixColumns();
  // The states and priorities of columns 0, 2 and 4.
  const auto sort = [&columns] {
    Places sorts;
    for (const int column : {0, 2, 4})
      sorts.insert(sorts.end(), {columns.GetColumnState(column), columns.GetSortPriority(column)});
    return sorts;
  };
  const std::tuple<int, bool, bool, Places> steps[] = {
      {2, true, true, {0, -1, 1, 0, 0, -1}},   {0, false, true, {-1, 1, 1, 0, 0, -1}},
      {2, false, true, {-1, 1, -1, 0, 0, -1}}, {4, true, false, {0, -1, 0, -1, 1, 0}},
      {6, true, false, {0, -1, 0, -1, 1, 0}},  {2, true, true, {0, -1, 1, 1, 1, 0}}};
  for (const auto& [column, rising, keepsOthers, expected] : steps) {
    columns.SetSortColumn(column, rising, keepsOthers);
    EXPECT_EQ(sort(), expected) << column;
  }
  columns.RemoveSortColumn(4);
  EXPECT_EQ(sort(), (Places{0, -1, 1, 0, 0, -1}));
}

TEST(ColumnsInfo, ColumnsComeWithoutGapsAndWithAWidth) {
  CQORPGridColumnsInfo columns = SixColumns();
  for (const int column : {-1, 5, 7}) columns.InsertColumn(column, L"New", 1);
  EXPECT_EQ(columns.GetColumnCount(), 6);
  columns.InsertColumn(6, L"Narrow", -1);
  columns.SetColumnWidth(5, -1);
  EXPECT_EQ(columns.GetColumnWidth(5) + columns.GetColumnWidth(6), 0);
  EXPECT_EQ(columns.GetColumnName(5) + columns.GetColumnName(6) + columns.GetColumnName(7), L"ColumnNarrow");
}

// Two frozen columns at 0 to 100 and 100 to 150; of the others, scrolled by 60, the first lies half under them.
const std::vector<int> kWidths{100, 50, 80, 8, 200};
const ColumnStrip kStrip(kWidths, 2, 60);

TEST(ColumnStrip, FindsWhatTheMousePointsAt) {
  // The x, the column, the edge within 4 pixels and the place of a drop.
  const std::tuple<int, int, int, int> rows[] = {
      {-1, -1, -1, 0}, {0, 0, -1, 0},    {49, 0, -1, 0},  {50, 0, -1, 1},  {95, 0, -1, 1}, {96, 0, 0, 1},
      {100, 1, -1, 1}, {124, 1, -1, 1},  {125, 1, -1, 2}, {140, 1, -1, 2}, {149, 1, 1, 2}, {150, 2, 1, 3},
      {154, 2, 1, 3},  {155, 2, -1, 3},  {166, 2, 2, 3},  {173, 3, 2, 3},  {174, 3, 3, 4}, {178, 4, 3, 4},
      {182, 4, 3, 4},  {183, 4, -1, 4},  {277, 4, -1, 4}, {278, 4, -1, 5}, {377, 4, 4, 5}, {378, -1, 4, 5},
      {382, -1, 4, 5}, {383, -1, -1, 5},
  };
  for (const auto& [x, place, edge, drop] : rows)
    EXPECT_EQ(std::tuple(x, kStrip.PlaceAt(x), kStrip.PlaceOfEdgeAt(x, 4), kStrip.DropPlaceAt(x)),
              std::tuple(x, place, edge, drop));
  // A column without room for its edge: the right one of two edges in one place counts.
  EXPECT_EQ(ColumnStrip(std::vector<int>{50, 0, 50}, 0, 0).PlaceOfEdgeAt(48, 4), 1);
}

TEST(ColumnStrip, CountsTheColumnsThatCanBeFrozen) {
  const std::tuple<int, int, int> rows[] = {{-1, 900, 0}, {0, 900, 0}, {2, 900, 2}, {4, 900, 4},
                                            {5, 900, 4},  {2, 151, 2}, {2, 150, 1}, {2, 101, 1},
                                            {2, 100, 0},  {2, -40, 0}, {4, 238, 3}};
  for (const auto& [wanted, room, expected] : rows)
    EXPECT_EQ(CountFrozen(kWidths, wanted, room), expected) << wanted << " in " << room;
  EXPECT_EQ(CountFrozen({}, 3, 900), 0);
}

using Rows = RowSelection;
constexpr auto Only = &Rows::SelectOnly, Ctrl = &Rows::Toggle, Move = &Rows::MoveCurrent, Cut = &Rows::SetRows;
constexpr auto Shift = [](Rows& rows, int row) { rows.Extend(row, false); };
constexpr auto Both = [](Rows& rows, int row) { rows.Extend(row, true); };
constexpr auto All = [](Rows& rows, int) { rows.SelectAll(); };
constexpr auto None = [](Rows& rows, int) { rows.Clear(); };
constexpr auto Four = [](Rows& rows, int before) { rows.InsertRows(before, 4); };

using Steps = std::vector<std::pair<std::function<void(Rows&, int)>, int>>;

// On ten rows: a click has selected row 3, then clicks with Ctrl rows 5 and 7.
const std::tuple<const char*, Steps, int, std::vector<RowRange>> kCases[] = {
    {"click", {{Only, 1}}, 1, {{1, 1}}},
    {"click beyond the rows", {{Only, 10}}, 9, {{9, 9}}},
    {"Ctrl joins neighbours", {{Ctrl, 4}}, 4, {{3, 5}, {7, 7}}},
    {"Ctrl unselects", {{Ctrl, 5}}, 5, {{3, 3}, {7, 7}}},
    {"Ctrl splits a range", {{All, 0}, {Ctrl, 4}}, 4, {{0, 3}, {5, 9}}},
    {"Shift", {{Shift, 9}}, 9, {{7, 9}}},
    {"Ctrl and Shift upwards", {{Both, 6}}, 6, {{3, 3}, {5, 7}}},
    {"a drag grows and shrinks", {{Both, 2}, {Both, 8}}, 8, {{3, 3}, {5, 5}, {7, 8}}},
    {"an unselected row is not kept", {{Ctrl, 5}, {Both, 6}}, 6, {{3, 3}, {5, 7}}},
    {"Shift drops what was kept", {{Shift, 8}, {Both, 9}}, 9, {{7, 9}}},
    {"a moved current row keeps all", {{Shift, 9}, {Move, 1}, {Both, 2}}, 2, {{1, 2}, {7, 9}}},
    {"select all", {{All, 0}}, 7, {{0, 9}}},
    {"select all keeps anchor, not ranges", {{All, 0}, {Both, 8}}, 8, {{7, 8}}},
    {"select all without a current row", {{None, 0}, {All, 0}}, 0, {{0, 9}}},
    {"cleared", {{None, 0}}, -1, {}},
    {"clear drops what was kept", {{None, 0}, {Both, 2}}, 2, {{2, 2}}},
    {"rows below the current one", {{Four, 8}}, 7, {{3, 3}, {5, 5}, {7, 7}}},
    {"rows at the current one", {{Four, 7}}, 11, {{3, 3}, {5, 5}, {11, 11}}},
    {"rows within a range", {{Shift, 2}, {Four, 5}}, 2, {{2, 4}, {9, 11}}},
    {"rows on top move anchor and kept ranges", {{Four, 0}, {Both, 12}}, 12, {{7, 7}, {9, 9}, {11, 12}}},
    {"a selected row gone", {{Cut, 7}}, 6, {{3, 3}, {5, 5}}},
    {"rows gone within a range", {{Shift, 2}, {Cut, 4}}, 2, {{2, 3}}},
    {"kept rows gone", {{Cut, 6}, {Both, 4}}, 4, {{3, 5}}},
    {"gone rows do not come back", {{Cut, 6}, {Cut, 10}}, 5, {{3, 3}, {5, 5}}},
    {"a negative count", {{Cut, -1}}, -1, {}},
    {"no rows", {{Cut, 0}, {Ctrl, 0}, {Both, 1}, {All, 0}, {Only, 0}}, -1, {}},
};

TEST(RowSelection, SelectsAsMouseAndKeysAsk) {
  for (const auto& [what, steps, current, expected] : kCases) {
    SCOPED_TRACE(what);
    Rows rows;
    rows.SetRows(10);
    rows.SelectOnly(3);
    for (const int row : {5, 7}) rows.Toggle(row);
    for (const auto& [step, row] : steps) step(rows, row);
    EXPECT_EQ(std::tuple(rows.GetCurrent(), rows.GetRanges()), std::tuple(current, expected));
    const auto holds = [](int row) {
      return [row](RowRange range) { return row >= range.First && row <= range.Last; };
    };
    for (int row = -1; row <= rows.GetRows(); ++row)
      EXPECT_EQ(rows.Contains(row), std::ranges::any_of(expected, holds(row))) << row;
  }
}

TEST(CopyText, TakesSelectedRowsAndVisibleColumnsOnce) {
  CQORPGridColumnsInfo columns;  // on the screen: C to the right, A
  for (const auto& [column, name] : {std::pair{0, L"<A>"}, {1, L"B"}, {2, L"C"}})
    columns.InsertColumn(column, name, 50);
  columns.SetColumnVisible(1, false);
  columns.SetColumnDisplayPos(0, 2);
  columns.SetColumnAlign(2, 1);
  RowSelection selection;
  selection.SetRows(3);
  std::wstring asked, cell;
  const RowsToCopy rows{columns, selection, [&](int row, int column) -> std::wstring_view {
                          asked += cell = std::to_wstring(row) + wchar_t(L'a' + column);
                          return cell;
                        }};
  EXPECT_EQ(CopyAsTextAndHtml(rows, L"\n").Text, L"0c\t0a\n1c\t1a\n2c\t2a\n");
  selection.SelectOnly(2);
  selection.Toggle(0);
  asked.clear();
  const CopiedRows copied = CopyAsTextAndHtml(rows, L"\r\n");
  EXPECT_EQ(asked, L"0c0a2c2a");
  EXPECT_EQ(copied.Text, L"0c\t0a\r\n2c\t2a\r\n");
  const std::string html =
      "<tr><td align=\"right\">0c</td><td>0a</td></tr><tr><td align=\"right\">2c</td><td>2a</td></tr>";
  EXPECT_EQ(copied.Html, "<table>" + html + "</table>");
  EXPECT_EQ(CopyAsHtml(rows), "<table><tr><th align=\"right\">C</th><th>&lt;A&gt;</th></tr>" + html + "</table>");
}

TEST(CopyText, KeepsEveryCellOneAndAsItStands) {
  CQORPGridColumnsInfo columns;
  columns.InsertColumn(0, L"", 50);
  RowSelection selection;
  selection.SetRows(1);
  const auto check = [&](const std::wstring& cell, const std::wstring& text, const std::string& html, bool staysText) {
    const auto cellOf = [&cell](int, int) -> std::wstring_view { return cell; };
    const CopiedRows copied = CopyAsTextAndHtml({columns, selection, cellOf}, L"\n");
    EXPECT_EQ(copied.Text, text + L"\n");
    const std::string style = staysText ? R"( sdnum="1033;0;@" style='mso-number-format:"\@"')" : "";
    EXPECT_EQ(copied.Html, "<table><tr><td" + style + ">" + html + "</td></tr></table>");
  };
  for (const wchar_t* cell : {L"", L"0", L"0.50", L"-1,234.50", L"123456789012345"})
    check(cell, cell, WideToNarrow(cell), false);
  for (const wchar_t* cell : {L"007", L"12E34", L"-A1", L"@sum", L"1234567890123456"})
    check(cell, cell, WideToNarrow(cell), true);
  check(L"\t=1+1", L" =1+1", " =1+1", true);
  check(L"a\tb\r\nc\x1F\x7F", L"a b  c  ", "a b  c  ", false);
  check(L"R&D <\"x\">", L"R&D <\"x\">", "R&amp;D &lt;&quot;x&quot;&gt;", false);
  check(L"\u07FF\u0800\uFFFD", L"\u07FF\u0800\uFFFD", "\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBD", false);
  check(L"\U00010000\U0001F600", L"\U00010000\U0001F600", "\xF0\x90\x80\x80\xF0\x9F\x98\x80", false);
  check({wchar_t(0xD83D), L'x'}, {wchar_t(0xD83D), L'x'}, "\xEF\xBF\xBDx", false);
}

constexpr GridTheme kTheme;
constexpr ColorRef kBlue = 0xFF0000, kRed = 0x0000FF, kWhite = 0xFFFFFF, kPaleGreen = 0xC8F0C8;

TEST(CellColors, MarksTintPlainCellsAndSelectedRowsStayReadable) {
  const CellMarks stripes{.Sorted = true, .Alternate = true}, selected{.Selected = true};
  const std::tuple<std::optional<ColorRef>, std::optional<ColorRef>, CellMarks, CellColors> cases[] = {
      {kBlue, kWhite, {}, {kBlue, kWhite}},
      {{}, {}, {}, {kTheme.Window, kTheme.WindowText}},
      {{}, kRed, {}, {kTheme.Window, kRed}},
      {kBlue, kWhite, stripes, {kBlue, kWhite}},
      {{}, {}, stripes, {0xEBEBEB, kTheme.WindowText}},
      {kBlue, kWhite, selected, {0x6B0000, kWhite}},
      {kRed, kWhite, selected, {0x00006B, kWhite}},
      {kPaleGreen, 0x000000, selected, {0xD0AE5A, 0x000000}},
      {0x101010, 0x303030, selected, {0x7D4907, kWhite}},  // as given it could not be read
      {{}, {}, selected, {kTheme.Highlight, kWhite}},
  };
  for (const auto& [background, text, marks, expected] : cases) {
    const CellColors colors = ColorsOf(background, text, marks, kTheme);
    EXPECT_EQ(colors, expected) << std::hex << colors.Background << ' ' << colors.Text;
    EXPECT_TRUE(!marks.Selected || Contrast(colors.Background, colors.Text) >= 4.4);
  }
}

TEST(CellColors, TextsAreMadeOutOnAnyBackground) {
  EXPECT_EQ(ReadableText(0xFF0000, 0xF4F5F6), 0xFF0000u);
  EXPECT_EQ(ReadableText(0x0000FF, 0xF4F5F6), 0x0000FFu);
  EXPECT_EQ(ReadableText(0xFF0000, 0x303030), 0xFF6666u) << "blue, but lighter";
  EXPECT_EQ(ReadableText(kWhite, kWhite), 0x808080u);
  EXPECT_NEAR(Contrast(0x777777, kWhite), 4.48, 0.01);
}

TEST(BarPlace, IsOneLineOfText) {
  const BarPlace docked{BarState::Docked, true, -220, 150, 420, 260, DockSide::Bottom, 1, 2, 3, 4, 300, 200};
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
  const std::wstring good[] = {L"1",      L"docked", L"1", L"220", L"150", L"420", L"260",
                               L"bottom", L"0",      L"0", L"0",   L"0",   L"300", L"200"};
  // The first fields of a good line, with one of them changed.
  const auto parses = [&good](std::size_t count, std::size_t changed, const wchar_t* text) {
    std::wstring line;
    for (std::size_t field = 0; field < count; ++field)
      line += (field == 0 ? L"" : L";") + (field == changed ? text : good[field]);
    return ParseBarPlace(line).has_value();
  };
  for (std::size_t count = 0; count <= 14; ++count) EXPECT_EQ(parses(count, 14, L""), count == 14);
  const std::pair<std::size_t, const wchar_t*> changes[] = {
      {0, L"2"},    {0, L""},       {1, L"Docked"}, {2, L"2"},      {3, L"32768"},      {3, L""},
      {3, L" 220"}, {3, L"-"},      {4, L"-32768"}, {5, L"0"},      {5, L"-4"},         {5, L"32768"},
      {6, L"0"},    {7, L"middle"}, {8, L"-1"},     {9, L"32768"},  {11, L"100000001"}, {11, L"99999999999999999999"},
      {12, L"0"},   {13, L"0x9"},   {13, L"200;"},  {13, L"200;1"},
  };
  for (const auto& [field, text] : changes)
    EXPECT_FALSE(parses(14, field, text)) << field << ' ' << testing::PrintToString(std::wstring(text));
}

TEST(BarPlace, KeepsAFloatingBarWhereTheMouseCanGripIt) {
  // A panel of 40 pixels takes the top of the first display; the second one stands to the left of it.
  const DisplayArea displays[] = {{{0, 0, 1000, 800}, {0, 40, 1000, 760}}, {{-500, 0, 500, 600}, {-500, 0, 500, 600}}};
  // Good, of no size, too large; on the second display, its right end alone; 40 pixels in view, 39; narrow and in view
  // as a whole, not; half the grip below the panel, less; the same at the lower end.
  const std::pair<ScreenRect, ScreenRect> rows[] = {
      {{300, 200, 400, 300}, {300, 200, 400, 300}}, {{300, 200, 0, 300}, {100, 100, 530, 300}},
      {{300, 200, 400, -1}, {100, 100, 530, 300}},  {{0, 40, 5000, 4000}, {0, 40, 1500, 800}},
      {{-360, 10, 400, 300}, {-360, 10, 400, 300}}, {{-900, 200, 440, 300}, {-900, 200, 440, 300}},
      {{960, 200, 400, 300}, {960, 200, 400, 300}}, {{961, 200, 400, 300}, {100, 100, 400, 300}},
      {{980, 200, 20, 300}, {980, 200, 20, 300}},   {{981, 200, 20, 300}, {100, 100, 20, 300}},
      {{300, 28, 400, 300}, {300, 28, 400, 300}},   {{300, 27, 400, 300}, {100, 100, 400, 300}},
      {{300, 788, 400, 300}, {300, 788, 400, 300}}, {{300, 789, 400, 300}, {100, 100, 400, 300}},
  };
  for (const auto& [wanted, expected] : rows)
    EXPECT_EQ(UsableFloatRect(wanted, displays), expected) << wanted.Left << ' ' << wanted.Top << ' ' << wanted.Width;
  EXPECT_EQ(UsableFloatRect({20, 20, 400, 300}, {}), (ScreenRect{100, 100, 400, 300}));
}

TEST(MessageButtons, FollowTheBitsOfTheStyle) {
  // The style; the buttons with their ids, the default one and the answer of closing.
  const std::tuple<std::uint32_t, std::wstring, std::size_t, int> rows[] = {
      {0x00, L"OK1", 0, 1},
      {0x07, L"OK1", 0, 1},
      {0x21, L"OK1Cancel2", 0, 2},
      {0x32, L"&Abort3&Retry4&Ignore5", 0, 0},
      {0x103, L"&Yes6&No7Cancel2", 1, 2},
      {0x203, L"&Yes6&No7Cancel2", 2, 2},
      {0x303, L"&Yes6&No7Cancel2", 0, 2},
      {0x104, L"&Yes6&No7", 1, 0},
      {0x204, L"&Yes6&No7", 0, 0},
      {0x05, L"&Retry4Cancel2", 0, 2},
      {0x06, L"Cancel2&Try Again10&Continue11", 0, 2},
      {0x80140, L"&Left1000Right1001", 0, 0},
  };
  for (const auto& [style, buttons, theDefault, closeId] : rows) {
    const MessageButtons made = ButtonsOfStyle(style, {L"&Left", L"Right"});
    std::wstring text;
    for (const MessageButton& button : made.Buttons) text += button.Caption + std::to_wstring(button.Id);
    EXPECT_EQ(std::tuple(style, text, made.Default, made.CloseId), std::tuple(style, buttons, theDefault, closeId));
  }
}

}  // namespace

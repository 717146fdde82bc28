#include "tests/toolkit/grid_fixture.h"
#include "tests/toolkit/spoken_name.h"

namespace {

using GridCtrl = GridFixture;

TEST_F(GridCtrl, AsksForThePaintedRowsOnly) {
  Grid->SetVirtualRows(1'000'000);
  Grid->SetCurSel(999'999);
  Asked.clear();
  PaintNow(*Grid->GetRowsWindow());
  ASSERT_FALSE(Asked.empty());
  EXPECT_EQ(*Asked.begin(), Grid->GetFirstVisibleRow());
  EXPECT_EQ(*Asked.rbegin(), 999'999);
  EXPECT_LE(static_cast<int>(Asked.size()), FullRows() + 1);
  EXPECT_FALSE(Grid->CellRect(999'999, 0).IsEmpty());
  for (const int row : {0, 1'000'000}) EXPECT_TRUE(Grid->CellRect(row, 0).IsEmpty());
}

// Without a repaint of its own the test waits in vain.
TEST_F(GridCtrl, RepaintsWhatAChangeTouches) {
  const std::tuple<const char*, std::function<void()>, std::set<int>> steps[] = {
      {"a click", [&] { ClickRow(4); }, {3, 4, 5}},
      {"the row that was current", [&] { ClickRow(9); }, {4, 9}},
      {"a range", [&] { ClickRow(14, kShift); }, {10, 12, 14}},
      {"less of it", [&] { ClickRow(11, kShift); }, {13, 14}},
      {"all rows", [&] { Grid->SelectAll(); }, {0, 20}},
      {"a selected column", [&] { ClickAt(4, Grid->HeaderRect(4), kControl); }, {0, 20}},
      {"another current cell", [&] { Grid->EnableWholeRowSelection(false), PressKey(WXK_RIGHT, kControl); }, {0, 20}},
      {"a sort column", [&] { Grid->GetColumnsInfo().SetSortColumn(2, true, true), Grid->RemoveSortColumn(2); }, {0}},
      {"new rows", [&] { Grid->SetVirtualRows(1003, 3); }, {0, 20}},
      {"on demand", [&] { Grid->RedrawRows(); }, {0, 20}},
      {"a mark", [&] { Grid->EnableMarkSortedColumn(true); }, {0, 20}},
      {"stripes", [&] { Grid->EnableAlternateRows(true); }, {0, 20}},
      {"lines", [&] { Grid->EnableGridLines(false); }, {0, 20}},
  };
  for (const auto& [what, change, rows] : steps) {
    PaintNow(*Grid);
    Asked.clear();
    change();
    EXPECT_TRUE(PumpUntil([this, &wanted = rows] { return std::ranges::includes(Asked, wanted); })) << what;
  }
}

TEST_F(GridCtrl, HeadersShowTheColumnsOfTheModel) {
  const auto show = [this](bool visible, const char* columns) {
    for (; *columns != 0; ++columns) Grid->SetColumnVisible(*columns - '0', visible);
  };
  const std::tuple<const char*, std::function<void()>, Places, int> steps[] = {
      {"hidden", [&] { show(false, "1"); }, {0, 2, 3, 4, 5}, 0},
      {"locked", [&] { Grid->SetColumnLocked(3, true); }, {3, 0, 2, 4, 5}, 1},
      {"more frozen than locked", [&] { Grid->FreezeColumns(2); }, {3, 0, 2, 4, 5}, 2},
      {"one column scrolls in any case", [&] { show(false, "302"); }, {4, 5}, 1},
      {"none visible", [&] { show(false, "45"); }, {}, 0},
      {"all visible", [&] { show(true, "012345"); }, {3, 0, 1, 2, 4, 5}, 2},
      {"no rows", [&] { Grid->SetVirtualRows(0), Grid->FreezeColumns(3); }, {3, 0, 1, 2, 4, 5}, 3},
      {"too wide to freeze", [&] { Grid->SetColumnWidth(0, 1100); }, {3, 0}, 1},
      {"nothing frozen", [&] { Grid->SetColumnLocked(3, false), Grid->FreezeColumns(0); }, {0, 1}, 0},
  };
  for (const auto& [what, change, expected, frozen] : steps) {
    change();
    Pump();
    EXPECT_EQ(Headers(), expected) << what;
    const auto isFrozen = [this](int column) { return Grid->GetHeaderWindow(column) != Grid->GetHeaderWindow(); };
    EXPECT_EQ(std::ranges::count_if(Headers(), isFrozen), frozen) << what;
    PaintNow(*Grid);
  }
  EXPECT_EQ(Grid->HeaderRect(1).x - Grid->HeaderRect(0).x, 1100);
  Grid->EnableHeader(false);
  EXPECT_TRUE(Grid->HeaderRect(1).IsEmpty());
  EXPECT_GT(Grid->GetRowsWindow()->GetPosition().x, 0);
  Grid->EnableRowHeader(false);
  EXPECT_EQ(Grid->GetRowsWindow()->GetPosition(), wxPoint(0, 0));
}

TEST_F(GridCtrl, WidthsFollowTheScaleOfTheScreenAndTheTexts) {
  wxDPIChangedEvent moved(wxSize(96, 96), wxSize(144, 144));
  Grid->GetEventHandler()->ProcessEvent(moved);
  Pump();
  EXPECT_EQ(Grid->GetColumnsInfo().GetColumnWidth(2), 150);
  EXPECT_EQ(Grid->HeaderRect(3).x - Grid->HeaderRect(2).x, 150);
  Grid->SetCurSel(500);
  Grid->SizeToFit();
  const auto width = [this](const wchar_t* text) { return Grid->GetTextExtent(text).x + 16; };
  EXPECT_EQ(Grid->GetColumnsInfo().GetColumnWidth(2), std::max(width(L"500.2"), width(L"Title 2")));
  Grid->SetColumnVisible(2, false);
  wxFont large = Grid->GetGridFont();
  large.SetPointSize(2 * large.GetPointSize());
  const int first = Grid->GetFirstVisibleRow(), height = Grid->CellRect(first, 3).height;
  const wxRect header = Grid->HeaderRect(3);
  Grid->SetGridFont(large);
  EXPECT_GT(Grid->CellRect(first, 3).height, height * 3 / 2);
  EXPECT_GT(Grid->HeaderRect(3).height, header.height * 3 / 2);
  EXPECT_EQ(Grid->GetFirstVisibleRow(), first);
  EXPECT_EQ(Grid->CellRect(first, 3).y, 0);
  Grid->SizeToFit();
  EXPECT_GT(Grid->GetColumnsInfo().GetColumnWidth(3), header.width);
  EXPECT_NE(Grid->GetColumnsInfo().GetColumnWidth(2), Grid->GetColumnsInfo().GetColumnWidth(3)) << "column 2 is hidden";
}

TEST_F(GridCtrl, FrozenColumnsStayWhileTheOthersScroll) {
  for (const int column : {2, 3, 4, 5}) Grid->SetColumnWidth(column, 600);
  Grid->FreezeColumns(2);
  Grid->EnableWholeRowSelection(false);
  const wxRect frozen = Grid->HeaderRect(1), scrolled = Grid->HeaderRect(3);
  PressKey(WXK_RIGHT);
  EXPECT_EQ(Grid->HeaderRect(1), frozen);
  EXPECT_LT(Grid->HeaderRect(3).x, scrolled.x);
  EXPECT_EQ(Grid->CellRect(0, 3).x, Grid->HeaderRect(3).x);
  const wxPoint end = Grid->CellRect(3, 1).GetRightBottom() - wxPoint(2, 2);
  for (const int column : {1, 2}) {
    Click(*Grid->GetRowsWindow(column), column == 1 ? end : wxPoint(2, end.y));
    EXPECT_EQ(Grid->GetSelection(0).Left, column) << "column 2 is also under column 1";
  }
  Frame->SetSize(240, 700);  // no room for two frozen columns, then for both again
  ASSERT_TRUE(PumpUntil([this] { return Grid->GetHeaderWindow(1) == Grid->GetHeaderWindow(); }));
  Frame->SetSize(1200, 700);
  EXPECT_TRUE(PumpUntil([this] { return Grid->GetHeaderWindow(1) != Grid->GetHeaderWindow(); }));
}

TEST_F(GridCtrl, TheMouseMovesLocksAndResizesColumns) {
  Grid->SetColumnLocked(5, true);  // 5 | 0 1 2 3 4
  // The column, the x to which it is dragged in the window of its header, and the headers then.
  const std::tuple<int, int, Places> drags[] = {
      {1, 154, {5, 0, 1, 2, 3, 4}},  // 4 pixels are a click
      {1, 145, {5, 0, 1, 2, 3, 4}},  // 5 pixels are a drag
      {0, 160, {5, 1, 0, 2, 3, 4}}, {3, -90, {3, 5, 1, 0, 2, 4}}, {3, 160, {5, 3, 1, 0, 2, 4}},
  };
  for (const auto& [column, toX, expected] : drags) {
    const wxPoint from = Middle(Grid->HeaderRect(column));
    Drag(*Grid->GetHeaderWindow(column), from, {toX, from.y});
    EXPECT_EQ(Headers(), expected) << "column " << column << " to " << toX;
  }
  EXPECT_EQ(Grid->ColumnChanges, 3);
  EXPECT_EQ(Grid->Toggled, Places{1});
  Grid->SetColumnLocked(3, false);
  const wxRect edge = Grid->HeaderRect(3);
  const std::tuple<int, int, int> edges[] = {{edge.GetRight() - 1, edge.GetRight() + 29, 130},
                                             {edge.GetRight() + 31, 0, 12},  // a column keeps an edge to grip
                                             {edge.x + 11, 3000, 2048}};
  for (const auto& [from, to, width] : edges) {
    Drag(*Grid->GetHeaderWindow(3), {from, 5}, {to, 5});
    EXPECT_EQ(Grid->GetColumnsInfo().GetColumnWidth(3), width);
  }
  EXPECT_EQ(Grid->ColumnChanges, 6);
}

TEST_F(GridCtrl, TheRealPointerDragsAHeader) {
  const wxPoint from = Middle(Grid->HeaderRect(0));
  DragRealPointer(*Grid->GetHeaderWindow(0), from, {280, from.y});
  EXPECT_TRUE(PumpUntil([this] { return Headers() == Places{1, 2, 0, 3, 4, 5}; }));
}

TEST_F(GridCtrl, HeaderClicksAndKeysChooseMoveSortSelectAndResizeColumns) {
  Grid->SetColumnVisible(1, false);
  const auto press = [this](int times, int key, int held) {
    for (int i = 0; i < times; ++i) PressKey(key, held);
  };
  PressKey(WXK_RETURN, kControl);
  EXPECT_TRUE(Grid->Toggled.empty()) << "no column is current yet";
  press(3, WXK_RIGHT, kControl);
  PressKey(WXK_RETURN, kControl);
  ClickAt(2, Grid->HeaderRect(2));
  Click(*Grid->GetHeaderWindow(), {900, 5});  // behind all columns
  EXPECT_EQ(Grid->Toggled, (Places{3, 2}));
  for (const bool selected : {true, false}) {
    PressKey(WXK_SPACE, kControl | kShift);
    ClickAt(4, Grid->HeaderRect(4), kControl);
    EXPECT_EQ(Grid->IsColumnSelected(3) && Grid->IsColumnSelected(4), selected);
  }
  const int before = Grid->HeaderRect(3).width;
  PressKey('+', kControl | kShift);
  PressKey(WXK_NUMPAD_ADD, kControl);
  PressKey('-', kControl);
  EXPECT_EQ(Grid->HeaderRect(3).width, before + Grid->FromDIP(8));
  EXPECT_EQ(Grid->ColumnChanges, 3);
  press(50, '-', kControl);
  EXPECT_EQ(Grid->HeaderRect(3).width, Grid->OnGetColumnMinWidth(3));
  PressKey(WXK_LEFT, kControl | kShift);
  EXPECT_EQ(Headers(), (Places{0, 3, 2, 4, 5}));
  press(9, WXK_RIGHT, kControl | kShift);
  EXPECT_EQ(Headers(), (Places{0, 2, 4, 5, 3}));
  press(9, WXK_LEFT, kControl);
  PressKey(WXK_RETURN, kControl);
  EXPECT_EQ(Grid->Toggled, (Places{3, 2, 0}));
}

TEST_F(GridCtrl, MouseAndKeysSelectRows) {
  const int page = FullRows();
  const auto at = [this](int row) { return Middle(Grid->CellRect(row, 0)); };
  const auto drag = [&](int row, const wxPoint& to) { Drag(*Grid->GetRowsWindow(), at(row), to); };
  const auto pressAll = [this](std::initializer_list<int> keys) {
    for (const int key : keys) PressKey(key);
  };
  const std::tuple<const char*, std::function<void()>, int, RowRanges> steps[] = {
      {"click", [&] { ClickRow(4); }, 4, {{4, 4}}},
      {"Shift and click", [&] { ClickRow(2, kShift); }, 2, {{2, 4}}},
      {"Ctrl and click", [&] { ClickRow(9, kControl); }, 9, {{2, 4}, {9, 9}}},
      {"both", [&] { ClickRow(11, kControl | kShift); }, 11, {{2, 4}, {9, 11}}},
      {"a right click on a selected row", [&] { RightClick(*Grid->GetRowsWindow(), at(3)); }, 11, {{2, 4}, {9, 11}}},
      {"a right click elsewhere", [&] { RightClick(*Grid->GetRowsWindow(), at(6)); }, 6, {{6, 6}}},
      {"a drag", [&] { drag(3, at(8)); }, 8, {{3, 8}}},
      {"Down", [&] { PressKey(WXK_DOWN); }, 9, {{9, 9}}},
      {"Shift and Up", [&] { PressKey(WXK_UP, kShift); }, 8, {{8, 9}}},
      {"Ctrl and Up", [&] { PressKey(WXK_UP, kControl); }, 7, {{8, 9}}},
      {"Ctrl and Space", [&] { PressKey(WXK_SPACE, kControl); }, 7, {{7, 9}}},
      {"Space", [&] { PressKey(WXK_SPACE); }, 7, {{7, 7}}},
      {"Page Down", [&] { PressKey(WXK_PAGEDOWN); }, 7 + page, {{7 + page, 7 + page}}},
      {"Page Up", [&] { PressKey(WXK_NUMPAD_PAGEUP); }, 7, {{7, 7}}},
      {"Page Up at the top", [&] { PressKey(WXK_PAGEUP, kShift); }, 0, {{0, 7}}},
      {"Up at the first row", [&] { PressKey(WXK_UP); }, 0, {{0, 0}}},
      {"Ctrl and End", [&] { PressKey(WXK_END, kControl); }, 999, {{999, 999}}},
      {"Down at the last row", [&] { PressKey(WXK_DOWN); }, 999, {{999, 999}}},
      {"Shift and Home", [&] { PressKey(WXK_HOME, kShift); }, 0, {{0, 999}}},
      {"End", [&] { PressKey(WXK_END); }, 999, {{999, 999}}},
      {"Ctrl and A", [&] { PressKey('A', kControl); }, 999, {{0, 999}}},
      {"keys that select nothing",
       [&] {
         pressAll({WXK_TAB, WXK_RETURN, WXK_ESCAPE});
       },
       999,
       {{0, 999}}},
      {"Ctrl and C, Alt and Up", [&] { PressKey('C', kControl), PressKey(WXK_UP, kAlt); }, 999, {{0, 999}}},
      {"a drag beyond the top scrolls", [&] { drag(998, wxPoint(50, -5)); }, 999 - page, {{999 - page, 998}}},
      {"cleared", [&] { Grid->SetCurSel(-1); }, -1, {}},
      {"Down without a current row", [&] { PressKey(WXK_DOWN); }, 0, {{0, 0}}},
  };
  for (const auto& [what, act, current, expected] : steps) {
    act();
    EXPECT_EQ(std::tuple(Grid->GetCurSel(), Selected()), std::tuple(current, expected)) << what;
    EXPECT_EQ(Grid->CellRect(current, 0).IsEmpty(), current < 0) << "the current row is in view: " << what;
  }
  EXPECT_GT(Grid->Focused, 0);
}

TEST_F(GridCtrl, SelectsTheCellOfTheCurrentColumn) {
  EXPECT_EQ(Grid->GetSelection(0).Top, -1);
  const auto columns = [this] { return std::pair(Grid->GetSelection(0).Left, Grid->GetSelection(0).Right); };
  Grid->SetCurSel(3);
  EXPECT_EQ(columns(), std::pair(0, 5));
  Grid->EnableWholeRowSelection(false);
  ClickRow(5);
  EXPECT_EQ(columns(), std::pair(2, 2));
  Grid->SetColumnVisible(2, false);
  Grid->SetCurSel(0);
  EXPECT_EQ(columns(), std::pair(0, 0)) << "the current column was hidden";
}

TEST_F(GridCtrl, KeepsTheViewWhenRowsArrive) {
  for (const int column : {2, 3, 4, 5}) Grid->SetColumnWidth(column, 600);
  PressKey(WXK_RIGHT);
  const int scrolled = Grid->HeaderRect(3).x;
  ASSERT_LT(scrolled, 800);
  Grid->SetCurSel(3);
  Grid->SetVirtualRows(1010, 10);
  EXPECT_EQ(Grid->GetFirstVisibleRow(), 0) << "the newest rows stay in view";
  EXPECT_EQ(Grid->GetCurSel(), 13);
  Grid->SetCurSel(500);
  PressKey(WXK_DOWN, kShift);
  const int first = Grid->GetFirstVisibleRow(), top = Grid->CellRect(500, 3).y;
  const std::tuple<int, int, int, int> steps[] = {
      {1060, 50, 0, first + 50}, {1061, 1, first + 50, first + 51}, {1062, 1, first + 52, first + 51}};
  for (const auto& [rows, inserted, before, firstThen] : steps) {
    Grid->SetVirtualRows(rows, inserted, before);
    EXPECT_EQ(Grid->GetFirstVisibleRow(), firstThen);
    EXPECT_TRUE(inserted < 50 || Grid->CellRect(550, 3).y == top);
  }
  EXPECT_EQ(Selected(), (RowRanges{{552, 553}}));
  Grid->SetVirtualRows(20);
  EXPECT_EQ(Grid->GetCurSel(), 19);
  EXPECT_EQ(Grid->GetFirstVisibleRow(), 0);
  EXPECT_EQ(Grid->HeaderRect(3).x, scrolled);
  Grid->SetVirtualRows(0);
  EXPECT_EQ(Grid->GetFirstVisibleRow(), -1);
  PaintNow(*Grid->GetRowsWindow());
}

TEST_F(GridCtrl, MenusAndKeysReachTheDerivedGrid) {
  Grid->SetCurSel(2);
  wxWindow& rows = *Grid->GetRowsWindow();
  RightClick(rows, {50, 100});
  wxContextMenuEvent key(wxEVT_CONTEXT_MENU, rows.GetId(), wxDefaultPosition);
  rows.GetEventHandler()->ProcessEvent(key);
  const int current = Grid->GetCurSel(), below = Grid->CellRect(current, 0).GetBottom() + 1;
  ASSERT_EQ(Grid->MenuPoints.size(), 2u);
  EXPECT_EQ(Grid->MenuPoints[0], rows.ClientToScreen(wxPoint(50, 100)));
  EXPECT_EQ(Grid->MenuPoints[1].y, rows.ClientToScreen(wxPoint(0, below)).y);
  Grid->Swallowed = WXK_DOWN;
  for (const int pressed : {WXK_DOWN, WXK_UP}) PressKey(pressed);
  EXPECT_EQ(Grid->GetCurSel(), current - 1);
}

TEST_F(GridCtrl, ScreenReadersAreToldItsName) {
  EXPECT_EQ(SpokenName(*Grid->GetRowsWindow()), L"Grid");
  Grid->NameForReaders(L"Trade Book : All");
  Grid->FreezeColumns(1);
  for (const int column : {0, 5}) EXPECT_EQ(SpokenName(*Grid->GetRowsWindow(column)), L"Trade Book : All");
}

}  // namespace

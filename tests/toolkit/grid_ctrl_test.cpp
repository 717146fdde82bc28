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
  EXPECT_TRUE(Grid->CellRect(0, 0).IsEmpty());
  EXPECT_TRUE(Grid->CellRect(1'000'000, 0).IsEmpty());
}

TEST_F(GridCtrl, HeadersShowTheColumnsOfTheModel) {
  const auto show = [this](std::initializer_list<int> columns, bool visible) {
    for (const int column : columns) Grid->SetColumnVisible(column, visible);
  };
  const struct {
    const char* What;
    std::function<void()> Change;
    Places Expected;
    int Frozen;
  } steps[] = {
      {"hidden", [&] { show({1}, false); }, {0, 2, 3, 4, 5}, 0},
      {"locked", [&] { Grid->SetColumnLocked(3, true); }, {3, 0, 2, 4, 5}, 1},
      {"more frozen than locked", [&] { Grid->FreezeColumns(2); }, {3, 0, 2, 4, 5}, 2},
      {"one column scrolls in any case",
       [&] {
         show({3, 0, 2}, false);
       },
       {4, 5},
       1},
      {"none visible",
       [&] {
         show({4, 5}, false);
       },
       {},
       0},
      {"all visible",
       [&] {
         show({0, 1, 2, 3, 4, 5}, true);
       },
       {3, 0, 1, 2, 4, 5},
       2},
      {"no rows", [&] { Grid->SetVirtualRows(0), Grid->FreezeColumns(3); }, {3, 0, 1, 2, 4, 5}, 3},
      {"too wide to freeze", [&] { Grid->SetColumnWidth(0, 1100); }, {3, 0}, 1},
      {"nothing frozen",
       [&] { Grid->SetColumnWidth(0, 50), Grid->SetColumnLocked(3, false), Grid->FreezeColumns(0); },
       {0, 1, 2, 3, 4, 5},
       0},
  };
  for (const auto& step : steps) {
    SCOPED_TRACE(step.What);
    step.Change();
    Pump();
    EXPECT_EQ(Headers(), step.Expected);
    int frozen = 0;
    for (const int column : Headers()) frozen += Grid->GetHeaderWindow(column) != Grid->GetHeaderWindow();
    EXPECT_EQ(frozen, step.Frozen);
    PaintNow(*Grid);
  }
  EXPECT_EQ(Grid->HeaderRect(1).x - Grid->HeaderRect(0).x, 50);
  Grid->EnableHeader(false);
  EXPECT_TRUE(Grid->HeaderRect(1).IsEmpty());
}

TEST_F(GridCtrl, ColumnsKeepTheirWidthsOnAScreenOfAnotherScale) {
  Grid->SetColumnWidth(2, 50);
  wxDPIChangedEvent moved(wxSize(96, 96), wxSize(144, 144));
  Grid->GetEventHandler()->ProcessEvent(moved);
  Pump();
  EXPECT_EQ(Grid->GetColumnsInfo().GetColumnWidth(2), 75);
  EXPECT_EQ(Grid->HeaderRect(3).x - Grid->HeaderRect(2).x, 75);
}

TEST_F(GridCtrl, FrozenColumnsStayWhileTheOthersScroll) {
  for (const int column : {2, 3, 4, 5}) Grid->SetColumnWidth(column, 600);
  Grid->FreezeColumns(2);
  const wxRect frozen = Grid->HeaderRect(1), scrolled = Grid->HeaderRect(3);
  PressKey(WXK_RIGHT);
  EXPECT_EQ(Grid->HeaderRect(1), frozen);
  EXPECT_LT(Grid->HeaderRect(3).x, scrolled.x);
  EXPECT_EQ(Grid->CellRect(0, 3).x, Grid->HeaderRect(3).x);
  Frame->SetSize(240, 700);  // no room for two frozen columns, then for both again
  ASSERT_TRUE(PumpUntil([this] { return Grid->GetHeaderWindow(1) == Grid->GetHeaderWindow(); }));
  Frame->SetSize(1200, 700);
  EXPECT_TRUE(PumpUntil([this] { return Grid->GetHeaderWindow(1) != Grid->GetHeaderWindow(); }));
}

TEST_F(GridCtrl, TheMouseMovesLocksAndResizesColumns) {
  Grid->SetColumnLocked(5, true);  // 5 | 0 1 2 3 4
  const struct {
    int Column, ToX;  // in the window of its header
    Places Expected;
  } drags[] = {
      {1, 154, {5, 0, 1, 2, 3, 4}},  // 4 pixels are a click
      {1, 145, {5, 0, 1, 2, 3, 4}},  // 5 pixels are a drag
      {0, 160, {5, 1, 0, 2, 3, 4}}, {3, -90, {3, 5, 1, 0, 2, 4}}, {3, 160, {5, 3, 1, 0, 2, 4}},
  };
  for (const auto& drag : drags) {
    SCOPED_TRACE(testing::Message() << "column " << drag.Column << " to " << drag.ToX);
    const wxPoint from = Middle(Grid->HeaderRect(drag.Column));
    Drag(*Grid->GetHeaderWindow(drag.Column), from, {drag.ToX, from.y});
    EXPECT_EQ(Headers(), drag.Expected);
  }
  EXPECT_EQ(Grid->ColumnChanges, 3);
  EXPECT_EQ(Grid->Toggled, Places{1});
  Grid->SetColumnLocked(3, false);
  const wxRect edge = Grid->HeaderRect(3);
  Drag(*Grid->GetHeaderWindow(3), {edge.GetRight() - 1, 5}, {edge.GetRight() + 29, 5});
  EXPECT_EQ(Grid->GetColumnsInfo().GetColumnWidth(3), 130);
  Drag(*Grid->GetHeaderWindow(3), {edge.GetRight() + 31, 5}, {0, 5});
  EXPECT_EQ(Grid->GetColumnsInfo().GetColumnWidth(3), 12) << "a column keeps an edge to grip";
  Drag(*Grid->GetHeaderWindow(3), {edge.x + 11, 5}, {3000, 5});
  EXPECT_EQ(Grid->GetColumnsInfo().GetColumnWidth(3), 2048);
  EXPECT_EQ(Grid->ColumnChanges, 6);
}

TEST_F(GridCtrl, TheRealPointerDragsAHeader) {
  const wxPoint from = Middle(Grid->HeaderRect(0));
  DragRealPointer(*Grid->GetHeaderWindow(0), from, {280, from.y});
  EXPECT_TRUE(PumpUntil([this] { return Headers() == Places{1, 2, 0, 3, 4, 5}; }));
}

TEST_F(GridCtrl, AHeaderClickSortsAndWithControlSelects) {
  ClickAt(2, Grid->HeaderRect(2));
  ClickAt(4, Grid->HeaderRect(4), kControl);
  Click(*Grid->GetHeaderWindow(), {900, 5});  // behind all columns
  EXPECT_EQ(Grid->Toggled, Places{2});
  EXPECT_TRUE(Grid->IsColumnSelected(4));
  EXPECT_FALSE(Grid->IsColumnSelected(2));
  ClickAt(4, Grid->HeaderRect(4), kControl);
  EXPECT_FALSE(Grid->IsColumnSelected(4));
}

TEST_F(GridCtrl, KeysChooseMoveSortSelectAndResizeColumns) {
  Grid->SetColumnVisible(1, false);
  PressKey(WXK_RETURN, kControl);
  EXPECT_TRUE(Grid->Toggled.empty()) << "no column is current yet";
  for (int i = 0; i < 3; ++i) PressKey(WXK_RIGHT, kControl);
  PressKey(WXK_RETURN, kControl);
  EXPECT_EQ(Grid->Toggled, std::vector<int>{3});
  PressKey(WXK_SPACE, kControl | kShift);
  EXPECT_TRUE(Grid->IsColumnSelected(3));
  const int before = Grid->HeaderRect(3).width, changes = Grid->ColumnChanges;
  PressKey('+', kControl | kShift);
  PressKey(WXK_NUMPAD_ADD, kControl);
  PressKey('-', kControl);
  EXPECT_EQ(Grid->HeaderRect(3).width, before + Grid->FromDIP(8));
  EXPECT_EQ(Grid->ColumnChanges, changes + 3);
  for (int i = 0; i < 50; ++i) PressKey('-', kControl);
  EXPECT_EQ(Grid->HeaderRect(3).width, Grid->OnGetColumnMinWidth(3));
  PressKey(WXK_LEFT, kControl | kShift);
  EXPECT_EQ(Headers(), (Places{0, 3, 2, 4, 5}));
  for (int i = 0; i < 9; ++i) PressKey(WXK_RIGHT, kControl | kShift);
  EXPECT_EQ(Headers(), (Places{0, 2, 4, 5, 3}));
  for (int i = 0; i < 9; ++i) PressKey(WXK_LEFT, kControl);
  PressKey(WXK_RETURN, kControl);
  EXPECT_EQ(Grid->Toggled, (std::vector<int>{3, 0}));
}

TEST_F(GridCtrl, MouseAndKeysSelectRows) {
  const int page = FullRows();
  const auto drag = [this](int row, const wxPoint& to) {
    Drag(*Grid->GetRowsWindow(), Middle(Grid->CellRect(row, 0)), to);
  };
  const auto rightClick = [this](int row) { RightClick(*Grid->GetRowsWindow(), Middle(Grid->CellRect(row, 0))); };
  const struct {
    const char* What;
    std::function<void()> Do;
    int Current;
    RowRanges Expected;
  } steps[] = {
      {"click", [&] { ClickRow(4); }, 4, {{4, 4}}},
      {"Shift and click", [&] { ClickRow(2, kShift); }, 2, {{2, 4}}},
      {"Ctrl and click", [&] { ClickRow(9, kControl); }, 9, {{2, 4}, {9, 9}}},
      {"both", [&] { ClickRow(11, kControl | kShift); }, 11, {{2, 4}, {9, 11}}},
      {"a right click on a selected row", [&] { rightClick(3); }, 11, {{2, 4}, {9, 11}}},
      {"a right click elsewhere", [&] { rightClick(6); }, 6, {{6, 6}}},
      {"a drag", [&] { drag(3, Middle(Grid->CellRect(8, 0))); }, 8, {{3, 8}}},
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
         for (const int key : {WXK_TAB, WXK_RETURN, WXK_ESCAPE}) PressKey(key);
         PressKey('C', kControl);
         PressKey(WXK_UP, kAlt);
       },
       999,
       {{0, 999}}},
      {"a drag beyond the top scrolls",
       [&] {
         drag(998, {50, -5});
       },
       999 - page,
       {{999 - page, 998}}},
      {"cleared", [&] { Grid->SetCurSel(-1); }, -1, {}},
      {"Down without a current row", [&] { PressKey(WXK_DOWN); }, 0, {{0, 0}}},
  };
  for (const auto& step : steps) {
    SCOPED_TRACE(step.What);
    step.Do();
    EXPECT_EQ(Grid->GetCurSel(), step.Current);
    EXPECT_EQ(Selected(), step.Expected);
    EXPECT_EQ(Grid->CellRect(step.Current, 0).IsEmpty(), step.Current < 0) << "the current row is in view";
  }
  EXPECT_GT(Grid->Focused, 0);
}

TEST_F(GridCtrl, SelectsTheCellOfTheCurrentColumn) {
  EXPECT_EQ(Grid->GetSelection(0).Top, -1);
  Grid->SetCurSel(3);
  EXPECT_EQ(Grid->GetSelection(0).Left, 0);
  EXPECT_EQ(Grid->GetSelection(0).Right, 5);
  Grid->EnableWholeRowSelection(false);
  ClickRow(5);
  EXPECT_EQ(Grid->GetSelection(0).Left, 2);
  EXPECT_EQ(Grid->GetSelection(0).Right, 2);
  Grid->SetColumnVisible(2, false);
  Grid->SetCurSel(0);
  EXPECT_EQ(Grid->GetSelection(0).Left, 0) << "the current column was hidden";
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
  const int first = Grid->GetFirstVisibleRow();
  const int top = Grid->CellRect(500, 3).y;
  Grid->SetVirtualRows(1060, 50);
  EXPECT_EQ(Grid->GetFirstVisibleRow(), first + 50);
  EXPECT_EQ(Grid->CellRect(550, 3).y, top);
  Grid->SetVirtualRows(1061, 1, first + 50);
  EXPECT_EQ(Grid->GetFirstVisibleRow(), first + 51);
  Grid->SetVirtualRows(1062, 1, first + 52);
  EXPECT_EQ(Grid->GetFirstVisibleRow(), first + 51);
  EXPECT_EQ(Selected(), (RowRanges{{552, 553}}));
  EXPECT_EQ(Grid->HeaderRect(3).x, scrolled);
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
  ASSERT_EQ(Grid->MenuPoints.size(), 2u);
  EXPECT_EQ(Grid->MenuPoints[0], rows.ClientToScreen(wxPoint(50, 100)));
  const wxRect current = Grid->CellRect(Grid->GetCurSel(), 0);
  EXPECT_EQ(Grid->MenuPoints[1].y, rows.ClientToScreen(current.GetBottomLeft()).y + 1);
  const int before = Grid->GetCurSel();
  Grid->Swallowed = WXK_DOWN;
  PressKey(WXK_DOWN);
  EXPECT_EQ(Grid->GetCurSel(), before);
  PressKey(WXK_UP);
  EXPECT_EQ(Grid->GetCurSel(), before - 1);
}

TEST_F(GridCtrl, ScreenReadersAreToldItsName) {
  EXPECT_EQ(SpokenName(*Grid->GetRowsWindow()), L"Grid");
  Grid->NameForReaders(L"Trade Book : All");
  Grid->FreezeColumns(1);
  for (const int column : {0, 5}) EXPECT_EQ(SpokenName(*Grid->GetRowsWindow(column)), L"Trade Book : All");
}

}  // namespace

#include <wx/grid.h>
#include <wx/textctrl.h>

#include "tests/toolkit/grid_fixture.h"

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
  const std::tuple<const char*, std::function<void()>, Places, int> steps[] = {
      {"hidden", [&] { Grid->SetColumnVisible(1, false); }, {0, 2, 3, 4, 5}, 0},
      {"locked", [&] { Grid->SetColumnLocked(3, true); }, {3, 0, 2, 4, 5}, 1},
      {"more frozen than locked", [&] { Grid->FreezeColumns(2); }, {3, 0, 2, 4, 5}, 2},
      {"no rows", [&] { Grid->SetVirtualRows(0), Grid->SetColumnVisible(1, true); }, {3, 0, 1, 2, 4, 5}, 2},
      {"too wide to freeze", [&] { Grid->SetColumnWidth(0, 1100); }, {3, 0}, 1},
      {"nothing frozen", [&] { Grid->SetColumnLocked(3, false), Grid->FreezeColumns(0); }, {0, 1}, 0},
  };
  for (const auto& [what, change, expected, frozen] : steps) {
    change();
    Pump();
    const auto isFrozen = [this](int column) { return Grid->GetHeaderWindow(column) != Grid->GetHeaderWindow(); };
    EXPECT_EQ(Headers(), expected) << what;
    EXPECT_EQ(std::ranges::count_if(Headers(), isFrozen), frozen) << what;
    PaintNow(*Grid);
  }
  EXPECT_EQ(Grid->HeaderRect(1).x - Grid->HeaderRect(0).x, 1100);
  Grid->EnableHeader(false);
  EXPECT_TRUE(Grid->HeaderRect(1).IsEmpty() && Grid->GetRowsWindow()->GetPosition().x > 0);
  Grid->EnableRowHeader(false);
  EXPECT_EQ(Grid->GetRowsWindow()->GetPosition(), wxPoint(0, 0));
}

TEST_F(GridCtrl, WidthsFollowTheScaleOfTheScreenAndTheTexts) {
  const auto widthOf = [this](int column) { return Grid->GetColumnsInfo().GetColumnWidth(column); };
  wxDPIChangedEvent moved(wxSize(96, 96), wxSize(144, 144));
  Grid->GetEventHandler()->ProcessEvent(moved);
  Pump();
  EXPECT_EQ(widthOf(2), 150);
  EXPECT_EQ(Grid->HeaderRect(3).x - Grid->HeaderRect(2).x, 150);
  Grid->SetVirtualRows(1'000'000);
  Grid->SetCurSel(999'999);
  Grid->SizeToFit();
  EXPECT_EQ(widthOf(2), Grid->GetTextExtent(L"999999.2").x + 16);
  Grid->SetColumnVisible(2, false);
  wxFont large = Grid->GetGridFont();
  large.SetPointSize(2 * large.GetPointSize());
  const int first = Grid->GetFirstVisibleRow(), height = Grid->CellRect(first, 3).height, hidden = widthOf(2);
  const wxRect header = Grid->HeaderRect(3);
  Grid->SetGridFont(large);
  EXPECT_GT(Grid->CellRect(first, 3).height, height * 3 / 2);
  EXPECT_GT(Grid->HeaderRect(3).height, header.height * 5 / 4) << "its margin stays";
  EXPECT_EQ(Grid->GetFirstVisibleRow(), first);
  EXPECT_EQ(Grid->CellRect(first, 3).y, 0);
  Grid->SizeToFit();
  EXPECT_TRUE(widthOf(3) > header.width && widthOf(2) == hidden);
}

TEST_F(GridCtrl, FrozenColumnsStayAndSelectTheirCells) {
  for (const int column : {2, 3, 4, 5}) Grid->SetColumnWidth(column, 600);
  Grid->FreezeColumns(2);
  EXPECT_EQ(std::pair(Grid->GetSelection(0).Top, Grid->GetSelection(0).Bottom), std::pair(-1, -1));
  ClickRow(5);
  EXPECT_EQ(std::pair(Grid->GetSelection(0).Left, Grid->GetSelection(0).Right), std::pair(0, 5));
  Grid->EnableWholeRowSelection(false);
  const wxRect frozen = Grid->HeaderRect(1), scrolled = Grid->HeaderRect(3);
  PressKey(WXK_RIGHT);
  EXPECT_EQ(Grid->HeaderRect(1), frozen);
  EXPECT_LT(Grid->HeaderRect(3).x, scrolled.x);
  EXPECT_EQ(Grid->CellRect(0, 3).x, Grid->HeaderRect(3).x);
  wxWindow& headers = *Grid->GetHeaderWindow(3);
  const wxPoint start = Middle(Grid->HeaderRect(3));
  const int before = Grid->HeaderRect(3).x;
  SendMouse(headers, start, kNoKey, {wxEVT_LEFT_DOWN});
  for (const auto& [x, scrolledBy] : {std::pair(2000, 20), {-2000, 0}}) {
    SendMouse(headers, {x, start.y}, kNoKey, {wxEVT_MOTION});
    EXPECT_EQ(Grid->HeaderRect(3).x, before - scrolledBy) << "a drag beyond an end scrolls";
  }
  SendMouse(headers, start, kNoKey, {wxEVT_MOTION, wxEVT_LEFT_UP});
  const wxPoint end = Grid->CellRect(3, 1).GetRightBottom() - wxPoint(2, 2);
  for (const int column : {1, 2}) {
    Click(*Grid->GetRowsWindow(column), column == 1 ? end : wxPoint(2, end.y));
    EXPECT_EQ(Grid->GetSelection(0).Left, column) << "column 2 is also under column 1";
  }
  Grid->SetColumnVisible(2, false);
  Grid->SetCurSel(0);
  EXPECT_EQ(std::pair(Grid->GetSelection(0).Left, Grid->GetSelection(0).Right), std::pair(0, 0)) << "it is hidden";
  for (int i = 0; i < 4; ++i) PressKey(WXK_RIGHT, kControl);
  EXPECT_FALSE(Grid->HeaderRect(5).IsEmpty()) << "the current column comes into view";
  for (const int width : {240, 1200}) {  // no room for two frozen columns, then for both again
    Frame->SetSize(width, 700);
    EXPECT_TRUE(PumpUntil([&] { return (Grid->GetHeaderWindow(1) == Grid->GetHeaderWindow()) == (width == 240); }));
  }
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
  const int locked = Grid->HeaderRect(5).GetRight();
  wxWindow& header = *Grid->GetHeaderWindow(5);
  for (const int x : {locked, locked - 50}) {
    SendMouse(header, {x, 5}, kNoKey, {wxEVT_MOTION});
    EXPECT_EQ(header.GetCursor().IsOk(), x == locked) << "a cursor of its own over an edge";
  }
  Drag(header, {locked, 5}, {1500, 5});
  EXPECT_EQ(Grid->GetHeaderWindow(5), Grid->GetHeaderWindow()) << "too wide to freeze";
}

TEST_F(GridCtrl, HeaderClicksAndKeysChooseMoveSortSelectAndResizeColumns) {
  Grid->SetColumnVisible(1, false);
  const auto press = [this](int key, int held, int times = 1) {
    for (int i = 0; i < times; ++i) PressKey(key, held);
  };
  press(WXK_RETURN, kControl);
  EXPECT_TRUE(Grid->Toggled.empty()) << "no column is current yet";
  press(WXK_RIGHT, kControl, 3);
  press(WXK_RETURN, kControl);
  ClickAt(2, Grid->HeaderRect(2));
  Click(*Grid->GetHeaderWindow(), {900, 5});  // behind all columns
  EXPECT_EQ(Grid->Toggled, (Places{3, 2}));
  for (const bool selected : {true, false}) {
    press(WXK_SPACE, kControl | kShift);
    ClickAt(4, Grid->HeaderRect(4), kControl);
    EXPECT_EQ(Grid->IsColumnSelected(3) && Grid->IsColumnSelected(4), selected);
  }
  const int before = Grid->HeaderRect(3).width;
  for (const int key : {int{'+'}, int{'='}, int{WXK_NUMPAD_ADD}, int{'-'}, int{'_'}}) press(key, kControl | kShift);
  EXPECT_EQ(Grid->HeaderRect(3).width, before + Grid->FromDIP(8));
  EXPECT_EQ(Grid->ColumnChanges, 5);
  press(WXK_NUMPAD_SUBTRACT, kControl, 50);
  EXPECT_EQ(Grid->HeaderRect(3).width, Grid->OnGetColumnMinWidth(3));
  press(WXK_LEFT, kControl | kShift);
  EXPECT_EQ(Headers(), (Places{0, 3, 2, 4, 5}));
  press(WXK_RIGHT, kControl | kShift, 9);
  EXPECT_EQ(Headers(), (Places{0, 2, 4, 5, 3}));
  press(WXK_LEFT, kControl, 9);
  press(WXK_RETURN, kControl);
  EXPECT_EQ(Grid->Toggled, (Places{3, 2, 0}));
}

TEST_F(GridCtrl, MouseAndKeysSelectRows) {
  const int page = FullRows(), end = 7 + page, top = 999 - page;
  wxWindow& rows = *Grid->GetRowsWindow();
  auto& view = dynamic_cast<wxGrid&>(*rows.GetParent());
  const auto at = [this](int row) { return Middle(Grid->CellRect(row, 0)); };
  const auto check = [this](int current, const RowRanges& expected) {
    EXPECT_EQ(std::tuple(Grid->GetCurSel(), Selected()), std::tuple(current, expected));
    EXPECT_EQ(Grid->CellRect(current, 0).IsEmpty(), current < 0) << "the current row is in view";
  };
  const std::tuple<const char*, std::function<void()>, int, RowRanges> steps[] = {
      {"a row header", [&] { Click(*view.GetGridRowLabelWindow(), at(5)); }, 5, {{5, 5}}},
      {"the corner", [&] { Click(*view.GetGridCornerLabelWindow(), wxPoint(5, 5)); }, 5, {{0, 999}}},
      {"click", [&] { ClickRow(4); }, 4, {{4, 4}}},
      {"Shift and click", [&] { ClickRow(2, kShift); }, 2, {{2, 4}}},
      {"Ctrl and click", [&] { ClickRow(9, kControl); }, 9, {{2, 4}, {9, 9}}},
      {"both", [&] { ClickRow(11, kControl | kShift); }, 11, {{2, 4}, {9, 11}}},
      {"a right click on a selected row", [&] { RightClick(rows, at(3)); }, 11, {{2, 4}, {9, 11}}},
      {"a right click elsewhere", [&] { RightClick(rows, at(6)); }, 6, {{6, 6}}},
      {"a drag beyond the top", [&] { Grid->SetCurSel(999), Drag(rows, at(998), wxPoint(50, -5)); }, top, {{top, 998}}},
      {"cleared", [&] { Grid->SetCurSel(-1); }, -1, {}},
      {"a drag", [&] { Grid->SetCurSel(0), Drag(rows, at(3), at(8)); }, 8, {{3, 8}}},
  };
  for (const auto& [what, act, current, expected] : steps) {
    SCOPED_TRACE(what);
    act();
    check(current, expected);
  }
  const std::tuple<int, int, int, int, int> keys[] = {
      {WXK_DOWN, 0, 9, 9, 9},          {WXK_UP, kShift, 8, 8, 9},     {WXK_UP, kControl, 7, 8, 9},
      {WXK_SPACE, kControl, 7, 7, 9},  {WXK_SPACE, 0, 7, 7, 7},       {WXK_PAGEDOWN, 0, end, end, end},
      {WXK_NUMPAD_PAGEUP, 0, 7, 7, 7}, {WXK_PAGEUP, kShift, 0, 0, 7}, {WXK_UP, 0, 0, 0, 0},
      {WXK_END, kShift, 999, 0, 999},  {WXK_HOME, kControl, 0, 0, 0}, {WXK_END, kControl, 999, 999, 999},
      {'A', kControl, 999, 0, 999},    {'C', kControl, 999, 0, 999},  {WXK_UP, kAlt, 999, 0, 999},
      {WXK_TAB, 0, 999, 0, 999},       {WXK_RETURN, 0, 999, 0, 999},  {WXK_NUMPAD_HOME, kControl, 0, 0, 0},
  };
  for (const auto& [key, held, current, first, last] : keys) {
    SCOPED_TRACE(testing::Message() << key << " with " << held);
    PressKey(key, held);
    check(current, {{first, last}});
  }
  Grid->SetCurSel(-1);
  PressKey(WXK_DOWN);
  check(0, {{0, 0}});
  EXPECT_GT(Grid->Focused, 0);
  // A pointer that stays below scrolls on until the button is released.
  SendMouse(rows, at(3), kNoKey, {wxEVT_LEFT_DOWN});
  SendMouse(rows, {50, rows.GetClientSize().y}, kNoKey, {wxEVT_MOTION});
  EXPECT_TRUE(PumpUntil([&] { return Grid->GetCurSel() > page + 3; }));
  SendMouse(rows, {50, rows.GetClientSize().y}, kNoKey, {wxEVT_LEFT_UP});
  check(Grid->GetCurSel(), {{3, Grid->GetCurSel()}});
  Grid->SetVirtualRows(12), Grid->SetCurSel(3);
  Click(rows, {50, 500}), RightClick(rows, {50, 500});
  check(3, {{3, 3}});  // they were below the last row
  SendMouse(rows, at(3), kNoKey, {wxEVT_LEFT_DOWN});
  rows.ReleaseMouse();
  wxMouseCaptureLostEvent lost;
  rows.GetEventHandler()->ProcessEvent(lost);
  SendMouse(rows, at(5), kNoKey, {wxEVT_MOTION});
  check(3, {{3, 3}});
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
  for (const int key : {WXK_NUMPAD_LEFT, WXK_NUMPAD_RIGHT}) PressKey(key);
  Grid->SetVirtualRows(1060, 50);
  EXPECT_EQ(Grid->CellRect(550, 3).y, top);
  for (const auto& [rows, before, firstThen] : {std::tuple(1061, first + 50, 51), {1062, first + 52, 51}}) {
    Grid->SetVirtualRows(rows, 1, before);
    EXPECT_EQ(Grid->GetFirstVisibleRow(), first + firstThen);
  }
  EXPECT_EQ(Selected(), (RowRanges{{552, 553}}));
  for (const auto& [rows, current, firstThen] : {std::tuple(20, 19, 0), {-1, -1, -1}}) {
    Grid->SetVirtualRows(rows);
    EXPECT_EQ(std::pair(Grid->GetCurSel(), Grid->GetFirstVisibleRow()), std::pair(current, firstThen));
    EXPECT_EQ(Grid->HeaderRect(3).x, scrolled);
  }
  PaintNow(*Grid->GetRowsWindow());
}

TEST_F(GridCtrl, MenusAndKeysReachTheDerivedGrid) {
  EXPECT_EQ(SpokenName(*Grid->GetRowsWindow()), L"Grid") << "what a screen reader says";
  Grid->SetCurSel(2);
  wxWindow& rows = *Grid->GetRowsWindow();
  RightClick(rows, {50, 100});
  wxContextMenuEvent key(wxEVT_CONTEXT_MENU, rows.GetId(), wxDefaultPosition);
  rows.GetEventHandler()->ProcessEvent(key);
  const int current = Grid->GetCurSel(), below = Grid->CellRect(current, 0).GetBottom() + 1;
  ASSERT_EQ(Grid->MenuPoints.size(), 2u);
  EXPECT_EQ(Grid->MenuPoints[0], rows.ClientToScreen(wxPoint(50, 100)));
  EXPECT_EQ(Grid->MenuPoints[1].y, rows.ClientToScreen(wxPoint(0, below)).y);
  wxTextCtrl& other = MakeChild<wxTextCtrl>(Frame, wxID_ANY);
  for (const auto& [row, first, y] : {std::tuple(999, 0, rows.GetClientSize().y - 1), {2, 500, 0}}) {
    Grid->SetCurSel(row), dynamic_cast<wxGrid&>(*rows.GetParent()).Scroll(-1, first);
    other.SetFocus();
    rows.GetEventHandler()->ProcessEvent(key);
    EXPECT_EQ(Grid->MenuPoints.back().y, rows.ClientToScreen(wxPoint(0, y)).y) << "the current row is out of view";
    EXPECT_TRUE(Grid->IsDescendant(wxWindow::FindFocus()));
  }
  Grid->NameForReaders(L"Trades");
  Grid->FreezeColumns(1);
  EXPECT_EQ(SpokenName(rows) + SpokenName(*Grid->GetRowsWindow(0)), L"TradesTrades");
  Grid->SetCurSel(current);
  Grid->Swallowed = WXK_DOWN;
  for (const int pressed : {WXK_DOWN, WXK_UP}) PressKey(pressed);
  EXPECT_EQ(Grid->GetCurSel(), current - 1);
}

TEST_F(GridCtrl, ReadersHearTheCurrentRowWhileItHasTheFocus) {
  for (const int column : {3, 4, 5}) Grid->SetColumnVisible(column, false);
  Grid->SetCurSel(2);
  wxWindow& rows = *Grid->GetRowsWindow();
  EXPECT_EQ(SpokenDescription(rows), L"") << "without the focus";
  if (!GiveRealFocus(*rows.GetParent())) GTEST_SKIP() << "this display gives no focus";
  CQORPGridColumnsInfo& columns = Grid->GetColumnsInfo();
  const std::tuple<const char*, std::function<void()>, const wchar_t*> steps[] = {
      {"the focus", [] {}, L"Title 0: 2.0, column 1 of 3, row 3 of 1,000, Title 1: 2.1, Title 2: 2.2"},
      {"a key", [&] { PressKey(WXK_DOWN); }, L"Title 0: 3.0, row 4 of 1,000, Title 1: 3.1, Title 2: 3.2"},
      {"a click", [&] { ClickRow(5); }, L"Title 2: 5.2, column 3 of 3, row 6 of 1,000, Title 0: 5.0, Title 1: 5.1"},
      {"a column", [&] { PressKey(WXK_LEFT, kControl); }, L"Title 1: 5.1, column 2 of 3"},
      {"a column that moves", [&] { PressKey(WXK_LEFT, kControl | kShift); }, L"Title 1: 5.1, column 1 of 3"},
      {"a sort", [&] { columns.SetSortColumn(1, true, false), PressKey(WXK_RETURN, kControl); },
       L"Title 1, sorted ascending: 5.1, column 1 of 3"},
      {"rows of the program", [&] { Grid->SetVirtualRows(4); },
       L"Title 1: 3.1, row 4 of 4, not selected, Title 0: 3.0, Title 2: 3.2"},
  };
  for (const auto& [what, change, expected] : steps) {
    change();
    EXPECT_TRUE(PumpUntil([&] { return SpokenDescription(rows) == expected; }))
        << what << ": " << wxString(SpokenDescription(rows));
  }
}

}  // namespace

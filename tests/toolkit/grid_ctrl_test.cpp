#include "toolkit/grid/grid_ctrl.h"

#include <map>
#include <set>

#include "tests/toolkit/gui_test.h"
#include "tests/toolkit/spoken_name.h"

namespace {

using Places = std::vector<int>;

class ProbeGrid : public CQORPGridCtrl {
 public:
  void ToggleSortColumn(int column) override { Toggled.push_back(column); }
  void OnShowContextMenu(const wxPoint& point) override { MenuPoints.push_back(point); }
  void OnGridFocus() override { ++Focused; }
  void OnColumnsChanged() override { ++ColumnChanges; }
  bool PreTranslateMessage(wxKeyEvent& event) override { return event.GetKeyCode() == Swallowed; }

  std::vector<int> Toggled;
  std::vector<wxPoint> MenuPoints;
  int Focused = 0, ColumnChanges = 0, Swallowed = 0;
};

// Six columns of 100 pixels, a thousand rows whose every third has colours of its own.
class GridCtrl : public GuiTest {
 protected:
  void SetUp() override {
    GuiTest::SetUp();
    if (Frame == nullptr) return;
    Grid = new ProbeGrid;
    ASSERT_TRUE(Grid->Create(Frame, 7));
    for (int column = 0; column < 6; ++column) Grid->InsertColumn(column, L"Title " + std::to_wstring(column), 100);
    Grid->AdjustLayout();
    Grid->EnableVirtualMode([this](int row, int column, CQORPGridCell& cell) {
      Asked.insert(row);
      cell.Text = std::to_wstring(row) + L"." + std::to_wstring(column);
      if (row % 3 == 0) cell.Background = 0xFF0000, cell.TextColor = 0xFFFFFF;
      return true;
    });
    Grid->SetVirtualRows(1000);
    Frame->SendSizeEvent();
    ASSERT_TRUE(PumpUntil([this] { return Grid->GetRowsWindow()->GetClientSize().y > 500; }));
    PaintNow(*Grid->GetRowsWindow());  // scroll bars that are not needed are gone by then
  }

  void ClickRow(int row, int held = kNoKey) { Click(*Grid->GetRowsWindow(), Middle(Grid->CellRect(row, 2)), held); }
  void PressKey(int keyCode, int held = kNoKey) { Press(*Grid->GetRowsWindow(), keyCode, held); }
  static wxPoint Middle(const wxRect& rect) { return {rect.x + rect.width / 2, rect.y + rect.height / 2}; }
  void DragHeader(int column, int toX) {
    wxWindow& header = *Grid->GetHeaderWindow(column);
    const wxPoint from = Middle(Grid->HeaderRect(column));
    Drag(header, from, {toX, from.y});
  }
  // The columns from left to right, as their headers stand on the screen.
  Places Headers() const {
    std::map<int, int> byLeft;
    for (int column = 0; column < Grid->GetColumnCount(); ++column)
      if (const wxRect rect = Grid->HeaderRect(column); !rect.IsEmpty())
        byLeft[Grid->GetHeaderWindow(column)->GetScreenPosition().x + rect.x] = column;
    Places columns;
    for (const auto& [left, column] : byLeft) columns.push_back(column);
    return columns;
  }
  std::vector<std::pair<int, int>> Selected() const {
    std::vector<std::pair<int, int>> ranges;
    for (int index = 0; index < Grid->GetSelectionCount(); ++index)
      ranges.emplace_back(Grid->GetSelection(index).Top, Grid->GetSelection(index).Bottom);
    return ranges;
  }
  int FullRows() const {
    return Grid->GetRowsWindow()->GetClientSize().y / Grid->CellRect(Grid->GetFirstVisibleRow(), 0).height;
  }

  ProbeGrid* Grid = nullptr;
  std::set<int> Asked;
};

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

TEST_F(GridCtrl, HeadersStandInTheOrderOfTheColumns) {
  const struct {
    const char* What;
    std::function<void(ProbeGrid&)> Change;
    Places Expected;
    int Frozen;
  } steps[] = {
      {"as made", [](ProbeGrid&) {}, {0, 1, 2, 3, 4, 5}, 0},
      {"hidden", [](ProbeGrid& grid) { grid.SetColumnVisible(1, false); }, {0, 2, 3, 4, 5}, 0},
      {"locked", [](ProbeGrid& grid) { grid.SetColumnLocked(3, true); }, {3, 0, 2, 4, 5}, 1},
      {"more frozen than locked", [](ProbeGrid& grid) { grid.FreezeColumns(2); }, {3, 0, 2, 4, 5}, 2},
      {"a locked one hidden", [](ProbeGrid& grid) { grid.SetColumnVisible(3, false); }, {0, 2, 4, 5}, 2},
      {"all others hidden but one that scrolls",
       [](ProbeGrid& grid) {
         for (const int column : {0, 2}) grid.SetColumnVisible(column, false);
       },
       {4, 5},
       1},
      {"nothing shown",
       [](ProbeGrid& grid) {
         for (const int column : {4, 5}) grid.SetColumnVisible(column, false);
       },
       {},
       0},
      {"all back, moved without a window's doing",
       [](ProbeGrid& grid) {
         for (int column = 0; column < 6; ++column) grid.GetColumnsInfo().SetColumnVisible(column, true);
         grid.GetColumnsInfo().SetColumnDisplayPos(5, 0);
         grid.AdjustLayout();
       },
       {3, 1, 2, 4, 5, 0},
       2},
      {"no rows at all", [](ProbeGrid& grid) { grid.SetVirtualRows(0); }, {3, 1, 2, 4, 5, 0}, 2},
      {"frozen anew without rows", [](ProbeGrid& grid) { grid.FreezeColumns(3); }, {3, 1, 2, 4, 5, 0}, 3},
      {"too wide to freeze", [](ProbeGrid& grid) { grid.SetColumnWidth(1, 1100); }, {3, 1}, 1},
      {"nothing frozen",
       [](ProbeGrid& grid) {
         grid.SetColumnWidth(1, 50);
         grid.SetColumnLocked(3, false);
         grid.FreezeColumns(0);
       },
       {1, 2, 3, 4, 5, 0},
       0},
  };
  for (const auto& step : steps) {
    SCOPED_TRACE(step.What);
    step.Change(*Grid);
    Pump();
    EXPECT_EQ(Headers(), step.Expected);
    int frozen = 0;
    for (const int column : Headers()) frozen += Grid->GetHeaderWindow(column) != Grid->GetHeaderWindow();
    EXPECT_EQ(frozen, step.Frozen);
    if (Grid->GetVirtualRows() > 0) PaintNow(*Grid);
  }
  EXPECT_EQ(Grid->HeaderRect(2).x - Grid->HeaderRect(1).x, 50);
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
    const char* What;
    int Column, ToX;  // in the window of its header
    Places Expected;
    bool Locked;
  } drags[] = {
      {"a little", 1, 153, {5, 0, 1, 2, 3, 4}, false},
      {"over the left half of the next", 0, 140, {5, 0, 1, 2, 3, 4}, false},
      {"over the right half of the next", 0, 160, {5, 1, 0, 2, 3, 4}, false},
      {"behind all", 1, 900, {5, 0, 2, 3, 4, 1}, false},
      {"before the locked ones", 3, -90, {3, 5, 0, 2, 4, 1}, true},
      {"a locked one among the locked", 3, 160, {5, 3, 0, 2, 4, 1}, true},
      {"a locked one out of them", 5, 340, {3, 0, 5, 2, 4, 1}, false},
      {"the last locked one", 3, 160, {0, 3, 5, 2, 4, 1}, false},
  };
  for (const auto& drag : drags) {
    SCOPED_TRACE(drag.What);
    DragHeader(drag.Column, drag.ToX);
    EXPECT_EQ(Headers(), drag.Expected);
    EXPECT_EQ(Grid->GetColumnsInfo().GetColumnLocked(drag.Column), drag.Locked);
  }
  EXPECT_EQ(Grid->ColumnChanges, 6);
  EXPECT_EQ(Grid->Toggled, Places{1}) << "only what hardly moved was a click";
  const wxRect edge = Grid->HeaderRect(3);
  Drag(*Grid->GetHeaderWindow(3), {edge.GetRight() - 1, 5}, {edge.GetRight() + 29, 5});
  EXPECT_EQ(Grid->GetColumnsInfo().GetColumnWidth(3), 130);
  Drag(*Grid->GetHeaderWindow(3), {edge.GetRight() + 31, 5}, {0, 5});
  EXPECT_EQ(Grid->GetColumnsInfo().GetColumnWidth(3), 12) << "it can be found again";
  EXPECT_EQ(Grid->ColumnChanges, 8);
}

TEST_F(GridCtrl, TheRealPointerDragsAHeader) {
  const wxPoint from = Middle(Grid->HeaderRect(0));
  DragRealPointer(*Grid->GetHeaderWindow(0), from, {280, from.y});
  EXPECT_TRUE(PumpUntil([this] { return Headers() == Places{1, 2, 0, 3, 4, 5}; }));
}

TEST_F(GridCtrl, AHeaderClickSortsAndWithControlSelects) {
  Click(*Grid->GetHeaderWindow(), Middle(Grid->HeaderRect(2)));
  Click(*Grid->GetHeaderWindow(), Middle(Grid->HeaderRect(4)), kControl);
  Click(*Grid->GetHeaderWindow(), {900, 5});  // behind all columns
  EXPECT_EQ(Grid->Toggled, Places{2});
  EXPECT_TRUE(Grid->IsColumnSelected(4));
  EXPECT_FALSE(Grid->IsColumnSelected(2));
  Click(*Grid->GetHeaderWindow(), Middle(Grid->HeaderRect(4)), kControl);
  EXPECT_FALSE(Grid->IsColumnSelected(4));
}

using RowRanges = std::vector<std::pair<int, int>>;

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
  const struct {
    const char* What;
    std::function<void()> Do;
    int Current;
    RowRanges Expected;
  } steps[] = {
      {"click", [&] { ClickRow(4); }, 4, {{4, 4}}},
      {"shift+click", [&] { ClickRow(7, kShift); }, 7, {{4, 7}}},
      {"shift+click above", [&] { ClickRow(2, kShift); }, 2, {{2, 4}}},
      {"ctrl+click", [&] { ClickRow(9, kControl); }, 9, {{2, 4}, {9, 9}}},
      {"ctrl+click on a selected row", [&] { ClickRow(3, kControl); }, 3, {{2, 2}, {4, 4}, {9, 9}}},
      {"a right click on a selected row keeps all",
       [&] { RightClick(*Grid->GetRowsWindow(), Middle(Grid->CellRect(9, 0))); },
       3,
       {{2, 2}, {4, 4}, {9, 9}}},
      {"a right click elsewhere selects",
       [&] { RightClick(*Grid->GetRowsWindow(), Middle(Grid->CellRect(6, 0))); },
       6,
       {{6, 6}}},
      {"a drag downwards",
       [&] { Drag(*Grid->GetRowsWindow(), Middle(Grid->CellRect(3, 0)), Middle(Grid->CellRect(8, 0))); },
       8,
       {{3, 8}}},
      {"down", [&] { PressKey(WXK_DOWN); }, 9, {{9, 9}}},
      {"shift+up", [&] { PressKey(WXK_UP, kShift); }, 8, {{8, 9}}},
      {"ctrl+up moves alone", [&] { PressKey(WXK_UP, kControl); }, 7, {{8, 9}}},
      {"ctrl+space selects it too", [&] { PressKey(WXK_SPACE, kControl); }, 7, {{7, 9}}},
      {"page down", [&] { PressKey(WXK_PAGEDOWN); }, 7 + page, {{7 + page, 7 + page}}},
      {"page up", [&] { PressKey(WXK_PAGEUP); }, 7, {{7, 7}}},
      {"shift+end", [&] { PressKey(WXK_END, kShift); }, 999, {{7, 999}}},
      {"home", [&] { PressKey(WXK_HOME); }, 0, {{0, 0}}},
      {"up at the first row", [&] { PressKey(WXK_UP); }, 0, {{0, 0}}},
      {"end", [&] { PressKey(WXK_END); }, 999, {{999, 999}}},
      {"down at the last row", [&] { PressKey(WXK_DOWN); }, 999, {{999, 999}}},
      {"ctrl+A", [&] { PressKey('A', kControl); }, 999, {{0, 999}}},
      {"tab, enter, ctrl+C and escape select nothing",
       [&] {
         for (const int key : {WXK_TAB, WXK_RETURN, WXK_ESCAPE}) PressKey(key);
         PressKey('C', kControl);
       },
       999,
       {{0, 999}}},
      {"a drag beyond the top scrolls",
       [&] {
         Drag(*Grid->GetRowsWindow(), Middle(Grid->CellRect(998, 0)), {50, -5});
       },
       999 - page,
       {{999 - page, 998}}},
      {"cleared", [&] { Grid->SetCurSel(-1); }, -1, {}},
      {"down from nothing", [&] { PressKey(WXK_DOWN); }, 0, {{0, 0}}},
  };
  for (const auto& step : steps) {
    SCOPED_TRACE(step.What);
    step.Do();
    EXPECT_EQ(Grid->GetCurSel(), step.Current);
    EXPECT_EQ(Selected(), step.Expected);
    EXPECT_EQ(Grid->CellRect(step.Current, 0).IsEmpty(), step.Current < 0) << "the current row is in view";
  }
  EXPECT_GT(Grid->Focused, 0);
  Grid->EnableWholeRowSelection(false);
  Grid->SetColumnVisible(2, false);
  Grid->SetCurSel(0);
  EXPECT_EQ(Grid->GetSelection(0).Left, Grid->GetColumnsInfo().DisplayColumns()[0]) << "the current column was hidden";
  Grid->SetColumnVisible(2, true);
  ClickRow(5);
  EXPECT_EQ(Grid->GetSelection(0).Left, 2);
  EXPECT_EQ(Grid->GetSelection(0).Right, 2);
}

TEST_F(GridCtrl, RowsThatComeOnTopMoveNothingInView) {
  Grid->SetCurSel(3);
  Grid->SetVirtualRows(1010, 10);
  EXPECT_EQ(Grid->GetFirstVisibleRow(), 0) << "who looks at the newest goes on looking at the newest";
  EXPECT_EQ(Grid->GetCurSel(), 13);
  Grid->SetCurSel(500);
  PressKey(WXK_DOWN, kShift);
  const int first = Grid->GetFirstVisibleRow();
  const wxRect current = Grid->CellRect(500, 0);
  Grid->SetVirtualRows(1060, 50);
  EXPECT_EQ(Grid->GetFirstVisibleRow(), first + 50);
  EXPECT_EQ(Grid->CellRect(550, 0), current);
  EXPECT_EQ(Selected(), (RowRanges{{550, 551}}));
  Grid->SetVirtualRows(1061, 1, 800);
  EXPECT_EQ(Grid->GetFirstVisibleRow(), first + 50);
  EXPECT_EQ(Selected(), (RowRanges{{550, 551}}));
  Grid->SetVirtualRows(551);
  EXPECT_EQ(Selected(), (RowRanges{{550, 550}}));
  EXPECT_EQ(Grid->GetCurSel(), 550);
  Grid->SetVirtualRows(20);
  EXPECT_EQ(Selected(), RowRanges{});
  EXPECT_EQ(Grid->GetCurSel(), 19);
  EXPECT_EQ(Grid->GetFirstVisibleRow(), 0);
  Grid->SetVirtualRows(0);
  EXPECT_EQ(Grid->GetCurSel(), -1);
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

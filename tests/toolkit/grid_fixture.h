// GridFixture: a grid of six columns in the frame of a GuiTest, which notes what it is told.
#pragma once

#include <algorithm>
#include <set>

#include "tests/toolkit/gui_test.h"
#include "toolkit/grid/grid_ctrl.h"
#include "toolkit/system/make_child.h"

using Places = std::vector<int>;
using RowRanges = std::vector<std::pair<int, int>>;
using FilterChange = std::pair<int, std::wstring>;

class ProbeGrid : public CQORPGridCtrl {
 public:
  void ToggleSortColumn(int column) override { Toggled.push_back(column); }
  void OnShowContextMenu(const wxPoint& point) override { MenuPoints.push_back(point); }
  void OnGridFocus() override { ++Focused; }
  void OnColumnsChanged() override { ++ColumnChanges; }
  bool PreTranslateMessage(wxKeyEvent& event) override {
    return Keys.push_back(event.GetKeyCode()), Keys.back() == Swallowed;
  }
  int OnGetColumnMinWidth(int column) const override {
    return column == 0 ? 30 : CQORPGridCtrl::OnGetColumnMinWidth(column);
  }
  void OnDrawValue(wxRect& rect) const override { rect.x += TextShift; }
  std::wstring EmptyText() const override { return WhyEmpty; }
  void OnFilterBarChanged(int column, const std::wstring& text) override {
    FilterChanges.emplace_back(column, text), WhenFilterChanges();
  }

  std::vector<int> Toggled, Keys;
  std::vector<wxPoint> MenuPoints;
  std::vector<FilterChange> FilterChanges;
  std::wstring WhyEmpty;
  std::function<void()> WhenFilterChanges = [] {};
  int Focused = 0, ColumnChanges = 0, Swallowed = 0, TextShift = 0;
};

// Columns of 100 pixels and a thousand rows; every third row has its own colours. Asked holds the rows of all cells.
class GridFixture : public GuiTest {
 protected:
  void SetUp() override {
    GuiTest::SetUp();
    ASSERT_TRUE(Grid->Create(Frame, 7));
    for (int column = 0; column < 6; ++column) Grid->InsertColumn(column, L"Title " + std::to_wstring(column), 100);
    Grid->EnableVirtualMode([this](int row, int column, CQORPGridCell& cell) {
      Asked.insert(row);
      cell.Text = std::to_wstring(row) + L"." + std::to_wstring(column);
      if (row % 3 == 0) cell.Background = 0xFF0000, cell.TextColor = 0xFFFFFF;
      return true;
    });
    Grid->SetVirtualRows(1000);
    Grid->AdjustLayout();
    Frame->SendSizeEvent();
    ASSERT_TRUE(PumpUntil([this] { return Grid->GetRowsWindow()->GetClientSize().y > 500; }));
    PaintNow(*Grid->GetRowsWindow());  // unneeded scroll bars are hidden by then
  }
  static wxPoint Middle(const wxRect& rect) { return {rect.x + rect.width / 2, rect.y + rect.height / 2}; }
  void ClickRow(int row, int held = kNoKey) { Click(*Grid->GetRowsWindow(), Middle(Grid->CellRect(row, 2)), held); }
  // Over the header or the field of the column.
  void ClickAt(int column, const wxRect& rect, int held = kNoKey) {
    Click(*Grid->GetHeaderWindow(column), Middle(rect), held);
  }
  void PressKey(int keyCode, int held = kNoKey) { Press(*Grid->GetRowsWindow(), keyCode, held); }
  // The columns whose headers are in view, from left to right.
  Places Headers() const {
    Places columns;
    for (int column = 0; column < 6; ++column)
      if (!Grid->HeaderRect(column).IsEmpty()) columns.push_back(column);
    std::ranges::sort(columns, {}, [this](int column) {
      return Grid->GetHeaderWindow(column)->GetPosition().x + Grid->HeaderRect(column).x;
    });
    return columns;
  }
  RowRanges Selected() const {
    RowRanges ranges;
    for (int index = 0; index < Grid->GetSelectionCount(); ++index)
      ranges.emplace_back(Grid->GetSelection(index).Top, Grid->GetSelection(index).Bottom);
    return ranges;
  }
  int FullRows() const {
    return Grid->GetRowsWindow()->GetClientSize().y / Grid->CellRect(Grid->GetFirstVisibleRow(), 0).height;
  }

  ProbeGrid* Grid = &MakeChild<ProbeGrid>();
  std::set<int> Asked;
};

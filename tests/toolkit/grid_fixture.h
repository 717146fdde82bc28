// GridFixture: a grid of six columns in the frame of a GuiTest, which notes what it is told.
#pragma once

#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/toolkit/gui_test.h"
#include "toolkit/grid/grid_ctrl.h"

using Places = std::vector<int>;
using RowRanges = std::vector<std::pair<int, int>>;
using FilterChange = std::pair<int, std::wstring>;

class ProbeGrid : public CQORPGridCtrl {
 public:
  void ToggleSortColumn(int column) override { Toggled.push_back(column); }
  void OnShowContextMenu(const wxPoint& point) override { MenuPoints.push_back(point); }
  void OnGridFocus() override { ++Focused; }
  void OnColumnsChanged() override { ++ColumnChanges; }
  bool PreTranslateMessage(wxKeyEvent& event) override;
  int OnGetColumnMinWidth(int column) const override {
    return column == 0 ? 30 : CQORPGridCtrl::OnGetColumnMinWidth(column);
  }
  void OnDrawValue(wxRect& rect) const override { rect.x += TextShift; }
  void OnFilterBarChanged(int column, const std::wstring& text) override;

  std::vector<int> Toggled, Keys;
  std::vector<wxPoint> MenuPoints;
  std::vector<FilterChange> FilterChanges;
  std::function<void()> WhenFilterChanges;
  int Focused = 0, ColumnChanges = 0, Swallowed = 0, TextShift = 0;
};

// Columns of 100 pixels and a thousand rows; every third row has its own colours. Asked holds the rows of all cells.
class GridFixture : public GuiTest {
 protected:
  void SetUp() override;

  static wxPoint Middle(const wxRect& rect) { return {rect.x + rect.width / 2, rect.y + rect.height / 2}; }
  void ClickRow(int row, int held = kNoKey) { Click(*Grid->GetRowsWindow(), Middle(Grid->CellRect(row, 2)), held); }
  // Over the header or the field of the column.
  void ClickAt(int column, const wxRect& rect, int held = kNoKey) {
    Click(*Grid->GetHeaderWindow(column), Middle(rect), held);
  }
  void PressKey(int keyCode, int held = kNoKey) { Press(*Grid->GetRowsWindow(), keyCode, held); }
  // The columns whose headers are in view, from left to right.
  Places Headers() const;
  RowRanges Selected() const;
  int FullRows() const;

  ProbeGrid* Grid = nullptr;
  std::set<int> Asked;
};

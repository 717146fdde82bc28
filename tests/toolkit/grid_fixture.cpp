#include "tests/toolkit/grid_fixture.h"

#include <algorithm>

#include "toolkit/system/make_child.h"

bool ProbeGrid::PreTranslateMessage(wxKeyEvent& event) {
  Keys.push_back(event.GetKeyCode());
  return event.GetKeyCode() == Swallowed;
}

void ProbeGrid::OnFilterBarChanged(int column, const std::wstring& text) {
  FilterChanges.emplace_back(column, text);
  if (WhenFilterChanges) WhenFilterChanges();
}

void GridFixture::SetUp() {
  GuiTest::SetUp();
  if (Frame == nullptr) return;
  Grid = &MakeChild<ProbeGrid>();
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

Places GridFixture::Headers() const {
  const auto left = [this](int column) {
    return Grid->GetHeaderWindow(column)->GetPosition().x + Grid->HeaderRect(column).x;
  };
  Places columns;
  for (int column = 0; column < Grid->GetColumnCount(); ++column)
    if (!Grid->HeaderRect(column).IsEmpty()) columns.push_back(column);
  std::ranges::sort(columns, {}, left);
  return columns;
}

RowRanges GridFixture::Selected() const {
  RowRanges ranges;
  for (int index = 0; index < Grid->GetSelectionCount(); ++index)
    ranges.emplace_back(Grid->GetSelection(index).Top, Grid->GetSelection(index).Bottom);
  return ranges;
}

int GridFixture::FullRows() const {
  return Grid->GetRowsWindow()->GetClientSize().y / Grid->CellRect(Grid->GetFirstVisibleRow(), 0).height;
}

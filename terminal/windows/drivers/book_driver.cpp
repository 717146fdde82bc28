#include "terminal/windows/drivers/book_driver.h"

#include <wx/defs.h>
#include <wx/event.h>

#include <algorithm>

#include "terminal/windows/frame/window_tools.h"

namespace {

constexpr int kMostScrollSteps = 1000;
constexpr int kHeaderPx = 24;  // of a header in view that a click needs; its edge would resize

void PressKey(wxWindow& window, int keyCode, bool shift) {
  wxKeyEvent event(wxEVT_KEY_DOWN);
  event.m_keyCode = keyCode;
  event.SetShiftDown(shift);
  event.SetEventObject(&window);
  window.GetEventHandler()->ProcessEvent(event);
}

void SendClick(wxWindow& window, const wxPoint& point, bool ctrl) {
  for (const wxEventType type : {wxEVT_LEFT_DOWN, wxEVT_LEFT_UP}) {
    wxMouseEvent event(type);
    event.SetPosition(point);
    event.SetLeftDown(type == wxEVT_LEFT_DOWN);
    event.SetControlDown(ctrl);
    event.SetEventObject(&window);
    window.GetEventHandler()->ProcessEvent(event);
  }
}

bool IsHeaderInView(const CQORPGridCtrl& grid, int column) {
  const int width = grid.GetColumnsInfo().GetColumnWidth(column);
  return grid.HeaderRect(column).width >= std::min(width, grid.FromDIP(kHeaderPx));
}

bool ScrollToHeader(CQORPGridCtrl& grid, int column) {
  for (const int key : {WXK_LEFT, WXK_RIGHT})
    for (int step = 0; step < kMostScrollSteps && !IsHeaderInView(grid, column); ++step)
      PressKey(*grid.GetRowsWindow(), key, false);
  return IsHeaderInView(grid, column);
}

// Presses Shift and the key until the current row is the wanted one.
template <typename Wanted>
void ExtendBy(CQORPGridCtrl& grid, int keyCode, Wanted goesOn) {
  for (int before = -1; goesOn(grid.GetCurSel()) && grid.GetCurSel() != before;) {
    before = grid.GetCurSel();
    PressKey(*grid.GetRowsWindow(), keyCode, true);
  }
}

}  // namespace

CQORPGridCtrl* BookDriver::FindGrid(const wxWindow* window) {
  return window == nullptr ? nullptr : FindChild<CQORPGridCtrl>(*window, [](CQORPGridCtrl&) { return true; });
}

int BookDriver::FindColumn(const CQORPGridCtrl& grid, const std::wstring& title) {
  for (int column = 0; column < grid.GetColumnCount(); ++column)
    if (grid.GetColumnName(column) == title) return column;
  return -1;
}

std::string BookDriver::ClickHeader(CQORPGridCtrl& grid, const std::wstring& title, bool ctrl) {
  const int column = FindColumn(grid, title);
  if (column < 0) return "the book has no column of that title";
  if (!grid.IsHeaderEnabled() || !grid.GetColumnsInfo().GetColumnVisible(column)) return "the header is hidden";
  if (!ScrollToHeader(grid, column)) return "the header cannot be brought into view";
  const wxRect header = grid.HeaderRect(column);
  SendClick(*grid.GetHeaderWindow(column), header.GetPosition() + header.GetSize() / 2, ctrl);
  return {};
}

std::string BookDriver::SelectRows(CQORPGridCtrl& grid, int first, int last) {
  if (last > grid.GetVirtualRows()) return "the book shows " + std::to_string(grid.GetVirtualRows()) + " rows";
  grid.SetCurSel(first - 1);
  ExtendBy(grid, WXK_PAGEDOWN, [last](int row) { return row < last - 1; });
  ExtendBy(grid, WXK_UP, [last](int row) { return row > last - 1; });
  return grid.GetCurSel() == last - 1 ? "" : "the rows cannot be selected";
}

std::string BookDriver::RunMenu(CQORPGridCtrl& grid, const std::vector<std::wstring>& texts) {
  return grid.RunContextMenu(texts) ? "" : "the book's menu has no such entry, or it cannot be had now";
}

std::string BookDriver::ExpectRows(const CQORPGridCtrl& grid, int count) {
  return grid.GetVirtualRows() == count ? "" : "the book shows " + std::to_string(grid.GetVirtualRows()) + " rows";
}

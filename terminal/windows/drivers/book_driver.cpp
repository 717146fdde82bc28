#include "terminal/windows/drivers/book_driver.h"

#include <wx/defs.h>
#include <wx/event.h>

#include <algorithm>

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

// Shift with a key that moves the current row, as long as the row is before or behind the wanted one.
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

namespace {

struct CodePair {
  std::uint8_t Code;
  int WxCode;
};
constexpr CodePair kCodes[] = {
    {0x08, WXK_BACK},  {0x09, WXK_TAB},    {0x0D, WXK_RETURN},   {0x1B, WXK_ESCAPE},
    {0x20, WXK_SPACE}, {0x21, WXK_PAGEUP}, {0x22, WXK_PAGEDOWN}, {0x23, WXK_END},
    {0x24, WXK_HOME},  {0x25, WXK_LEFT},   {0x26, WXK_UP},       {0x27, WXK_RIGHT},
    {0x28, WXK_DOWN},  {0x2D, WXK_INSERT}, {0x2E, WXK_DELETE},   {0x5D, WXK_WINDOWS_MENU},
};
constexpr std::uint8_t kFirstFunctionKey = 0x70;
constexpr std::uint8_t kLastFunctionKey = 0x7B;

}  // namespace

int WxKeyCode(const KeyPress& key) {
  if (key.Code >= kFirstFunctionKey && key.Code <= kLastFunctionKey) return WXK_F1 + key.Code - kFirstFunctionKey;
  if ((key.Code >= 'A' && key.Code <= 'Z') || (key.Code >= '0' && key.Code <= '9')) return key.Code;
  for (const CodePair& pair : kCodes)
    if (pair.Code == key.Code) return pair.WxCode;
  return 0;
}

int WxHeldKeys(const KeyPress& key) {
  static_assert(int{wxACCEL_ALT} == wxMOD_ALT && int{wxACCEL_CTRL} == wxMOD_CONTROL &&
                int{wxACCEL_SHIFT} == wxMOD_SHIFT);
  return (key.Ctrl ? wxACCEL_CTRL : 0) | (key.Shift ? wxACCEL_SHIFT : 0) | (key.Alt ? wxACCEL_ALT : 0);
}

#include "toolkit/grid_cells.h"

#include <wx/dc.h>

#include <algorithm>

namespace {

constexpr std::size_t kMostKnownTexts = 20000;
constexpr int kTextPadding = 3;
constexpr int kFramePx = 2;
constexpr ColorRef kFrameColor = 0x00C8FF;  // amber: stands out on blue, red, white and black
constexpr wchar_t kEllipsis = L'\u2026';

std::wstring WithoutControls(std::wstring text) {
  std::ranges::replace_if(
      text, [](wchar_t c) { return c < L' '; }, L' ');
  return text;
}

FittedTexts::Fitted Measure(wxDC& dc, const std::wstring& text, int widthPx) {
  const wxString whole = WithoutControls(text);
  const wxSize size = dc.GetTextExtent(whole);
  if (size.x <= widthPx) return {whole, size};
  wxArrayInt ends;
  dc.GetPartialTextExtents(whole, ends);
  const int room = widthPx - dc.GetTextExtent(kEllipsis).x;
  const auto kept = std::upper_bound(ends.begin(), ends.end(), room) - ends.begin();
  const wxString cut = whole.Left(static_cast<std::size_t>(kept)) + kEllipsis;
  return {cut, dc.GetTextExtent(cut)};
}

void Fill(wxDC& dc, const wxRect& rect, ColorRef color) {
  const wxColour wanted(color);
  if (dc.GetBrush().GetColour() != wanted) dc.SetBrush(wxBrush(wanted));
  dc.DrawRectangle(rect);
}

}  // namespace

const FittedTexts::Fitted& FittedTexts::Fit(wxDC& dc, const std::wstring& text, int widthPx) {
  std::wstring key = text;
  key.push_back(static_cast<wchar_t>(widthPx));
  if (const auto known = Known.find(key); known != Known.end()) return known->second;
  if (Known.size() >= kMostKnownTexts) Known.clear();
  return Known.emplace(std::move(key), Measure(dc, text, widthPx)).first->second;
}

bool GridCells::IsSelected(int row, int column) const {
  return State.Columns.IsColumnSelected(column) ||
         (State.Selection.Contains(row) && (State.WholeRow || column == State.CurrentColumn));
}

CellMarks GridCells::MarksOf(int row, int column) const {
  return {.Selected = IsSelected(row, column),
          .Sorted = State.MarkSorted && State.Columns.GetColumnState(column) != 0,
          .Alternate = State.Alternate && row % 2 != 0};
}

void GridCells::Draw(wxGrid& grid, wxGridCellAttr&, wxDC& dc, const wxRect& rect, int row, int place, bool) {
  const int column = Table.ColumnAt(place);
  const CQORPGridCell& cell = Table.Cell(row, column);
  const CellColors colors = ColorsOf(cell.Background, cell.TextColor, MarksOf(row, column), State.Theme);
  dc.SetPen(*wxTRANSPARENT_PEN);
  Fill(dc, rect, colors.Background);
  if (!cell.Text.empty()) {
    const wxColour text(colors.Text);
    if (!dc.GetFont().IsOk() || dc.GetFont() != grid.GetDefaultCellFont()) dc.SetFont(grid.GetDefaultCellFont());
    if (dc.GetTextForeground() != text) dc.SetTextForeground(text);
    DrawText(dc, rect, cell.Text, State.Columns.GetColumnAlign(column));
  }
  DrawFrame(dc, rect, row, column);
}

void GridCells::DrawText(wxDC& dc, const wxRect& cell, const std::wstring& text, int align) {
  wxRect value = cell;
  Owner.OnDrawValue(value);
  const int padding = Owner.FromDIP(kTextPadding);
  const int width = std::clamp(value.width - 2 * padding, 0, 0x7FFF);
  const FittedTexts::Fitted& fitted = Texts.Fit(dc, text, width);
  const int spare = std::max(width - fitted.SizePx.x, 0);
  const int x = value.x + padding + (align == 1 ? spare : align == 2 ? spare / 2 : 0);
  dc.DrawText(fitted.Text, x, value.y + (value.height - fitted.SizePx.y) / 2);
}

// A line above and below each run of selected rows; a thin one around the current row.
void GridCells::DrawFrame(wxDC& dc, const wxRect& cell, int row, int column) const {
  if (!State.WholeRow && column != State.CurrentColumn) return;
  const bool selected = State.Selection.Contains(row);
  const int thin = row == State.Selection.GetCurrent() ? 1 : 0;
  const int above = selected && !State.Selection.Contains(row - 1) ? kFramePx : thin;
  const int below = selected && !State.Selection.Contains(row + 1) ? kFramePx : thin;
  if (above > 0) Fill(dc, {cell.x, cell.y, cell.width + 1, above}, kFrameColor);
  if (below > 0) Fill(dc, {cell.x, cell.GetBottom() + 1 - below, cell.width + 1, below}, kFrameColor);
}

wxSize GridCells::GetBestSize(wxGrid& grid, wxGridCellAttr&, wxDC& dc, int row, int place) {
  dc.SetFont(grid.GetDefaultCellFont());
  return dc.GetTextExtent(Table.GetValue(row, place)) + wxSize(2 * Owner.FromDIP(kTextPadding), 0);
}

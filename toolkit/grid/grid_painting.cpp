#include "toolkit/grid/grid_painting.h"

#include <wx/dc.h>

#include <algorithm>
#include <string>

#include "toolkit/grid/widest_text.h"

namespace {

constexpr int kPadding = 4;
constexpr int kSelectedPercent = 35;
constexpr int kPromptPercent = 55;

bool SortsBySeveral(const CQORPGridColumnsInfo& columns) {
  for (int column = 0; column < columns.GetColumnCount(); ++column)
    if (columns.GetSortPriority(column) == 1) return true;
  return false;
}

}  // namespace

void GridHeader::DrawFace(wxDC& dc, const wxRect& rect, ColorRef color) const {
  const wxColour edge(Blend(State.Theme.Face, State.Theme.FaceText, 28));
  dc.SetPen(*wxTRANSPARENT_PEN);
  dc.SetBrush(wxBrush(wxColour(color)));
  dc.DrawRectangle(rect);
  dc.SetPen(wxPen(edge));
  dc.DrawLine(rect.GetRight(), rect.y, rect.GetRight(), rect.GetBottom() + 1);
  dc.DrawLine(rect.x, rect.GetBottom(), rect.GetRight() + 1, rect.GetBottom());
}

void GridHeader::DrawColumn(wxDC& dc, const wxRect& rect, int column, int place) {
  const GridTheme& theme = State.Theme;
  const bool marked = State.Columns.IsColumnSelected(column) || State.DraggedColumn == column;
  DrawFace(dc, rect, marked ? Blend(theme.Face, theme.Highlight, kSelectedPercent) : theme.Face);
  const int padding = Owner.FromDIP(kPadding);
  wxRect rest = rect;
  rest.width -= DrawSortMark(dc, rest, column);
  rest.width -= DrawFilterMark(dc, rest, column);
  const int room = std::max(rest.width - 2 * padding, 0);
  if (room > 0) DrawTitle(dc, wxRect(rect.x + padding, rect.y, room, rect.height), column);
  DrawCurrentMark(dc, rect, column);
  DrawDropMark(dc, rect, place);
}

// A line under the title of the current column.
void GridHeader::DrawCurrentMark(wxDC& dc, const wxRect& rect, int column) const {
  if (column != State.CurrentColumn) return;
  const int height = Owner.FromDIP(2);
  dc.SetPen(*wxTRANSPARENT_PEN);
  dc.SetBrush(wxBrush(wxColour(State.Theme.Highlight)));
  dc.DrawRectangle(rect.x, rect.GetBottom() + 1 - height, rect.width, height);
}

void GridHeader::DrawTitle(wxDC& dc, const wxRect& rect, int column) {
  const FittedTexts::Fitted& title = Titles.Fit(dc, State.Columns.GetColumnName(column), rect.width);
  const int align = State.Columns.GetColumnAlign(column);
  const int spare = std::max(rect.width - title.SizePx.x, 0);
  const int shift = align == 1 ? spare : align == 2 ? spare / 2 : 0;
  dc.SetTextForeground(wxColour(State.Theme.FaceText));
  dc.DrawText(title.Text, rect.x + shift, rect.y + (rect.height - title.SizePx.y) / 2);
}

int GridHeader::DrawSortMark(wxDC& dc, const wxRect& rect, int column) const {
  const int state = State.Columns.GetColumnState(column);
  if (state == 0) return 0;
  const std::wstring priority =
      SortsBySeveral(State.Columns) ? std::to_wstring(State.Columns.GetSortPriority(column) + 1) : std::wstring();
  const wxColour color(Blend(State.Theme.FaceText, State.Theme.Highlight, 50));
  const int half = Owner.FromDIP(4);
  const wxSize number = priority.empty() ? wxSize() : dc.GetTextExtent(priority);
  const int right = rect.GetRight() - Owner.FromDIP(kPadding);
  const int middle = rect.y + rect.height / 2;
  const int tip = state > 0 ? middle - half / 2 - 1 : middle + half / 2 + 1;
  const int base = state > 0 ? middle + half / 2 : middle - half / 2;
  const int x = right - number.x - half;
  const wxPoint corners[] = {{x - half, base}, {x + half, base}, {x, tip}};
  dc.SetPen(wxPen(color));
  dc.SetBrush(wxBrush(color));
  dc.DrawPolygon(3, corners);
  dc.SetTextForeground(color);
  if (!priority.empty()) dc.DrawText(priority, right - number.x + 1, middle - number.y / 2);
  return number.x + 2 * half + Owner.FromDIP(kPadding);
}

// A funnel marks a column with a filter, also if the filter bar is hidden.
int GridHeader::DrawFilterMark(wxDC& dc, const wxRect& rect, int column) const {
  if (!State.Filters.Texts.contains(column)) return 0;
  const wxColour color(Blend(State.Theme.FaceText, State.Theme.Highlight, 50));
  const int half = Owner.FromDIP(4), stem = Owner.FromDIP(1);
  const int x = rect.GetRight() - Owner.FromDIP(kPadding) - half;
  const int middle = rect.y + rect.height / 2;
  const wxPoint corners[] = {{x - half, middle - half}, {x + half, middle - half}, {x + stem, middle},
                             {x + stem, middle + half}, {x - stem, middle + half}, {x - stem, middle}};
  dc.SetPen(wxPen(color));
  dc.SetBrush(wxBrush(color));
  dc.DrawPolygon(6, corners);
  return 2 * half + Owner.FromDIP(kPadding);
}

void GridHeader::DrawField(wxDC& dc, const wxRect& rect, int column) {
  const GridTheme& theme = State.Theme;
  DrawFace(dc, rect, theme.Window);
  const int padding = Owner.FromDIP(kPadding);
  const std::wstring text = State.Filters.TextOf(column);
  const FittedTexts::Fitted& shown =
      Titles.Fit(dc, text.empty() ? State.Filters.Prompt : text, std::max(rect.width - 2 * padding, 0));
  dc.SetTextForeground(
      wxColour(text.empty() ? Blend(theme.Window, theme.WindowText, kPromptPercent) : theme.WindowText));
  dc.DrawText(shown.Text, rect.x + padding, rect.y + (rect.height - shown.SizePx.y) / 2);
}

void GridHeader::DrawDropMark(wxDC& dc, const wxRect& rect, int place) const {
  if (State.DropPlace != place && State.DropPlace != place + 1) return;
  const int width = Owner.FromDIP(2);
  dc.SetPen(*wxTRANSPARENT_PEN);
  dc.SetBrush(wxBrush(wxColour(State.Theme.Highlight)));
  dc.DrawRectangle(State.DropPlace == place ? rect.x : rect.GetRight() + 1 - width, rect.y, width, rect.height);
}

void GridHeader::DrawRow(wxDC& dc, const wxRect& rect, bool current) const {
  DrawFace(dc, rect, State.Theme.Face);
  if (!current) return;
  const int half = Owner.FromDIP(4);
  const wxPoint middle(rect.x + rect.width / 2, rect.y + rect.height / 2);
  const wxPoint corners[] = {{middle.x - half / 2, middle.y - half},
                             {middle.x - half / 2, middle.y + half},
                             {middle.x + half / 2 + 1, middle.y}};
  dc.SetPen(*wxTRANSPARENT_PEN);
  dc.SetBrush(wxBrush(wxColour(State.Theme.FaceText)));
  dc.DrawPolygon(3, corners);
}

void GridHeader::DrawCorner(wxDC& dc, const wxRect& rect) const {
  DrawFace(dc, rect, State.Theme.Face);
}

void GridHeader::DrawEmpty(wxDC& dc, const wxRect& rect, const std::wstring& text) {
  const GridTheme& theme = State.Theme;
  dc.SetPen(*wxTRANSPARENT_PEN);
  dc.SetBrush(wxBrush(wxColour(theme.Window)));
  dc.DrawRectangle(rect);
  const FittedTexts::Fitted& shown = Titles.Fit(dc, text, std::max(rect.width - 2 * Owner.FromDIP(kPadding), 0));
  dc.SetTextForeground(wxColour(Blend(theme.Window, theme.WindowText, kPromptPercent)));
  dc.DrawText(shown.Text, rect.x + (rect.width - shown.SizePx.x) / 2, rect.y + (rect.height - shown.SizePx.y) / 2);
}

namespace {

constexpr std::size_t kMostKnownTexts = 20000;
constexpr int kTextPadding = 3;
constexpr int kFramePx = 2;
constexpr ColorRef kFrameColor = 0x00C8FF;  // amber contrasts with blue, red, white and black
constexpr wchar_t kEllipsis = L'\u2026';

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

CellMarks GridCells::MarksOf(int row, int column, const std::wstring& text) const {
  return {.Selected = IsSelected(row, column),
          .Sorted = State.MarkSorted && State.Columns.GetColumnState(column) != 0,
          .Alternate = State.Alternate && row % 2 != 0,
          .Found = State.Find.Marks(row, column, text)};
}

void GridCells::Draw(wxGrid& grid, wxGridCellAttr&, wxDC& dc, const wxRect& rect, int row, int place, bool) {
  const int column = Table.ColumnAt(place);
  const CQORPGridCell& cell = Table.Cell(row, column);
  const CellColors colors = ColorsOf(cell.Background, cell.TextColor, MarksOf(row, column, cell.Text), State.Theme);
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

// A line above and below each range of selected rows; a thin one above and below the current row.
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

#include "toolkit/grid/grid_view.h"

#include <wx/dcclient.h>
#include <wx/settings.h>

#include <algorithm>

#include "toolkit/system/make_child.h"

namespace {

constexpr int kColumnStepPx = 10;
constexpr int kLeastScrolledPx = 80;  // the frozen part leaves this width to the other columns

ColorRef SystemColor(wxSystemColour index) {
  return wxSystemSettings::GetColour(index).GetRGB();
}

int TextHeight(wxWindow& window, const wxFont& font) {
  wxClientDC dc(&window);
  dc.SetFont(font);
  return dc.GetCharHeight();
}

}  // namespace

GridView::GridView(CQORPGridCtrl& owner, GridState& state, Listener listener)
    : wxGrid(&owner, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxWANTS_CHARS | wxBORDER_NONE, L"Rows"),
      Owner(owner),
      State(state),
      Told(std::move(listener)),
      Header(*this, state) {
  Cells.Table = &MakeChild<GridTable>(State);
  Cells.Renderer = &MakeChild<GridCells>(Owner, State, *Cells.Table);
  SetTable(Cells.Table, true, wxGridSelectNone);
  SetDefaultRenderer(Cells.Renderer);
  EnableEditing(false);
  DisableDragColSize();
  DisableDragRowSize();
  SetMargins(0, 0);
  SetColMinimalAcceptableWidth(1);
  SetRowMinimalAcceptableHeight(1);
  for (wxWindow* window : {GetGridWindow(), GetGridColLabelWindow(), GetGridRowLabelWindow()})
    window->SetWindowStyle(window->GetWindowStyle() | wxCLIP_CHILDREN);
  ThemeChanged();
  SetFontAndSizes(Owner.GetFont());
  Told.WindowsMade(*GetGridWindow(), *GetGridColLabelWindow());
  TellWhyEmpty();
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    event.Skip();
    CallAfter([this] {
      ApplyFreeze();
      Told.ColumnsMoved();
    });
  });
}

// The text stands in the middle of the part that is seen, so a change of its size paints all of it anew.
void GridView::TellWhyEmpty() {
  GetGridWindow()->Bind(wxEVT_PAINT, &GridView::OnPaintRows, this);
  GetGridWindow()->Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    event.Skip();
    if (m_numRows == 0) RepaintRows();
  });
}

void GridView::OnPaintRows(wxPaintEvent& event) {
  const std::wstring text = m_numRows == 0 ? Owner.EmptyText() : std::wstring();
  if (text.empty()) return event.Skip();
  wxPaintDC dc(GetGridWindow());
  dc.SetFont(GetDefaultCellFont());
  Header.DrawEmpty(dc, GetGridWindow()->GetClientRect(), text);
}

void GridView::ThemeChanged() {
  GridTheme& theme = State.Theme;
  theme.Window = SystemColor(wxSYS_COLOUR_WINDOW);
  theme.WindowText = SystemColor(wxSYS_COLOUR_WINDOWTEXT);
  theme.Highlight = SystemColor(wxSYS_COLOUR_HIGHLIGHT);
  theme.HighlightText = SystemColor(wxSYS_COLOUR_HIGHLIGHTTEXT);
  theme.Face = SystemColor(wxSYS_COLOUR_BTNFACE);
  theme.FaceText = SystemColor(wxSYS_COLOUR_BTNTEXT);
  theme.Line = Blend(theme.Window, theme.WindowText, 17);
  SetDefaultCellBackgroundColour(wxColour(theme.Window));
  SetLabelBackgroundColour(wxColour(theme.Face));
  SetGridLineColour(wxColour(theme.Line));
  SetGridFrozenBorderColour(wxColour(Blend(theme.Window, theme.WindowText, 60)));
  SetGridFrozenBorderPenWidth(FromDIP(2));
  Refresh();
  Told.ColumnsMoved();
}

void GridView::SetFontAndSizes(const wxFont& font) {
  const int row = GetFirstRow();
  const int rowHeight = Header.RowHeight(TextHeight(*this, font));
  Cells.Renderer->FontChanged();
  Header.FontChanged();
  BeginBatch();
  SetDefaultCellFont(font);
  SetLabelFont(font);
  SetDefaultRowSize(rowHeight, true);
  ApplyHeaderSizes();
  EndBatch();
  SetScrollRate(kColumnStepPx, rowHeight);
  if (row > 0) Scroll(-1, row);
  Told.ColumnsMoved();
}

void GridView::ApplyHeaderSizes() {
  const int text = TextHeight(*this, GetLabelFont());
  TitlePx = State.HeaderShown ? Header.HeaderHeight(text) : 0;
  FieldPx = State.Filters.Shown ? Header.FieldHeight(text) : 0;
  SetColLabelSize(TitlePx + FieldPx);
  SetRowLabelSize(State.RowHeaderShown ? Header.RowHeaderWidth() : 0);
  if (m_colFrozenLabelWin) m_colFrozenLabelWin->Show(m_colLabelHeight > 0);
}

void GridView::ApplyState() {
  std::vector<int> columns = State.Columns.DisplayColumns();
  if (static_cast<int>(columns.size()) <= m_numFrozenCols) FreezeQuickly(0);
  BeginBatch();
  Table().ShowColumns(std::move(columns));
  for (const int column : Table().Columns()) SetWidth(column);
  ApplyHeaderSizes();
  EnableGridLines(State.GridLines);
  EndBatch();
  ApplyFreeze();
  Told.ColumnsMoved();
}

// wxGrid hides a column of width 0.
void GridView::SetWidth(int column) {
  const int place = Table().PlaceOf(column);
  if (place >= 0) SetColSize(place, std::max(State.Columns.GetColumnWidth(column), 1));
}

void GridView::ApplyWidth(int column) {
  SetWidth(column);
  Told.ColumnsMoved();
}

int GridView::WantedFrozen() const {
  const std::vector<int>& columns = Table().Columns();
  const auto locked =
      std::ranges::count_if(columns, [this](int column) { return State.Columns.GetColumnLocked(column); });
  return CountFrozen(ColumnWidths(), std::max(State.FreezeCount, static_cast<int>(locked)),
                     StripWidth() - FromDIP(kLeastScrolledPx));
}

void GridView::ApplyFreeze() {
  const int wanted = WantedFrozen();
  if (wanted != m_numFrozenCols) FreezeQuickly(wanted);
}

// wxWidgets 3.2: FreezeTo is linear in the number of rows and fails without rows; with one row it is fast and works.
// Drop when it is constant time.
void GridView::FreezeQuickly(int count) {
  const bool hadFrozen = m_colFrozenLabelWin != nullptr;
  if (hadFrozen && count == 0) Told.FrozenWindowsGo();
  BeginBatch();
  const int rows = m_numRows;
  m_numRows = 1;
  m_currentCellCoords = wxGridNoCellCoords;
  FreezeTo(0, count);
  m_numRows = rows;
  if (m_colFrozenLabelWin) m_colFrozenLabelWin->Show(m_colLabelHeight > 0);
  EndBatch();
  if (hadFrozen || !m_colFrozenLabelWin) return;
  m_colFrozenLabelWin->SetWindowStyle(m_colFrozenLabelWin->GetWindowStyle() | wxCLIP_CHILDREN);
  Told.WindowsMade(*GetFrozenColGridWindow(), *m_colFrozenLabelWin);
}

void GridView::SetRows(int rows, int inserted, int firstInserted) {
  const int first = GetFirstRow();
  Table().SetRows(rows, inserted, firstInserted);
  RepaintRows();
  if (first > 0 && inserted > 0 && firstInserted <= first) Scroll(-1, first + inserted);
}

void GridView::RepaintRows() {
  for (wxWindow* window : {GetGridWindow(), GetFrozenColGridWindow(), GetGridRowLabelWindow()})
    if (window) window->Refresh(false);
}

void GridView::RepaintRow(int row) {
  const int height = GetDefaultRowSize();
  for (wxWindow* window : {GetGridWindow(), GetFrozenColGridWindow(), GetGridRowLabelWindow()})
    if (window)
      window->RefreshRect({0, (row - 1 - GetFirstRow()) * height, window->GetClientSize().x, 3 * height}, false);
}

void GridView::RepaintHeader() {
  for (wxWindow* window : {GetGridColLabelWindow(), m_colFrozenLabelWin})
    if (window) window->Refresh();
}

int GridView::GetFirstRow() const {
  return m_numRows == 0 ? -1 : GetViewStart().y;
}

int GridView::CountFullRows() const {
  return std::max(GetGridWindow()->GetClientSize().y / GetDefaultRowSize(), 1);
}

void GridView::ShowRow(int row) {
  if (row < 0 || row >= m_numRows) return;
  const int first = GetFirstRow();
  const int full = CountFullRows();
  if (row < first) Scroll(-1, row);
  if (row >= first + full) Scroll(-1, row - full + 1);
}

// A column that is wider than the window is shown from its left end.
void GridView::ShowColumn(int column) {
  const int place = Table().PlaceOf(column);
  if (place < 0 || IsFrozenPlace(place)) return;
  const ColumnStrip strip = Strip();
  const int left = strip.SpanOf(place).Left - strip.FrozenWidth();
  const int beyond = left + GetColWidth(place) - GetGridWindow()->GetClientSize().x;
  if (left < 0) ScrollColumns(-((kColumnStepPx - 1 - left) / kColumnStepPx));
  if (left > 0 && beyond > 0) ScrollColumns(std::min(left, beyond + kColumnStepPx - 1) / kColumnStepPx);
}

// Deferred: some systems update the scroll position after this call.
void GridView::ScrollWindow(int dx, int dy, const wxRect* rect) {
  wxGrid::ScrollWindow(dx, dy, rect);
  if (dx != 0 && m_numRows == 0) RepaintRows();
  if (dx != 0) CallAfter([this] { Told.ColumnsMoved(); });
}

void GridView::ScrollColumns(int steps) {
  Scroll(std::max(GetViewStart().x + steps, 0), -1);
}

int GridView::RowAtHeight(int y) const {
  const int height = GetDefaultRowSize();
  return GetViewStart().y + (y >= 0 ? y / height : -1 - (-y - 1) / height);
}

std::vector<int> GridView::ColumnWidths() const {
  std::vector<int> widths;
  for (int place = 0; place < m_numCols; ++place) widths.push_back(GetColWidth(place));
  return widths;
}

ColumnStrip GridView::Strip() const {
  return {ColumnWidths(), m_numFrozenCols, GetViewStart().x * kColumnStepPx};
}

int GridView::StripX(const wxWindow& header, int x) const {
  return header.GetPosition().x - m_rowLabelWidth + x;
}

int GridView::StripWidth() const {
  return GetClientSize().x - m_rowLabelWidth;
}

wxWindow* GridView::RowsWindow(int column) const {
  return IsFrozenPlace(Table().PlaceOf(column)) ? GetFrozenColGridWindow() : GetGridWindow();
}

wxWindow* GridView::HeaderWindow(int column) const {
  return IsFrozenPlace(Table().PlaceOf(column)) ? m_colFrozenLabelWin : GetGridColLabelWindow();
}

wxRect GridView::CellRect(int row, int column) const {
  const wxRect header = HeaderRect(column);
  if (header.width == 0 || row < 0 || row >= m_numRows) return {};
  wxRect cell(header.x, (row - GetFirstRow()) * GetDefaultRowSize(), header.width, GetDefaultRowSize());
  cell.Intersect(RowsWindow(column)->GetClientSize());
  return cell.IsEmpty() ? wxRect() : cell;
}

wxRect GridView::HeaderRect(int column) const {
  return InView(column, SpaceOf(column, 0, std::max(TitlePx, 1)));
}

wxRect GridView::FilterRect(int column) const {
  return InView(column, FieldSpace(column));
}

wxRect GridView::FieldSpace(int column) const {
  return SpaceOf(column, TitlePx, FieldPx);
}

wxRect GridView::SpaceOf(int column, int top, int height) const {
  const int place = Table().PlaceOf(column);
  if (place < 0) return {};
  const ColumnStrip strip = Strip();
  const ColumnSpan span = strip.SpanOf(place);
  const int shift = IsFrozenPlace(place) ? 0 : strip.FrozenWidth();
  return {span.Left - shift, top, span.Right - span.Left, height};
}

wxRect GridView::InView(int column, wxRect rect) const {
  rect.Intersect(wxRect(0, rect.y, RowsWindow(column)->GetClientSize().x, rect.height));
  return rect.IsEmpty() ? wxRect() : rect;
}

wxGridCellRenderer* GridView::GetDefaultRendererForCell(int, int) const {
  Cells.Renderer->IncRef();
  return Cells.Renderer;
}

void GridView::DrawColLabel(wxDC& dc, int place) {
  dc.SetFont(GetLabelFont());
  const int left = GetColLeft(place), width = GetColWidth(place), column = Table().ColumnAt(place);
  if (TitlePx > 0) Header.DrawColumn(dc, {left, 0, width, TitlePx}, column, place);
  if (FieldPx > 0) Header.DrawField(dc, {left, TitlePx, width, FieldPx}, column);
}

void GridView::DrawRowLabel(wxDC& dc, int row) {
  Header.DrawRow(dc, {0, row * GetDefaultRowSize(), m_rowLabelWidth, GetDefaultRowSize()},
                 row == State.Selection.GetCurrent());
}

void GridView::DrawCornerLabel(wxDC& dc) {
  Header.DrawCorner(dc, {0, 0, m_rowLabelWidth, m_colLabelHeight});
}

#include "toolkit/grid/grid_ctrl.h"

#include <wx/dcclient.h>

#include <algorithm>

#include "toolkit/grid/grid_ctrl_impl.h"

namespace {

constexpr int kLeastColumnPx = 12;
constexpr int kMeasuredRows = 100;
constexpr int kFitMarginPx = 16;

}  // namespace

CQORPGridCtrl::CQORPGridCtrl() : Parts(std::make_unique<Impl>(*this)) {}

// The child windows use the parts.
CQORPGridCtrl::~CQORPGridCtrl() {
  DestroyChildren();
}

bool CQORPGridCtrl::Create(wxWindow* parent, int id) {
  if (!wxPanel::Create(parent, id, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL | wxBORDER_NONE, L"Grid"))
    return false;
  Parts->MakeView();
  AdjustLayout();
  Parts->View->SetRows(GetVirtualRows(), 0, 0);
  return true;
}

CQORPGridColumnsInfo& CQORPGridCtrl::GetColumnsInfo() noexcept {
  return Parts->State.Columns;
}
const CQORPGridColumnsInfo& CQORPGridCtrl::GetColumnsInfo() const noexcept {
  return Parts->State.Columns;
}

int CQORPGridCtrl::InsertColumn(int column, const std::wstring& header, int widthPx) {
  if (column != GetColumnCount()) return -1;
  GetColumnsInfo().InsertColumn(column, header, widthPx);
  return column;
}

void CQORPGridCtrl::SetColumnVisible(int column, bool visible) {
  GetColumnsInfo().SetColumnVisible(column, visible);
  AdjustLayout();
}

void CQORPGridCtrl::SetColumnWidth(int column, int widthPx) {
  GetColumnsInfo().SetColumnWidth(column, widthPx);
  AdjustLayout();
}

void CQORPGridCtrl::SetColumnAlign(int column, int align) {
  GetColumnsInfo().SetColumnAlign(column, align);
  AdjustLayout();
}

void CQORPGridCtrl::SetColumnLocked(int column, bool locked) {
  GetColumnsInfo().SetColumnLocked(column, locked);
  AdjustLayout();
}

bool CQORPGridCtrl::IsMultipleSort() const noexcept {
  return Parts->State.MultipleSort;
}
void CQORPGridCtrl::EnableMultipleSort(bool multiple) {
  Parts->State.MultipleSort = multiple;
}

void CQORPGridCtrl::RemoveSortColumn(int column) {
  GetColumnsInfo().RemoveSortColumn(column);
  if (Parts->View) Parts->View->RepaintHeader();
  Parts->Repaint();
}

void CQORPGridCtrl::FreezeColumns(int count) {
  Parts->State.FreezeCount = count;
  AdjustLayout();
}

void CQORPGridCtrl::EnableHeader(bool shown) {
  Parts->State.HeaderShown = shown;
  AdjustLayout();
}

bool CQORPGridCtrl::IsHeaderEnabled() const noexcept {
  return Parts->State.HeaderShown;
}

void CQORPGridCtrl::EnableRowHeader(bool shown) {
  Parts->State.RowHeaderShown = shown;
  AdjustLayout();
}

void CQORPGridCtrl::EnableGridLines(bool shown) {
  Parts->State.GridLines = shown;
  AdjustLayout();
}

void CQORPGridCtrl::EnableMarkSortedColumn(bool marked) {
  Parts->State.MarkSorted = marked;
  Parts->Repaint();
}

void CQORPGridCtrl::EnableWholeRowSelection(bool whole) {
  Parts->State.WholeRow = whole;
  Parts->Repaint();
}

void CQORPGridCtrl::EnableAlternateRows(bool alternate) {
  Parts->State.Alternate = alternate;
  Parts->Repaint();
}

void CQORPGridCtrl::EnableVirtualMode(DisplayCallback display) {
  Parts->State.Display = std::move(display);
  Parts->Virtual = true;
  Parts->Repaint();
}

bool CQORPGridCtrl::IsVirtualMode() const noexcept {
  return Parts->Virtual;
}

void CQORPGridCtrl::SetVirtualRows(int count, int inserted, int firstInserted) {
  RowSelection& selection = Parts->State.Selection;
  count = std::max(count, 0);
  inserted = std::clamp(inserted, 0, count);
  firstInserted = std::clamp(firstInserted, 0, selection.GetRows());
  if (count == selection.GetRows() && inserted == 0) return;
  if (inserted > 0) {
    selection.InsertRows(firstInserted, inserted);
    Parts->Speaker.RowsInserted(firstInserted, inserted);
    Parts->Find.InsertRows(firstInserted, inserted);
  }
  selection.SetRows(count);
  Parts->Speaker.Changed();
  Parts->Find.SetRows(count);
  if (Parts->View) Parts->View->SetRows(count, inserted, firstInserted);
}

int CQORPGridCtrl::GetVirtualRows() const noexcept {
  return Parts->State.Selection.GetRows();
}

std::wstring CQORPGridCtrl::GetCellText(int row, int column) const {
  if (row < 0 || row >= GetVirtualRows() || column < 0 || column >= GetColumnCount() || !Parts->State.Display)
    return {};
  CQORPGridCell cell;
  return Parts->State.Display(row, column, cell) ? cell.Text : std::wstring();
}

int CQORPGridCtrl::GetCurSel() const {
  return Parts->State.Selection.GetCurrent();
}

void CQORPGridCtrl::SetCurSel(int row) {
  if (!Parts->View) return;
  if (row >= 0) Parts->Header.EnsureCurrentColumn();
  Parts->Rows.ChangeSelection([row](RowSelection& selection) {
    if (row < 0)
      selection.Clear();
    else
      selection.SelectOnly(row);
  });
  Parts->Speaker.Changed();
}

void CQORPGridCtrl::SelectAll() {
  Parts->State.Selection.SelectAll();
  Parts->Repaint();
}

int CQORPGridCtrl::GetSelectionCount() const {
  return static_cast<int>(Parts->State.Selection.GetRanges().size());
}

CQORPGridRange CQORPGridCtrl::GetSelection(int index) const {
  if (index < 0 || index >= GetSelectionCount()) return {};
  const RowRange& rows = Parts->State.Selection.GetRanges()[static_cast<std::size_t>(index)];
  if (!Parts->State.WholeRow) return {rows.First, Parts->State.CurrentColumn, rows.Last, Parts->State.CurrentColumn};
  return {rows.First, 0, rows.Last, GetColumnCount() - 1};
}

int CQORPGridCtrl::GetFirstVisibleRow() const {
  return Parts->View ? Parts->View->GetFirstRow() : -1;
}

// Measures visible rows only: a grid may have a million.
void CQORPGridCtrl::SizeToFit() {
  if (!Parts->View) return;
  wxClientDC dc(GetRowsWindow());
  dc.SetFont(GetFont());
  const auto width = [&dc](const std::wstring& text) { return dc.GetTextExtent(text).x; };
  const int first = std::max(0, GetFirstVisibleRow()), last = std::min(GetVirtualRows(), first + kMeasuredRows);
  for (const int column : GetColumnsInfo().DisplayColumns()) {
    int widest = width(GetColumnName(column));
    for (int row = first; row < last; ++row)
      if (CQORPGridCell cell; Parts->State.Display(row, column, cell)) widest = std::max(widest, width(cell.Text));
    GetColumnsInfo().SetColumnWidth(column, widest + kFitMarginPx);
  }
  AdjustLayout();
}

void CQORPGridCtrl::EnableFilterBar(bool shown, const std::wstring& prompt) {
  Parts->State.Filters.Shown = shown;
  Parts->State.Filters.Prompt = prompt;
  AdjustLayout();
}

bool CQORPGridCtrl::IsFilterBarEnabled() const noexcept {
  return Parts->State.Filters.Shown;
}

std::wstring CQORPGridCtrl::GetFilterText(int column) const {
  return Parts->State.Filters.TextOf(column);
}

void CQORPGridCtrl::SetFilterText(int column, const std::wstring& text) {
  Parts->Filters.SetText(column, text);
}

bool CQORPGridCtrl::EditFilter(int column) {
  return Parts->Filters.Edit(column, GridFilterBar::Caret::AllSelected);
}

void CQORPGridCtrl::OnFilterBarClearAll() {
  Parts->Filters.ClearTexts();
}

int CQORPGridCtrl::OnGetColumnMinWidth(int /*column*/) const {
  return FromDIP(kLeastColumnPx);
}

void CQORPGridCtrl::OpenFind() {
  Parts->Find.Open();
}

wxWindow* CQORPGridCtrl::GetFindEdit() const {
  const GridFindBar* bar = Parts->Find.GetBar();
  return bar == nullptr ? nullptr : &bar->GetField();
}

std::wstring CQORPGridCtrl::GetFindMessage() const {
  const GridFindBar* bar = Parts->Find.GetBar();
  return bar == nullptr ? std::wstring() : bar->GetMessage();
}

bool CQORPGridCtrl::IsSearching() const noexcept {
  return Parts->Find.IsSearching();
}

GridCellPlace CQORPGridCtrl::GetFoundCell() const {
  return Parts->State.Find.Cell;
}

void CQORPGridCtrl::OnRowsReplaced() {
  Parts->Find.RowsReplaced();
}

std::unique_ptr<GridFinder> CQORPGridCtrl::MakeFinder(const std::wstring& text, const std::vector<int>& columns) const {
  auto textOf = [this, cell = CQORPGridCell()](int row, int column) mutable -> const std::wstring& {
    cell.Text.clear();
    if (!Parts->State.Display || !Parts->State.Display(row, column, cell)) cell.Text.clear();
    return cell.Text;
  };
  return std::make_unique<CellTextFinder>(text, columns, std::move(textOf));
}

bool CQORPGridCtrl::Copy() {
  return CopyRows(Parts->State);
}
bool CQORPGridCtrl::CopyHTML() {
  return CopyRowsAsHtml(Parts->State);
}

bool CQORPGridCtrl::RunContextMenu(const std::vector<std::wstring>& texts) {
  return ChooseFromContextMenu(*this, ContextMenu(), texts);
}

void CQORPGridCtrl::AdjustLayout() {
  Parts->AdjustLayout();
}
void CQORPGridCtrl::RedrawRows() {
  Parts->Repaint();
}
void CQORPGridCtrl::RedrawRow(int row) {
  if (Parts->View) Parts->View->RepaintRow(row);
}

void CQORPGridCtrl::NameForReaders(const std::wstring& name) {
  if (Parts->View) Parts->NameForReaders(name);
}

void CQORPGridCtrl::SetGridFont(const wxFont& font) {
  SetFont(font);
  if (Parts->View) Parts->View->SetFontAndSizes(font);
}

wxFont CQORPGridCtrl::GetGridFont() const {
  return GetFont();
}

wxWindow* CQORPGridCtrl::GetRowsWindow(int column) const {
  return Parts->View ? Parts->View->RowsWindow(column) : nullptr;
}

wxWindow* CQORPGridCtrl::GetHeaderWindow(int column) const {
  return Parts->View ? Parts->View->HeaderWindow(column) : nullptr;
}

wxRect CQORPGridCtrl::CellRect(int row, int column) const {
  return Parts->View ? Parts->View->CellRect(row, column) : wxRect();
}

wxRect CQORPGridCtrl::HeaderRect(int column) const {
  return Parts->View && Parts->State.HeaderShown ? Parts->View->HeaderRect(column) : wxRect();
}

wxRect CQORPGridCtrl::FilterRect(int column) const {
  return Parts->View && IsFilterBarEnabled() ? Parts->View->FilterRect(column) : wxRect();
}

wxWindow* CQORPGridCtrl::GetFilterEdit() const {
  return Parts->Filters.GetEdit();
}

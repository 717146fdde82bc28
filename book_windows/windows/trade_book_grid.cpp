#include "book_windows/windows/trade_book_grid.h"

#include <wx/utils.h>

#include <algorithm>

#include "book_windows/windows/book_list.h"
#include "book_windows/windows/trade_book_bar.h"
#include "book_windows/windows/window_font.h"
#include "foundations/text_tools.h"
#include "grid_ops/columns/cell_text.h"
#include "grid_ops/exports/export_settings.h"
#include "host_link/messages/packet_writer.h"

namespace {

constexpr std::uint8_t kBuy = 1, kSell = 2;
constexpr int kTradeGrid = 41;
constexpr int kTextShiftPx = 2;
constexpr const char* kGridName = "Trade Book";

}  // namespace

CTradeBookGrid::CTradeBookGrid(BookList& list, CTradeBookBar& parentBar)
    : CVELDSGridCtrl(kTradeGrid, kGridName, L"ColumnProfile", list.Host()),
      Rows(list.State().TradeStore),
      Properties(list, parentBar, *this),
      List(list),
      ParentBar(parentBar),
      Exports(list, *this) {
  LoadColumnProfileFile();
}

bool CTradeBookGrid::Create(wxWindow* parent, int id) {
  if (!CVELDSGridCtrl::Create(parent, id)) return false;
  BindCommands();
  EnableMarkSortedColumn(true);
  EnableHeader(!Properties.Settings.HeaderHide);
  EnableRowHeader(true);
  BuildColumns();
  SetStoredFont();
  EnableFilterBar(false, L"<all>");
  ReadExchangeFormatFlag(kConfigFile, ExchangeFormatFlag);
  EnableWholeRowSelection(true);
  TellTerminal();
  return true;
}

void CTradeBookGrid::BuildColumns() {
  LoadMultipleSort();
  for (int i = 0; i < kTradeColumnCount; ++i) {
    const TradeColumn& column = kTradeColumns[i];
    InsertProfiledColumn({.Key = std::string(column.Key),
                          .Header = NarrowToWide(std::string(column.Title)),
                          .Width = column.WidthPx,
                          .Align = static_cast<int>(column.Align),
                          .Visible = column.Visible ? 1 : 0},
                         i);
  }
  ApplyColumnOrder();
}

void CTradeBookGrid::SetStoredFont() {
  if (const auto font = LoadGridFont(NarrowToWide(kGridName), FontBlockOf(GetGridFont())))
    SetGridFont(WindowFontOf(*font));
}

void CTradeBookGrid::TellTerminal() {
  CQORPacketWriter message(0);
  message.AddU16(10002, 32021);
  message.AddU64(30001, reinterpret_cast<std::uint64_t>(this));
  message.AddU64(30002, List.Callbacks().OnPluginMessage);
  List.Terminal().PluginDataSend(message);
}

// The whole row takes the colours of its side; a row of another side keeps the grid's.
bool CTradeBookGrid::ShowCell(int row, int column, CQORPGridCell& cell) const {
  if (column < 0) return true;
  TradeRecord record;
  if (row < 0 || !Rows.GetRecordCopy(static_cast<std::size_t>(row), record)) return false;
  SetShownText(cell.Text, List.State().TradeStore.ServerName, record, column);
  const GridSettings& colors = Properties.Settings;
  if (record.Side == kBuy) cell.Background = colors.BuyColor, cell.TextColor = colors.FontBuyColor;
  if (record.Side == kSell) cell.Background = colors.SellColor, cell.TextColor = colors.FontSellColor;
  return true;
}

void CTradeBookGrid::OnDrawValue(wxRect& rect) const {
  rect.y -= kTextShiftPx;
  rect.height += kTextShiftPx;
  rect.width += kTextShiftPx;
}

void CTradeBookGrid::BeginVirtualMode() {
  Show();
  for (int column = 0; column < GetColumnCount(); ++column)
    if (GetColumnsInfo().GetColumnState(column) != 0) Rows.SortColumns.push_back(column);
  EnableVirtualMode([this](int row, int column, CQORPGridCell& cell) { return ShowCell(row, column, cell); });
  if (!Rows.SortColumns.empty()) Rows.CopyNumberedRows();
  AdjustLayout();
  SetFocus();
}

// Rows come in at one place: on top, and in a sorted book below the sorted rows.
void CTradeBookGrid::CountRows(bool replaced) {
  const int count = static_cast<int>(Rows.RowCount());
  SetVirtualRows(count, replaced ? 0 : count - GetVirtualRows(), static_cast<int>(Rows.NewestRow().value_or(0)));
}

void CTradeBookGrid::RefreshRows(bool replaced) {
  if (!IsVirtualMode()) BeginVirtualMode();
  const int before = GetCurSel();
  CountRows(replaced);
  const int count = GetVirtualRows();
  if (count == 0) return;
  if (before < 0)
    SetCurSel(0);
  else if (before >= count)
    SetCurSel(count - 1);
}

AverageBasis CTradeBookGrid::Basis() const {
  return {State.Filtered, List.State().SelectedKey, List.State().RestoredKey, List.Masters()};
}

void CTradeBookGrid::RecountTotals() {
  Totals.RecountTotals(Rows.Rows, Basis(), Line);
}
void CTradeBookGrid::AddToTotals(const TradeRecord& record) {
  Totals.UpdateTotals(record, Basis(), Line);
}

void CTradeBookGrid::ApplyProperties(CQORPProp& property) {
  List.ApplyPropertyToAllBooks(property);
}

bool CTradeBookGrid::SelectedSecurity(std::string& exchange, std::string& securityId) {
  FollowNewRows();
  TradeRecord record;
  const int row = GetCurSel();
  if (row < 0 || !Rows.GetRecordCopy(static_cast<std::size_t>(row), record)) return false;
  exchange = record.Exchange;
  securityId = record.SecurityID;
  return true;
}

std::vector<SortState> CTradeBookGrid::SortStates() const {
  std::vector<SortState> states;
  for (const int column : Rows.SortColumns) states.push_back({column, GetColumnsInfo().GetColumnState(column)});
  return states;
}

void CTradeBookGrid::ResortRows() {
  Rows.ResortRows(SortStates());
  RefreshRows(true);
  RedrawRows();
}

void CTradeBookGrid::ToggleSortColumn(int column) {
  const wxBusyCursor wait;
  CQORPGridColumnsInfo& columns = GetColumnsInfo();
  const SortStep step = ::ToggleSortColumn(Rows.SortColumns, column, columns.GetColumnState(column), IsMultipleSort());
  if (step == SortStep::Remove) {
    columns.RemoveSortColumn(column);
  } else {
    SetCurSel(-1);
    columns.SetSortColumn(column, step == SortStep::Rising, IsMultipleSort());
  }
  ResortRows();
  AdjustLayout();
}

// Rows stand as the marks say: columns that have lost theirs sort no longer. Without a sort the book has its own rows
// again, the newest on top.
void CTradeBookGrid::DropLostSorts() {
  const std::size_t sorted = Rows.SortColumns.size();
  std::erase_if(Rows.SortColumns, [this](int column) { return GetColumnsInfo().GetColumnState(column) == 0; });
  if (Rows.SortColumns.size() == sorted) return;
  if (!Rows.SortColumns.empty()) return ResortRows();
  Rows.RebuildRows();
  ShowReplacedRows();
}

void CTradeBookGrid::ResetColumns() {
  CVELDSGridCtrl::ResetColumns();
  DropLostSorts();
}
void CTradeBookGrid::RemoveSort() {
  CVELDSGridCtrl::RemoveSort();
  DropLostSorts();
}

void CTradeBookGrid::SaveColumnProfile() {
  for (int i = 0; i < kTradeColumnCount; ++i) SaveColumnState(std::string(kTradeColumns[i].Key), i);
  SaveMultipleSort();
  SaveColumnProfileFile();
}

// The totals are those of the rows that are left.
void CTradeBookGrid::ShowReplacedRows() {
  RefreshRows(true);
  RecountTotals();
  ParentBar.ShowSummary();
  RedrawRows();
}

void CTradeBookGrid::OnFilterBarChanged(int column, const std::wstring& text) {
  const wxBusyCursor wait;
  if (Rows.OnFilterBarChanged(column, text)) ShowReplacedRows();
}

void CTradeBookGrid::OnFilterBarClearAll() {
  CVELDSGridCtrl::OnFilterBarClearAll();
  if (!Rows.Filters.Active()) return;
  const wxBusyCursor wait;
  Rows.OnFilterBarClearAll();
  ShowReplacedRows();
}

// Ctrl+C goes on to the base. Alt keys are the terminal's. Escape narrows a wide book to its filter, and closes one
// that is filtered where it floats.
bool CTradeBookGrid::PreTranslateMessage(wxKeyEvent& event) {
  if (event.AltDown()) return false;
  if (event.ControlDown() && event.GetKeyCode() == 'C') OnCopy();
  if (event.GetKeyCode() != WXK_ESCAPE) return CVELDSGridCtrl::PreTranslateMessage(event);
  if (State.Filtered) {
    ParentBar.CloseByEscape();
  } else {
    Rows.NextRowKey = BookRows::kFirstRowKey;
    ParentBar.NarrowToFilter();
  }
  return true;
}

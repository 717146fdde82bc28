#include "book_windows/windows/trade_book_grid.h"

#include <wx/utils.h>

#include <algorithm>

#include "book_windows/windows/book_screen.h"
#include "grid_ops/columns/cell_text.h"
#include "grid_ops/exports/export_settings.h"
#include "grid_ops/rows/record_search.h"
#include "host_link/messages/packet_writer.h"
#include "platform/locale.h"

namespace {

constexpr std::uint8_t kBuy = 1, kSell = 2;
constexpr int kTradeGrid = 41;
constexpr int kTextShiftPx = 2;
constexpr const char* kGridName = "Trade Book";

}  // namespace

CTradeBookGrid::CTradeBookGrid(TradeBookScreen& screen, Book& book)
    : CVELDSGridCtrl(kTradeGrid, kGridName, L"ColumnProfile", screen.Host),
      Shown(book),
      Properties(screen, book, *this),
      Screen(screen),
      Exports(screen, *this) {
  LoadColumnProfileFile();
}

bool CTradeBookGrid::Create(wxWindow* parent, int id) {
  if (!CVELDSGridCtrl::Create(parent, id)) return false;
  BindCommands();
  EnableMarkSortedColumn(true);
  EnableHeader(!Shown.Settings.HeaderHide);
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
                          .Header = CodePageToWide(column.Title),
                          .Width = column.WidthPx,
                          .Align = static_cast<int>(column.Align),
                          .Visible = column.Visible ? 1 : 0},
                         i);
  }
  ApplyColumnOrder();
}

void CTradeBookGrid::SetStoredFont() {
  if (const auto font = LoadGridFont(CodePageToWide(kGridName), FontBlockOf(GetGridFont())))
    SetGridFont(WindowFontOf(*font));
}

void CTradeBookGrid::TellTerminal() {
  CQORPacketWriter message(0);
  message.AddU16(10002, 32021);
  message.AddU64(30001, reinterpret_cast<std::uint64_t>(this));
  message.AddU64(30002, Screen.Callbacks.OnPluginMessage);
  Screen.Terminal.PluginDataSend(message);
}

// A row has the colours of its side; a row of another side keeps the grid's.
bool CTradeBookGrid::ShowCell(int row, int column, CQORPGridCell& cell) const {
  if (column < 0) return true;
  const TradeRecord* record = row < 0 ? nullptr : Shown.Rows.RecordAt(static_cast<std::size_t>(row));
  if (record == nullptr) return false;
  SetShownText(cell.Text, Screen.State.TradeStore.ServerName, *record, column);
  const GridSettings& colors = Shown.Settings;
  if (record->Side == kBuy) cell.Background = colors.BuyColor, cell.TextColor = colors.FontBuyColor;
  if (record->Side == kSell) cell.Background = colors.SellColor, cell.TextColor = colors.FontSellColor;
  return true;
}

namespace {

class BookFinder : public GridFinder {
 public:
  BookFinder(const BookRows& rows, const std::wstring& text, const std::vector<int>& columns, const std::string& server)
      : Rows(rows), Search(text, columns, server) {}

  int FindRow(int row, int step, int count) override { return ::FindRow(Rows, Search, row, step, count); }
  bool Holds(int row, int column) override {
    const TradeRecord* record = Rows.RecordAt(static_cast<std::size_t>(row));
    return record != nullptr && Search.Holds(*record, column);
  }

 private:
  const BookRows& Rows;
  RecordSearch Search;
};

}  // namespace

std::unique_ptr<GridFinder> CTradeBookGrid::MakeFinder(const std::wstring& text,
                                                       const std::vector<int>& columns) const {
  return std::make_unique<BookFinder>(Shown.Rows, text, columns, Screen.State.TradeStore.ServerName);
}

void CTradeBookGrid::OnDrawValue(wxRect& rect) const {
  rect.y -= kTextShiftPx;
  rect.height += kTextShiftPx;
  rect.width += kTextShiftPx;
}

std::vector<int> CTradeBookGrid::SortMarks() const {
  std::vector<int> states;
  for (int column = 0; column < GetColumnCount(); ++column) states.push_back(GetColumnsInfo().GetColumnState(column));
  return states;
}

std::vector<int> CTradeBookGrid::BeginVirtualMode() {
  Show();
  EnableVirtualMode([this](int row, int column, CQORPGridCell& cell) { return ShowCell(row, column, cell); });
  AdjustLayout();
  SetFocus();
  return SortMarks();
}

// New rows enter at one place: on top, in a sorted book below the sorted rows.
void CTradeBookGrid::CountRows(bool replaced) {
  const int count = static_cast<int>(Shown.Rows.RowCount());
  SetVirtualRows(count, replaced ? 0 : count - GetVirtualRows(), static_cast<int>(Shown.Rows.NewestRow().value_or(0)));
}

void CTradeBookGrid::RefreshRows(bool replaced) {
  const int before = GetCurSel();
  CountRows(replaced);
  if (replaced) OnRowsReplaced();
  Known.Replaced |= replaced;
  const int count = GetVirtualRows();
  if (count == 0) return;
  if (before < 0)
    SetCurSel(0);
  else if (before >= count)
    SetCurSel(count - 1);
}

const std::vector<std::wstring>& CTradeBookGrid::SelectionTexts() {
  static const NumberMarks marks = UserNumberMarks();
  FollowNewRows();
  std::vector<RowSpan> selected;
  for (int index = 0; index < GetSelectionCount(); ++index)
    selected.push_back({GetSelection(index).Top, GetSelection(index).Bottom});
  if (selected == Known.Rows && !Known.Replaced) return Known.Texts;
  const bool isSingle = selected.empty() || (selected.size() == 1 && selected[0].First == selected[0].Last);
  Known = {std::move(selected), false, {}};
  if (!isSingle) Known.Texts = SumSelection(Shown.Rows, Known.Rows).Texts(marks);
  return Known.Texts;
}

std::wstring CTradeBookGrid::SelectionText() {
  std::wstring line;
  for (const std::wstring& text : SelectionTexts()) line += (line.empty() ? L"" : L"; ") + text;
  return line;
}

void CTradeBookGrid::ApplyProperties(CQORPProp& property) {
  Screen.Registry.ApplyPropertyToAllBooks(property);
}

GridFont CTradeBookGrid::StoredFont() const {
  return FontBlockOf(GetGridFont());
}

void CTradeBookGrid::ShowSort() {
  CQORPGridColumnsInfo& columns = GetColumnsInfo();
  for (int column = 0; column < GetColumnCount(); ++column) {
    const int state = Shown.Sort.StateOf(column);
    if (state == columns.GetColumnState(column)) continue;
    if (state == 0)
      columns.RemoveSortColumn(column);
    else
      columns.SetSortColumn(column, state > 0, IsMultipleSort());
  }
  AdjustLayout();
}

void CTradeBookGrid::ToggleSortColumn(int column) {
  const wxBusyCursor wait;
  Shown.ToggleSortColumn(column, IsMultipleSort());
}

void CTradeBookGrid::ResetColumns() {
  CVELDSGridCtrl::ResetColumns();
  Shown.KeepMarkedSort(SortMarks());
}
void CTradeBookGrid::RemoveSort() {
  CVELDSGridCtrl::RemoveSort();
  Shown.KeepMarkedSort(SortMarks());
}

void CTradeBookGrid::SaveColumnProfile() {
  for (int i = 0; i < kTradeColumnCount; ++i) SaveColumnState(std::string(kTradeColumns[i].Key), i);
  SaveMultipleSort();
  SaveColumnProfileFile();
}

void CTradeBookGrid::OnFilterBarChanged(int column, const std::wstring& text) {
  const wxBusyCursor wait;
  Shown.OnFilterBarChanged(column, text);
}

void CTradeBookGrid::OnFilterBarClearAll() {
  CVELDSGridCtrl::OnFilterBarClearAll();
  const wxBusyCursor wait;
  Shown.OnFilterBarClearAll();
}

// Ctrl+C goes on to the base. Alt keys are the terminal's.
bool CTradeBookGrid::PreTranslateMessage(wxKeyEvent& event) {
  if (event.AltDown()) return false;
  if (event.ControlDown() && event.GetKeyCode() == 'C') OnCopy();
  if (event.GetKeyCode() != WXK_ESCAPE) return CVELDSGridCtrl::PreTranslateMessage(event);
  Screen.Registry.OnEscape(Shown);
  return true;
}

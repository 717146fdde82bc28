// The commands of a book's menu: one table of them, and those that are the grid's own.
#include <wx/dcclient.h>
#include <wx/utils.h>

#include <algorithm>

#include "book_windows/windows/book_screen.h"
#include "book_windows/windows/trade_book_grid.h"
#include "grid_ops/columns/cell_text.h"
#include "grid_ops/exports/csv_export.h"
#include "host_link/messages/packet_writer.h"
#include "toolkit/dialogs/dialog.h"
#include "toolkit/dialogs/message_box.h"
#include "toolkit/grid/widest_text.h"

namespace {

constexpr int kFitMarginPx = 10, kTitleMarginPx = 10;

void Tell(wxWindow& parent, const wchar_t* text) {
  const FocusReturn focus(parent);
  CQORPMessageBox box;
  box.Parent = &parent;
  box.Caption = kExportCaption;
  box.Text = text;
  box.ShowModal();
}

constexpr CQORPMenuItem Entry(int level, int id, const wchar_t* text) {
  return {CQORPMenuItem::Kind::Command, level, id, text};
}
constexpr CQORPMenuItem Submenu(const wchar_t* text) {
  return {CQORPMenuItem::Kind::Submenu, 0, 0, text};
}
constexpr CQORPMenuItem Separator(int level) {
  return {CQORPMenuItem::Kind::Separator, level};
}

}  // namespace

// A row of the grid's menu, resource 30001: what it shows, what it runs, when it is enabled. Without Update it always
// is; File is set for the commands of the menu "Export CSV".
struct CTradeBookGrid::Command {
  CQORPMenuItem Item;
  void (CTradeBookGrid::*Run)() = nullptr;
  void (CTradeBookGrid::*Update)(wxUpdateUIEvent&) = nullptr;
  const CsvCommand* File = nullptr;
};

const CTradeBookGrid::Command CTradeBookGrid::kCommands[] = {
    {Entry(0, 30015, L"Exchange Trade Format"), &CTradeBookGrid::WriteExchangeFiles, &CTradeBookGrid::EnableCommand},
    {Submenu(L"Column Header")},
    {Entry(1, 30017, L"Field Choose"), &CTradeBookGrid::ChooseFields},
    {Entry(1, 30018, L"Show All"), &CTradeBookGrid::ShowAllColumns, &CTradeBookGrid::EnableCommand},
    {Entry(1, 30019, L"Remove All"), &CTradeBookGrid::RemoveAllColumns},
    {Separator(1)},
    {Entry(1, 30016, L"Remove Sort"), &CTradeBookGrid::RemoveSort, &CTradeBookGrid::EnableCommand},
    {Entry(1, 30020, L"Size To Fit"), &CTradeBookGrid::OnSizeToFit, &CTradeBookGrid::EnableCommand},
    {Entry(1, 30022, L"Save Column Profile"), &CTradeBookGrid::SaveColumnProfile},
    {Entry(1, 30021, L"Reset"), &CTradeBookGrid::ResetColumns},
    {Submenu(L"Export CSV")},
    {Entry(1, 30010, L"All Columns"), nullptr, &CTradeBookGrid::EnableCommand, FindCsvCommand(30010)},
    {Entry(1, 30011, L"Visible Columns"), nullptr, &CTradeBookGrid::EnableCommand, FindCsvCommand(30011)},
    {Entry(1, 30013, L"Selected Columns"), nullptr, &CTradeBookGrid::UpdateSelectedColumns, FindCsvCommand(30013)},
    {Entry(1, 30012, L"Manual Export"), nullptr, &CTradeBookGrid::EnableCommand, FindCsvCommand(30012)},
    {Separator(0)},
    {Entry(0, 57634, L"&Copy"), &CTradeBookGrid::OnCopy, &CTradeBookGrid::EnableCommand},
    {Entry(0, 30003, L"Copy as &HTML"), &CTradeBookGrid::OnCopyHtml, &CTradeBookGrid::UpdateHtmlCopy},
    {Entry(0, 30004, L"Select A&ll"), &CTradeBookGrid::SelectAll, &CTradeBookGrid::EnableCommand},
    {Separator(0)},
    {Entry(0, 30023, L"Show Filter"), &CTradeBookGrid::ToggleFilterBar, &CTradeBookGrid::UpdateFilterMenuText},
    {Entry(0, 30024, L"Reset Filter"), &CTradeBookGrid::ResetFilter, &CTradeBookGrid::EnableCommand},
    {Entry(0, 30008, L"Property"), &CTradeBookGrid::OnProperty},
};

std::span<const CQORPMenuItem> CTradeBookGrid::GridMenu() {
  static const std::vector<CQORPMenuItem> items = [] {
    std::vector<CQORPMenuItem> all;
    for (const Command& command : kCommands) all.push_back(command.Item);
    return all;
  }();
  return items;
}

const CTradeBookGrid::Command* CTradeBookGrid::FindCommand(int id) {
  const auto found = std::ranges::find(kCommands, id, [](const Command& command) { return command.Item.Id; });
  return id == 0 || found == std::end(kCommands) ? nullptr : found;
}

void CTradeBookGrid::BindCommands() {
  Bind(wxEVT_MENU, [this](wxCommandEvent& event) {
    const Command* command = FindCommand(event.GetId());
    if (command == nullptr) return event.Skip();
    if (command->File != nullptr) return Exports.ExportCsv(*command->File);
    (this->*command->Run)();
  });
  Bind(wxEVT_UPDATE_UI, [this](wxUpdateUIEvent& event) {
    const Command* command = FindCommand(event.GetId());
    if (command == nullptr || command->Update == nullptr) return event.Skip();
    (this->*command->Update)(event);
  });
}

void CTradeBookGrid::OnShowContextMenu(const wxPoint& point) {
  ShowContextMenu(*this, GridMenu(), point);
}

void CTradeBookGrid::UpdateHtmlCopy(wxUpdateUIEvent& event) {
  event.Enable(IsCopyEnabled());
}

void CTradeBookGrid::UpdateSelectedColumns(wxUpdateUIEvent& event) {
  event.Enable(GetCurSel() >= 0);
}

bool CTradeBookGrid::CopyGuard() {
  FollowNewRows();
  const CQORPGridRange selected = GetSelection(0);
  const wchar_t* refusal = CopyRefusal(GetSelectionCount(), selected.Top, selected.Bottom);
  if (refusal != nullptr) Tell(*this, refusal);
  return refusal == nullptr;
}

// Intentional: the guard checks this grid, the copy is of the grid with the focus.
void CTradeBookGrid::OnCopy() {
  if (!CopyGuard()) return;
  CTradeBookGrid* focused = TradeBookScreen::FocusedGrid();
  if (focused == nullptr) return;
  focused->FollowNewRows();
  focused->Copy();
}

void CTradeBookGrid::OnCopyHtml() {
  if (CopyGuard() && CopyHTML()) Tell(*this, HtmlCopyReport(GetSelectionCount()));
}

// Opens the terminal's pane of properties on this grid.
void CTradeBookGrid::OnProperty() {
  CQORPacketWriter message(0);
  message.AddU16(10002, 32003);
  message.AddU64(30002, Screen.Callbacks.PropertyListRequest);
  message.AddU64(30031, Screen.Callbacks.PropertyChanged);
  message.AddU64(30001, reinterpret_cast<std::uint64_t>(this));
  Screen.Terminal.PluginDataSend(message);
}

// Intentional: with rows only their texts count; a column can become narrower than its title.
void CTradeBookGrid::OnSizeToFit() {
  const wxBusyCursor wait;
  wxClientDC dc(GetRowsWindow());
  dc.SetFont(GetGridFont());
  const std::vector<int> widths = Shown.Rows.RowCount() == 0 ? TitleWidths(dc) : WidestCells(dc);
  for (int column = 0; column < GetColumnCount(); ++column)
    if (!GetColumnsInfo().GetColumnLocked(column))
      GetColumnsInfo().SetColumnWidth(
          column, std::max(widths[static_cast<std::size_t>(column)] + kFitMarginPx, OnGetColumnMinWidth(column)));
  AdjustLayout();
}

std::vector<int> CTradeBookGrid::TitleWidths(wxDC& dc) const {
  std::vector<int> widths;
  for (int column = 0; column < GetColumnCount(); ++column) {
    const bool marked = GetColumnsInfo().GetColumnState(column) != 0;
    widths.push_back(dc.GetTextExtent(GetColumnName(column) + (marked ? L"..." : L"")).x + kTitleMarginPx);
  }
  return widths;
}

// Row by row, as each record is far from the next one in memory.
std::vector<int> CTradeBookGrid::WidestCells(wxDC& dc) const {
  TextMeasures measures(dc);
  std::vector<WidestText> widest(static_cast<std::size_t>(GetColumnCount()), WidestText(measures));
  const std::string& server = Screen.State.TradeStore.ServerName;
  for (const TradeRecord* row : Shown.Rows.RowRecords())
    for (std::size_t column = 0; column < widest.size(); ++column) {
      CellScratch scratch;
      widest[column].Offer(ShownText(server, *row, static_cast<int>(column), scratch));
    }
  std::vector<int> widths;
  for (WidestText& column : widest) widths.push_back(column.WidthPx());
  return widths;
}

// The commands of a book's menu: which there are, when they can be had, and those that are the grid's own.
#include <wx/dcclient.h>
#include <wx/utils.h>

#include "book_windows/windows/book_list.h"
#include "book_windows/windows/trade_book_bar.h"
#include "book_windows/windows/trade_book_commands.h"
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

}  // namespace

// A command without an update can always be had, like one that EnableCommand enables.
struct CTradeBookGrid::Command {
  int Id;
  void (CTradeBookGrid::*Run)();
  void (CTradeBookGrid::*Update)(wxUpdateUIEvent&) = nullptr;
};

const CTradeBookGrid::Command CTradeBookGrid::kCommands[] = {
    {57634, &CTradeBookGrid::OnCopy, &CTradeBookGrid::EnableCommand},
    {30003, &CTradeBookGrid::OnCopyHtml, &CTradeBookGrid::UpdateHtmlCopy},
    {30004, &CTradeBookGrid::SelectAll, &CTradeBookGrid::EnableCommand},
    {30008, &CTradeBookGrid::OnProperty},
    {30017, &CTradeBookGrid::ChooseFields},
    {30018, &CTradeBookGrid::ShowAllColumns, &CTradeBookGrid::EnableCommand},
    {30019, &CTradeBookGrid::RemoveAllColumns},
    {30016, &CTradeBookGrid::RemoveSort, &CTradeBookGrid::EnableCommand},
    {30020, &CTradeBookGrid::OnSizeToFit, &CTradeBookGrid::EnableCommand},
    {30022, &CTradeBookGrid::SaveColumnProfile},
    {30021, &CTradeBookGrid::ResetColumns},
    {30023, &CTradeBookGrid::ToggleFilterBar, &CTradeBookGrid::UpdateFilterMenuText},
    {30024, &CTradeBookGrid::ResetFilter, &CTradeBookGrid::EnableCommand},
    {kAllColumnsCommand, &CTradeBookGrid::ExportCsv<kAllColumnsCommand>, &CTradeBookGrid::EnableCommand},
    {kVisibleColumnsCommand, &CTradeBookGrid::ExportCsv<kVisibleColumnsCommand>, &CTradeBookGrid::EnableCommand},
    {kManualExportCommand, &CTradeBookGrid::ExportCsv<kManualExportCommand>, &CTradeBookGrid::EnableCommand},
    {kSelectedColumnsCommand, &CTradeBookGrid::ExportCsv<kSelectedColumnsCommand>,
     &CTradeBookGrid::UpdateSelectedColumns},
    {30015, &CTradeBookGrid::WriteExchangeFiles, &CTradeBookGrid::EnableCommand},
};

void CTradeBookGrid::BindCommands() {
  Bind(wxEVT_MENU, [this](wxCommandEvent& event) {
    for (const Command& command : kCommands)
      if (command.Id == event.GetId()) return (this->*command.Run)();
    event.Skip();
  });
  Bind(wxEVT_UPDATE_UI, [this](wxUpdateUIEvent& event) {
    for (const Command& command : kCommands)
      if (command.Id == event.GetId() && command.Update != nullptr) return (this->*command.Update)(event);
    event.Skip();
  });
}

std::span<const CQORPMenuItem> CTradeBookGrid::ContextMenu() const {
  return kGridMenu;
}

void CTradeBookGrid::OnShowContextMenu(const wxPoint& point) {
  ShowContextMenu(*this, kGridMenu, point);
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

// The guard looks at this grid, the copy is that of the grid with the focus: meant so.
void CTradeBookGrid::OnCopy() {
  if (!CopyGuard()) return;
  CTradeBookGrid* focused = List.FocusedGrid();
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
  message.AddU64(30002, List.Callbacks().PropertyListRequest);
  message.AddU64(30031, List.Callbacks().PropertyChanged);
  message.AddU64(30001, reinterpret_cast<std::uint64_t>(this));
  List.Terminal().PluginDataSend(message);
}

// With rows their texts count alone, so that a column can become narrower than its title: meant so.
void CTradeBookGrid::OnSizeToFit() {
  const wxBusyCursor wait;
  wxClientDC dc(GetRowsWindow());
  dc.SetFont(GetGridFont());
  const std::vector<int> widths = Rows.RowCount() == 0 ? TitleWidths(dc) : WidestCells(dc);
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
  const std::string& server = List.State().TradeStore.ServerName;
  for (const TradeRecord* row : Rows.RowRecords())
    for (std::size_t column = 0; column < widest.size(); ++column) {
      CellScratch scratch;
      widest[column].Offer(ShownText(server, *row, static_cast<int>(column), scratch));
    }
  std::vector<int> widths;
  for (WidestText& column : widest) widths.push_back(column.WidthPx());
  return widths;
}

#include "grid_base/windows/base_grid.h"

#include <wx/clipbrd.h>
#include <wx/dataobj.h>

#include <utility>

#include "foundations/paths.h"
#include "host_link/messages/packet_reader.h"
#include "toolkit/dialogs/dialog.h"
#include "toolkit/system/make_child.h"

CVELDSGridCtrl::CVELDSGridCtrl(int gridTypeCode, const std::string& gridName, const std::wstring& profileName,
                               const GridHost& host)
    : Host(host),
      GridTypeCode(gridTypeCode),
      WorkingFolder(CurrentFolder()),
      Profile(gridName, profileName, WorkingFolder) {
  EnableAlternateRows(false);
}

void CVELDSGridCtrl::LoadMultipleSort() {
  Profile.ForgetOrder();
  EnableMultipleSort(Profile.LoadMultipleSort() != 0);
}

// The profile stores widths for a scale of 100 %, so that it fits every screen.
void CVELDSGridCtrl::InsertProfiledColumn(const NewColumn& column, int index) {
  const ColumnState state = Profile.InsertProfiledColumn(column, index);
  InsertColumn(index, state.Header, FromDIP(state.Width));
  CQORPGridColumnsInfo& columns = GetColumnsInfo();
  columns.SetColumnVisible(index, state.Visible != 0);
  columns.SetColumnAlign(index, state.Align);
  if (const std::optional<bool> rising = SortsAscending(state)) columns.SetSortColumn(index, *rising, IsMultipleSort());
  if (state.Locked != 0) columns.SetColumnLocked(index, true);
}

void CVELDSGridCtrl::ApplyColumnOrder() {
  int place = 0;
  for (const int column : Profile.DisplayOrder(GetColumnCount())) GetColumnsInfo().SetColumnDisplayPos(place++, column);
  AdjustLayout();
}

void CVELDSGridCtrl::SaveColumnState(const std::string& key, int column) {
  const CQORPGridColumnsInfo& columns = GetColumnsInfo();
  Profile.SaveColumnState(key, {.Header = columns.GetColumnName(column),
                                .Width = ToDIP(columns.GetColumnWidth(column)),
                                .Visible = columns.GetColumnVisible(column) ? 1 : 0,
                                .Align = columns.GetColumnAlign(column),
                                .Sort = columns.GetColumnState(column),
                                .Locked = columns.GetColumnLocked(column) ? 1 : 0,
                                .Order = columns.GetColumnOrder(column),
                                .Group = columns.GetGroupColumnPos(column)});
}

void CVELDSGridCtrl::ResetColumns() {
  CQORPGridColumnsInfo& columns = GetColumnsInfo();
  const std::vector<ColumnReset> resets = Profile.ResetColumns(GetColumnCount());
  for (int column = 0; column < GetColumnCount(); ++column) {
    const ColumnReset& reset = resets[static_cast<std::size_t>(column)];
    columns.SetColumnVisible(column, reset.Visible);
    if (!reset.Visible) continue;
    columns.SetColumnWidth(column, FromDIP(reset.Width));
    columns.RemoveSortColumn(column);
  }
  AdjustLayout();
}

void CVELDSGridCtrl::ShowAllColumns() {
  ShowColumns(true);
}
void CVELDSGridCtrl::RemoveAllColumns() {
  ShowColumns(false);
}

void CVELDSGridCtrl::ShowColumns(bool visible) {
  for (int column = 0; column < GetColumnCount(); ++column) GetColumnsInfo().SetColumnVisible(column, visible);
  AdjustLayout();
}

void CVELDSGridCtrl::ResetFilter() {
  SetCurSel(-1);
  OnFilterBarClearAll();
  AdjustLayout();
}

void CVELDSGridCtrl::ToggleFilterBar() {
  EnableFilterBar(!IsFilterBarEnabled(), L"<all>");
}

void CVELDSGridCtrl::UpdateFilterMenuText(wxUpdateUIEvent& event) {
  event.SetText(IsFilterBarEnabled() ? L"Hide Filter" : L"Show Filter");
}

void CVELDSGridCtrl::EnableCommand(wxUpdateUIEvent& event) {
  event.Enable(true);
}

void CVELDSGridCtrl::RemoveSort() {
  for (int column = 0; column < GetColumnCount(); ++column) GetColumnsInfo().RemoveSortColumn(column);
  AdjustLayout();
}

void CVELDSGridCtrl::PasteRecord(CQORPacketReader& record) {
  record.Cursor = record.End;
}

void CVELDSGridCtrl::PasteFromClipboard() {
  ForEachClipboardRecord(PrivateClipboard::Take(), [this](std::span<const std::uint8_t> bytes) {
    CQORPacketReader record(bytes.data(), static_cast<std::uint16_t>(bytes.size()));
    PasteRecord(record);
  });
}

// Only Ctrl: with Alt or Shift the keys have other meanings.
bool CVELDSGridCtrl::PreTranslateMessage(wxKeyEvent& event) {
  if (event.GetModifiers() != wxMOD_CONTROL) return CQORPGridCtrl::PreTranslateMessage(event);
  switch (event.GetKeyCode()) {
    case 'C':
      CopyToClipboard(false);
      return true;
    case 'V':
      PasteFromClipboard();
      return true;
    case 'X':
      CopyToClipboard(true);
      return true;
    default:
      return CQORPGridCtrl::PreTranslateMessage(event);
  }
}

void CVELDSGridCtrl::OnGridFocus() {
  if (Host.ApplicationFocus) Host.ApplicationFocus(this, false);
}

namespace {

constexpr const char* kFormatName = "VELD_CLIPBOARD";
constexpr std::size_t kClipHeaderSize = 10, kLengthPlace = 8, kLargestMessage = 0xFFFF;

}  // namespace

void ForEachClipboardRecord(std::span<const std::uint8_t> block,
                            const std::function<void(std::span<const std::uint8_t>)>& take) {
  while (block.size() >= kClipHeaderSize) {
    const std::size_t size = kClipHeaderSize + block[kLengthPlace] + 256u * block[kLengthPlace + 1];
    if (size > block.size() || size > kLargestMessage) return;
    take(block.first(size));
    block = block.subspan(size);
  }
}

void PrivateClipboard::Commit() {
  const std::vector<std::uint8_t> bytes = std::exchange(Collected, {});
  const wxClipboardLocker clipboard;
  if (!clipboard) return;
  auto& data = MakeChild<wxCustomDataObject>(wxDataFormat(kFormatName));
  data.SetData(bytes.size(), bytes.data());
  wxTheClipboard->SetData(&data);
}

std::vector<std::uint8_t> PrivateClipboard::Take() {
  const wxClipboardLocker clipboard;
  wxCustomDataObject data{wxDataFormat(kFormatName)};
  if (!clipboard || !wxTheClipboard->GetData(data)) return {};
  const auto* bytes = static_cast<const std::uint8_t*>(data.GetData());
  return {bytes, bytes + data.GetSize()};
}

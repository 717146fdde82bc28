#include "terminal/windows/frame/list_grid.h"

#include <algorithm>
#include <utility>

#include "terminal/windows/frame/main_frame.h"
#include "toolkit/dialogs/dialog.h"

namespace {

constexpr int kRight = 1;
constexpr int kPxOfCharacter = 8;
constexpr const wchar_t* kPrompt = L"<all>";
constexpr const wchar_t* kFileTypes = L"CSV (*.csv)|*.csv;*.CSV|Workbook (*.xlsx)|*.xlsx;*.XLSX";

}  // namespace

bool ListGrid::Create(wxWindow* parent, int id) {
  if (!CQORPGridCtrl::Create(parent, id)) return false;
  NameForReaders(Look.Name);
  for (const ListColumn& column : Rows.Source().Columns()) {
    const int place = GetColumnCount();
    InsertColumn(place, column.Title, FromDIP(column.WidthPx));
    if (column.IsToRight()) GetColumnsInfo().SetColumnAlign(place, kRight);
  }
  EnableVirtualMode([this](int place, int column, CQORPGridCell& cell) { return ShowCell(place, column, cell); });
  EnableMarkSortedColumn(true);
  EnableFilterBar(Look.FilterShown, kPrompt);
  Bind(wxEVT_MENU, [this](wxCommandEvent& event) { RunCommand(event.GetId()); });
  Bind(wxEVT_UPDATE_UI, [this](wxUpdateUIEvent& event) {
    if (event.GetId() == kShowFilter) event.SetText(IsFilterBarEnabled() ? L"&Hide Filter" : L"S&how Filter");
    if (event.GetId() == kResetFilter) event.Enable(Rows.HasFilters());
  });
  GetRowsWindow()->Bind(wxEVT_LEFT_DCLICK, [this](wxMouseEvent& event) {
    event.Skip();
    if (Opened) CallAfter([this] { Opened(); });  // once the click has made its row the current one
  });
  SetVirtualRows(static_cast<int>(Rows.Count()));
  return true;
}

std::optional<ListRow> ListGrid::RowAt(int place) const {
  return place < 0 ? std::nullopt : Rows.RowAt(static_cast<std::size_t>(place));
}

bool ListGrid::ShowCell(int place, int column, CQORPGridCell& cell) const {
  const auto row = RowAt(place);
  if (!row || column < 0) return row.has_value();
  cell.Text = Rows.Source().Text(*row, static_cast<std::size_t>(column));
  if (!cell.Text.empty()) Dress(*row, static_cast<std::size_t>(column), cell);
  return !cell.Text.empty();
}

std::wstring ListGrid::TextAt(int place, std::size_t column) const {
  const auto row = RowAt(place);
  return row ? Rows.Source().Text(*row, column) : std::wstring();
}

bool ListGrid::Select(ListRow row) {
  const auto place = Rows.PlaceOf(row);
  if (place) SetCurSel(static_cast<int>(*place));
  return place.has_value();
}

ListGrid::Current ListGrid::NoteCurrent() const {
  return {GetCurSel(), CurrentRow()};
}

void ListGrid::Follow(const Current& former) {
  SetVirtualRows(static_cast<int>(Rows.Count()));
  RedrawRows();
  if (!former.Row) return;
  const auto place = Rows.PlaceOf(*former.Row);
  const int now = place ? static_cast<int>(*place) : -1;
  if (now != former.Place) SetCurSel(now);
}

void ListGrid::ShowChanges() {
  const Current current = NoteCurrent();
  const ListRows::Update update = Rows.TakeChanges();
  if (update.Moved) return Follow(current);
  SetVirtualRows(static_cast<int>(Rows.Count()), static_cast<int>(update.AddedFirst));
  for (const std::size_t place : update.Texts) RedrawRow(static_cast<int>(place));
}

void ListGrid::Sort(std::optional<std::size_t> column, bool rising) {
  CQORPGridColumnsInfo& columns = GetColumnsInfo();
  if (const auto old = Rows.SortColumn()) columns.RemoveSortColumn(static_cast<int>(*old));
  if (column) columns.SetSortColumn(static_cast<int>(*column), rising, false);
  const Current current = NoteCurrent();
  Rows.SortBy(column, rising);
  Follow(current);
  AdjustLayout();
}

void ListGrid::ToggleSortColumn(int column) {
  const auto clicked = static_cast<std::size_t>(column);
  if (Rows.SortColumn() != clicked) return Sort(clicked, true);
  if (Rows.SortsRising()) return Sort(clicked, false);
  Sort(std::nullopt, true);
}

void ListGrid::OnFilterBarChanged(int column, const std::wstring& text) {
  const Current current = NoteCurrent();
  Rows.SetFilter(static_cast<std::size_t>(column), text);
  Follow(current);
}

void ListGrid::OnFilterBarClearAll() {
  CQORPGridCtrl::OnFilterBarClearAll();
  const Current current = NoteCurrent();
  Rows.ClearFilters();
  Follow(current);
}

std::span<const CQORPMenuItem> ListGrid::ContextMenu() const {
  return kListMenu;
}

void ListGrid::OnShowContextMenu(const wxPoint& point) {
  ShowContextMenu(*this, ContextMenu(), point);
}

bool ListGrid::PreTranslateMessage(wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  const bool isEnter = key == WXK_RETURN || key == WXK_NUMPAD_ENTER;
  if (isEnter && !event.HasAnyModifiers() && Opened && CurrentRow()) {
    Opened();
    return true;
  }
  if (event.GetModifiers() != wxMOD_CONTROL) return false;
  if (key == 'C') return Copy();
  if (key == 'F' && !IsFilterBarEnabled()) EnableFilterBar(true, kPrompt);  // and goes on to its first field
  if (key == 'S') Save();
  return key == 'S';
}

void ListGrid::RunCommand(int id) {
  switch (id) {
    case kCopy:
      Copy();
      return;
    case kSave:
      return Save();
    case kShowFilter:
      return EnableFilterBar(!IsFilterBarEnabled(), kPrompt);
    case kResetFilter:
      return OnFilterBarClearAll();
    default:
      return RunOwnCommand(id);
  }
}

void ListGrid::Save() {
  const FocusReturn focus(*this);
  const auto path = CQORPFileDialog(this, Look.FileName, L".csv", kFileTypes).AskForPath();
  if (path) OrShowFailure(this, [&] { SaveSheet(ShownSheet(*this), *path); });
}

ListPlace ListGrid::GetPlace() const {
  const CQORPGridColumnsInfo& columns = GetColumnsInfo();
  ListPlace place;
  for (const int column : columns.DisplayColumns())
    place.Columns.push_back({columns.GetColumnName(column), ToDIP(columns.GetColumnWidth(column)),
                             Rows.FilterOf(static_cast<std::size_t>(column))});
  if (const auto sorted = Rows.SortColumn()) place.SortColumn = columns.GetColumnName(static_cast<int>(*sorted));
  place.Rising = Rows.SortsRising();
  place.FilterShown = IsFilterBarEnabled();
  return place;
}

std::optional<std::size_t> ListGrid::ColumnOf(const std::wstring& title) const {
  const auto columns = Rows.Source().Columns();
  const auto at = std::ranges::find_if(columns, [&title](const ListColumn& column) { return title == column.Title; });
  return at == columns.end() ? std::nullopt : std::optional(static_cast<std::size_t>(at - columns.begin()));
}

// Unknown titles are skipped. Filters go in behind the columns, as their fields do.
void ListGrid::SetPlace(const ListPlace& place) {
  CQORPGridColumnsInfo& columns = GetColumnsInfo();
  int next = 0;
  for (const ColumnPlace& stored : place.Columns) {
    const auto column = ColumnOf(stored.Title);
    if (!column) continue;
    columns.SetColumnWidth(static_cast<int>(*column), FromDIP(stored.WidthPx));
    columns.SetColumnDisplayPos(next++, static_cast<int>(*column));
  }
  Sort(place.SortColumn ? ColumnOf(*place.SortColumn) : std::nullopt, place.Rising);
  EnableFilterBar(place.FilterShown, kPrompt);
  for (const ColumnPlace& stored : place.Columns)
    if (const auto column = ColumnOf(stored.Title); column && !stored.Filter.empty())
      SetFilterText(static_cast<int>(*column), stored.Filter);
}

ShownSheet::ShownSheet(const ListGrid& grid) : List(grid.Shown()) {
  const auto columns = List.Source().Columns();
  for (const int column : grid.GetColumnsInfo().DisplayColumns()) {
    const ListColumn& shown = columns[static_cast<std::size_t>(column)];
    Places.push_back(static_cast<std::size_t>(column));
    const int width = grid.ToDIP(grid.GetColumnsInfo().GetColumnWidth(column));
    Titles.push_back({shown.Title, shown.Kind, shown.Decimals, width / kPxOfCharacter});
  }
}

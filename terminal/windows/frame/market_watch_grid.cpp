#include "terminal/windows/frame/market_watch_grid.h"

#include <wx/settings.h>

#include <utility>

#include "platform/locale.h"
#include "terminal/watch/market_watch.h"

namespace {

constexpr int kFreshTintPercent = 14;

struct TrendColors {
  ColorRef Up;
  ColorRef Down;
};
constexpr TrendColors kOnLight{0x327D2E, 0x2828C6};
constexpr TrendColors kOnDark{0x84C781, 0x7373E5};

ColorRef ColorOf(Trend trend) {
  const TrendColors& colors = wxSystemSettings::GetAppearance().IsUsingDarkBackground() ? kOnDark : kOnLight;
  return trend == Trend::Up ? colors.Up : colors.Down;
}

}  // namespace

bool MarketWatchGrid::Create(wxWindow* parent, int id) {
  if (!CQORPGridCtrl::Create(parent, id)) return false;
  NameForReaders(L"Market Watch");
  AddColumns();
  EnableVirtualMode([this](int row, int column, CQORPGridCell& cell) { return ShowCell(row, column, cell); });
  EnableRowHeader(false);
  EnableAlternateRows(true);
  EnableMarkSortedColumn(true);
  GetRowsWindow()->Bind(wxEVT_LEFT_DCLICK, [this](wxMouseEvent& event) {
    event.Skip();
    CallAfter([this] { Opened(); });  // once the click has made its row the current one
  });
  SetVirtualRows(Watch.Rows());
  return true;
}

void MarketWatchGrid::AddColumns() {
  for (std::size_t at = 0; at < kWatchColumnCount; ++at) {
    const int column = static_cast<int>(at);
    InsertColumn(column, kWatchColumns[at].Title, FromDIP(kWatchColumns[at].WidthPx));
    GetColumnsInfo().SetColumnAlign(column, kWatchColumns[at].ToRight ? 1 : 0);
  }
}

bool MarketWatchGrid::ShowCell(int row, int column, CQORPGridCell& cell) const {
  if (row >= Watch.Rows()) return false;
  if (column < 0) return true;
  const WatchRow& shown = Watch.RowAt(row);
  const WatchColumn& told = kWatchColumns[static_cast<std::size_t>(column)];
  if (told.OfTrades && shown.Trades == 0) return false;
  cell.Text = CodePageToWide(told.Text(shown));
  const Trend trend = told.TrendOf == nullptr ? Trend::None : told.TrendOf(shown);
  if (trend == Trend::None) return true;
  cell.TextColor = ColorOf(trend);
  const wxColour window = wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOW);
  if (Watch.IsFresh(shown)) cell.Background = Blend(window.GetRGB(), ColorOf(trend), kFreshTintPercent);
  return true;
}

template <typename Change>
void MarketWatchGrid::KeepSelected(Change change) {
  const int current = GetCurSel();
  const bool hasCurrent = current >= 0 && current < Watch.Rows();
  const std::size_t identity = hasCurrent ? Watch.IdentityAt(current) : 0;
  change();
  SetVirtualRows(Watch.Rows());
  if (!hasCurrent) return;
  const int moved = Watch.RowOfIdentity(identity);
  if (moved != current) SetCurSel(moved);
}

void MarketWatchGrid::ShowChanges() {
  bool changed = false;
  KeepSelected([&] { changed = Watch.TakeChanges(); });
  if (changed) RedrawRows();
}

const WatchRow* MarketWatchGrid::Selected() const {
  const int row = GetCurSel();
  return row < 0 || row >= Watch.Rows() ? nullptr : &Watch.RowAt(row);
}

bool MarketWatchGrid::Select(const std::string& securityId) {
  const int row = Watch.RowOf(securityId);
  if (row >= 0) SetCurSel(row);
  return row >= 0;
}

void MarketWatchGrid::Sort(std::optional<int> column, bool rising) {
  CQORPGridColumnsInfo& columns = GetColumnsInfo();
  if (const auto old = Watch.SortColumn()) columns.RemoveSortColumn(*old);
  if (column) columns.SetSortColumn(*column, rising, false);
  KeepSelected([&] { Watch.SortBy(column, rising); });
  AdjustLayout();
}

// Clicks cycle: rising, falling, order of the securities.
void MarketWatchGrid::ToggleSortColumn(int column) {
  if (Watch.SortColumn() != column) return Sort(column, true);
  if (Watch.SortsRising()) return Sort(column, false);
  Sort(std::nullopt, true);
}

bool MarketWatchGrid::PreTranslateMessage(wxKeyEvent& event) {
  const bool isEnter = event.GetKeyCode() == WXK_RETURN || event.GetKeyCode() == WXK_NUMPAD_ENTER;
  if (!isEnter || event.HasAnyModifiers() || Selected() == nullptr) return false;
  Opened();
  return true;
}

WatchPlace MarketWatchGrid::GetPlace() const {
  const CQORPGridColumnsInfo& columns = GetColumnsInfo();
  WatchPlace place;
  for (const int column : columns.DisplayColumns())
    place.Columns.push_back({columns.GetColumnName(column), ToDIP(columns.GetColumnWidth(column))});
  if (const auto sorted = Watch.SortColumn()) place.SortColumn = columns.GetColumnName(*sorted);
  place.Rising = Watch.SortsRising();
  return place;
}

// Skips unknown titles.
void MarketWatchGrid::SetPlace(const WatchPlace& place) {
  CQORPGridColumnsInfo& columns = GetColumnsInfo();
  const auto find = [&](const std::wstring& title) {
    for (int column = 0; column < columns.GetColumnCount(); ++column)
      if (columns.GetColumnName(column) == title) return column;
    return -1;
  };
  int next = 0;
  for (const ColumnPlace& stored : place.Columns) {
    const int column = find(stored.Title);
    if (column < 0) continue;
    columns.SetColumnWidth(column, FromDIP(stored.WidthPx));
    columns.SetColumnDisplayPos(next++, column);
  }
  const int sorted = place.SortColumn ? find(*place.SortColumn) : -1;
  Sort(sorted < 0 ? std::nullopt : std::optional(sorted), place.Rising);
}

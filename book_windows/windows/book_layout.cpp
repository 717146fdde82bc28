#include "book_windows/windows/book_layout.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "book_windows/model/layout_record.h"
#include "book_windows/windows/book_list.h"
#include "book_windows/windows/trade_book_bar.h"

namespace {

constexpr int kMostRestored = 15;
// What window systems count in: 16 bits with a sign.
constexpr std::int64_t kFarthestPx = 32767;

SettingsRectangle RectangleOf(const wxRect& rect) {
  return {rect.x, rect.y, rect.x + rect.width, rect.y + rect.height};
}

// A stored rectangle may be anything; one without an area has the toolkit choose.
wxRect RectOf(const SettingsRectangle& stored) {
  const auto place = [](std::int64_t value) { return static_cast<int>(std::clamp(value, -kFarthestPx, kFarthestPx)); };
  const auto length = [&](std::int64_t from, std::int64_t to) { return place(std::max<std::int64_t>(0, to - from)); };
  return {place(stored.Left), place(stored.Top), length(stored.Left, stored.Right), length(stored.Top, stored.Bottom)};
}

BookRecord RecordOf(const CTradeBookBar& bar, std::uint32_t lastNum) {
  const CTradeBookGrid& grid = *bar.Grid();
  BookRecord record;
  record.BookName = bar.Name();
  record.Security = grid.Rows.Security;
  record.ScriptTitle = grid.State.ScriptTitle;
  record.LastNum = lastNum;
  record.ScriptTradeName = ScriptTradeNameOf(grid.State);
  record.Docked = bar.IsDocked();
  record.Tabbed = bar.IsMDITabbed();
  record.Rect = RectangleOf(bar.GetScreenRect());
  return record;
}

// Empty for a security that the terminal does not know any more: then title and key differ from those saved.
std::string DisplayNameOf(const CQORDLLComman& terminal, const FilterKey& security) {
  SecurityMasterData data;
  terminal.GetMasterRequest(security.Exchange, security.SecurityID, data);
  return data.NameText();
}

// A blank book takes the trades without a security. Wide ones wait for the terminal's next trades.
void BeginRestored(CTradeBookGrid& grid, const BookRecord& record, const std::string& displayName) {
  switch (RestoredStateOf(record)) {
    case RestoredState::All:
      return grid.State.BeginAll();
    case RestoredState::Blank:
      grid.Rows.CollectSecurityRows();
      return grid.State.BeginBlank();
    case RestoredState::Widened:
      grid.Rows.Security = record.Security;
      return grid.State.BeginWidened(record.ScriptTitle);
    case RestoredState::Security:
      grid.Rows.Security = record.Security;
      grid.Rows.CollectSecurityRows();
      return grid.State.BeginSecurity(BookState::ScriptTitleOf(record.Security.Exchange, displayName));
    case RestoredState::Unknown:
      return;
  }
}

// A book of an unknown state keeps its name as caption, has no key and so gets no trades.
void RestoreBook(BookList& list, CQORPRegistry& settings, const BookRecord& record, const std::string& displayName) {
  if (record.BookName.empty()) return;
  CTradeBookBar* bar = list.MakeBar(record.BookName, RectOf(record.Rect));
  if (bar == nullptr) return;
  BeginRestored(*bar->Grid(), record, displayName);
  bar->Dialog->ShowAverages(false);
  if (RestoredStateOf(record) != RestoredState::Unknown) {
    bar->FollowState();
    list.State().BooksByKey[bar->ProfileKey] = bar;
  }
  bar->LoadState(settings, {}, 0, bar->GetDlgCtrlID());
  list.ShowBook(*bar);
}

// As they were opened, by the numbers in their names: the list goes by addresses, which differ from run to run.
std::vector<CTradeBookBar*> InOrderOfOpening(const BookList& list) {
  std::vector<CTradeBookBar*> bars;
  for (const auto& [window, bar] : list.BooksByWindow) bars.push_back(bar);
  std::ranges::sort(bars, {}, [](const CTradeBookBar* bar) { return std::pair(bar->Name().size(), bar->Name()); });
  return bars;
}

}  // namespace

void SaveBookLayout(BookList& list, CQORPRegistry& settings) {
  int number = 0;
  for (CTradeBookBar* bar : InOrderOfOpening(list)) {
    if (!WriteBookRecord(settings, ++number, RecordOf(*bar, list.State().LastNum))) return;
    bar->Grid()->Properties.SaveGridSettings(kGridSettingsKey);
    bar->SaveState(settings, {}, 0, bar->GetDlgCtrlID());
    bar->Grid()->SaveColumnProfile();
  }
}

void RestoreBookLayout(BookList& list, CQORPRegistry& settings) {
  for (int number = 1; number <= kMostRestored; ++number) {
    const std::optional<BookRecord> record = ReadBookRecord(settings, number);
    if (!record) return;
    list.State().RestoredKey = record->Security;
    list.State().LastNum = record->LastNum;
    RestoreBook(list, settings, *record, DisplayNameOf(list.Terminal(), record->Security));
  }
}

#include "book_windows/windows/book_list.h"

#include <wx/window.h>

#include <algorithm>

#include "book_windows/windows/book_layout.h"
#include "book_windows/windows/trade_book_bar.h"
#include "grid_base/settings/registry_store.h"
#include "host_link/messages/packet_writer.h"
#include "toolkit/bars/docking_manager.h"
#include "toolkit/start/toolkit_start.h"

namespace {

// Where a new book floats.
const wxRect kNewBook(wxPoint(100, 100), wxPoint(629, 399));

}  // namespace

BookList::BookList(PluginState& state, CQORDLLComman& terminal, const BookCallbacks& callbacks)
    : Plugin(state),
      Functions(terminal),
      TerminalRecords(terminal),
      Entries(callbacks),
      Shared{[&terminal](void* window, bool closed) { terminal.ApplicationFocus(window, closed); }} {
  Plugin.Windows = this;
  Functions.Boxes = &Boxes;
  CQORPRegistrySP::UseFolder(state.WorkingFolder);
}

// A frame of a terminal takes its bars with it before the module goes. Those that are left stand in a frame that lives
// on, or in the toolkit's own: their code goes now. The toolkit may have been started for them, or for a message box.
BookList::~BookList() {
  Plugin.Windows = nullptr;
  Functions.Boxes = nullptr;
  const std::vector<CTradeBookBar*> left(Bars.begin(), Bars.end());
  for (CTradeBookBar* bar : left) bar->Destroy();
  StopToolkit();
}

// The grid that holds the focus, or that the window with the focus stands in.
CTradeBookBar* BookList::FocusedBook() const {
  for (const wxWindow* window = wxWindow::FindFocus(); window != nullptr; window = window->GetParent())
    if (const auto book = BooksByWindow.find(window); book != BooksByWindow.end()) return book->second;
  return nullptr;
}

CTradeBookGrid* BookList::FocusedGrid() const {
  for (wxWindow* window = wxWindow::FindFocus(); window != nullptr; window = window->GetParent())
    if (auto* grid = dynamic_cast<CTradeBookGrid*>(window)) return grid;
  return nullptr;
}

void BookList::PropertyListRequest(CQORPPropList* list, const void* second) {
  if (list == nullptr || second == nullptr) return;
  if (CTradeBookBar* book = FocusedBook()) book->Grid()->PopulateProperties(*list);
}

void BookList::PropertyChanged(CQORPProp* property, CTradeBookGrid* grid) {
  if (property != nullptr && grid != nullptr && grid->GetHandle() != nullptr) grid->ApplyProperties(*property);
}

// A warning lets events through, so that a book may go in between.
void BookList::ApplyPropertyToAllBooks(const CQORPProp& property) {
  std::string key;
  for (auto at = Plugin.BooksByKey.begin(); at != Plugin.BooksByKey.end(); at = Plugin.BooksByKey.upper_bound(key)) {
    key = at->first;
    auto* bar = static_cast<CTradeBookBar*>(at->second);
    if (!bar->HasGrid()) continue;
    bar->Grid()->Properties.ApplyProperty(property);
    if (!Plugin.BooksByKey.contains(key)) continue;
    bar->Grid()->RecountTotals();
    bar->ShowSummary();
  }
}

void BookList::OpenBookByCommand() {
  if (CTradeBookBar* book = FocusedBook(); book != nullptr)
    WidenBook(*book);
  else
    OpenNewBook();
}

// The switch works against its name: while it is set, many books are allowed. Meant so.
void BookList::OpenNewBook() {
  if (Plugin.MultipleTradeBookDisable)
    OpenBook("TradeBook " + std::to_string(++Plugin.LastNum));
  else if (BarsById.empty())
    OpenBook("TradeBook " + std::to_string(Plugin.LastNum));
}

void BookList::OpenBook(const std::string& bookName) {
  CQORPDockingManager* manager = CQORPDockingManager::ForProcess();
  if (manager == nullptr) return;
  const CQORPDockingControlBar* asker = manager->BarOf(wxWindow::FindFocus());
  CTradeBookBar* bar = MakeBar(bookName, kNewBook);
  if (bar == nullptr) return;
  Plugin.SelectedKey = {};
  AskSelectedSecurity(asker);
  if (Plugin.SelectedKey.Complete())
    BeginSecurityBook(*bar);
  else
    BeginAllBook(*bar);
  Plugin.BooksByKey[bar->ProfileKey] = bar;
  ShowBook(*bar);
}

CTradeBookBar* BookList::MakeBar(const std::string& bookName, const wxRect& rect) {
  CQORPDockingManager* manager = CQORPDockingManager::ForProcess();
  if (manager == nullptr) return nullptr;
  const std::uint32_t id = Functions.GetPluginBarID(bookName.c_str());
  auto bar = new CTradeBookBar(*this, bookName);  // belongs to the frame
  Bars.insert(bar);
  if (!bar->CreateBook(*manager, rect, id)) {
    Functions.PluginRemoveBarID(id);
    bar->Destroy();
    return nullptr;
  }
  BarsById.emplace(id, bar);
  bar->EnableDocking(true);
  bar->FloatControlBar(rect);
  bar->Grid()->Properties.LoadGridSettings(kGridSettingsKey);
  return bar;
}

void BookList::ShowBook(CTradeBookBar& bar) {
  bar.ShowControlBar(true);
  bar.SetFocus();
  bar.RefreshBook(true);
  BooksByWindow[bar.Grid()] = &bar;
}

void BookList::SaveLayout() {
  SaveBookLayout(*this, *CQORPRegistrySP::Create(0, 0));
}

void BookList::RestoreLayout() {
  RestoreBookLayout(*this, *CQORPRegistrySP::Create(0, 1));
}

// The owner of that window answers with message 32023 before the send returns.
void BookList::AskSelectedSecurity(const CQORPDockingControlBar* asker) {
  CQORPacketWriter question(0);
  question.AddU16(10002, 32022);
  question.AddU64(30002, Entries.OnPluginMessage);
  question.AddU64(30001, reinterpret_cast<std::uint64_t>(asker));
  Functions.PluginDataSend(question);
}

void BookList::BeginSecurityBook(CTradeBookBar& bar) {
  CTradeBookGrid& grid = *bar.Grid();
  grid.Rows.Security = Plugin.SelectedKey;
  grid.Rows.CollectSecurityRows();
  grid.State.BeginSecurity(BookState::ScriptTitleOf(Plugin.SelectedKey.Exchange, Plugin.SelectedMaster.NameText()));
  bar.FollowState();
}

void BookList::BeginAllBook(CTradeBookBar& bar) {
  CTradeBookGrid& grid = *bar.Grid();
  grid.Rows.CopyAllRows();
  grid.State.BeginAll();
  bar.FollowState();
}

// The list of books keeps the book under its old key: meant so.
void BookList::WidenBook(CTradeBookBar& bar) {
  CTradeBookGrid& grid = *bar.Grid();
  grid.State.Widen();
  grid.Rows.CopyAllRows();
  bar.RefreshBook(true);
  bar.ShowControlBar(true);
  grid.SetFocus();
  bar.FollowState();
}

void BookList::NarrowToFilter(CTradeBookBar& bar) {
  if (!BooksByWindow.contains(bar.Grid())) return;
  CTradeBookGrid& grid = *bar.Grid();
  grid.State.Narrow();
  bar.FollowState();
  grid.Rows.CollectSecurityRows();
  bar.RefreshBook(true);
}

void BookList::CloseBook(CTradeBookBar& bar, Close how) {
  if (!HasBar(bar) || !BooksByWindow.contains(bar.Grid())) return;
  bar.Grid()->Properties.SaveGridSettings(kGridSettingsKey);
  if (how == Close::HideBar) bar.ShowControlBar(false);
  DropFromLists(bar);
  Functions.PluginRemoveBarID(bar.GetDlgCtrlID());
  Functions.ApplicationFocus(&bar, true);
}

bool BookList::HasBar(const CTradeBookBar& bar) const {
  return std::ranges::any_of(BarsById, [&bar](const auto& entry) { return entry.second == &bar; });
}

// Intentional: a widened book stays under its old key, so that trades go on reaching it. Another book of the same name
// and id may stand under the new one.
void BookList::DropFromLists(CTradeBookBar& bar) {
  const auto isBar = [&bar](const auto& entry) { return entry.second == &bar; };
  std::erase_if(BarsById, isBar);
  std::erase_if(BooksByWindow, isBar);
  std::erase_if(Plugin.BooksByKey, [&](const auto& entry) { return isBar(entry) && entry.first == bar.ProfileKey; });
}

void BookList::ForgetBar(CTradeBookBar& bar) {
  Bars.erase(&bar);
  DropFromLists(bar);
  std::erase_if(Plugin.BooksByKey, [&bar](const auto& entry) { return entry.second == &bar; });
}

void BookList::ForgetTrades() {
  for (CTradeBookBar* bar : Bars)
    if (bar->HasGrid()) bar->ClearRows();
}

void BookList::ReapplyFilters() {
  for (const auto& [window, bar] : BooksByWindow) {
    bar->Grid()->Rows.RebuildRows();
    bar->ShowControlBar(true);
    bar->RefreshBook(true);
  }
}

void BookList::RepaintAllBooks() {
  for (const auto& [key, book] : Plugin.BooksByKey) static_cast<CTradeBookBar*>(book)->RefreshBook(false);
}

bool BookList::SelectedSecurity(std::uint64_t bookAddress, std::string& exchange, std::string& securityId) {
  for (const auto& [window, bar] : BooksByWindow)
    if (bookAddress == reinterpret_cast<std::uint64_t>(bar)) return bar->Grid()->SelectedSecurity(exchange, securityId);
  return false;
}

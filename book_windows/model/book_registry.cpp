#include "book_windows/model/book_registry.h"

#include <algorithm>

#include "host_link/messages/packet_writer.h"

namespace {

// Where a new book floats.
constexpr SettingsRectangle kNewBook{100, 100, 630, 400};

Book& BookOf(TradeBook* book) {
  return *static_cast<Book*>(book);  // every entry of BooksByKey comes from here
}

}  // namespace

std::optional<double> TerminalMasters::MultiplierOf(const FilterKey& security) const {
  SecurityMasterData data;
  if (!Terminal.GetMasterRequest(security.Exchange, security.SecurityID, data)) return {};
  return data.Multiplier;
}

// Usually the terminal's frame has destroyed its bars before. Those left stand in a frame that lives longer than this
// code.
BookRegistry::~BookRegistry() {
  while (!Books.empty()) Books.back()->Window->DestroyBar();
}

Book* BookRegistry::FocusedBook() const {
  const auto found =
      std::ranges::find_if(BooksByWindow, [](const auto& entry) { return entry.second->Window->HoldsFocus(); });
  return found == BooksByWindow.end() ? nullptr : found->second;
}

void BookRegistry::OnBookCommand() {
  // Intentional: BooksByKey keeps a widened book under its old key, so that trades still reach it.
  if (Book* book = FocusedBook(); book != nullptr)
    book->Widen();
  else
    OpenNewBook();
}

// Intentional: the switch works against its name; while it is set, many books are allowed.
void BookRegistry::OpenNewBook() {
  if (State.MultipleTradeBookDisable)
    OpenBook("TradeBook " + std::to_string(++State.LastNum));
  else if (BarsById.empty())
    OpenBook("TradeBook " + std::to_string(State.LastNum));
}

void BookRegistry::OpenBook(const std::string& name) {
  if (!Screen.Start()) return;
  const void* askingBar = Screen.BarWithFocus();
  Book* book = MakeBook(name, kNewBook);
  if (book == nullptr) return;
  State.SelectedKey = {};
  AskSelectedSecurity(askingBar);
  if (State.SelectedKey.Complete())
    book->BeginSecurity(State.SelectedKey, State.SelectedScriptName);
  else
    book->BeginAll();
  State.BooksByKey[book->ProfileKey] = book;
  ShowBook(*book);
}

// The owner of that bar answers with message 32023 before the send returns.
void BookRegistry::AskSelectedSecurity(const void* askingBar) {
  CQORPacketWriter question(0);
  question.AddU16(10002, 32022);
  question.AddU64(30002, OnPluginMessage);
  question.AddU64(30001, reinterpret_cast<std::uint64_t>(askingBar));
  Terminal.PluginDataSend(question);
}

Book* BookRegistry::MakeBook(const std::string& name, const SettingsRectangle& rect) {
  if (!Screen.Start()) return nullptr;
  auto book = std::make_unique<Book>(State, Masters, name);
  book->BarId = Terminal.GetPluginBarID(name.c_str());
  book->Window = Screen.MakeWindow(*book, rect, book->BarId);
  if (book->Window == nullptr) {
    Terminal.PluginRemoveBarID(book->BarId);
    return nullptr;
  }
  BarsById.emplace(book->BarId, book.get());
  Books.push_back(std::move(book));
  Books.back()->LoadGridSettings();
  return Books.back().get();
}

void BookRegistry::ShowBook(Book& book) {
  book.Window->ShowBar(true);
  book.Window->FocusBar();
  book.RefreshBook(true);
  BooksByWindow[book.Window->GridAddress()] = &book;
}

void BookRegistry::OnEscape(Book& book) {
  if (book.State.Filtered) return CloseByEscape(book);
  book.Rows.NextRowKey = BookRows::kFirstRowKey;
  NarrowToFilter(book);
}

void BookRegistry::NarrowToFilter(Book& book) {
  if (BooksByWindow.contains(book.Window->GridAddress())) book.NarrowToFilter();
}

void BookRegistry::CloseByEscape(Book& book) {
  if (book.Window->Floats()) CloseBook(book, Close::HideBar);
}

bool BookRegistry::IsOpen(const Book& book) const {
  const auto isBook = [&book](const auto& entry) { return entry.second == &book; };
  return std::ranges::any_of(BarsById, isBook) && std::ranges::any_of(BooksByWindow, isBook);
}

void BookRegistry::CloseBook(Book& book, Close how) {
  if (!IsOpen(book)) return;
  book.SaveGridSettings();
  if (how == Close::HideBar) book.Window->ShowBar(false);
  DropFromLists(book);
  Terminal.PluginRemoveBarID(book.BarId);
  Terminal.ApplicationFocus(book.Window->BarAddress(), true);
}

// Intentional: a widened book stays under its old key, and trades still reach it. Another book of the same name and id
// may stand under the new one.
void BookRegistry::DropFromLists(const Book& book) {
  const auto isBook = [&book](const auto& entry) { return entry.second == &book; };
  std::erase_if(BarsById, isBook);
  std::erase_if(BooksByWindow, isBook);
  std::erase_if(State.BooksByKey, [&](const auto& entry) { return isBook(entry) && entry.first == book.ProfileKey; });
}

void BookRegistry::ForgetBook(const Book& book) {
  DropFromLists(book);
  std::erase_if(State.BooksByKey, [&book](const auto& entry) { return entry.second == &book; });
  std::erase_if(Books, [&book](const auto& owned) { return owned.get() == &book; });
}

void BookRegistry::RebuildAllBooks() {
  for (const auto& [window, book] : BooksByWindow) {
    book->Rows.RebuildRows();
    book->Window->ShowBar(true);
    book->RefreshBook(true);
  }
}

void BookRegistry::ClearAllBooks() {
  for (const auto& book : Books) book->ClearRows();
}

void BookRegistry::RepaintAllBooks() {
  for (const auto& [key, book] : State.BooksByKey) BookOf(book).RefreshBook(false);
}

bool BookRegistry::SelectedSecurity(std::uint64_t barAddress, std::string& exchange, std::string& securityId) {
  for (const auto& [window, book] : BooksByWindow)
    if (barAddress == reinterpret_cast<std::uint64_t>(book->Window->BarAddress()))
      return book->SelectedSecurity(exchange, securityId);
  return false;
}

void BookRegistry::PropertyListRequest(CQORPPropList* list, const void* second) {
  if (list == nullptr || second == nullptr) return;
  if (Book* book = FocusedBook(); book != nullptr) book->Window->PopulateProperties(*list);
}

// A warning runs the event loop, so that a book may end in between.
void BookRegistry::ApplyPropertyToAllBooks(const CQORPProp& property) {
  std::string key;
  for (auto at = State.BooksByKey.begin(); at != State.BooksByKey.end(); at = State.BooksByKey.upper_bound(key)) {
    key = at->first;
    Book& book = BookOf(at->second);
    book.Window->ApplyProperty(property);
    if (!State.BooksByKey.contains(key)) continue;
    book.RecountTotals();
    book.Window->OnTotalsChanged();
  }
}

namespace {

BookRecord RecordOf(const Book& book, std::uint32_t lastNum) {
  return {.BookName = book.Name,
          .Security = book.Rows.Security,
          .ScriptTitle = book.State.ScriptTitle,
          .LastNum = lastNum,
          .ScriptTradeName = ScriptTradeNameOf(book.State),
          .Place = book.Window->Place()};
}

// In the order of opening, by the numbers in their names: BooksByWindow goes by addresses, which differ from run to
// run.
std::vector<Book*> InOrderOfOpening(const std::map<const void*, Book*>& open) {
  std::vector<Book*> books;
  for (const auto& [window, book] : open) books.push_back(book);
  std::ranges::sort(books, {}, [](const Book* book) { return std::pair(book->Name.size(), book->Name); });
  return books;
}

}  // namespace

void BookRegistry::SaveBookLayout(CQORPRegistry& settings) {
  int number = 0;
  for (Book* book : InOrderOfOpening(BooksByWindow)) {
    if (!WriteBookRecord(settings, ++number, RecordOf(*book, State.LastNum))) return;
    book->SaveGridSettings();
    book->Window->SavePlace(settings);
    book->Window->SaveColumnProfile();
  }
}

// A security that the terminal no longer knows has an empty name: title and key then differ from those saved.
void BookRegistry::RestoreBookLayout(CQORPRegistry& settings) {
  for (int number = 1; number <= kMostRestored; ++number) {
    const std::optional<BookRecord> record = ReadBookRecord(settings, number);
    if (!record) return;
    State.RestoredKey = record->Security;
    State.LastNum = record->LastNum;
    SecurityMasterData data;
    Terminal.GetMasterRequest(record->Security.Exchange, record->Security.SecurityID, data);
    State.RestoredScriptName = data.NameText();
    RestoreBook(*record, settings);
  }
}

// Intentional: a book of unknown state keeps its name as caption, has no key and gets no trades.
void BookRegistry::RestoreBook(const BookRecord& record, CQORPRegistry& settings) {
  Book* book = record.BookName.empty() ? nullptr : MakeBook(record.BookName, record.Place.Rect);
  if (book == nullptr) return;
  const RestoredState state = RestoredStateOf(record);
  book->BeginRestored(record.ScriptTitle, state, record.Security, State.RestoredScriptName);
  if (state != RestoredState::Unknown) State.BooksByKey[book->ProfileKey] = book;
  book->Window->LoadPlace(settings);
  ShowBook(*book);
}

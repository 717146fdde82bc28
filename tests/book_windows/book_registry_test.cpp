#include "book_windows/model/book_registry.h"

#include "tests/book_windows/book_model_fixture.h"
#include "tests/support/files.h"

namespace {

class BookRegistryTest : public BookModelTest {
 protected:
  // The menu command with the focus in the book.
  void Widen(FakeBookWindow& window) {
    Screen.Focused = &window;
    Registry->OnBookCommand();
  }
  static std::string Ids(const Book& book) {
    std::string ids;
    for (const TradeRecord* record : book.Rows.RowRecords()) ids += std::to_string(record->VELDTradeID);
    return ids;
  }
  static std::wstring Bought(const Book& book) { return book.Line.TextOf(SummaryValue::BuyQty); }
};

TEST_F(BookRegistryTest, OpensWhatTheFocusedWindowSelects) {
  Desk.Trade(1, "COMEX", "GC1", 1, 5, 10);
  Desk.Trade(2, "COMEX", "GC2", 2, 3, 20);
  const char* const kRows[][4] = {
      {nullptr, nullptr, kAll, "21"}, {"COMEX", "GC1", kGold, "1"}, {"COMEX", "", kAll, "21"}, {"", "GC1", kAll, "21"}};
  int number = 0;
  for (const auto& [exchange, securityId, title, ids] : kRows) {
    SCOPED_TRACE(++number);
    Desk.State->SelectedKey = {"COMEX", "GC2"};  // an earlier answer
    if (exchange == nullptr) BookDesk::SelectNothing();
    if (exchange != nullptr) BookDesk::Select(exchange, securityId);
    FakeBookWindow& window = Open();
    const std::string name = "TradeBook " + std::to_string(number), key = title + name + std::to_string(number);
    EXPECT_EQ(window.TakeNotes(), std::string("title ") + title + "; show; focus bar; rows replaced; totals");
    EXPECT_EQ(Ids(window.Shown), ids);
    EXPECT_EQ(window.Shown.Name, name);
    EXPECT_EQ(Desk.State->BooksByKey.at(key), &window.Shown);
    EXPECT_EQ(Registry->BarsById.find(static_cast<std::uint32_t>(number))->second, &window.Shown);
    EXPECT_EQ(Registry->BooksByWindow.at(window.GridAddress()), &window.Shown);
    EXPECT_EQ(window.At.Rect, (SettingsRectangle{100, 100, 630, 400}));
  }
  // 30001 is the bar that the user asks from.
  Screen.Focused = Screen.Windows[1].get();
  Registry->OpenNewBook();
  EXPECT_EQ(fakeTerminal.SentNumbers(), std::vector<std::uint16_t>(5, 32022));
  const auto asking = reinterpret_cast<std::uint64_t>(Screen.Focused);
  EXPECT_EQ(Part(fakeTerminal.Sent.back(), 26, 37), Hex("23 3175") + Word(asking, 8));
}

TEST_F(BookRegistryTest, OpensOneBookWhileTheSwitchSaysSo) {
  Desk.State->MultipleTradeBookDisable = false;
  Desk.State->LastNum = 4;
  for (int time = 0; time < 3; ++time) Open();
  EXPECT_EQ(fakeTerminal.BarCalls, std::vector<std::string>{"1 = TradeBook 4"});
  Desk.State->MultipleTradeBookDisable = true;
  Open();
  EXPECT_EQ(fakeTerminal.BarCalls.back(), "2 = TradeBook 5");
  Close(*Screen.Windows.back());
  Open();
  EXPECT_EQ(fakeTerminal.BarCalls.back(), "3 = TradeBook 6") << "names are not used again";
}

TEST_F(BookRegistryTest, ReturnsTheIdOfABookWithoutWindow) {
  Screen.MakesNone = true;
  Registry->OnBookCommand();
  EXPECT_EQ(fakeTerminal.BarCalls, (std::vector<std::string>{"1 = TradeBook 1", "-1"}));
  EXPECT_TRUE(fakeTerminal.Sent.empty());
  EXPECT_EQ(InLists(), 0u);
  Screen.HasDisplay = false;
  Registry->OnBookCommand();
  EXPECT_EQ(fakeTerminal.BarCalls.size(), 2u);
}

// Of the book of gold or of that of all trades; W is the menu command, E is Escape in the grid. Then what its window is
// told, the trades, and the quantity bought.
TEST_F(BookRegistryTest, FollowsCommandAndEscape) {
  for (std::uint32_t id = 1; id <= 3; ++id) Desk.Trade(id, id == 3 ? "" : "COMEX", id == 3 ? "" : "GC1", 1, id, 10);
  Desk.Trade(4, "MCX", "GC1", 1, 4, 10);
  const std::tuple<bool, char, const char*, const char*, const wchar_t*> kRows[] = {
      {true, 'W', "rows replaced; totals; show; focus grid; title Trade Book : All", "4321", L"10"},
      {true, 'E', "title Trade Book : COMEX GOLD 201312; rows replaced; totals", "21", L"3"},
      {false, 'E', "title Trade Book : ; rows replaced; totals", "3", L"3"},
      {false, 'E', "hide", "3", L"3"},
      {true, 'E', "hide", "21", L"3"},
      {true, 'E', "", "21", L"3"},
  };
  FakeBookWindow &gold = OpenGold(), &all = OpenAll();
  gold.TakeNotes(), all.TakeNotes();
  for (const auto& [ofGold, step, notes, ids, bought] : kRows) {
    FakeBookWindow& window = ofGold ? gold : all;
    step == 'W' ? Widen(window) : Registry->OnEscape(window.Shown);
    EXPECT_EQ(window.TakeNotes(), notes);
    EXPECT_EQ(Ids(window.Shown), ids) << notes;
    EXPECT_EQ(Bought(window.Shown), bought) << notes;
  }
  // Intentional: a book stays under the key that it was opened with, so that closing it under another leaves the entry.
  EXPECT_EQ(all.Shown.ProfileKey, std::string(kBlank) + "TradeBook 22");
  EXPECT_EQ(Desk.State->BooksByKey.at(std::string(kAll) + "TradeBook 22"), &all.Shown);
  EXPECT_EQ(InLists(), 1u);
  Desk.Trade(5, "", "", 1, 1, 1);
  EXPECT_EQ(Ids(all.Shown), "53") << "trades still reach it";
}

TEST_F(BookRegistryTest, BooksTellWhyTheyAreEmpty) {
  const std::wstring_view kNone = L"No trades yet", kOfGold = L"No trades of this security yet";
  Book& all = OpenAll().Shown;
  Book& gold = OpenGold().Shown;
  for (const auto& [book, why] : {std::pair(&all, kNone), {&gold, kOfGold}}) {
    EXPECT_EQ(book->EmptyText(), why);
    book->OnFilterBarChanged(0, L"x");
    EXPECT_EQ(book->EmptyText(), L"No trade passes the filter");
    book->OnFilterBarClearAll();
    EXPECT_EQ(book->EmptyText(), why);
  }
  Registry->OnEscape(all);
  EXPECT_EQ(all.EmptyText(), L"Emptied: F8 shows all trades");
}

TEST_F(BookRegistryTest, ClosesByEachWay) {
  const auto escape = [this](FakeBookWindow& window) { Registry->CloseByEscape(window.Shown); };
  const auto button = [this](FakeBookWindow& window) { Close(window); };
  const auto tab = [this](FakeBookWindow& window) {
    Registry->CloseBook(window.Shown, BookRegistry::Close::LeaveToTab);
  };
  // The way, whether the book floats, and what its window is told.
  const std::tuple<std::function<void(FakeBookWindow&)>, bool, const char*> kRows[] = {
      {escape, true, "hide"}, {button, false, "hide"}, {tab, false, ""}};
  std::uint32_t id = 0;
  for (const auto& [close, floats, notes] : kRows) {
    SCOPED_TRACE(++id);
    FakeBookWindow& window = OpenGold();
    window.Floating = floats;
    window.Shown.Settings.BuyColor = 100 + id;
    window.TakeNotes();
    fakeTerminal.BarCalls.clear(), fakeTerminal.Focus.clear();
    if (!floats) escape(window);
    EXPECT_EQ(InLists(), 3u) << "Escape closes only what floats";
    close(window), close(window);  // the second finds no book
    EXPECT_EQ(window.TakeNotes(), notes);
    EXPECT_EQ(InLists(), 0u);
    EXPECT_EQ(fakeTerminal.BarCalls, std::vector{"-" + std::to_string(id)});
    EXPECT_EQ(fakeTerminal.Focus, (std::vector{std::pair(window.BarAddress(), true)}));
    GridSettings stored;
    EXPECT_TRUE(ReadGridSettings(kGridSettingsKey, stored, *Desk.State));
    EXPECT_EQ(stored.BuyColor, 100 + id);
    window.DestroyBar();
  }
}

TEST_F(BookRegistryTest, MessagesChangeEveryBook) {
  Desk.Trade(1, "COMEX", "GC1", 1, 5, 10);
  Desk.Trade(2, "MCX", "GC1", 1, 7, 10);
  FakeBookWindow &gold = OpenGold(), &all = OpenAll();
  gold.TakeNotes(), all.TakeNotes();
  Desk.Tell(8112);
  EXPECT_EQ(Ids(gold.Shown), "21") << "filtered books take all trades too";
  EXPECT_EQ(gold.TakeNotes(), "") << "the message path touches no window";
  Desk.Tell(30020);
  EXPECT_EQ(Ids(gold.Shown) + Ids(all.Shown), "121");
  EXPECT_EQ(gold.TakeNotes(), "show; rows replaced; totals");
  EXPECT_EQ(all.TakeNotes(), "show; rows replaced; totals");
  EXPECT_EQ(Bought(gold.Shown), L"5");
  Desk.Trade(3, "COMEX", "GC1", 1, 1, 10);
  EXPECT_EQ(gold.TakeNotes(), "");
  Registry->RepaintAllBooks();
  EXPECT_EQ(gold.TakeNotes() + all.TakeNotes(), "rows; totalsrows; totals");
  EXPECT_EQ(Bought(gold.Shown), L"6");
  Desk.State->BooksByKey.erase(gold.Shown.ProfileKey);  // another book took the key
  Close(all);
  Desk.Tell(30022);
  EXPECT_EQ(Ids(gold.Shown) + Ids(all.Shown), "") << "no book points at a record that goes";
  Desk.Trade(9, "COMEX", "GC1", 1, 5, 10);
  EXPECT_EQ(Ids(all.Shown), "") << "before the end of the download nothing reaches a book";
}

// As a drop copy corrects and busts trades: message 9101 with the trade's id and another execution, then 30020.
TEST_F(BookRegistryTest, CorrectionsReachRowsTotalsAndDailyFile) {
  WriteFile(Desk.Folder / "TradeHeaderFile.txt", "VELDTradeID\r\nQuantity\r\nPrice\r\n");
  Desk.State->TradeStore.AutoTradeWriteCSV = true;
  FakeBookWindow &gold = OpenGold(), &all = OpenAll();
  Desk.Tell(8112);
  for (std::uint32_t id = 1; id <= 3; ++id) Desk.Trade(id, "COMEX", "GC1", 1, 10 * id, 2);
  Desk.Trade(2, "COMEX", "GC1", 1, 25, 4, "corrected");
  Desk.Trade(3, "COMEX", "GC1", 1, 0, 2, "busted");
  Desk.Tell(30020);
  for (const Book* book : {&gold.Shown, &all.Shown}) {
    EXPECT_EQ(Ids(*book), "321");
    EXPECT_EQ(Bought(*book), L"35");
    EXPECT_EQ(book->Line.TextOf(SummaryValue::BuyAmt), L"120.00");
  }
  EXPECT_EQ(ReadFile(DailyFileIn(Desk.Folder)),
            "VELDTradeID,Quantity,Price,\r\n1,10,2,\r\n2,20,2,\r\n3,30,2,\r\n2,25,4,\r\n3,0,2,");
}

TEST_F(BookRegistryTest, TellsTheSelectedRow) {
  Desk.Trade(1, "COMEX", "GC1", 1, 5, 10);
  Desk.Trade(2, "MCX", "GC2", 1, 5, 10);
  FakeBookWindow& window = Open();
  const auto address = reinterpret_cast<std::uint64_t>(window.BarAddress());
  const auto told = [&](std::uint64_t bar, int row) {
    window.Row = row;
    std::string exchange, securityId;
    return Registry->SelectedSecurity(bar, exchange, securityId) ? exchange + " " + securityId : "";
  };
  EXPECT_EQ(told(address, 0), "MCX GC2");
  EXPECT_EQ(told(address, 1), "COMEX GC1");
  EXPECT_EQ(told(address, 2) + told(address, -1) + told(address + 8, 0), "") << "no such row or bar";
  Close(window);
  EXPECT_EQ(told(address, 0), "") << "closed";
}

TEST_F(BookRegistryTest, SortsByClicksAndKeepsItsRowsWhenASortEnds) {
  for (std::uint32_t id = 1; id <= 6; ++id) Desk.Trade(id, "COMEX", id == 5 ? "GC2" : "GC1", 1, 10 - id, id % 2);
  FakeBookWindow& window = OpenGold();
  Book& book = window.Shown;
  window.TakeNotes();
  book.ToggleSortColumn(20, true);
  EXPECT_EQ(window.TakeNotes(), "no row; sort; rows replaced");
  EXPECT_EQ(Ids(book), "64231");
  book.ToggleSortColumn(18, true);
  EXPECT_EQ(Ids(book), "64231") << "by quantity within a price";
  book.ToggleSortColumn(18, true);
  EXPECT_EQ(Ids(book), "24613") << "falling";
  Desk.Trade(7, "COMEX", "GC1", 1, 1, 1);
  EXPECT_EQ(Ids(book), "246137") << "what comes after a sort stands below it";
  window.TakeNotes();
  book.ToggleSortColumn(18, true);
  EXPECT_EQ(window.TakeNotes(), "sort; rows replaced") << "the current row stays when a column leaves the sort";
  std::vector<int> marks(37);
  book.KeepMarkedSort(marks);
  EXPECT_EQ(Ids(book), "764321");
  EXPECT_EQ(Bought(book), L"35");
  EXPECT_EQ(window.TakeNotes(), "rows replaced; totals");
  book.KeepMarkedSort(marks);
  EXPECT_EQ(window.TakeNotes(), "") << "there was no sort to end";
  book.ToggleSortColumn(20, true), book.ToggleSortColumn(18, true);
  marks[18] = 1;
  book.KeepMarkedSort(marks);
  EXPECT_EQ(Ids(book), "764321") << "by quantity alone: 1, 4, 6, 7, 8, 9";
  book.OnFilterBarChanged(18, L"4");
  EXPECT_EQ(Ids(book), "6");
  EXPECT_EQ(Bought(book), L"4");
  window.TakeNotes();
  book.OnFilterBarClearAll(), book.OnFilterBarClearAll();
  EXPECT_EQ(window.TakeNotes(), "rows replaced; totals") << "once";
}

// Intentional: a sort that a profile restored takes all numbered trades as rows, whatever the security.
TEST_F(BookRegistryTest, RestoredSortTakesAllTradesAsRows) {
  Desk.Trade(1, "COMEX", "GC1", 1, 5, 10);
  Desk.Trade(2, "MCX", "GC1", 1, 7, 10);
  Screen.SortStates.assign(37, 0);
  Screen.SortStates[18] = -1;
  FakeBookWindow& window = OpenGold();
  EXPECT_EQ(window.Shown.Sort.StateOf(18), -1);
  EXPECT_EQ(Ids(window.Shown), "21");
  Registry->RebuildAllBooks();
  EXPECT_EQ(Ids(window.Shown), "1") << "only when virtual mode begins";
}

// CQORPProp is the toolkit's; the model passes it on unread.
TEST_F(BookRegistryTest, PropertyGoesToEveryBookThatIsLeft) {
  for (int i = 0; i < 3; ++i) Open();
  Registry->OnEscape(Screen.Windows[0]->Shown);  // it stays under its old key
  const auto& property = reinterpret_cast<const CQORPProp&>(Desk);
  for (const auto& window : Screen.Windows) window->TakeNotes();
  Registry->ApplyPropertyToAllBooks(property);
  for (const auto& window : Screen.Windows) EXPECT_EQ(window->TakeNotes(), "property; totals");
  Screen.EndedByProperty = Screen.Windows[0].get();  // while the first book handles it
  Registry->ApplyPropertyToAllBooks(property);
  ASSERT_EQ(InLists(), 6u) << "nothing is left of it";
  for (const auto& window : Screen.Windows) EXPECT_EQ(window->TakeNotes(), "property; totals");
  Screen.Focused = Screen.Windows[1].get();
  auto* list = reinterpret_cast<CQORPPropList*>(&Desk);
  Registry->PropertyListRequest(nullptr, this), Registry->PropertyListRequest(list, nullptr);
  EXPECT_EQ(Screen.Focused->TakeNotes(), "") << "an address is missing";
  Registry->PropertyListRequest(list, this);
  EXPECT_EQ(Screen.Focused->TakeNotes(), "properties");
}

}  // namespace

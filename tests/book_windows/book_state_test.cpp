// States of books, and what the settings keep of them.
#include "book_windows/model/book_state.h"

#include "grid_base/settings/registry_store.h"
#include "tests/book_windows/book_model_fixture.h"
#include "tests/support/files.h"

namespace {

// S and A begin a book of a security and of all trades, W is the menu command, E is Escape. Then title, mark, whether
// the book is filtered, and whether it shows averages.
TEST(BookStateTest, FollowsCommandAndEscape) {
  const std::tuple<const char*, const char*, const char*, bool, bool> kRows[] = {
      {"A", kAll, kAll, false, false},   {"S", kGold, "", true, true},      {"SW", kAll, "", false, false},
      {"SWW", kAll, "", false, false},   {"SWE", kGold, "", true, true},    {"AE", kBlank, "", true, false},
      {"AEW", kAll, kAll, false, false}, {"AEWE", kBlank, "", true, false}, {"AEE", kBlank, "", true, false},
      {"SWEWE", kGold, "", true, true},
  };
  for (const auto& [steps, title, mark, filtered, averages] : kRows) {
    SCOPED_TRACE(steps);
    BookState book;
    for (const char step : std::string_view(steps)) {
      if (step == 'S') book.BeginSecurity(BookState::ScriptTitleOf("COMEX", "GOLD 201312"));
      if (step == 'A') book.BeginAll();
      if (step == 'W') book.Widen();
      if (step == 'E') book.Narrow();
    }
    EXPECT_EQ(std::tuple(book.Title(), book.AllMark, book.Filtered, book.ShowsAverages()),
              std::tuple(title, mark, filtered, averages));
    EXPECT_EQ(book.Key("TradeBook 7", 7), title + std::string("TradeBook 77"));
  }
}

TEST(BookStateTest, EachStateHasItsStoredName) {
  using enum RestoredState;
  // The three titles, the name that is stored for them (null for none), and the state that comes back.
  const std::tuple<const char*, const char*, const char*, const char*, RestoredState> kRows[] = {
      {kGold, "", kGold, kGold, Security}, {kGold, "", "", kGold, Security},
      {kGold, "", kAll, kAll, Widened},    {kGold, kAll, kAll, nullptr, Security},
      {"", "", "", kBlank, Blank},         {"", kAll, kAll, kAll, All},
      {"", "", kAll, kAll, All},           {"", kAll, "", kAll, All}};
  for (const auto& [script, mark, current, written, back] : kRows) {
    SCOPED_TRACE(script + std::string("|") + mark + "|" + current);
    BookState state;
    state.ScriptTitle = script, state.AllMark = mark, state.CurrentTitle = current;
    BookRecord record;
    record.Security = {"COMEX", "GC1"};
    record.ScriptTitle = script;
    record.ScriptTradeName = ScriptTradeNameOf(state);
    EXPECT_EQ(record.ScriptTradeName, written == nullptr ? std::nullopt : std::optional<std::string>(written));
    EXPECT_EQ(RestoredStateOf(record), back);
    record.Security.Exchange[0] = '\0';
    EXPECT_EQ(RestoredStateOf(record), back == Security ? Unknown : back);
  }
}

class StoredBooksTest : public BookModelTest {
 protected:
  std::filesystem::path File() const { return Desk.Folder / "stored.xml"; }
  void Save() { Registry->SaveBookLayout(*RegistryStore::Make(File())->Open(0, 0)); }
  void Restore() { Registry->RestoreBookLayout(*RegistryStore::Make(File())->Open(0, 1)); }
  void Restore(const std::string& entries) {
    WriteFile(File(), "<CURRENT_USER><PLUGINDLLS><TradeBook><RecentFiles>" + entries +
                          "</RecentFiles></TradeBook></PLUGINDLLS></CURRENT_USER>");
    Restore();
  }
};

TEST_F(StoredBooksTest, WritesEveryValueInItsOrder) {
  FakeBookWindow& window = OpenGold();
  window.At = {.Docked = true, .Tabbed = false, .Rect = {1, 2, 258, 4}};
  window.Shown.Settings.SellColor = 99;
  Desk.State->LastNum = 12;
  window.TakeNotes();
  Save();
  const std::string text = ReadFile(File());
  EXPECT_EQ(text.substr(0, text.find("\r\n</RecentFiles>")),
            "<CURRENT_USER>\r\n<PLUGINDLLS>\r\n<TradeBook>\r\n<RecentFiles>\r\n<1>\"TradeBook 1\"</1>\r\n"
            "<FilterKeyExchange1>\"COMEX\"</FilterKeyExchange1>\r\n"
            "<FilterKeySecurityID1>\"GC1\"</FilterKeySecurityID1>\r\n"
            "<ScriptName1>\"Trade Book : COMEX GOLD 201312\"</ScriptName1>\r\n<LastNum1>\"12\"</LastNum1>\r\n"
            "<ScriptTradeName1>\"Trade Book : COMEX GOLD 201312\"</ScriptTradeName1>\r\n"
            "<Dock1>\"1\"</Dock1>\r\n<Tab1>\"0\"</Tab1>\r\n<Rect1>\"01000000020000000201000004000000\"</Rect1>");
  EXPECT_EQ(window.TakeNotes(), std::string("save ") + kGold + "TradeBook 11; save columns");
  GridSettings stored;
  EXPECT_TRUE(ReadGridSettings(kGridSettingsKey, stored, *Desk.State));
  EXPECT_EQ(stored.SellColor, 99u);
  Close(window);
  Save();
  EXPECT_EQ(ReadFile(File()), text) << "no book is open: nothing is written, and nothing goes";
}

TEST_F(StoredBooksTest, ComeBackInTheirStates) {
  OpenGold(), OpenAll();
  OpenGold().Shown.Widen();
  Registry->OnEscape(OpenAll().Shown);
  Screen.Windows[3]->At.Rect = {5, 6, 700, 800};
  Save();
  Start();
  BookDesk::Select("COMEX", "GC1", "GOLD 201312", 4);
  Desk.Trade(1, "COMEX", "GC1", 1, 5, 10);
  Desk.Trade(2, "COMEX", "GC2", 1, 5, 10);
  Desk.Trade(3, "", "", 1, 5, 10);
  Restore();
  ASSERT_EQ(Screen.Windows.size(), 4u);
  EXPECT_TRUE(fakeTerminal.Sent.empty()) << "nobody is asked what is selected";
  // The title, and the rows now and after another trade.
  const std::tuple<const char*, std::size_t, std::size_t> kBooks[] = {
      {kGold, 1, 2}, {kAll, 0, 1}, {kAll, 0, 2}, {kBlank, 1, 1}};
  for (std::size_t i = 0; i < std::size(kBooks); ++i) {
    SCOPED_TRACE(i);
    FakeBookWindow& window = *Screen.Windows[i];
    const std::string title = std::get<0>(kBooks[i]), number = std::to_string(i + 1),
                      key = title + "TradeBook " + number + number;
    EXPECT_EQ(window.TakeNotes(), "settings; rows replaced; totals; title " + title + "; load " + key +
                                      "; show; focus bar; rows replaced; totals");
    EXPECT_EQ(window.Shown.Rows.RowCount(), std::get<1>(kBooks[i]));
    EXPECT_EQ(Desk.State->BooksByKey.at(key), &window.Shown);
    EXPECT_EQ(Registry->BooksByWindow.at(window.GridAddress()), &window.Shown);
  }
  EXPECT_EQ(Screen.Windows[3]->At.Rect, (SettingsRectangle{5, 6, 700, 800}));
  EXPECT_EQ(Screen.Windows[0]->Shown.Line.TextOf(SummaryValue::BuyAvg), L"2.50") << "by the restored multiplier";
  Registry->OnEscape(Screen.Windows[2]->Shown);
  EXPECT_EQ(Screen.Windows[2]->Shown.State.Title(), kGold) << "a widened book still knows its security";
  Desk.Trade(9, "COMEX", "GC1", 1, 5, 10);
  for (std::size_t i = 0; i < std::size(kBooks); ++i)
    EXPECT_EQ(Screen.Windows[i]->Shown.Rows.RowCount(), std::get<2>(kBooks[i])) << i;
}

// Intentional: entries are overwritten and never removed.
TEST_F(StoredBooksTest, ClosedOnesComeBackFromOldEntries) {
  for (const char* exchange : {"COMEX", "NSEFO", "MCX"}) OpenGold(exchange);
  Save();
  for (const std::size_t closed : {1u, 2u}) Close(*Screen.Windows[closed]);
  Desk.State->LastNum = 40;
  Save();
  Start();
  Restore();
  std::string exchanges;
  for (const auto& window : Screen.Windows) exchanges.append(window->Shown.Rows.Security.Exchange).append(" ");
  EXPECT_EQ(exchanges, "COMEX NSEFO MCX ");
  EXPECT_EQ(Desk.State->LastNum, 3u) << "the last entry is an old one";
  EXPECT_STREQ(Desk.State->RestoredKey.Exchange, "MCX") << "entries are in the order of opening";
}

TEST_F(StoredBooksTest, TakeWhateverIsStored) {
  std::string twenty;
  for (int i = 1; i <= 20; ++i) {
    const std::string n = std::to_string(i);
    twenty += "<" + n + ">\"TradeBook " + n + "\"</" + n + "><LastNum" + n + ">\"" + std::to_string(40 + i) +
              "\"</LastNum" + n + ">";
  }
  const std::string one = "<1>\"TradeBook 1\"</1>";
  const std::string filter = "<ScriptName1>\"x\"</ScriptName1><FilterKeySecurityID1>\"GC1\"</FilterKeySecurityID1>";
  const std::string all = "<ScriptTradeName1>\"Trade Book : All\"</ScriptTradeName1>";
  // What is stored; the books, the last number, the title of the first book, and the keys.
  const std::tuple<std::string, std::size_t, std::uint32_t, std::string, std::size_t> kStores[] = {
      {"", 0, 0, "", 0},
      {twenty, 15, 55, kBlank, 15},
      {one + "<3>\"TradeBook 3\"</3>", 1, 0, kBlank, 1},
      {"<1>\"\"</1><LastNum1>\"7\"</LastNum1><2>\"TradeBook 2\"</2><LastNum2>\"x\"</LastNum2>", 1, 0, kBlank, 1},
      {"<1>\"\"</1><LastNum1>\"7\"</LastNum1>", 0, 7, "", 0},
      {one + filter, 1, 0, "", 0},
      {one + filter + "<FilterKeyExchange1>\"COMEX\"</FilterKeyExchange1>", 1, 0, "Trade Book : COMEX ", 1},
      {one + filter + "<FilterKeyExchange1>\"" + std::string(60, 'E') + "\"</FilterKeyExchange1>", 1, 0,
       "Trade Book : " + std::string(48, 'E') + " ", 1},
      {one + all + one, 1, 0, kAll, 1},
      {one + "<2>\"TradeBook 1\"</2>", 2, 0, kBlank, 1},
  };
  for (const auto& [entries, books, lastNum, title, keys] : kStores) {
    SCOPED_TRACE(entries.substr(0, 300));
    Start();
    fakeTerminal.BarIds["TradeBook 1"] = 1;
    Restore(entries);
    ASSERT_EQ(Registry->BooksByWindow.size(), books);
    EXPECT_EQ(std::pair(+Desk.State->LastNum, Desk.State->BooksByKey.size()), std::pair(lastNum, keys));
    EXPECT_EQ(books == 0 ? "" : Screen.Windows.front()->Shown.State.Title(), title);
  }
  // The last two have one name, and so one id and one key: trades still come to the other one.
  Close(*Screen.Windows[0]);
  EXPECT_EQ(Desk.State->BooksByKey.at(Screen.Windows[1]->Shown.ProfileKey), &Screen.Windows[1]->Shown);
  Close(*Screen.Windows[1]);
  EXPECT_EQ(InLists(), 0u);
}

TEST_F(BookModelTest, ReadsSettingsOfGridsAsStored) {
  GridSettings settings;
  EXPECT_FALSE(ReadGridSettings(kGridSettingsKey, settings, *Desk.State));
  EXPECT_TRUE(settings.WholeRowSel && settings.GridLine && Desk.State->MultipleTradeBookDisable);
  const auto write = [](const wchar_t* key, const wchar_t* text) {
    const auto store = CQORPRegistrySP::Create(0, 0);
    store->CreatePath(L"PLUGINDLLS\\Trade Book\\TradeBook");
    store->Write(key, std::wstring(text));
  };
  write(L"SellColor", L"-1"), write(L"ColumnFreeze", L"2147483647"), write(L"HeaderHide", L"many");
  for (const wchar_t* font : {L"f4ffffff", L"f4f", L"", L"0000008000000000000000000000000000ffff7f"}) {
    write(L"Font", font);
    settings.Font = GridFont{};
    EXPECT_TRUE(ReadGridSettings(kGridSettingsKey, settings, *Desk.State));
    EXPECT_FALSE(settings.Font) << "too short";
  }
  EXPECT_EQ(settings.SellColor, 0xFFFFFFFFu);
  EXPECT_EQ(settings.BuyColor, 0xFF0000u);
  EXPECT_EQ(settings.ColumnFreeze, 2147483647);
  EXPECT_FALSE(settings.WholeRowSel || settings.GridLine || settings.HeaderHide);
  EXPECT_FALSE(Desk.State->MultipleTradeBookDisable);
  EXPECT_TRUE(Desk.State->TradeStore.AutoTradeWriteCSV) << "the one switch that is on where none is stored";
}

}  // namespace

#include "book_windows/model/book_state.h"

#include <gtest/gtest.h>

#include <fstream>

#include "grid_base/settings/registry_store.h"
#include "tests/book_windows/book_desk.h"
#include "tests/support/fake_books.h"
#include "tests/support/files.h"

namespace {

constexpr const char* kAll = "Trade Book : All";
constexpr const char* kBlank = "Trade Book : ";
constexpr const char* kGold = "Trade Book : COMEX GOLD 201312";

class BookLayoutTest : public testing::Test {
 protected:
  BookLayoutTest() { Start(); }
  void Start() {
    Registry.reset();
    Desk.StartAgain();
    Registry = std::make_unique<BookRegistry>(*Desk.State, *Desk.Functions, Screen, BookDesk::OnPluginMessage());
    Screen.Registry = Registry.get();
    Desk.Connect(*Registry);
  }
  std::filesystem::path File() const { return Desk.Folder / "stored.xml"; }
  void Save() { Registry->SaveBookLayout(*RegistryStore::Make(File())->Open(0, 0)); }
  void Restore() { Registry->RestoreBookLayout(*RegistryStore::Make(File())->Open(0, 1)); }
  void StoreEntries(const std::string& entries) const {
    WriteFile(File(), "<CURRENT_USER><PLUGINDLLS><TradeBook><RecentFiles>" + entries +
                          "</RecentFiles></TradeBook></PLUGINDLLS></CURRENT_USER>");
  }
  FakeBookWindow& OpenGold(const char* exchange = "COMEX", const char* name = "GOLD 201312") {
    BookDesk::Select(exchange, "GC1", name);
    Registry->OpenNewBook();
    return *Screen.Windows.back();
  }
  std::map<std::string, std::string> Titles() const {
    std::map<std::string, std::string> titles;
    for (const auto& [id, book] : Registry->BarsById) titles[book->Name] = book->State.Title();
    return titles;
  }

  BookDesk Desk;
  FakeBookScreen Screen;
  std::unique_ptr<BookRegistry> Registry;
};

TEST_F(BookLayoutTest, EachStateHasItsStoredName) {
  using enum RestoredState;
  const struct {
    const char *ScriptTitle, *AllMark, *CurrentTitle, *Written;
    RestoredState Back;
  } kRows[] = {{kGold, "", kGold, kGold, Security}, {kGold, "", "", kGold, Security},
               {kGold, "", kAll, kAll, Widened},    {kGold, kAll, kAll, nullptr, Security},
               {"", "", "", kBlank, Blank},         {"", kAll, kAll, kAll, All},
               {"", "", kAll, kAll, All},           {"", kAll, "", kAll, All}};
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.ScriptTitle + std::string("|") + row.AllMark + "|" + row.CurrentTitle);
    BookState state;
    state.ScriptTitle = row.ScriptTitle, state.AllMark = row.AllMark, state.CurrentTitle = row.CurrentTitle;
    BookRecord record;
    record.Security = KeyOf("COMEX", "GC1");
    record.ScriptTitle = row.ScriptTitle;
    record.ScriptTradeName = ScriptTradeNameOf(state);
    EXPECT_EQ(record.ScriptTradeName, row.Written == nullptr ? std::nullopt : std::optional<std::string>(row.Written));
    EXPECT_EQ(RestoredStateOf(record), row.Back);
    record.Security.Exchange[0] = '\0';
    EXPECT_EQ(RestoredStateOf(record), row.Back == Security ? Unknown : row.Back);
  }
}

TEST_F(BookLayoutTest, WritesEveryValueInItsOrder) {
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
  Registry->CloseBook(window.Shown, BookRegistry::Close::HideBar);
  Save();
  EXPECT_EQ(ReadFile(File()), text) << "no book is open: nothing is written, and nothing goes";
}

TEST_F(BookLayoutTest, BooksComeBackInTheirStates) {
  for (const char step : {'S', 'A', 'W', 'B'}) {
    if (step == 'S' || step == 'W') OpenGold();
    if (step == 'A' || step == 'B') BookDesk::SelectNothing(), Registry->OpenNewBook();
    Book& book = Screen.Windows.back()->Shown;
    if (step == 'W') book.Widen();
    if (step == 'B') Registry->OnEscape(book);
  }
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
  const struct {
    const char* Title;
    std::size_t Rows;
    bool Averages;
  } kBooks[] = {{kGold, 1, true}, {kAll, 0, false}, {kAll, 0, false}, {kBlank, 1, false}};
  for (std::size_t i = 0; i < std::size(kBooks); ++i) {
    SCOPED_TRACE(i);
    FakeBookWindow& window = *Screen.Windows[i];
    const std::string number = std::to_string(i + 1), key = kBooks[i].Title + ("TradeBook " + number) + number;
    EXPECT_EQ(window.TakeNotes(), "settings; rows replaced; totals; title " + std::string(kBooks[i].Title) + "; load " +
                                      key + "; show; focus bar; rows replaced; totals");
    EXPECT_EQ(window.Shown.Rows.RowCount(), kBooks[i].Rows);
    EXPECT_EQ(window.Shown.State.ShowsAverages(), kBooks[i].Averages);
    EXPECT_EQ(Desk.State->BooksByKey.at(key), &window.Shown);
    EXPECT_EQ(Registry->BooksByWindow.at(window.GridAddress()), &window.Shown);
  }
  EXPECT_EQ(Screen.Windows[3]->At.Rect, (SettingsRectangle{5, 6, 700, 800}));
  EXPECT_EQ(Screen.Windows[0]->Shown.Line.TextOf(SummaryValue::BuyAvg), L"2.50") << "by the restored multiplier";
  Registry->OnEscape(Screen.Windows[2]->Shown);
  EXPECT_EQ(Screen.Windows[2]->Shown.State.Title(), kGold) << "a widened book still knows its security";
  EXPECT_EQ(Screen.Windows[2]->Shown.Rows.RowCount(), 1u);
  Desk.Trade(9, "COMEX", "GC1", 1, 5, 10);
  EXPECT_EQ(Screen.Windows[0]->Shown.Rows.RowCount(), 2u);
  EXPECT_EQ(Screen.Windows[1]->Shown.Rows.RowCount(), 1u);
  EXPECT_EQ(Screen.Windows[3]->Shown.Rows.RowCount(), 1u);
}

// Intentional: entries are overwritten and never removed.
TEST_F(BookLayoutTest, ClosedBooksComeBackFromOldEntries) {
  for (const char* exchange : {"COMEX", "NSEFO", "MCX"}) OpenGold(exchange);
  Save();
  const auto before = Titles();
  for (const std::size_t closed : {1u, 2u})
    Registry->CloseBook(Screen.Windows[closed]->Shown, BookRegistry::Close::HideBar);
  Desk.State->LastNum = 40;
  Save();
  Start();
  for (const char* exchange : {"COMEX", "NSEFO", "MCX"}) BookDesk::Select(exchange, "GC1");
  Restore();
  EXPECT_EQ(Titles(), before);
  EXPECT_EQ(Desk.State->LastNum, 3u) << "the last entry is an old one";
  EXPECT_STREQ(Desk.State->RestoredKey.Exchange, "MCX") << "entries are in the order of opening";
}

TEST_F(BookLayoutTest, TakesWhateverIsStored) {
  std::string twenty;
  for (int i = 1; i <= 20; ++i) {
    const std::string n = std::to_string(i);
    twenty += "<" + n + ">\"TradeBook " + n + "\"</" + n + "><LastNum" + n + ">\"" + std::to_string(40 + i) +
              "\"</LastNum" + n + "><Dock" + n + ">\"1\"</Dock" + n + ">";
  }
  const std::string one = "<1>\"TradeBook 1\"</1>";
  const std::string filter = "<ScriptName1>\"x\"</ScriptName1><FilterKeySecurityID1>\"GC1\"</FilterKeySecurityID1>";
  const struct {
    std::string Entries;
    std::size_t Books;
    std::uint32_t LastNum;
    std::string Title;  // of the first book
    std::size_t WithKey;
  } kStores[] = {
      {"", 0, 0, "", 0},
      {twenty, 15, 55, kBlank, 15},
      {one + "<3>\"TradeBook 3\"</3>", 1, 0, kBlank, 1},
      {"<1>\"\"</1><LastNum1>\"7\"</LastNum1><2>\"TradeBook 2\"</2><LastNum2>\"x\"</LastNum2>", 1, 0, kBlank, 1},
      {"<1>\"\"</1><LastNum1>\"7\"</LastNum1>", 0, 7, "", 0},
      {one + filter, 1, 0, "", 0},
      {one + filter + "<FilterKeyExchange1>\"COMEX\"</FilterKeyExchange1>", 1, 0, "Trade Book : COMEX ", 1},
      {one + filter + "<FilterKeyExchange1>\"" + std::string(60, 'E') + "\"</FilterKeyExchange1>", 1, 0,
       "Trade Book : " + std::string(48, 'E') + " ", 1},
      {one + "<ScriptTradeName1>\"Trade Book : All\"</ScriptTradeName1>" + one, 1, 0, kAll, 1},
      {one + "<2>\"TradeBook 1\"</2>", 2, 0, kBlank, 1},
      {one + "<2>TradeBook 2</2>", 0, 0, "", 0},
      {one + "<LastNum1>\"-1\"</LastNum1>", 1, 4294967295, kBlank, 1},
      {"<1><Rect1>\"x\"</Rect1></1><2>\"" + std::string(100'000, 'T') + "\"</2>", 1, 0, kBlank, 1},
      {one + "<ScriptName1>\"" + std::string(100'000, 'x') +
           "\"</ScriptName1><ScriptTradeName1>\"Trade Book : All\"</ScriptTradeName1><Rect1>\"" +
           std::string(100'000, '7') + "\"</Rect1>",
       1, 0, kAll, 1},
  };
  for (const auto& store : kStores) {
    SCOPED_TRACE(store.Entries.substr(0, 300));
    Start();
    fakeTerminal.BarIds["TradeBook 1"] = 1;
    StoreEntries(store.Entries);
    Restore();
    ASSERT_EQ(Registry->BooksByWindow.size(), store.Books);
    EXPECT_EQ(Desk.State->LastNum, store.LastNum);
    EXPECT_EQ(Desk.State->BooksByKey.size(), store.WithKey);
    EXPECT_EQ(store.Books == 0 ? "" : Screen.Windows.front()->Shown.State.Title(), store.Title);
  }
}

// An old entry has the name, and so the id and the key, of an open book.
TEST_F(BookLayoutTest, EachOfTwoBooksOfOneNameCloses) {
  StoreEntries("<1>\"TradeBook 1\"</1><2>\"TradeBook 1\"</2>");
  Restore();
  ASSERT_EQ(Screen.Windows.size(), 2u);
  Book &older = Screen.Windows[0]->Shown, &newer = Screen.Windows[1]->Shown;
  Registry->CloseBook(older, BookRegistry::Close::HideBar);
  EXPECT_EQ(Desk.State->BooksByKey.at(newer.ProfileKey), &newer) << "trades still come to the other one";
  Registry->CloseBook(newer, BookRegistry::Close::HideBar);
  EXPECT_TRUE(Registry->BarsById.empty() && Registry->BooksByWindow.empty() && Desk.State->BooksByKey.empty());
}

// A security name that looks like a tag; the file cut at every byte; every byte broken.
TEST_F(BookLayoutTest, SurvivesNamesAndDamage) {
  OpenGold("COMEX", "</RecentFiles><1>");
  BookDesk::SelectNothing();
  Registry->OpenNewBook();
  Save();
  const std::string text = ReadFile(File());
  const auto restoreComplains = [&](const std::string& stored) {
    Start();
    BookDesk::Select("COMEX", "GC1", "</RecentFiles><1>");
    WriteFile(File(), stored);
    testing::internal::CaptureStderr();
    Restore();
    return !testing::internal::GetCapturedStderr().empty();
  };
  EXPECT_FALSE(restoreComplains(text));
  EXPECT_EQ(Titles(), (std::map<std::string, std::string>{{"TradeBook 1", "Trade Book : COMEX </RecentFiles><1>"},
                                                          {"TradeBook 2", kAll}}));
  for (std::size_t cut = 1; cut + 2 < text.size(); ++cut) {
    EXPECT_TRUE(restoreComplains(text.substr(0, cut))) << cut;
    ASSERT_TRUE(Registry->BarsById.empty()) << cut;
  }
  const std::string breaks("<>\"/ \0", 6);
  for (std::size_t at = 0; at < text.size(); at += 5) {
    std::string broken = text;
    broken[at] = breaks[at % breaks.size()];
    restoreComplains(broken);
    EXPECT_LE(Registry->BooksByWindow.size(), 2u) << at;
  }
}

}  // namespace

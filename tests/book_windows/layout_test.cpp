#include "book_windows/windows/book_layout.h"

#include <wx/display.h>

#include <fstream>
#include <sstream>

#include "book_windows/model/layout_record.h"
#include "foundations/text_tools.h"
#include "grid_base/settings/registry_store.h"
#include "tests/book_windows/books_fixture.h"

namespace {

constexpr const char* kAll = "Trade Book : All";
constexpr const char* kGold = "Trade Book : COMEX GOLD 201312";

// The corners as the file writes a rectangle: the bytes of four 32-bit numbers, the lowest first.
std::string HexOf(const wxRect& rect) {
  std::string hex;
  for (const int edge : {rect.x, rect.y, rect.x + rect.width, rect.y + rect.height})
    for (int shift = 0; shift < 32; shift += 8)
      for (const int nibble : {shift + 4, shift}) hex += "0123456789abcdef"[edge >> nibble & 0xF];
  return hex;
}

class LayoutTest : public BooksTest {
 protected:
  std::filesystem::path File() const { return Folder / "stored.xml"; }
  void Save() { SaveBookLayout(*List, *RegistryStore::Make(File())->Open(0, 0)); }
  void Restore() {
    RestoreBookLayout(*List, *RegistryStore::Make(File())->Open(0, 1));
    Pump();
  }
  void StoreText(const std::string& entries) const {
    std::ofstream(File(), std::ios::binary) << "<CURRENT_USER><PLUGINDLLS><TradeBook><RecentFiles>" << entries
                                            << "</RecentFiles></TradeBook></PLUGINDLLS></CURRENT_USER>";
  }
  std::string StoredText() const {
    std::stringstream text;
    text << std::ifstream(File(), std::ios::binary).rdbuf();
    return text.str();
  }
  CTradeBookBar& Book(std::uint32_t number) { return BarOf(number); }
};

TEST_F(LayoutTest, EachStateHasItsStoredName) {
  using enum RestoredState;
  const struct {
    const char *ScriptTitle, *AllMark, *CurrentTitle, *Written;
    RestoredState Back;
  } kRows[] = {{kGold, "", kGold, kGold, Security},
               {kGold, "", "", kGold, Security},
               {kGold, "", kAll, kAll, Widened},
               {kGold, kAll, kAll, nullptr, Security},
               {"", "", "", "Trade Book : ", Blank},
               {"", kAll, kAll, kAll, All},
               {"", "", kAll, kAll, All},
               {"", kAll, "", kAll, All}};
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

TEST_F(LayoutTest, WritesEveryValueInItsOrder) {
  CTradeBookBar& book = OpenFor("COMEX", "GC1");
  book.DockControlBar(DockSide::Bottom);
  State->LastNum = 12;
  Pump();
  Save();
  const std::string text = StoredText();
  EXPECT_EQ(text.substr(0, text.find("\r\n</RecentFiles>")),
            "<CURRENT_USER>\r\n<PLUGINDLLS>\r\n<TradeBook>\r\n<RecentFiles>\r\n<1>\"TradeBook 1\"</1>\r\n"
            "<FilterKeyExchange1>\"COMEX\"</FilterKeyExchange1>\r\n"
            "<FilterKeySecurityID1>\"GC1\"</FilterKeySecurityID1>\r\n"
            "<ScriptName1>\"Trade Book : COMEX GOLD 201312\"</ScriptName1>\r\n<LastNum1>\"12\"</LastNum1>\r\n"
            "<ScriptTradeName1>\"Trade Book : COMEX GOLD 201312\"</ScriptTradeName1>\r\n"
            "<Dock1>\"1\"</Dock1>\r\n<Tab1>\"0\"</Tab1>\r\n<Rect1>\"" +
                HexOf(book.GetScreenRect()) + "\"</Rect1>");
  EXPECT_NE(text.find("</RecentFiles>\r\n</TradeBook>\r\n</PLUGINDLLS>\r\n<TradeBook:COMEXGOLD201312TradeBook11>\r\n"
                      "<Bar-1>\"1;docked;1;100;100;530;300;bottom;"),
            std::string::npos)
      << text;
  EXPECT_TRUE(std::filesystem::exists(Folder / "ColumnProfile" / "Trade Book" / "ColumnProfile.xml"));
  book.OnPressCloseButton();
  Save();
  EXPECT_EQ(StoredText(), text) << "no book is open: nothing is written, and nothing goes";
}

// A second run over the same files: titles, rows and places are those of the first.
TEST_F(LayoutTest, BooksComeBackToTheirPlaces) {
  const struct {
    std::function<void(CTradeBookBar&)> Change;
    const char* Title;
    int Rows;
  } kBooks[] = {
      {[](auto& bar) { bar.DockControlBar(DockSide::Left); }, kGold, 1},
      {[](auto& bar) { bar.DockControlBar(DockSide::Left); }, kAll, 0},
      {[](auto& bar) { bar.Grid()->State.Widen(), bar.FollowState(), bar.TabControlBar(); }, kAll, 0},
      {[this](auto& bar) {
         List->NarrowToFilter(bar), bar.FloatControlBar({320, 210, 444, 222});
       },
       "Trade Book : ", 1},
      {[](auto& bar) { bar.DockControlBar(DockSide::Left); }, kGold, 1},
      {[](auto& bar) { bar.DockControlBar(DockSide::Top); }, kAll, 0},
  };
  std::map<std::uint32_t, wxRect> places;
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < std::size(kBooks); ++i) {
    terminal.Answer = i % 2 == 0 ? KeyOf("COMEX", "GC1") : FilterKey{};
    List->OpenNewBook();
    Pump();
  }
  for (std::size_t i = std::size(kBooks); i-- > 0;) {  // those at one side stand in the order of their docking
    kBooks[i].Change(Book(static_cast<std::uint32_t>(i + 1)));
    Pump();
  }
  const auto place = [](CTradeBookBar& bar) { return bar.IsFloating() ? bar.GetFloatRect() : bar.GetScreenRect(); };
  for (const auto& [id, bar] : List->BarsById) places[id] = place(*bar);
  Save();
  Stop();
  Start();
  terminal.KnowsSecurities = true;
  Trade(1, "COMEX", "GC1", 1, 5, 10);
  Trade(2, "COMEX", "GC2", 1, 5, 10);
  Trade(3, "", "", 1, 5, 10);
  Restore();
  ASSERT_EQ(List->BarsById.size(), 6u);
  EXPECT_EQ(State->LastNum, 6u);
  number = 0;
  for (const auto& book : kBooks) {
    SCOPED_TRACE(++number);
    CTradeBookBar& bar = Book(number);
    EXPECT_EQ(bar.GetBarTitle(), NarrowToWide(std::string(book.Title)));
    EXPECT_EQ(bar.Grid()->GetVirtualRows(), book.Rows);
    EXPECT_EQ(bar.Dialog->GetStatic(30043)->IsShown(), book.Title == std::string(kGold));
    EXPECT_TRUE(
        State->BooksByKey.contains(book.Title + ("TradeBook " + std::to_string(number)) + std::to_string(number)));
    EXPECT_TRUE(List->BooksByWindow.contains(bar.Grid()));
    EXPECT_TRUE(PumpUntil([&] { return place(bar) == places[number]; }));
  }
  EXPECT_TRUE(Book(3).IsMDITabbed());
  Book(3).NarrowToFilter();
  EXPECT_EQ(Book(3).GetBarTitle(), NarrowToWide(std::string(kGold))) << "a widened book still knows its security";
  EXPECT_EQ(Book(3).Grid()->GetVirtualRows(), 1);
  Trade(9, "COMEX", "GC1", 1, 5, 10);
  Beat();
  EXPECT_EQ(Book(1).Grid()->GetVirtualRows(), 2);
  EXPECT_EQ(Book(2).Grid()->GetVirtualRows(), 1);
  EXPECT_EQ(Book(4).Grid()->GetVirtualRows(), 1);
  EXPECT_EQ(List->BarsById.size(), 6u);
}

// Entries are overwritten and never taken out, so that books closed since come back as they were then: meant so.
TEST_F(LayoutTest, ClosedBooksComeBackFromOldEntries) {
  for (const char* exchange : {"COMEX", "NSEFO", "MCX"}) OpenFor(exchange, "GC1");
  Save();
  const auto titles = [this] {
    std::map<std::uint32_t, std::wstring> all;
    for (const auto& [id, bar] : List->BarsById) all[id] = bar->GetBarTitle();
    return all;
  };
  const auto before = titles();
  for (const std::uint32_t closed : {2u, 3u}) Book(closed).OnPressCloseButton();
  State->LastNum = 40;
  Save();
  Stop();
  Start();
  terminal.KnowsSecurities = true;
  Restore();
  EXPECT_EQ(titles(), before);
  EXPECT_EQ(List->BooksByWindow.size(), 3u);
  EXPECT_EQ(State->LastNum, 3u) << "the last entry is an old one";
  EXPECT_STREQ(State->RestoredKey.Exchange, "MCX") << "entries are in the order in which the books were opened";
}

// Nothing is selected in another window yet: the multiplier is that of the security which was brought back.
TEST_F(LayoutTest, AveragesAreOfTheRestoredSecurity) {
  OpenFor("COMEX", "GC1");
  Save();
  Stop();
  Start();
  terminal.KnowsSecurities = true;
  terminal.Multiplier = 4;
  Trade(1, "COMEX", "GC1", 1, 5, 10);
  Trade(2, "COMEX", "GC1", 2, 2, 14);
  Restore();
  EXPECT_STREQ(State->RestoredKey.Exchange, "COMEX");
  EXPECT_STREQ(State->RestoredKey.SecurityID, "GC1");
  EXPECT_EQ(Summary(Book(1), 30043), L"2.50");
  EXPECT_EQ(Summary(Book(1), 30045), L"3.50");
}

TEST_F(LayoutTest, ABookOfNoStoredPlaceFloatsInItsRectangle) {
  StoreText("<1>\"TradeBook 1\"</1><Rect1>\"36010000d2000000f2020000b0010000\"</Rect1>");
  Restore();
  EXPECT_TRUE(PumpUntil([this] { return Book(1).GetFloatRect() == wxRect(310, 210, 444, 222); }));
  EXPECT_TRUE(Book(1).IsFloating());
}

// Whatever the store holds: so many books of it, on the screen.
TEST_F(LayoutTest, TakesOnlyWhatCanBeTaken) {
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
    const wchar_t* Title;  // of the first book
    std::size_t WithKey;
  } kStores[] = {
      {"", 0, 0, L"", 0},
      {twenty, 15, 55, L"Trade Book : ", 15},
      {one + "<3>\"TradeBook 3\"</3>", 1, 0, L"Trade Book : ", 1},
      {"<1>\"\"</1><LastNum1>\"7\"</LastNum1><2>\"TradeBook 2\"</2><LastNum2>\"x\"</LastNum2>", 1, 0, L"Trade Book : ",
       1},
      {"<1>\"\"</1><LastNum1>\"7\"</LastNum1>", 0, 7, L"", 0},
      {one + filter, 1, 0, L"TradeBook 1", 0},
      {one + filter + "<FilterKeyExchange1>\"COMEX\"</FilterKeyExchange1>", 1, 0, L"Trade Book : COMEX ", 1},
      {one + filter + "<FilterKeyExchange1>\"" + std::string(60, 'E') + "\"</FilterKeyExchange1>", 1, 0,
       L"Trade Book : EEEEEEEEEEEEEEEEEEEEEEEEEEEEEEEEEEEEEEEEEEEEEEEE ", 1},
      {one + "<Rect1>\"000000800000008000ffff7fffffff7f\"</Rect1>", 1, 0, L"Trade Book : ", 1},
      {one + "<Rect1>\"ffffff7fffffff7f0000008000000080\"</Rect1>", 1, 0, L"Trade Book : ", 1},
      {one + "<Rect1>\"409c0000409c000080a9000080a90000\"</Rect1>", 1, 0, L"Trade Book : ", 1},
      {one + "<Rect1>\"0a000000feffffff\"</Rect1>", 1, 0, L"Trade Book : ", 1},
      {one + "<ScriptTradeName1>\"Trade Book : All\"</ScriptTradeName1>" + one, 1, 0, L"Trade Book : All", 1},
      {one + "<2>\"TradeBook 1\"</2>", 2, 0, L"Trade Book : ", 1},
      {one + "<2>TradeBook 2</2>", 0, 0, L"", 0},
      {one + "<LastNum1>\"-1\"</LastNum1>", 1, 4294967295, L"Trade Book : ", 1},
      {"<1><Rect1>\"x\"</Rect1></1><2>\"" + std::string(100'000, 'T') + "\"</2>", 1, 0, L"Trade Book : ", 1},
      {one + "<ScriptName1>\"" + std::string(100'000, 'x') +
           "\"</ScriptName1><ScriptTradeName1>\"Trade Book : All\"</ScriptTradeName1><Rect1>\"" +
           std::string(100'000, '7') + "\"</Rect1>",
       1, 0, L"Trade Book : All", 1},
  };
  for (const auto& store : kStores) {
    SCOPED_TRACE(store.Entries.substr(0, 300));
    Stop();
    Start();
    StoreText(store.Entries);
    Restore();
    ASSERT_EQ(List->BooksByWindow.size(), store.Books);
    EXPECT_EQ(State->LastNum, store.LastNum);
    EXPECT_EQ(State->BooksByKey.size(), store.WithKey);
    if (store.Books == 0) continue;
    const CTradeBookBar& bar = *List->BarsById.begin()->second;
    EXPECT_EQ(bar.GetBarTitle(), store.Title);
    EXPECT_TRUE(bar.IsFloating()) << "what is stored of dock and tab is not read";
    EXPECT_TRUE(wxDisplay(0U).GetGeometry().Contains(bar.GetFloatRect().GetPosition() + wxPoint(40, 12)));
    EXPECT_TRUE(wxRect(wxSize(4000, 4000)).Contains(wxRect(bar.GetFloatRect().GetSize())));
  }
}

// An old entry has the name, and so the id and the key, of a book that is open.
TEST_F(LayoutTest, EachOfTwoBooksOfOneNameCloses) {
  StoreText("<1>\"TradeBook 1\"</1><2>\"TradeBook 1\"</2>");
  Restore();
  ASSERT_EQ(List->BarsById.size(), 2u);
  CTradeBookBar &older = *List->BarsById.begin()->second, &newer = *List->BarsById.rbegin()->second;
  older.OnPressCloseButton();
  EXPECT_FALSE(older.IsBarShown());
  EXPECT_TRUE(State->BooksByKey.contains(newer.ProfileKey)) << "trades still come to the other one";
  newer.OnPressCloseButton();
  EXPECT_FALSE(newer.IsBarShown());
  EXPECT_TRUE(List->BarsById.empty() && List->BooksByWindow.empty() && State->BooksByKey.empty());
}

// A name of the terminal's that looks like a tag; the file cut at every seventh byte; a byte of it broken here and
// there.
TEST_F(LayoutTest, NeitherNamesNorDamageHideOtherBooks) {
  terminal.SecurityName = "</RecentFiles><1>";
  OpenFor("COMEX", "GC1").DockControlBar(DockSide::Bottom);
  terminal.Answer = {};
  List->OpenNewBook();
  Pump();
  Save();
  const std::string text = StoredText();
  // Whether the store complained. The window system may have something of its own to say.
  const auto restoreComplains = [&](const std::string& stored) {
    std::ofstream(File(), std::ios::binary) << stored;
    testing::internal::CaptureStderr();
    Restore();
    return testing::internal::GetCapturedStderr().find("stored.xml cannot be read") != std::string::npos;
  };
  Stop();
  Start();
  terminal.KnowsSecurities = true;
  terminal.SecurityName = "</RecentFiles><1>";
  EXPECT_FALSE(restoreComplains(text));
  ASSERT_EQ(List->BarsById.size(), 2u);
  EXPECT_EQ(Book(1).GetBarTitle(), L"Trade Book : COMEX </RecentFiles><1>");
  EXPECT_TRUE(Book(1).IsDocked()) << "its place was found under its title";
  EXPECT_EQ(Book(2).GetBarTitle(), L"Trade Book : All");
  Stop();
  Start();
  for (std::size_t cut = 0; cut + 2 < text.size(); cut += 7) {
    EXPECT_TRUE(restoreComplains(text.substr(0, cut))) << cut;
    ASSERT_TRUE(List->BarsById.empty()) << cut;
  }
  const std::string breaks("<>\"/ \0", 6);
  for (std::size_t at = 0; at < text.size(); at += 61) {
    Stop();
    Start();
    std::string broken = text;
    broken[at] = breaks[at % breaks.size()];
    restoreComplains(broken);
    EXPECT_LE(List->BooksByWindow.size(), 2u) << at;
  }
}

}  // namespace

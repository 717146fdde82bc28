#include "terminal/watch/market_watch.h"

#include "terminal/lists/list_rows.h"
#include "tests/terminal/test_files.h"

namespace {

class MarketWatchTest : public testing::Test {
 protected:
  // The shown rows in one column, from the top down.
  std::wstring Column(std::size_t column) const {
    std::wstring text;
    for (std::size_t place = 0; place < Shown.Count(); ++place) text += Watch.Text(*Shown.RowAt(place), column) + L" ";
    return text;
  }

  TestReport BadLines;
  SecurityList Securities{WriteSecurities("ARCA,IBM,IBM,BIG BLUE,EQ,,XX,0,1\nNYSE,IBM,IBM,BIG BLUE,EQ,,XX,0,1\n"
                                          "ARCA,BAC,BAC,BANK,EQ,,XX,0,1\n"),
                          BadLines};
  MarketWatch Watch{Securities};
  ListRows Shown{Watch};
};

TEST_F(MarketWatchTest, SumsUpTrades) {
  Watch.OnTradeSent({"NYSE", "IBM", {}, {}, {}, "20131007-09:30:01", 1000, 1182.5});
  Watch.OnTradeSent({"NYSE", "IBM", {}, {}, {}, "20131007-09:30:02", 2345, 1180});
  Watch.OnTradeSent({"NYSE", "IBM", {}, {}, {}, "20131007-09:30:03", 5, 1181.25});
  Watch.OnTradeSent({"NEW", "X", "SYM", "NAME", "201312", "20131007-09:30:00", 1, 2});
  EXPECT_TRUE(Shown.TakeChanges().Moved);
  EXPECT_EQ(Column(9), L" 3  1 ") << "nothing for a security without trades";
  std::wstring texts;
  for (std::size_t column = 0; column < Watch.Columns().size(); ++column) texts += Watch.Text(1, column) + L"|";
  EXPECT_EQ(texts, L"NYSE|IBM|IBM|BIG BLUE||1,181.25|-1.25|-0.11|3,350|3|09:30:03|");
  EXPECT_EQ(Watch.Value(1, 10), SheetValue(std::int64_t{1381138203}));
  EXPECT_TRUE(Watch.TrendAt(1, 5) == Trend::Up && Watch.TrendAt(1, 6) == Trend::Down) << "the last change, and all";
  EXPECT_EQ(Watch.At(3).Name, "NAME") << "a security that is not listed";
  EXPECT_EQ(Watch.Find("BAC"), ListRow{2});
  EXPECT_EQ(Watch.Find("bac"), std::nullopt);
  Watch.ForgetTrades();
  EXPECT_EQ(Column(8), L"    ");
  Watch.OnTradeSent({"NYSE", "IBM", {}, {}, {}, {}, 1, 5});
  EXPECT_EQ(Watch.At(1).Change(), 0);
}

TEST_F(MarketWatchTest, SortsTradedRowsBeforeOthers) {
  Watch.OnTradeSent({"ARCA", "BAC", {}, {}, {}, {}, 1, 13});
  Watch.OnTradeSent({"ARCA", "IBM", {}, {}, {}, {}, 1, 182});
  Shown.SortBy(5, true);
  EXPECT_EQ(Column(1) + Column(0), L"BAC IBM IBM ARCA ARCA NYSE ");
  Shown.SortBy(5, false);
  EXPECT_EQ(Column(1), L"IBM BAC IBM ");
  Watch.OnTradeSent({"ARCA", "BAC", {}, {}, {}, {}, 1, 200});
  EXPECT_EQ(Column(1), L"IBM BAC IBM ") << "until the next beat";
  Shown.TakeChanges();
  EXPECT_EQ(Column(1), L"BAC IBM IBM ");
  Shown.SortBy(1, false);
  EXPECT_EQ(Column(0), L"ARCA NYSE ARCA ") << "equal rows keep the order of the file";
  Shown.SortBy(std::nullopt, true);
  EXPECT_EQ(Column(1), L"IBM IBM BAC ");
}

TEST_F(MarketWatchTest, KeepsARowFreshForOneBeat) {
  std::string beats;
  for (const bool trades : {false, false, true, true, false, false}) {
    if (trades) Watch.OnTradeSent({"ARCA", "IBM", {}, {}, {}, {}, 1, 1});
    const ListChanges changes = Watch.TakeChanges();
    beats += changes.All ? " all" : " " + std::to_string(changes.Rows.size());
    if (Watch.IsFresh(0)) beats += "+fresh";
  }
  EXPECT_EQ(beats, " all 0 1+fresh 2+fresh 1 0");
}

}  // namespace

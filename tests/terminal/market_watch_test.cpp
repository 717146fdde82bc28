#include "terminal/watch/market_watch.h"

#include "tests/terminal/test_files.h"

namespace {

class MarketWatchTest : public testing::Test {
 protected:
  // All rows in one column, from the top down.
  std::string Column(std::size_t column) const {
    std::string text;
    for (int row = 0; row < Watch.Rows(); ++row) text += kWatchColumns[column].Text(Watch.RowAt(row)) + " ";
    return text;
  }

  TestReport BadLines;
  SecurityList Securities{WriteSecurities("ARCA,IBM,IBM,BIG BLUE,EQ,,XX,0,1\nNYSE,IBM,IBM,BIG BLUE,EQ,,XX,0,1\n"
                                          "ARCA,BAC,BAC,BANK,EQ,,XX,0,1\n"),
                          BadLines};
  MarketWatch Watch{Securities};
};

TEST_F(MarketWatchTest, SumsUpTrades) {
  Watch.OnTradeSent({"NYSE", "IBM", {}, {}, {}, "20131007-09:30:01", 1000, 1182.5});
  Watch.OnTradeSent({"NYSE", "IBM", {}, {}, {}, "20131007-09:30:02", 2345, 1180});
  Watch.OnTradeSent({"NYSE", "IBM", {}, {}, {}, "20131007-09:30:03", 5, 1181.25});
  Watch.OnTradeSent({"NEW", "X", "SYM", "NAME", "201312", "20131007-09:30:00", 1, 2});
  EXPECT_EQ(Column(9), "0 3 0 1 ");
  const WatchRow& row = Watch.RowAt(1);
  std::string texts;
  for (const WatchColumn& column : kWatchColumns) texts += column.Text(row) + "|";
  EXPECT_EQ(texts, "NYSE|IBM|IBM|BIG BLUE||1,181.25|-1.25|-0.11|3,350|3|09:30:03|");
  EXPECT_TRUE(row.Tick == Trend::Up && row.ChangeTrend() == Trend::Down);  // the last change, and all of them
  EXPECT_EQ(Watch.RowAt(3).Name, "NAME");                                  // a security that is not listed
  EXPECT_EQ(std::pair(Watch.RowOf("BAC"), Watch.RowOf("bac")), std::pair(2, -1));
  Watch.ForgetTrades();
  EXPECT_EQ(Column(8), "0 0 0 0 ");
  Watch.OnTradeSent({"NYSE", "IBM", {}, {}, {}, {}, 1, 5});
  EXPECT_EQ(Watch.RowAt(1).Change(), 0);
}

TEST_F(MarketWatchTest, SortsTradedRowsBeforeOthers) {
  Watch.OnTradeSent({"ARCA", "BAC", {}, {}, {}, {}, 1, 13});
  Watch.OnTradeSent({"ARCA", "IBM", {}, {}, {}, {}, 1, 182});
  Watch.SortBy(5, true);
  EXPECT_EQ(Column(1) + Column(0), "BAC IBM IBM ARCA ARCA NYSE ");
  Watch.SortBy(5, false);
  EXPECT_EQ(Column(1), "IBM BAC IBM ");
  const std::size_t bank = Watch.IdentityAt(1);
  Watch.OnTradeSent({"ARCA", "BAC", {}, {}, {}, {}, 1, 200});
  EXPECT_EQ(Column(1), "IBM BAC IBM ");  // until the next beat
  EXPECT_TRUE(Watch.TakeChanges());
  EXPECT_EQ(Column(1), "BAC IBM IBM ");
  EXPECT_EQ(Watch.RowOfIdentity(bank), 0);
  Watch.SortBy(1, false);
  EXPECT_EQ(Column(0), "ARCA NYSE ARCA ");  // equal rows keep the order of the file
  Watch.SortBy(std::nullopt, true);
  EXPECT_EQ(Column(1), "IBM IBM BAC ");
}

TEST_F(MarketWatchTest, KeepsARowFreshForOneBeat) {
  std::string beats;
  for (const bool trades : {false, false, true, true, false, false}) {
    if (trades) Watch.OnTradeSent({"ARCA", "IBM", {}, {}, {}, {}, 1, 1});
    beats += Watch.TakeChanges() ? " changed" : " same";
    if (Watch.IsFresh(Watch.RowAt(0))) beats += "+fresh";
  }
  EXPECT_EQ(beats, " changed same changed+fresh changed+fresh changed same");
}

TEST(MarketWatchText, SeparatesThousands) {
  const std::pair<double, const char*> cases[] = {
      {1313.4, "1,313.40"}, {0.05, "0.05"}, {-0.00001, "0.00"}, {0.12345, "0.1235"}, {-1234567.125, "-1,234,567.125"},
      {999, "999.00"},      {0, "0.00"},    {1e300 * 1e300, ""}};
  for (const auto& [price, text] : cases) EXPECT_EQ(PriceText(price), text);
  EXPECT_EQ(WithThousands(0) + " " + WithThousands(999) + " " + WithThousands(1000), "0 999 1,000");
}

}  // namespace

#include "terminal/watch/market_watch.h"

#include <gtest/gtest.h>

#include <sstream>

#include "tests/terminal/test_files.h"

namespace {

class MarketWatchTest : public testing::Test {
 protected:
  void Trade(const std::string& exchange, const std::string& id, double price, std::uint32_t quantity = 1,
             const std::string& time = "20131007-09:30:00") {
    TradePrint print{{}, {}, "SYM", "NAME", "201312", {}, quantity, price};
    exchange.copy(print.Exchange, TradePrint::kLongestText);
    id.copy(print.SecurityID, TradePrint::kLongestText);
    time.copy(print.Time, TradePrint::kLongestText);
    Watch.OnTradeSent(print);
  }
  // All rows in one column, from the top down.
  std::string Column(std::size_t column) const {
    std::string text;
    for (int row = 0; row < Watch.Rows(); ++row) text += kWatchColumns[column].Text(Watch.RowAt(row)) + " ";
    return text;
  }

  std::ostringstream Reports;
  BadLineReport BadLines{Reports};
  SecurityList Securities{WriteSecurities("ARCA,IBM,IBM,BIG BLUE,EQ,,XX,0,1\n"
                                          "NYSE,IBM,IBM,BIG BLUE,EQ,,XX,0,1\n"
                                          "ARCA,BAC,BAC,BANK,EQ,,XX,0,1\n"),
                          BadLines};
  MarketWatch Watch{Securities};
};

TEST_F(MarketWatchTest, SumsUpTrades) {
  Trade("NYSE", "IBM", 1182.5, 1000, "20131007-09:30:01");
  Trade("NYSE", "IBM", 1180, 2345, "20131007-09:30:02");
  Trade("NYSE", "IBM", 1181.25, 5, "20131007-09:30:03");
  Trade("NEW", "X", 2);
  ASSERT_EQ(Watch.Rows(), 4);
  EXPECT_EQ(Watch.RowAt(0).Trades, 0U);
  const WatchRow& row = Watch.RowAt(1);
  const char* const expected[] = {"NYSE",  "IBM",   "IBM",   "BIG BLUE", "",        "1,181.25",
                                  "-1.25", "-0.11", "3,350", "3",        "09:30:03"};
  for (std::size_t column = 0; column < kWatchColumnCount; ++column)
    EXPECT_EQ(kWatchColumns[column].Text(row), expected[column]) << column;
  EXPECT_EQ(row.Tick, Trend::Up);             // of the last change
  EXPECT_EQ(row.ChangeTrend(), Trend::Down);  // against the first price
  EXPECT_EQ(Watch.RowAt(3).Name, "NAME");     // a security that is not listed
  EXPECT_EQ(Watch.RowOf("BAC"), 2);
  EXPECT_EQ(Watch.RowOf("bac"), -1);
  Watch.ForgetTrades();
  EXPECT_EQ(Watch.Rows(), 4);
  EXPECT_EQ(Column(8), "0 0 0 0 ");
  Trade("NYSE", "IBM", 5);
  EXPECT_EQ(Watch.RowAt(1).Change(), 0);
}

TEST_F(MarketWatchTest, SortsTradedRowsBeforeOthers) {
  Trade("ARCA", "BAC", 13);
  Trade("ARCA", "IBM", 182);
  Watch.SortBy(5, true);
  EXPECT_EQ(Column(1), "BAC IBM IBM ");
  EXPECT_EQ(Column(0), "ARCA ARCA NYSE ");
  Watch.SortBy(5, false);
  EXPECT_EQ(Column(1), "IBM BAC IBM ");
  const std::size_t bank = Watch.IdentityAt(1);
  Trade("ARCA", "BAC", 200);
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
  EXPECT_TRUE(Watch.TakeChanges());
  EXPECT_FALSE(Watch.TakeChanges());
  Trade("ARCA", "IBM", 1);
  EXPECT_TRUE(Watch.TakeChanges());
  EXPECT_TRUE(Watch.IsFresh(Watch.RowAt(0)));
  Trade("ARCA", "IBM", 1);
  EXPECT_TRUE(Watch.TakeChanges());
  EXPECT_TRUE(Watch.IsFresh(Watch.RowAt(0)));
  EXPECT_TRUE(Watch.TakeChanges());
  EXPECT_FALSE(Watch.IsFresh(Watch.RowAt(0)));
  EXPECT_FALSE(Watch.TakeChanges());
}

TEST(MarketWatchText, SeparatesThousands) {
  const std::pair<double, const char*> cases[] = {
      {1313.4, "1,313.40"}, {0.05, "0.05"}, {-0.00001, "0.00"}, {0.12345, "0.1235"}, {-1234567.125, "-1,234,567.125"},
      {999, "999.00"},      {0, "0.00"},    {1e300 * 1e300, ""}};
  for (const auto& [price, text] : cases) EXPECT_EQ(PriceText(price), text);
  const std::pair<std::uint64_t, const char*> numbers[] = {
      {0, "0"}, {999, "999"}, {1000, "1,000"}, {18446744073709551615U, "18,446,744,073,709,551,615"}};
  for (const auto& [number, text] : numbers) EXPECT_EQ(WithThousands(number), text);
}

}  // namespace

#include "grid_ops/exports/trade_file_text.h"

#include <gtest/gtest.h>

#include "tests/grid_ops/export_sample.h"

namespace {

// The cell of a column in the FO file and in the CM file, with "|" between them.
std::string CellsOf(const TradeRecord& record, int column, const PriceDivisors& divisors = kNoDivisors,
                    const char* fallback = "") {
  return TradeCellTextFO(divisors, "", record, column, fallback) + "|" +
         TradeCellTextCM(divisors, "", record, column, fallback);
}

constexpr int kStrike = TradeColumnIndex("colStrikePrice"), kPrice = TradeColumnIndex("colPrice"),
              kOption = TradeColumnIndex("colOptionType"), kOpenClose = TradeColumnIndex("colOpenClose"),
              kSide = TradeColumnIndex("colSide"), kTime = TradeColumnIndex("colExchangeTradeTime"),
              kSymbol = TradeColumnIndex("colSymbol"), kExpiry = TradeColumnIndex("colExpiryDate");

TEST(TradeFileText, KeepsTheWidthRulesAtTheirEdges) {
  TradeRecord record = FullTrade();
  const auto strike = [&](double value) { return record.StrikePrice = value, CellsOf(record, kStrike); };
  for (const double none : {0.0, -0.01, 0.001}) EXPECT_EQ(strike(none), "          |") << none;
  EXPECT_EQ(strike(-0.02), "     -0.02|");
  EXPECT_EQ(strike(-0.001), "     -0.00|");
  EXPECT_EQ(strike(12345678.5), "12345678.50|");
  EXPECT_EQ(strike(1e300).substr(0, 17), "10000000000000000");
  const auto price = [&](double value) { return record.Price = value, CellsOf(record, kPrice); };
  EXPECT_EQ(price(1234.5), "     1234.50|     1234.50");
  EXPECT_EQ(price(123456789), "123456789.00|123456789.00");
  EXPECT_EQ(price(-123456789), "-123456789.00|-123456789.00");
  EXPECT_EQ(price(1e300).size(), 127U + 1 + 127);
  const auto option = [&](const char* text) { return PutText(record.OptionType, text), CellsOf(record, kOption); };
  EXPECT_EQ(option("XX") + option("XXY") + option(""), "  |XXY|  |");
  const auto position = [&](std::uint8_t code) { return record.OpenClose = code, CellsOf(record, kOpenClose); };
  EXPECT_EQ(position(0) + position(1) + position(2) + position(99), "OPEN |NCLOSE |NCLOSE|NOPEN |N");
  const auto side = [&](std::uint8_t code) { return record.Side = code, CellsOf(record, kSide); };
  EXPECT_EQ(side(1) + side(0), "1|12|2");
  EXPECT_EQ(CellsOf(record, TradeColumnIndex("colServer")), "|") << "no width";
  PutText(record.Symbol, "   ");
  EXPECT_EQ(CellsOf(record, kSymbol), "|");
  PutText(record.ExchangeTradeTime, "10:15:02");
  EXPECT_EQ(CellsOf(record, kTime), "01 JAN 1970 00:00:00|01 JAN 1970 00:00:00");
}

TEST(TradeFileText, PrintsTheLinkedMaster) {
  const SecurityMaster master{0, "MCX", "77", "F", "GOLD ", "05DEC2024", "XX", "", 3, 100};
  TradeRecord record = FullTrade();
  record.MasterRecord = &master;
  const std::pair<int, const char*> kRows[] = {{TradeColumnIndex("colExchange"), "MCX|MCX"},
                                               {TradeColumnIndex("colSecurityID"), "77|77"},
                                               {kSymbol, "GOLD      |GOLD      "},
                                               {TradeColumnIndex("colSecurityType"), "F     |"},
                                               {kOption, "  |"},
                                               {kStrike, "      3.00|"},
                                               {TradeColumnIndex("colMultiplier"), "100.00|100.00"},
                                               {TradeColumnIndex("colClientID"), "CLIENT07  |CLIENT07  "}};
  for (const auto& [column, cells] : kRows)
    for (const char* fallback : {"", "else"}) EXPECT_EQ(CellsOf(record, column, {}, fallback), cells) << column;
  EXPECT_EQ(CellsOf(record, kExpiry), "29FEB2024|05DEC2024");
  EXPECT_EQ(CellsOf(record, kExpiry, {}, "else"), "05DEC2024|05DEC2024");
}

TEST(TradeFileText, DividesThePriceByAliasOrSymbolOfTheMaster) {
  const PriceDivisors divisors = {{"GOLD ", 10}, {"ALIAS", 100}, {"ABCD  ", 7}};
  SecurityMaster master{};
  PutText(master.Symbol, "GOLD ");
  TradeRecord record = FullTrade();
  EXPECT_EQ(CellsOf(record, kPrice, divisors), "      101.75|      101.75");
  record.MasterRecord = &master;
  EXPECT_EQ(CellsOf(record, kPrice, divisors), "       10.18|       10.18");
  PutText(master.Alias, "ALIAS");
  EXPECT_EQ(CellsOf(record, kPrice, divisors), "        1.02|        1.02");
  PutText(master.Alias, "other");
  EXPECT_EQ(CellsOf(record, kPrice, divisors), "      101.75|      101.75");
}

// One object for all rows and two rounds, so that each result meets the cache of others.
TEST(StoredTimeText, ConvertsAnyTimeAfterAnyOther) {
  const char* const kRows[][2] = {
      {"20260301-09:15:30", "01 MAR 2026 09:15:30"}, {"20260301-09:15:31.250", "01 MAR 2026 09:15:31"},
      {"20260301-25:00:00", "02 MAR 2026 01:00:00"}, {"20260301-23:59:59", "01 MAR 2026 23:59:59"},
      {"20260301-23:59:60", "02 MAR 2026 00:00:00"}, {"20260301-24:00:00", "02 MAR 2026 00:00:00"},
      {"20260301-09:60:00", "01 MAR 2026 10:00:00"}, {"20260301-2a:60:00", "01 MAR 2026 03:00:00"},
      {"20260301-09.15.30", "01 MAR 2026 09:15:30"}, {"20260301 09:15:30", "01 MAR 2026 09:15:30"},
      {"20260230-00:00:00", "02 MAR 2026 00:00:00"}, {"00260301-01:02:03", "01 MAR 2026 01:02:03"},
      {"19690101-09:15:30", "                    "}, {"19690101-09:15:31", "                    "},
      {"30010101-00:00:00", "                    "}, {"20260301-09:15:3", "01 JAN 1970 00:00:00"},
      {"20260302-09:15:30", "02 MAR 2026 09:15:30"},
  };
  StoredTimeText times;
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(times.Of(""), "01 JAN 1970 00:00:00");
    for (const auto& row : kRows) EXPECT_EQ(times.Of(row[0]), row[1]) << row[0];
  }
}

}  // namespace

#include "grid_ops/exports/trade_file_text.h"

#include <gtest/gtest.h>

#include "tests/grid_ops/export_sample.h"

namespace {

struct Edge {
  const char* What;
  void (*Change)(TradeRecord& record);
  int Column;
  const char* FO;
  const char* CM;
};

constexpr int kStrike = TradeColumnIndex("colStrikePrice"), kPrice = TradeColumnIndex("colPrice"),
              kOption = TradeColumnIndex("colOptionType"), kOpenClose = TradeColumnIndex("colOpenClose"),
              kSide = TradeColumnIndex("colSide"), kTime = TradeColumnIndex("colExchangeTradeTime"),
              kSymbol = TradeColumnIndex("colSymbol"), kExpiry = TradeColumnIndex("colExpiryDate");

const Edge kEdges[] = {
    {"no strike", [](TradeRecord& r) { r.StrikePrice = 0; }, kStrike, "          ", ""},
    {"strike of -0.01", [](TradeRecord& r) { r.StrikePrice = -0.01; }, kStrike, "          ", ""},
    {"small strike", [](TradeRecord& r) { r.StrikePrice = 0.001; }, kStrike, "          ", ""},
    {"strike of -0.02", [](TradeRecord& r) { r.StrikePrice = -0.02; }, kStrike, "     -0.02", ""},
    {"strike that rounds to -0.00", [](TradeRecord& r) { r.StrikePrice = -0.001; }, kStrike, "     -0.00", ""},
    {"long strike", [](TradeRecord& r) { r.StrikePrice = 12345678.5; }, kStrike, "12345678.50", ""},
    {"price", [](TradeRecord& r) { r.Price = 1234.5; }, kPrice, "     1234.50", "     1234.50"},
    {"full price", [](TradeRecord& r) { r.Price = 123456789; }, kPrice, "123456789.00", "123456789.00"},
    {"long price", [](TradeRecord& r) { r.Price = -123456789; }, kPrice, "-123456789.00", "-123456789.00"},
    {"XX", [](TradeRecord& r) { PutText(r.OptionType, "XX"); }, kOption, "  ", ""},
    {"longer than XX", [](TradeRecord& r) { PutText(r.OptionType, "XXY"); }, kOption, "XXY", ""},
    {"no option", [](TradeRecord& r) { PutText(r.OptionType, ""); }, kOption, "  ", ""},
    {"no position", [](TradeRecord& r) { r.OpenClose = 0; }, kOpenClose, "OPEN ", "N"},
    {"open", [](TradeRecord& r) { r.OpenClose = 1; }, kOpenClose, "CLOSE ", "N"},
    {"close", [](TradeRecord& r) { r.OpenClose = 2; }, kOpenClose, "CLOSE", "N"},
    {"unknown position", [](TradeRecord& r) { r.OpenClose = 99; }, kOpenClose, "OPEN ", "N"},
    {"buy", [](TradeRecord& r) { r.Side = 1; }, kSide, "1", "1"},
    {"no side", [](TradeRecord& r) { r.Side = 0; }, kSide, "2", "2"},
    {"blank symbol", [](TradeRecord& r) { PutText(r.Symbol, "   "); }, kSymbol, "", ""},
    {"short time", [](TradeRecord& r) { PutText(r.ExchangeTradeTime, "10:15:02"); }, kTime, "01 JAN 1970 00:00:00",
     "01 JAN 1970 00:00:00"},
    {"time before 1970", [](TradeRecord& r) { PutText(r.ExchangeTradeTime, "19691231-10:15:02"); }, kTime,
     "                    ", "                    "},
};

TEST(TradeFileText, KeepsTheWidthRulesAtTheirEdges) {
  for (const Edge& edge : kEdges) {
    SCOPED_TRACE(edge.What);
    TradeRecord record = FullTrade();
    edge.Change(record);
    EXPECT_EQ(TradeCellTextFO({}, "", record, edge.Column, ""), edge.FO);
    EXPECT_EQ(TradeCellTextCM({}, "", record, edge.Column, ""), edge.CM);
  }
}

TEST(TradeFileText, CutsANumberAfter127Characters) {
  TradeRecord record{};
  record.Price = record.StrikePrice = 1e300;
  EXPECT_EQ(TradeCellTextFO({}, "", record, kPrice, "").size(), 127U);
  EXPECT_EQ(TradeCellTextFO({}, "", record, kStrike, "").substr(0, 17), "10000000000000000");
}

TEST(TradeFileText, PrintsTheLinkedMaster) {
  SecurityMaster master{};
  PutText(master.Exchange, "MCX");
  PutText(master.SecurityID, "77");
  PutText(master.SecurityType, "F");
  PutText(master.Symbol, "GOLD ");
  PutText(master.ExpiryDate, "05DEC2024");
  PutText(master.OptionType, "XX");
  master.StrikePrice = 3;
  master.Multiplier = 100;
  TradeRecord record = FullTrade();
  record.MasterRecord = &master;
  const struct {
    int Column;
    const char *FO, *CM;
  } rows[] = {
      {TradeColumnIndex("colExchange"), "MCX", "MCX"},
      {TradeColumnIndex("colSecurityID"), "77", "77"},
      {kSymbol, "GOLD      ", "GOLD      "},
      {kExpiry, "29FEB2024", "05DEC2024"},
      {TradeColumnIndex("colSecurityType"), "F     ", ""},
      {kOption, "  ", ""},
      {kStrike, "      3.00", ""},
      {TradeColumnIndex("colMultiplier"), "100.00", "100.00"},
      {TradeColumnIndex("colClientID"), "CLIENT07  ", "CLIENT07  "},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Column);
    EXPECT_EQ(TradeCellTextFO({}, "", record, row.Column, ""), row.FO);
    EXPECT_EQ(TradeCellTextFO({}, "", record, row.Column, "else"), row.Column == kExpiry ? "05DEC2024" : row.FO);
    EXPECT_EQ(TradeCellTextCM({}, "", record, row.Column, ""), row.CM);
  }
}

TEST(TradeFileText, DividesThePriceByAliasOrSymbolOfTheMaster) {
  const PriceDivisors divisors = {{"GOLD ", 10}, {"ALIAS", 100}, {"ABCD  ", 7}};
  SecurityMaster master{};
  PutText(master.Symbol, "GOLD ");
  TradeRecord record = FullTrade();
  EXPECT_EQ(TradeCellTextFO(divisors, "", record, kPrice, ""), "      101.75");
  record.MasterRecord = &master;
  EXPECT_EQ(TradeCellTextFO(divisors, "", record, kPrice, ""), "       10.18");
  PutText(master.Alias, "ALIAS");
  EXPECT_EQ(TradeCellTextCM(divisors, "", record, kPrice, ""), "        1.02");
  PutText(master.Alias, "other");
  EXPECT_EQ(TradeCellTextFO(divisors, "", record, kPrice, ""), "      101.75");
}

// One object for all rows and two rounds, so that each result meets the cache of others.
TEST(StoredTimeText, ConvertsAnyTimeAfterAnyOther) {
  const struct {
    const char *Stored, *Text;
  } rows[] = {
      {"", "01 JAN 1970 00:00:00"},
      {"20260301-09:15:30", "01 MAR 2026 09:15:30"},
      {"20260301-09:15:31.250", "01 MAR 2026 09:15:31"},
      {"20260301-25:00:00", "02 MAR 2026 01:00:00"},
      {"20260301-23:59:59", "01 MAR 2026 23:59:59"},
      {"20260301-23:59:60", "02 MAR 2026 00:00:00"},
      {"20260301-24:00:00", "02 MAR 2026 00:00:00"},
      {"20260301-09:60:00", "01 MAR 2026 10:00:00"},
      {"20260301-2a:60:00", "01 MAR 2026 03:00:00"},
      {"20260301-09.15.30", "01 MAR 2026 09:15:30"},
      {"20260301 09:15:30", "01 MAR 2026 09:15:30"},
      {"20260230-00:00:00", "02 MAR 2026 00:00:00"},
      {"00260301-01:02:03", "01 MAR 2026 01:02:03"},
      {"19690101-09:15:30", "                    "},
      {"19690101-09:15:31", "                    "},
      {"30010101-00:00:00", "                    "},
      {"20260301-09:15:3", "01 JAN 1970 00:00:00"},
      {"20260302-09:15:30", "02 MAR 2026 09:15:30"},
  };
  StoredTimeText times;
  for (int round = 0; round < 2; ++round)
    for (const auto& row : rows) EXPECT_EQ(times.Of(row.Stored), row.Text) << row.Stored;
}

}  // namespace

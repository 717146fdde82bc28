#include "trade_data/daily_file/daily_file.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <map>
#include <random>
#include <string>

#include "tests/support/sample_trade.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::string ValueOf(const char* name, const TradeRecord& record) {
  const DailyColumn* column = FindDailyColumn(name);
  if (column == nullptr) return "no column";
  LineBuffer line;
  line.Start(LongestDailyValue("Default"));
  column->Append(line, record, "Default");
  return std::string(line.Text());
}

TEST(DailyColumnsTest, WritesEachColumn) {
  const char* const kRows[][2] = {
      {"Server", "Default"},
      {"UserID", "USER1"},
      {"VELDTradeID", "-2130574588"},
      {"VELDOrderID", "16910597"},
      {"OrderID", "4711"},
      {"ExchangeOrderID", "1100000000012345"},
      {"ExchangeTradeID", "XTRADE-77"},
      {"OrderTime", "10:15:00"},
      {"ExchangeOrderTime", "10:15:01"},
      {"ExchangeTradeTime", "10:15:02"},
      {"Exchange", "NSEFO"},
      {"SecurityID", "35001"},
      {"Symbol", "ABCD"},
      {"ExpiryDate", "29FEB2024"},
      {"SecurityType", "OPTSTK"},
      {"Side", "Sell"},
      {"OrderType", "StopLimit"},
      {"Quantity", "150"},
      {"PendingQuantity", "50"},
      {"Price", "101.75"},
      {"StrikePrice", "2450.5"},
      {"CTCLId", "400123456789"},
      {"ClientID", "CLIENT07"},
      {"ReferenceText", "ref, first"},
      {"MemberID", "MEM12"},
      {"StrategyID", "68"},
      {"OptionType", "CE"},
      {"ProductType", "INTRADAY"},
      {"OpenClose", "CloseYesterday"},
      {"ManagerID", "MGR"},
      {"Pancard", "PANCD1234F"},
      {"TerminalInfo", "T-24"},
      {"Multiplier", "0.25"},
      {"AlgoID", "ALGO9"},
  };
  for (const auto& row : kRows) EXPECT_EQ(ValueOf(row[0], SampleRecord()), row[1]) << row[0];
}

TEST(DailyColumnsTest, PrefersTheMasterOfASecurity) {
  const SecurityMaster master{77, "MX", "MID", "MTYPE", "MSYM", "MEXP", "PE", "Master name", 1.5, 2.5};
  TradeRecord record = SampleRecord();
  record.MasterRecord = &master;
  const char* const kRows[][2] = {{"Exchange", "MX"},     {"SecurityID", "MID"},  {"SecurityType", "MTYPE"},
                                  {"Symbol", "MSYM"},     {"ExpiryDate", "MEXP"}, {"OptionType", "PE"},
                                  {"StrikePrice", "1.5"}, {"Multiplier", "2.5"},  {"Price", "101.75"}};
  for (const auto& row : kRows) EXPECT_EQ(ValueOf(row[0], record), row[1]) << row[0];
}

TEST(DailyColumnsTest, RejectsUnknownColumnNames) {
  for (const char* name : {"", " ", "Serve", "Servers", "server", "UserID ", " UserID", "ExchangeOrderNo", "CTCLID",
                           "Time", "Quantity\t", "Side\r", "Text55107", "Server,"})
    EXPECT_EQ(FindDailyColumn(name), nullptr) << '"' << name << '"';
}

TEST(DailyColumnsTest, WritesCodesAsTexts) {
  using Texts = std::map<unsigned, const char*>;
  const struct {
    const char* Column;
    Texts OfCodes;
    const char* Other;
  } kRows[] = {
      {"Side", {{1, "Buy"}, {2, "Sell"}}, "Both"},
      {"ProductType", {{1, "NORMAL"}, {2, "DELIVERY"}, {3, "INTRADAY"}}, "*"},
      {"OpenClose",
       {{1, "Open"},
        {2, "Close"},
        {3, "ForceClose"},
        {4, "CloseToday"},
        {5, "CloseYesterday"},
        {6, "ForceOff"},
        {7, "LocalForceClose"}},
       "NONE"},
      {"OrderType",
       {{1, "Market"},
        {2, "Limit"},
        {3, "StopMarket"},
        {4, "StopLimit"},
        {11, "OCO"},
        {74, "MIT"},
        {78, "NegotiatedDealOrder"},
        {80, "PreOpenOrder"},
        {82, "MITLimit"},
        {87, "AuctionBuyIn"},
        {88, "AuctionSellOut"},
        {89, "AuctionTradingBuyIn"},
        {90, "AuctionTradingSellOut"},
        {101, "MultiLeg"},
        {102, "Spread"}},
       ""},
  };
  for (const auto& row : kRows)
    for (unsigned code = 0; code < 258; ++code) {
      TradeRecord record{};
      record.Side = record.OrderType = record.OpenClose = static_cast<std::uint8_t>(code);
      record.ProductType = code;
      const unsigned shown = row.Column == std::string("ProductType") ? code : code % 256;
      const auto text = row.OfCodes.find(shown);
      EXPECT_EQ(ValueOf(row.Column, record), text == row.OfCodes.end() ? row.Other : text->second) << code;
    }
}

TEST(DailyColumnsTest, WritesTheLongestValues) {
  TradeRecord record{};
  std::memset(record.ReferenceText, 'r', 64);
  record.Price = -1.23456e-300;
  record.Quantity = 0x80000000u;
  EXPECT_EQ(ValueOf("ReferenceText", record), std::string(64, 'r'));
  EXPECT_EQ(ValueOf("Price", record), "-1.23456e-300");
  EXPECT_EQ(ValueOf("Quantity", record), "-2147483648");
}

std::string Printed(double value) {
  char text[kLongestDouble];
  return std::string(text, PrintDouble(text, value));
}

TEST(PrintDoubleTest, PrintsSixDigits) {
  const struct {
    double Value;
    const char* Text;
  } kRows[] = {
      {0.0, "0"},
      {-0.0, "-0"},
      {1234.05, "1234.05"},
      {12345.55, "12345.5"},  // the double is below the tie
      {99999.95, "99999.9"},
      {999999.4, "999999"},
      {999999.5, "1e+06"},
      {0.00012, "0.00012"},
      {0.00001, "1e-05"},
      {10.00005, "10"},
      {-101.75, "-101.75"},
      {5e-324, "4.94066e-324"},
      {1.7976931348623157e308, "1.79769e+308"},
      {0.1 + 0.2, "0.3"},
      {-kInfinity, "-inf"},
      {std::numeric_limits<double>::quiet_NaN(), "nan"},
  };
  for (const auto& row : kRows) EXPECT_EQ(Printed(row.Value), row.Text);
}

TEST(PrintDoubleTest, AgreesWithTheStandardLibrary) {
  const auto check = [](double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.6g", value);
    ASSERT_EQ(Printed(value), text);
  };
  for (int decimals = 0; decimals <= 6; ++decimals)
    for (int i = 0; i < 12000; ++i) {
      const double value = (i * 83) / std::pow(10.0, decimals);
      for (const double each : {value, -value, std::nextafter(value, kInfinity), std::nextafter(value, -kInfinity)})
        ASSERT_NO_FATAL_FAILURE(check(each));
    }
  std::mt19937_64 random(11);
  for (int i = 0; i < 60000; ++i) {
    const std::uint64_t bits = random();
    double value;
    std::memcpy(&value, &bits, sizeof value);
    if (std::isnan(value)) continue;
    ASSERT_NO_FATAL_FAILURE(check(value));
    ASSERT_NO_FATAL_FAILURE(check(std::ldexp(static_cast<double>(bits >> 11), -static_cast<int>(bits % 64))));
  }
}

}  // namespace

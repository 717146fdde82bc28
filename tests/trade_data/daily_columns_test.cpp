#include "trade_data/daily_file/daily_file.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
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

TEST(DailyColumnsTest, EachColumnWritesItsValue) {
  const struct {
    const char *Name, *Value;
  } kRows[] = {{"Server", "Default"},
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
               {"AlgoID", "ALGO9"}};
  for (const auto& row : kRows) EXPECT_EQ(ValueOf(row.Name, SampleRecord()), row.Value) << row.Name;
}

TEST(DailyColumnsTest, AMasterOverridesItsSecurity) {
  const SecurityMaster master{77, "MX", "MID", "MTYPE", "MSYM", "MEXP", "PE", "Master name", 1.5, 2.5};
  TradeRecord record = SampleRecord();
  record.MasterRecord = &master;
  const char* const kRows[][2] = {{"Exchange", "MX"},     {"SecurityID", "MID"},  {"SecurityType", "MTYPE"},
                                  {"Symbol", "MSYM"},     {"ExpiryDate", "MEXP"}, {"OptionType", "PE"},
                                  {"StrikePrice", "1.5"}, {"Multiplier", "2.5"},  {"Price", "101.75"}};
  for (const auto& row : kRows) EXPECT_EQ(ValueOf(row[0], record), row[1]) << row[0];
}

TEST(DailyColumnsTest, OtherNamesAreNoColumns) {
  for (const char* name :
       {"",        " ",          "Serve",       "Servers",   "server",          "SERVER",       "UserId",
        "UserID ", " UserID",    "VELDTradeId", "TradeID",   "ExchangeOrderNo", "Symbols",      "Prices",
        "price",   "CTCLID",     "CTCL",        "AlgoId",    "AlgoIDs",         "AlgoCategory", "ParticipantID",
        "Time",    "Quantity\t", "Side\r",      "Text55107", "MultiplierX",     "Server,"})
    EXPECT_EQ(FindDailyColumn(name), nullptr) << '"' << name << '"';
}

TEST(DailyColumnsTest, CodesHaveTexts) {
  const struct {
    std::uint8_t Code;
    const char *Side, *OrderType, *ProductType, *OpenClose;
  } kRows[] = {
      {0, "Both", "", "*", "NONE"},
      {1, "Buy", "Market", "NORMAL", "Open"},
      {2, "Sell", "Limit", "DELIVERY", "Close"},
      {3, "Both", "StopMarket", "INTRADAY", "ForceClose"},
      {4, "Both", "StopLimit", "*", "CloseToday"},
      {5, "Both", "", "*", "CloseYesterday"},
      {6, "Both", "", "*", "ForceOff"},
      {7, "Both", "", "*", "LocalForceClose"},
      {8, "Both", "", "*", "NONE"},
      {11, "Both", "OCO", "*", "NONE"},
      {74, "Both", "MIT", "*", "NONE"},
      {78, "Both", "NegotiatedDealOrder", "*", "NONE"},
      {80, "Both", "PreOpenOrder", "*", "NONE"},
      {82, "Both", "MITLimit", "*", "NONE"},
      {87, "Both", "AuctionBuyIn", "*", "NONE"},
      {88, "Both", "AuctionSellOut", "*", "NONE"},
      {89, "Both", "AuctionTradingBuyIn", "*", "NONE"},
      {90, "Both", "AuctionTradingSellOut", "*", "NONE"},
      {91, "Both", "", "*", "NONE"},
      {101, "Both", "MultiLeg", "*", "NONE"},
      {102, "Both", "Spread", "*", "NONE"},
      {255, "Both", "", "*", "NONE"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(int{row.Code});
    TradeRecord record{};
    record.Side = record.OrderType = record.OpenClose = row.Code;
    record.ProductType = row.Code;
    EXPECT_EQ(ValueOf("Side", record), row.Side);
    EXPECT_EQ(ValueOf("OrderType", record), row.OrderType);
    EXPECT_EQ(ValueOf("ProductType", record), row.ProductType);
    EXPECT_EQ(ValueOf("OpenClose", record), row.OpenClose);
  }
  TradeRecord record{};
  record.ProductType = 257;
  EXPECT_EQ(ValueOf("ProductType", record), "*");
}

TEST(DailyColumnsTest, LongestValuesFit) {
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

TEST(PrintDoubleTest, LiteralValues) {
  const struct {
    double Value;
    const char* Text;
  } kRows[] = {{0.0, "0"},
               {-0.0, "-0"},
               {1.0, "1"},
               {100.0, "100"},
               {0.05, "0.05"},
               {101.75, "101.75"},
               {1234.05, "1234.05"},
               {12345.05, "12345"},
               {12345.55, "12345.5"},  // the double lies below the tie
               {99999.95, "99999.9"},
               {123456.0, "123456"},
               {999999.0, "999999"},
               {999999.5, "1e+06"},
               {999999.4, "999999"},
               {1000000.0, "1e+06"},
               {1234567.0, "1.23457e+06"},
               {0.0001, "0.0001"},
               {0.00012, "0.00012"},
               {0.00001, "1e-05"},
               {0.12345, "0.12345"},
               {1.00005, "1.00005"},
               {10.00005, "10"},  // so does this one
               {10.00015, "10.0001"},
               {0.5, "0.5"},
               {2.5, "2.5"},
               {-101.75, "-101.75"},
               {1e300, "1e+300"},
               {5e-324, "4.94066e-324"},
               {1.7976931348623157e308, "1.79769e+308"},
               {0.1 + 0.2, "0.3"},
               {kInfinity, "inf"},
               {-kInfinity, "-inf"},
               {std::numeric_limits<double>::quiet_NaN(), "nan"}};
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

#include "terminal/day/trade_message.h"

#include <gtest/gtest.h>

#include <sstream>

#include "tests/terminal/test_files.h"

namespace {

// Bytes written as hexadecimal digits, and as text between single quotes; blanks count for nothing.
std::string Bytes(const char* notation) {
  std::string bytes;
  for (const char* at = notation; *at != '\0';) {
    if (*at == ' ') {
      ++at;
    } else if (*at == '\'') {
      while (*++at != '\'') bytes += *at;
      ++at;
    } else {
      bytes += static_cast<char>(std::stoi(std::string(at, 2), nullptr, 16));
      at += 2;
    }
  }
  return bytes;
}

constexpr const char* kGoldenMessage[] = {
    "23 0100 0000 23 1127 9301",          // header: 403 bytes follow
    "23 1227 8D23",                       // 10002: 9101
    "23 D9D6 0500 'ANITA'",               // 55001 user
    "23 284E 01000000",                   // 20008 trade
    "23 294E 01000000",                   // 20009 order
    "23 3DD7 0600 '700001'",              // 55101 trade number of the exchange
    "23 3CD7 0400 '1100'",                // 55100 order number of the exchange
    "23 FFFF",                            // end of the key section
    "23 E2D6 0400 'ARCA'",                // 55010 exchange
    "23 40D7 0300 'IBM'",                 // 55104 security id
    "23 41D7 0200 'EQ'",                  // 55105 security type
    "23 3FD7 0300 'IBM'",                 // 55103 symbol
    "23 67D7 0000",                       // 55143 expiry
    "23 42D7 0200 'XX'",                  // 55106 option type
    "23 449C 0000000000000000",           // 40004 strike
    "23 489C 000000000000F03F",           // 40008 multiplier 1.0
    "23 43D7 0800 'BIG BLUE'",            // 55107 name
    "23 4ED7 1100 '20131007-00:00:01'",   // 55118 time of the trade
    "23 2B4E 21A10700",                   // 20011 500001
    "23 4CD7 1100 '20131007-00:00:01'",   // 55116
    "23 4DD7 1100 '20131007-00:00:01'",   // 55117
    "23 6500 02",                         // 101 sell
    "23 6600 02",                         // 102 limit
    "23 744E 03000000",                   // 20084 product
    "23 2E4E 19000000",                   // 20014 quantity 25
    "23 2D4E 00000000",                   // 20013 pending
    "23 444E 00000000",                   // 20036
    "23 429C 0000000000D06640",           // 40002 price 182.5
    "23 EAD6 0500 'DESK1'",               // 55018 manager
    "23 3ED7 0500 'C1001'",               // 55102 client
    "23 5BD7 0500 '10412'",               // 55131 member
    "23 E4D6 0400 '4000'",                // 55012
    "23 45D7 0300 'ref'",                 // 55109 reference
    "23 644E 0B000000",                   // 20068 strategy 11
    "23 714E 00000000 23 724E 00000000",  // 20081, 20082
    "23 734E 00000000 23 6FD7 0000",      // 20083, 55151
    "23 7300 01",                         // 115 open
    "23 854E 00000000",                   // 20101
    "23 54D7 0800 'TERM-A01'",            // 55124
    "23 53D7 0A00 'AAAPA1001A'",          // 55123
    "23 20D8 0500 'ALGO7'",               // 55328
    "23 6B2B 0200",                       // 11115 category
    "23 21D8 0500 'PART9'",               // 55329
    "23 45D7 0300 'ref'",                 // 55109 once more
};

class TradeMessage : public testing::Test {
 protected:
  std::string MessageOf(const DayTrade& trade) {
    CQORPacketWriter writer(0);
    Messages.Write(trade, 9101, writer);
    writer.Finish();
    return {reinterpret_cast<const char*>(writer.GetData()), writer.GetSize()};
  }
  DayTrade FirstTrade() {
    TradeDay day(WriteTestFile("day.csv", kTradeHeader + TradeLine("20131007-00:00:01", "700001")), BadLines);
    DayTrade trade;
    EXPECT_TRUE(day.Next(trade));
    return trade;
  }

  std::ostringstream Reports;
  BadLineReport BadLines{Reports};
  OrderDesk Desk{WriteDesk(), BadLines};
  SecurityList Securities{WriteSecurities(), BadLines};
  TradeMessages Messages{Desk, Securities};
};

TEST_F(TradeMessage, HasTheseBytes) {
  std::string expected;
  for (const char* field : kGoldenMessage) expected += Bytes(field);
  EXPECT_EQ(MessageOf(FirstTrade()), expected);
  EXPECT_EQ(Reports.str(), "");
}

TEST_F(TradeMessage, SharesNumbersAmongFillsOfAnOrder) {
  const struct {
    const char *Order, *Time, *OrderNumber, *TradeNumber, *OrderTime;
  } fills[] = {
      {"1100", "20131007-00:00:01", "23294E01000000", "23284E01000000", "234DD71100'20131007-00:00:01'"},
      {"1100", "20131007-00:00:09", "23294E01000000", "23284E02000000", "234DD71100'20131007-00:00:01'"},
      {"1101", "20131007-00:00:09", "23294E02000000", "23284E03000000", "234DD71100'20131007-00:00:09'"},
  };
  DayTrade trade = FirstTrade();
  for (const auto& fill : fills) {
    SCOPED_TRACE(fill.TradeNumber);
    trade.ExchangeOrderNo = fill.Order;
    trade.ExchangeTradeTime.Text = fill.Time;
    const std::string message = MessageOf(trade);
    for (const char* field : {fill.OrderNumber, fill.TradeNumber, fill.OrderTime})
      EXPECT_NE(message.find(Bytes(field)), std::string::npos) << field;
  }
}

TEST_F(TradeMessage, GivesAnOrderTheSameDeskLineEverywhere) {
  std::string lines = kDeskHeader;
  for (const char* user : {"A", "B", "C", "D", "E"}) lines += user + std::string(",,,,,1,2,1,0,,,,0,,\n");
  const OrderDesk desk(WriteTestFile("five.csv", lines), BadLines);
  // FNV-1a of "" is 0xCBF29CE484222325 and of "a" 0xAF63DC4C8601EC8C, as its authors publish them: 2 and 1 modulo 5.
  EXPECT_EQ(desk.LineOf("").UserID, "C");
  EXPECT_EQ(desk.LineOf("a").UserID, "B");
}

}  // namespace

// The messages made of a day, their numbers, and how they are recorded.
#include <gtest/gtest.h>

#include <sstream>
#include <tuple>
#include <vector>

#include "terminal/common/errors.h"
#include "terminal/day/day_input.h"
#include "terminal/day/trade_message.h"
#include "tests/terminal/test_files.h"

namespace {

const std::string kTime = "20131007-00:00:01";

class TradeMessage : public testing::Test {
 protected:
  std::string MessageOf(const DayTrade& trade) {
    CQORPacketWriter writer(0);
    Messages.Write(trade, 9101, writer);
    writer.Finish();
    return {reinterpret_cast<const char*>(writer.GetData()), writer.GetSize()};
  }
  DayTrade FirstTrade() {
    TradeDay day(WriteTestFile("day.csv", kTradeHeader + TradeLine(kTime, "700001")), BadLines);
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

TEST_F(TradeMessage, HasTheseFieldsInThisOrder) {
  DayTrade made = FirstTrade();
  made.Symbol = "SYM";
  made.ExpiryDate = "201312";
  const std::string key = WireText(55001, "ANITA") + WireU32(20008, 1) + WireU32(20009, 1) + WireText(55101, "700001") +
                          WireText(55100, "1100") + WireTerminator();
  const std::string security = WireText(55010, "ARCA") + WireText(55104, "IBM") + WireText(55105, "EQ") +
                               WireText(55103, "SYM") + WireText(55143, "201312") + WireText(55106, "XX") +
                               WireDouble(40004, 0) + WireDouble(40008, 1) + WireText(55107, "BIG BLUE");
  const std::string trade = WireText(55118, kTime) + WireU32(20011, 500001) + WireText(55116, kTime) +
                            WireText(55117, kTime) + WireU8(101, 2) + WireU8(102, 2) + WireU32(20084, 3) +
                            WireU32(20014, 25) + WireU32(20013, 0) + WireU32(20036, 0) + WireDouble(40002, 182.5);
  const std::string desk = WireText(55018, "DESK1") + WireText(55102, "C1001") + WireText(55131, "10412") +
                           WireText(55012, "4000") + WireText(55109, "ref") + WireU32(20068, 11) + WireU32(20081, 0) +
                           WireU32(20082, 0) + WireU32(20083, 0) + WireText(55151, "") + WireU8(115, 1) +
                           WireU32(20101, 0) + WireText(55124, "TERM-A01") + WireText(55123, "AAAPA1001A") +
                           WireText(55328, "ALGO7") + WireU16(11115, 2) + WireText(55329, "PART9") +
                           WireText(55109, "ref");
  const std::string message = MessageOf(made);
  EXPECT_EQ(message, WireMessage(9101, key + security + trade + desk));
  EXPECT_EQ(Reports.str(), "");
  // What the market watch reads of it, which leaves the reader where it stood.
  const ExactBytes block(message);
  CQORPacketReader reader(block.Data(), block.Size());
  std::uint16_t needed = 0, consumed = 0;
  ASSERT_TRUE(reader.ParseHeader(needed, consumed));
  for (int time = 0; time < 2; ++time) {
    const TradePrint print = ReadTradePrint(reader);
    std::string texts;
    for (const char* text : {print.Exchange, print.SecurityID, print.Symbol, print.Name, print.ExpiryDate, print.Time})
      texts += std::string(text) + "|";
    EXPECT_EQ(texts, "ARCA|IBM|SYM|BIG BLUE|201312|" + kTime + "|");
    EXPECT_EQ(std::pair(print.Quantity, print.Price), std::pair(25U, 182.5));
  }
}

TEST_F(TradeMessage, SharesNumbersAmongFillsOfAnOrder) {
  // Order and time; the numbers of order and trade, and the order's time.
  const std::tuple<const char*, const char*, std::uint32_t, std::uint32_t, const char*> fills[] = {
      {"1100", "20131007-00:00:01", 1, 1, "20131007-00:00:01"},
      {"1100", "20131007-00:00:09", 1, 2, "20131007-00:00:01"},
      {"1101", "20131007-00:00:09", 2, 3, "20131007-00:00:09"}};
  DayTrade trade = FirstTrade();
  for (const auto& [order, time, orderNumber, tradeNumber, orderTime] : fills) {
    trade.ExchangeOrderNo = order;
    trade.ExchangeTradeTime.Text = time;
    const std::string message = MessageOf(trade);
    for (const std::string& field :
         {WireU32(20009, orderNumber), WireU32(20008, tradeNumber), WireText(55117, orderTime)})
      EXPECT_NE(message.find(field), std::string::npos) << tradeNumber;
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

using Kind = LiveFrom::Kind;

// The numbers that a day gives for a wire file, each as its reader says it and as its bytes do.
std::string Played(const std::string& bytes, LiveFrom liveFrom, std::string* reports = nullptr) {
  std::ostringstream told;
  BadLineReport badLines(told);
  NumberedDay script(OpenMessageDay(WriteTestFile("day.bin", bytes), badLines), liveFrom);
  std::string numbers;
  while (script.Next()) {
    const CQORPacketReader& message = script.Message();
    numbers += std::to_string(message.MessageNumber) + " ";
    EXPECT_EQ(LoadValue<std::uint16_t>(message.Data + message.Cursor - 2), message.MessageNumber);
  }
  if (reports != nullptr) *reports = Without(told.str(), PathText(TestFolder() / "day.bin") + ": ");
  return numbers;
}

TEST(NumberedDay, EndsEachDownloadOnce) {
  const LiveFrom asNumbered, third{Kind::Count, 2}, all{Kind::Count, 0};
  const std::tuple<std::vector<unsigned>, LiveFrom, const char*> cases[] = {
      {{}, asNumbered, "8112 "},
      {{8111, 8112, 9101}, asNumbered, "8111 8112 9101 "},
      {{8111, 8111}, asNumbered, "8111 8111 8112 "},
      {{8111, 9101, 9101}, asNumbered, "8111 8112 9101 9101 "},
      {{8111, 8112, 9101, 30022, 8111}, asNumbered, "8111 8112 9101 30022 8111 8112 "},
      {{9101, 30022, 9101}, asNumbered, "8112 9101 30022 8112 9101 "},
      {{8111, 9112, 8112, 12345}, asNumbered, "8111 9112 8112 12345 "},
      {{8111, 8112, 9101, 9101}, third, "8111 8111 8112 9101 "},
      {{9101, 9112, 8112, 9101}, third, "8111 9112 8111 8112 "},
      {{8111, 8111, 8112}, all, "8112 9101 9101 "},
      {{8111, 30022, 8111}, all, "8112 9101 30022 8112 9101 "},
  };
  for (const auto& [file, from, expected] : cases) {
    std::string bytes;
    for (const unsigned number : file) bytes += DayMessage(number);
    EXPECT_EQ(Played(bytes, from), expected);
  }
}

TEST(NumberedDay, BeginsLiveTradesAtTheirTime) {
  std::string bytes;
  for (const char* time :
       {"20131007-09:00:00", "20131007-11:59:59", "20131007-12:00:00", "20131007-11:00:00", "20140609-09:00:00"})
    bytes += DayMessage(8111, time);
  const std::pair<const char*, const char*> cases[] = {
      {"12:00:00", "8111 8111 8112 9101 9101 9101 "},
      {"12:00:01", "8111 8111 8111 8111 8112 9101 "},  // the next date lies behind every time of the first
      {"20131007-11:59:59", "8111 8112 9101 9101 9101 9101 "},
      {"20140609-09:00:00", "8111 8111 8111 8111 8112 9101 "},
      {"20140609-09:00:01", "8111 8111 8111 8111 8111 8112 "},
  };
  for (const auto& [from, expected] : cases) EXPECT_EQ(Played(bytes, *ParseLiveFrom(from)), expected) << from;
}

TEST(NumberedDay, ReportsUnreadableMessages) {
  std::string number = DayMessage(8111);
  number[8] = 4;  // the number is cut to one byte
  number.pop_back();
  std::string reports;
  EXPECT_EQ(Played(DayMessage(8111) + number + DayMessage(8111, "", 2) + DayMessage(8111, "", 100) + DayMessage(9101),
                   {}, &reports),
            "8111 8112 9101 ");
  const std::string noKey = ": the message is enciphered and there is no key\n";
  EXPECT_EQ(reports, "byte 15: the message cannot be read\nbyte 29" + noKey + "byte 44" + noKey);
}

TEST(LiveFrom, TellsTimesFromCounts) {
  const std::tuple<const char*, Kind, std::int64_t> good[] = {{"0", Kind::Count, 0},
                                                              {"5000", Kind::Count, 5000},
                                                              {"00:00:00", Kind::TimeOfDay, 0},
                                                              {"23:59:59", Kind::TimeOfDay, 86399},
                                                              {"19700102-00:00:01", Kind::Instant, 86401},
                                                              {"20240229-00:00:00", Kind::Instant, 1709164800}};
  for (const auto& [text, kind, value] : good) {
    const auto live = ParseLiveFrom(text);
    EXPECT_TRUE(live && live->By == kind && live->Value == value) << text;
  }
  for (const char* text : {"", "-1", "-0", "+1", " 1", "1 ", "99999999999999999999", "12:00", "12:00:0", "12:00:000",
                           "24:00:00", "12:60:00", "12:00:60", "1x:00:00", "20131007 12:00:00", "20230229-00:00:00",
                           "20131301-00:00:00", "20131007-12:00:00 ", "20131007-"})
    EXPECT_FALSE(ParseLiveFrom(text)) << text;
}

}  // namespace

// The messages made of a day, their numbers, and how they are recorded.
#include "terminal/day/day_input.h"
#include "terminal/day/trade_message.h"
#include "terminal/link/message_log.h"
#include "tests/terminal/test_files.h"

namespace {

class TradeMessage : public testing::Test {
 protected:
  TradeMessage() { EXPECT_TRUE(Day.Next(First)); }
  std::string MessageOf(const DayTrade& trade) {
    CQORPacketWriter writer(0);
    Messages.Write(trade, 9101, writer);
    writer.Finish();
    return {reinterpret_cast<const char*>(writer.GetData()), writer.GetSize()};
  }

  TestReport BadLines;
  TradeDay Day{WriteDay({"00:00:01"}), BadLines};
  OrderDesk Desk{TestFolder() / "desk.csv", BadLines};
  SecurityList Securities{TestFolder() / "securities.csv", BadLines};
  TradeMessages Messages{Desk, Securities};
  DayTrade First;
};

TEST_F(TradeMessage, HasTheseFieldsInThisOrder) {
  First.Symbol = "SYM";
  First.ExpiryDate = "201312";
  const std::string message = MessageOf(First);
  const ExactBytes block(message);
  EXPECT_EQ(
      FieldsText({block.Data() + 10, message.size() - 10}),
      "10002=9101 55001='ANITA' 20008=1 20009=1 55101='1' 55100='1100' 65535= 55010='ARCA' 55104='IBM' 55105='EQ' "
      "55103='SYM' 55143='201312' 55106='XX' 40004=0 40008=1 55107='BIG BLUE' 55118='20131007-00:00:01' "
      "20011=500001 55116='20131007-00:00:01' 55117='20131007-00:00:01' 101=2 102=2 20084=3 20014=25 20013=0 "
      "20036=0 40002=182.5 55018='DESK1' 55102='C1001' 55131='10412' 55012='4000' 55109='ref' 20068=11 20081=0 "
      "20082=0 20083=0 55151='' 115=1 20101=0 55124='TERM-A01' 55123='AAAPA1001A' 55328='ALGO7' 11115=2 "
      "55329='PART9' 55109='ref'");
  // What the market watch reads of it.
  CQORPacketReader reader(block.Data(), block.Size());
  reader.Cursor = 10;  // behind the header
  const TradePrint print = ReadTradePrint(reader);
  std::string texts;
  for (const char* text : {print.Exchange, print.SecurityID, print.Symbol, print.Name, print.ExpiryDate, print.Time})
    texts += std::string(text) + "|";
  EXPECT_EQ(texts, "ARCA|IBM|SYM|BIG BLUE|201312|20131007-00:00:01|");
  EXPECT_EQ(std::pair(print.Quantity, print.Price), std::pair(25U, 182.5));
}

TEST_F(TradeMessage, SharesNumbersAmongFillsOfAnOrder) {
  // Order and time; the numbers of order and trade, and the order's time.
  const std::tuple<const char*, const char*, std::uint32_t, std::uint32_t, const char*> fills[] = {
      {"1100", "20131007-00:00:01", 1, 1, "20131007-00:00:01"},
      {"1100", "20131007-00:00:09", 1, 2, "20131007-00:00:01"},
      {"1101", "20131007-00:00:09", 2, 3, "20131007-00:00:09"}};
  for (const auto& [order, time, orderNumber, tradeNumber, orderTime] : fills) {
    First.ExchangeOrderNo = order;
    First.ExchangeTradeTime.Text = time;
    const std::string message = MessageOf(First);
    for (const std::string& part :
         {WireU32(20008, tradeNumber) + WireU32(20009, orderNumber), WireText(55117, orderTime)})
      EXPECT_NE(message.find(part), std::string::npos) << tradeNumber;
  }
}

TEST_F(TradeMessage, GivesAnOrderTheSameDeskLineEverywhere) {
  std::string lines = kDeskHeader;
  for (const char* user : {"A", "B", "C", "D", "E"}) lines += user + std::string(",,,,,1,2,1,0,,,,0,,\n");
  const OrderDesk desk(WriteTestFile("five.csv", lines), BadLines);
  // FNV-1a of "" is 0xCBF29CE484222325 and of "a" 0xAF63DC4C8601EC8C, as its authors publish them: 2 and 1 modulo 5.
  EXPECT_EQ(desk.LineOf("").UserID + desk.LineOf("a").UserID, "CB");
}

using Kind = LiveFrom::Kind;

// The numbers that a day gives for a wire file, each as its reader says it and as its bytes do, also after its time was
// read; the times; the reports.
std::string Played(const std::string& bytes, LiveFrom liveFrom) {
  TestReport reports;
  NumberedDay script(OpenMessageDay(WriteTestFile("day.bin", bytes), reports), liveFrom);
  std::string numbers, times;
  while (script.Next() == DayStep::Message) {
    CQORPacketReader& message = script.Message();
    numbers += std::to_string(message.MessageNumber) + " ";
    times += ReadTradePrint(message).Time;
    EXPECT_EQ(LoadValue<std::uint16_t>(message.Data + message.Cursor - 2), message.MessageNumber);
  }
  return numbers + times + Without(reports.str(), PathText(TestFolder() / "day.bin") + ": ");
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
  std::string bytes, compressed, times;
  for (const std::string time :
       {"20131007-09:00:00", "20131007-11:59:59", "20131007-12:00:00", "20131007-11:00:00", "20140609-09:00:00"}) {
    bytes += DayMessage(8111, time);
    compressed += WireFrame(Deflated(std::string_view(DayMessage(8111, time)).substr(10)), 1);
    times += time;
  }
  const std::pair<const char*, const char*> cases[] = {
      {"12:00:00", "8111 8111 8112 9101 9101 9101 "},
      {"12:00:01", "8111 8111 8111 8111 8112 9101 "},  // the next date lies behind every time of the first
      {"20131007-11:59:59", "8111 8112 9101 9101 9101 9101 "},
      {"20140609-09:00:00", "8111 8111 8111 8111 8112 9101 "},
      {"20140609-09:00:01", "8111 8111 8111 8111 8111 8112 "},
  };
  for (const auto& [from, numbers] : cases)
    for (const std::string& file : {bytes, compressed}) EXPECT_EQ(Played(file, *ParseLiveFrom(from)), numbers + times);
}

TEST(NumberedDay, ReportsUnreadableMessages) {
  const std::string number = WireFrame(WireHead(10002) + "x");  // cut to one byte
  const std::string noKey = ": the message is enciphered and there is no key\n";
  EXPECT_EQ(
      Played(DayMessage(8111) + number + DayMessage(8111, "", 2) + DayMessage(8111, "", 100) + DayMessage(9101), {}),
      "8111 8112 9101 byte 15: the message cannot be read\nbyte 29" + noKey + "byte 44" + noKey);
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

// The files of a day: CSV tables and files of wire messages.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <sstream>
#include <tuple>

#include "terminal/common/errors.h"
#include "terminal/day/csv_tables.h"
#include "terminal/day/message_file.h"
#include "tests/terminal/test_files.h"

namespace {

using Texts = std::pair<std::string, std::string>;

TEST(CsvLine, SplitsAtCommasOutsideQuotes) {
  const std::pair<const char*, const char*> cases[] = {
      {"", "<>"},
      {"a", "<a>"},
      {"a,b,,c,", "<a><b><><c><>"},
      {" a , b", "< a >< b>"},
      {R"("a,b",c)", "<a,b><c>"},
      {R"("say ""no""","")", R"(<say "no"><>)"},
      {R"(a"b,c)", R"(<a"b><c>)"},
      {R"(a,"b,c)", "field 2 has no closing quote"},
      {R"("a"b,c)", "field 1 has text behind its closing quote"},
  };
  std::vector<std::string> fields = {"left", "from", "the", "line", "before"};
  for (const auto& [line, expected] : cases) {
    std::string reason, split;
    const std::size_t count = SplitCsvLine(line, fields, reason);
    for (std::size_t i = 0; i < count; ++i) split += "<" + fields[i] + ">";
    EXPECT_EQ(count == 0 ? reason : split, expected);
  }
}

// What the reader of that header's file takes of the lines, trade by trade, and what it reports, without the file.
Texts ReadLines(const std::string& header, const std::string& lines) {
  const auto file = WriteTestFile("lines.csv", header + lines);
  std::ostringstream reports;
  BadLineReport badLines(reports);
  std::string taken;
  try {
    if (header == kSecurityHeader) SecurityList(file, badLines);
    if (header == kDeskHeader) OrderDesk(file, badLines);
    if (header != kSecurityHeader && header != kDeskHeader) {
      TradeDay day(file, badLines);
      for (DayTrade trade; day.Next(trade);) taken += trade.ExchangeTradeID + " ";
    }
  } catch (const TerminalError& error) {
    taken = error.what();
  }
  return {Without(taken, PathText(file)), Without(reports.str(), PathText(file) + ":")};
}

TEST(TradeDay, ReportsEachBadLineAndGoesOn) {
  const std::string good = TradeLine("20131007-00:00:01", "7");
  const std::pair<const char*, std::string> cases[] = {
      {"13 fields where 14 are expected", "20131007-00:00:01,ARCA,IBM,IBM,EQ,,XX,0,Sell,25,182.5,1,1100\n"},
      {"15 fields where 14 are expected", TradeLine("20131007-00:00:01", "1,")},
      {"exchange_trade_time \"20131007-24:00:00\" is not a time such as 20131007-12:00:00",
       TradeLine("20131007-24:00:00", "1")},
      {"exchange_trade_id \"1\t\" is not a text without control characters", TradeLine("20131007-00:00:01", "1\t")},
      {"exchange_trade_id \"1\x7F\" is not a text without control characters", TradeLine("20131007-00:00:01", "1\x7F")},
      {"side \"sell\" is not Buy or Sell", "20131007-00:00:01,A,B,C,D,,XX,0,sell,25,182.5,1,1,1\n"},
      {"quantity \"-1\" is not a whole number from 0 to 4294967295", "20131007-00:00:01,A,B,C,D,,,0,Buy,-1,1,1,1,1\n"},
      {"quantity \"4294967296\" is not a whole number from 0 to 4294967295",
       "20131007-00:00:01,A,B,C,D,,,0,Buy,4294967296,1,1,1,1\n"},
      {"price \"1.5x\" is not a number", "20131007-00:00:01,A,B,C,D,,,0,Buy,1,1.5x,1,1,1\n"},
      {"multiplier \"inf\" is not a number", "20131007-00:00:01,A,B,C,D,,,0,Buy,1,1,inf,1,1\n"},
      {"field 14 has no closing quote", TradeLine("20131007-00:00:01", "\"1")},
      {"the line is longer than 65536 bytes", std::string(65537, 'x') + "\n"},
      {"the line is longer than 65536 bytes", std::string(3 << 20, 'x') + "\n"},
      {"1 fields where 14 are expected", std::string(65536, 'x') + "\n"},
  };
  for (const auto& [reason, line] : cases) {
    SCOPED_TRACE(reason);
    const auto [taken, reports] = ReadLines(kTradeHeader, good + line + good);
    EXPECT_EQ(taken, "7 7 ");
    EXPECT_EQ(reports, std::string("3: ") + reason + "\n");
  }
}

TEST(TradeDay, TakesEveryLineEnd) {
  const std::string line = "20131007-00:00:01,ARCA,IBM,IBM,EQ,,XX,0,Sell,25,182.5,1,1100,";
  const std::string header = "\xEF\xBB\xBF" + Without(kTradeHeader, "\n") + "\r\n";
  EXPECT_EQ(ReadLines(header, line + "1\r\n\n\r\n" + line + "2\n" + line + "3"), Texts("1 2 3 ", ""));
  EXPECT_EQ(CountTradeLines(TestFolder() / "lines.csv"), 3U);
  // The blocks of a megabyte cut lines anywhere.
  std::string many;
  for (int i = 0; i < 30000; ++i) many += TradeLine("20131007-00:00:01", "9");
  EXPECT_EQ(ReadLines(kTradeHeader, many).first.size(), 60000U);
  EXPECT_EQ(CountTradeLines(TestFolder() / "lines.csv"), 30000U);
}

TEST(CsvTables, RejectOtherHeadersAndMissingFiles) {
  const std::string reason = ":1: the header must be \"" + Without(kTradeHeader, "\n") + "\"";
  for (const std::string header : {"", "exchange_trade_time,exchange\n", "Exchange_trade_time\n"})
    EXPECT_EQ(ReadLines(header, "").first, reason) << header;
  std::ostringstream reports;
  BadLineReport badLines(reports);
  EXPECT_THROW(TradeDay(TestFolder() / "missing.csv", badLines), TerminalError);
  EXPECT_THROW(TradeDay(TestFolder(), badLines), TerminalError);
}

TEST(SecurityList, KeepsMasterRecordsAndTheFirstOfTwo) {
  std::ostringstream reports;
  BadLineReport badLines(reports);
  const std::string name(48, 'N');
  const auto file = WriteSecurities("COMEX,GC,GC," + name + ",FUT,201312,XX,0,100\nCOMEX,GC,GC,OTHER,FUT,,XX,0,1\n");
  const SecurityList securities(file, badLines);
  EXPECT_EQ(reports.str(), PathText(file) + ":3: GC of COMEX is listed already\n");
  const Security* gold = securities.Find("COMEX", "GC");
  ASSERT_NE(gold, nullptr);
  ASSERT_EQ(gold->MasterRecord.size(), 443U);
  const std::string record(gold->MasterRecord.begin(), gold->MasterRecord.end());
  EXPECT_EQ(record.substr(266), name + std::string(121, '\0') + std::string("\0\0\0\0\0\0\x59\x40", 8));  // 100.0
  EXPECT_EQ(securities.Find("COMEX", "gc"), nullptr);
  EXPECT_EQ(securities.Find("COM", "EXGC"), nullptr);
}

// Each text column takes its limit and no more; an empty text only where the table says "?".
TEST(CsvTables, HoldTextsToTheirLimits) {
  // Header, a line, and of each text column: place, name, limit.
  const std::array<const char*, 3> files[] = {
      {kTradeHeader, "20131007-00:00:01,A,B,C,D,E,F,0,Buy,1,1,1,1,1",
       "1 exchange 48 2 security_id 48 3 symbol 32? 4 security_type 16? 5 expiry_date 32? 6 option_type 16? "
       "12 exchange_order_no 32 13 exchange_trade_id 32"},
      {kSecurityHeader, "A,B,C,D,E,F,G,0,1",
       "0 exchange 48 1 security_id 48 2 symbol 32 3 name 48 4 security_type 16 5 expiry_date 32? 6 option_type 16?"},
      {kDeskHeader, "A,B,C,D,E,1,2,3,4,F,G,H,5,I,J",
       "0 user_id 20 1 manager_id 20? 2 member_id 20? 3 client_id 20? 4 ctcl_id 20? 9 pancard 16? "
       "10 terminal_info 24? 11 algo_id 16? 13 participant_id 16? 14 reference_text 64?"},
  };
  for (const auto& [header, sample, texts] : files) {
    std::istringstream columns(texts);
    std::size_t place = 0;
    for (std::string name, limit; columns >> place >> name >> limit;) {
      const auto reported = [&, &header = header, &sample = sample](const std::string& text) {
        std::vector<std::string> fields;
        std::string reason, line;
        for (std::size_t i = 0, count = SplitCsvLine(sample, fields, reason); i < count; ++i)
          line += (i == 0 ? "" : ",") + (i == place ? text : fields[i]);
        return ReadLines(header, line + "\n").second;
      };
      const std::string longest(std::stoul(limit), 'x');
      EXPECT_EQ(reported(longest), "") << name;
      EXPECT_EQ(reported(longest + "x"), "2: " + name + " \"" + longest + "x\" is not a shorter text\n");
      EXPECT_EQ(reported(""), limit.ends_with('?') ? "" : "2: " + name + " \"\" is not filled\n");
    }
  }
  EXPECT_EQ(ReadLines(kDeskHeader, "\n").first, ": no line of the desk can be used");
}

// The offsets of the messages given, and the reports without the file.
Texts ReadMessages(const std::string& bytes) {
  const auto file = WriteTestFile("day.bin", bytes);
  std::ostringstream reports;
  BadLineReport badLines(reports);
  MessageFile messages(file, badLines);
  std::string offsets;
  for (RawMessage frame; messages.Next(frame);) {
    offsets += std::to_string(frame.Offset) + " ";
    EXPECT_EQ(std::string(reinterpret_cast<char*>(frame.Data), frame.Size), bytes.substr(frame.Offset, frame.Size));
  }
  return {offsets, Without(reports.str(), PathText(file) + ": byte ")};
}

// A header of mode 0 alone, with that length word.
std::string Header(unsigned length) {
  return WireU16(1, 0) + WireU16(10001, length);
}

TEST(MessageFile, GivesWholeMessagesAndReportsTheRest) {
  const std::string good = DayMessage(8111);  // 15 bytes
  const std::string trade = DayMessage(9101, "20131007-00:00:01");
  ASSERT_EQ(good.size(), 15U);
  ASSERT_EQ(trade.size(), 37U);
  // Name, bytes, offsets of the messages, reports.
  const std::tuple<const char*, std::string, const char*, const char*> cases[] = {
      {"nothing", "", "", ""},
      {"all known modes", DayMessage(1, "", 1) + DayMessage(1, "", 2) + DayMessage(1, "", 100), "0 15 30 ", ""},
      {"no body", good + Header(0), "0 15 ", ""},
      {"garbage ahead", "ab#" + good, "3 ", "0: 3 bytes that belong to no message\n"},
      {"garbage between", good + "#\x01" + good, "0 17 ", "15: 2 bytes that belong to no message\n"},
      {"garbage behind", good + "xyz", "0 ", "15: 3 bytes that belong to no message\n"},
      {"garbage over many windows", std::string(3000000, '#') + good, "3000000 ",
       "0: 3,000,000 bytes that belong to no message\n"},
      {"header over the end of the first block", std::string((1 << 20) - 5, 'x') + good, "1048571 ",
       "0: 1,048,571 bytes that belong to no message\n"},
      {"unknown mode and garbage", DayMessage(1, "", 3) + "xy" + good, "17 ",
       "0: the message has the unknown mode 3\n15: 2 bytes that belong to no message\n"},
      {"cut in its body, two behind", trade.substr(0, 20) + good + good + good, "20 35 50 ",
       "0: the message is cut after 20 of 37 bytes\n"},
      {"cut at the end of the file", good + trade.substr(0, 36), "0 ", "15: the message is cut after 36 of 37 bytes\n"},
      {"damaged length, more than there is", Header(5000) + good.substr(10) + good, "15 ",
       "0: the message is cut after 30 of 5,010 bytes\n"},
      {"the longest message", Header(65525) + std::string(65525, 'x') + good, "0 65535 ", ""},
      {"one byte more", Header(65526) + std::string(65526, 'x') + good, "65536 ",
       "0: the header asks for 65,536 bytes, more than a message can have\n"},
  };
  for (const auto& [name, bytes, offsets, reports] : cases)
    EXPECT_EQ(ReadMessages(bytes), Texts(offsets, reports)) << name;
}

// The first message is cut at every length; the second comes through each time.
TEST(MessageFile, LosesOneMessagePerCut) {
  const std::string trade = DayMessage(9101, "20131007-00:00:01");
  for (std::size_t length = 1; length < trade.size(); ++length) {
    SCOPED_TRACE(length);
    const auto [offsets, reports] = ReadMessages(trade.substr(0, length) + trade + trade);
    EXPECT_EQ(offsets, std::to_string(length) + " " + std::to_string(length + 37) + " ");
    EXPECT_EQ(std::count(reports.begin(), reports.end(), '\n'), 1);
  }
}

}  // namespace

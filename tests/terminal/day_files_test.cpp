// The files of a day: CSV tables and files of wire messages.
#include <array>

#include "terminal/day/csv_tables.h"
#include "terminal/day/message_file.h"
#include "tests/terminal/test_files.h"

namespace {

using Texts = std::pair<std::string, std::string>;

// What the reader of that header's file takes of the lines, trade by trade, and what it reports, without the file.
Texts ReadLines(const std::string& header, const std::string& lines) {
  const auto file = WriteTestFile("lines.csv", header + lines);
  TestReport reports;
  std::string taken;
  try {
    if (header == kSecurityHeader) SecurityList(file, reports);
    if (header == kDeskHeader) OrderDesk(file, reports);
    if (header != kSecurityHeader && header != kDeskHeader) {
      TradeDay day(file, reports);
      for (DayTrade trade; day.Next(trade);) taken += trade.ExchangeTradeID + " ";
    }
  } catch (const TerminalError& error) {
    taken = error.what();
  }
  return {Without(taken, PathText(file)), Without(reports.str(), PathText(file) + ":")};
}

TEST(TradeDay, ReportsEachBadLineAndGoesOn) {
  const std::string good = TradeLine("20131007-00:00:01", "7"), head = "20131007-00:00:01,A,B,C,D,,,0,";
  const std::pair<const char*, std::string> cases[] = {
      {"13 fields where 14 are expected", head + "Buy,1,1,1,1\n"},
      {"15 fields where 14 are expected", TradeLine("20131007-00:00:01", "1,")},
      {"exchange_trade_time \"24:00\" is not a time such as 20131007-12:00:00", TradeLine("24:00", "1")},
      {"exchange_trade_id \"1\t\" is not a text without control characters", TradeLine("20131007-00:00:01", "1\t")},
      {"exchange_trade_id \"1\x7F\" is not a text without control characters", TradeLine("20131007-00:00:01", "1\x7F")},
      {"side \"sell\" is not Buy or Sell", head + "sell,1,1,1,1,1\n"},
      {"quantity \"-1\" is not a whole number from 0 to 4294967295", head + "Buy,-1,1,1,1,1\n"},
      {"quantity \"4294967296\" is not a whole number from 0 to 4294967295", head + "Buy,4294967296,1,1,1,1\n"},
      {"price \"1.5x\" is not a number", head + "Buy,1,1.5x,1,1,1\n"},
      {"multiplier \"inf\" is not a number", head + "Buy,1,1,inf,1,1\n"},
      {"field 1 has text behind its closing quote", "\"a\"b" + good},
      {"field 14 has no closing quote", TradeLine("20131007-00:00:01", "\"1")},
      {"the line is longer than 65536 bytes", std::string(65537, 'x') + "\n"},
      {"the line is longer than 65536 bytes", std::string(3 << 20, 'x') + "\n"},
      {"1 fields where 14 are expected", std::string(65536, 'x') + "\n"},
  };
  for (const auto& [reason, line] : cases)
    EXPECT_EQ(ReadLines(kTradeHeader, good + line + good), Texts("7 7 ", std::string("3: ") + reason + "\n"));
}

TEST(TradeDay, TakesEveryLineEndAndQuotedFields) {
  const std::string line = "20131007-00:00:01,A,B,C,D,,,0,Buy,1,1,1,1,";
  const std::string header = "\xEF\xBB\xBF" + Without(kTradeHeader, "\n") + "\r\n";
  EXPECT_EQ(ReadLines(header, line + "1\r\n\n\r\n" + line + "2\n" + line + "3"), Texts("1 2 3 ", ""));
  EXPECT_EQ(CountTradeLines(TestFolder() / "lines.csv"), 3U);
  const std::string quoted =
      line + "\"a,b\"\n" + line + "\"say \"\"no\"\"\"\n" + line + " a\"b \n" + line + "\"\"\"c\"\n";
  EXPECT_EQ(ReadLines(kTradeHeader, quoted), Texts("a,b say \"no\"  a\"b  \"c ", ""));
}

TEST(CsvTables, RejectOtherHeadersAndMissingFiles) {
  const std::string reason = ":1: the header must be \"" + Without(kTradeHeader, "\n") + "\"";
  for (const std::string header : {"", "exchange_trade_time,exchange\n", "Exchange_trade_time\n"})
    EXPECT_EQ(ReadLines(header, "").first, reason) << header;
  TestReport reports;
  for (const char* file : {"missing.csv", "."}) EXPECT_THROW(TradeDay(TestFolder() / file, reports), TerminalError);
}

TEST(SecurityList, KeepsMasterRecordsAndTheFirstOfTwo) {
  TestReport reports;
  const std::string name(48, 'N');
  const auto file = WriteSecurities("COMEX,GC,GC," + name + ",FUT,201312,XX,0,100\nCOMEX,GC,GC,OTHER,FUT,,XX,0,1\n");
  const SecurityList securities(file, reports);
  EXPECT_EQ(reports.str(), PathText(file) + ":3: GC of COMEX is listed already\n");
  const Security* gold = securities.Find("COMEX", "GC");
  ASSERT_TRUE(gold != nullptr && gold->MasterRecord.size() == 443);
  const std::string record(gold->MasterRecord.begin(), gold->MasterRecord.end());
  EXPECT_EQ(record.substr(266), name + std::string(121, '\0') + std::string("\0\0\0\0\0\0\x59\x40", 8));  // 100.0
  EXPECT_TRUE(securities.Find("COMEX", "gc") == nullptr && securities.Find("COM", "EXGC") == nullptr);
}

// Each text column takes its limit and no more; an empty text only where the table says "?".
TEST(CsvTables, HoldTextsToTheirLimits) {
  // Header, a line, and the limit of each column that is a text.
  const std::array<const char*, 3> files[] = {
      {kTradeHeader, "20131007-00:00:01,A,B,C,D,E,F,0,Buy,1,1,1,1,1", "- 48 48 32? 16? 32? 16? - - - - - 32 32"},
      {kSecurityHeader, "A,B,C,D,E,F,G,0,1", "48 48 32 48 16 32? 16? - -"},
      {kDeskHeader, "A,B,C,D,E,1,2,3,4,F,G,H,5,I,J", "20 20? 20? 20? 20? - - - - 16? 24? 16? - 16? 64?"},
  };
  for (const auto& [header, sample, limits] : files) {
    std::istringstream names(Without(header, "\n")), fields(sample), each(limits);
    std::string ahead;
    for (std::string name, field, limit; each >> limit; ahead += field + ",") {
      std::getline(names, name, ',');
      std::getline(fields, field, ',');
      if (limit == "-") continue;
      const auto reported = [&, &header = header, &sample = sample](const std::string& text) {
        return ReadLines(header, ahead + text + (sample + ahead.size() + field.size())).second;
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
  TestReport reports;
  MessageFile messages(file, reports);
  std::string offsets;
  for (RawMessage frame; messages.Next(frame);) {
    offsets += std::to_string(frame.Offset) + " ";
    EXPECT_EQ(std::string(reinterpret_cast<char*>(frame.Data), frame.Size), bytes.substr(frame.Offset, frame.Size));
  }
  return {offsets, Without(reports.str(), PathText(file) + ": byte ")};
}

TEST(MessageFile, GivesWholeMessagesAndReportsTheRest) {
  const std::string good = DayMessage(8111), trade = DayMessage(9101, "20131007-00:00:01");  // 15 and 37 bytes
  // Name, bytes, offsets of the messages, reports.
  const std::string nobodys = " bytes that belong to no message\n";
  const std::tuple<const char*, std::string, const char*, std::string> cases[] = {
      {"nothing", "", "", ""},
      {"all known modes", DayMessage(1, "", 1) + DayMessage(1, "", 2) + DayMessage(1, "", 100), "0 15 30 ", ""},
      {"no body", good + WireFrame(""), "0 15 ", ""},
      {"garbage ahead", "ab#" + good, "3 ", "0: 3" + nobodys},
      {"garbage between", good + "#\x01" + good, "0 17 ", "15: 2" + nobodys},
      {"garbage behind", good + "xyz", "0 ", "15: 3" + nobodys},
      {"garbage over many windows", std::string(3000000, '#') + good, "3000000 ", "0: 3,000,000" + nobodys},
      {"header over the end of a block", std::string((1 << 20) - 5, 'x') + good, "1048571 ", "0: 1,048,571" + nobodys},
      {"unknown mode and garbage", DayMessage(1, "", 3) + "xy" + good, "17 ",
       "0: the message has the unknown mode 3\n15: 2" + nobodys},
      {"cut in its body", trade.substr(0, 20) + good + good + good, "20 35 50 ",
       "0: the message is cut after 20 of 37 bytes\n"},
      {"cut at the end of the file", good + trade.substr(0, 36), "0 ", "15: the message is cut after 36 of 37 bytes\n"},
      {"damaged length", WireU16(1, 0) + WireU16(10001, 5000) + good.substr(10) + good, "15 ",
       "0: the message is cut after 30 of 5,010 bytes\n"},
      {"the longest message", WireFrame(std::string(65525, 'x')) + good, "0 65535 ", ""},
      {"one byte more", WireFrame(std::string(65526, 'x')) + good, "65536 ",
       "0: the header asks for 65,536 bytes, more than a message can have\n"},
  };
  for (const auto& [name, bytes, offsets, reports] : cases)
    EXPECT_EQ(ReadMessages(bytes), Texts(offsets, reports)) << name;
  // The first message is cut at every length; the second comes through each time.
  for (std::size_t length = 1; length < trade.size(); ++length) {
    const auto [offsets, reports] = ReadMessages(trade.substr(0, length) + trade + trade);
    EXPECT_EQ(offsets, std::to_string(length) + " " + std::to_string(length + 37) + " ");
    EXPECT_EQ(std::count(reports.begin(), reports.end(), '\n'), 1) << length;
  }
}

}  // namespace

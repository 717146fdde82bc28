#include "terminal/day/csv_tables.h"

#include <gtest/gtest.h>

#include <cstring>
#include <sstream>

#include "terminal/common/errors.h"
#include "tests/terminal/test_files.h"

namespace {

using Fields = std::vector<std::string>;

TEST(CsvLine, SplitsAtCommasOutsideQuotes) {
  const struct {
    const char* Line;
    Fields Expected;
  } cases[] = {
      {"", {""}},
      {"a", {"a"}},
      {"a,b,,c,", {"a", "b", "", "c", ""}},
      {" a , b", {" a ", " b"}},
      {R"("a,b",c)", {"a,b", "c"}},
      {R"("say ""no""","")", {R"(say "no")", ""}},
      {R"(a"b,c)", {R"(a"b)", "c"}},
  };
  Fields fields = {"left", "from", "the", "line", "before"};
  std::string reason;
  for (const auto& row : cases) {
    SCOPED_TRACE(row.Line);
    const std::size_t count = SplitCsvLine(row.Line, fields, reason);
    ASSERT_EQ(count, row.Expected.size());
    EXPECT_EQ(Fields(fields.begin(), fields.begin() + static_cast<std::ptrdiff_t>(count)), row.Expected);
  }
  EXPECT_EQ(SplitCsvLine(R"(a,"b,c)", fields, reason), 0U);
  EXPECT_EQ(reason, "field 2 has no closing quote");
  EXPECT_EQ(SplitCsvLine(R"("a"b,c)", fields, reason), 0U);
  EXPECT_EQ(reason, "field 1 has text behind its closing quote");
}

// The trade numbers of the lines taken, and the reports with the file's name cut off.
std::pair<std::string, std::string> ReadDay(const std::string& bytes) {
  const auto file = WriteTestFile("day.csv", bytes);
  std::ostringstream reports;
  BadLineReport badLines(reports);
  TradeDay day(file, badLines);
  std::string taken;
  for (DayTrade trade; day.Next(trade);) taken += trade.ExchangeTradeID + " ";
  return {taken, Without(reports.str(), PathText(file) + ":")};
}

TEST(TradeDay, ReportsEachBadLineAndGoesOn) {
  const std::string good = TradeLine("20131007-00:00:01", "7");
  const struct {
    const char* Reason;
    std::string Line;
  } cases[] = {
      {"13 fields where 14 are expected", "20131007-00:00:01,ARCA,IBM,IBM,EQ,,XX,0,Sell,25,182.5,1,1100\n"},
      {"15 fields where 14 are expected", TradeLine("20131007-00:00:01", "1,")},
      {"exchange_trade_time \"20131007-24:00:00\" is not a time such as 20131007-12:00:00",
       TradeLine("20131007-24:00:00", "1")},
      {"exchange_trade_id \"1\t\" is not a text without control characters", TradeLine("20131007-00:00:01", "1\t")},
      {"side \"sell\" is not Buy or Sell", "20131007-00:00:01,A,B,C,D,,XX,0,sell,25,182.5,1,1,1\n"},
      {"quantity \"-1\" is not a whole number from 0 to 4294967295", "20131007-00:00:01,A,B,C,D,,,0,Buy,-1,1,1,1,1\n"},
      {"quantity \"4294967296\" is not a whole number from 0 to 4294967295",
       "20131007-00:00:01,A,B,C,D,,,0,Buy,4294967296,1,1,1,1\n"},
      {"price \"1.5x\" is not a number", "20131007-00:00:01,A,B,C,D,,,0,Buy,1,1.5x,1,1,1\n"},
      {"multiplier \"inf\" is not a number", "20131007-00:00:01,A,B,C,D,,,0,Buy,1,1,inf,1,1\n"},
      {"field 14 has no closing quote", TradeLine("20131007-00:00:01", "\"1")},
      {"the line is longer than 65536 bytes", std::string(65537, 'x') + "\n"},
      {"the line is longer than 65536 bytes", std::string(3 << 20, 'x') + "\n"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.Reason);
    const auto [taken, reports] = ReadDay(kTradeHeader + good + row.Line + good);
    EXPECT_EQ(taken, "7 7 ");
    EXPECT_EQ(reports, std::string("3: ") + row.Reason + "\n");
  }
}

TEST(TradeDay, TakesEveryLineEnd) {
  const std::string line = "20131007-00:00:01,ARCA,IBM,IBM,EQ,,XX,0,Sell,25,182.5,1,1100,";
  const std::string header = std::string(kTradeHeader).substr(0, std::strlen(kTradeHeader) - 1);
  const std::string bytes = "\xEF\xBB\xBF" + header + "\r\n" + line + "1\r\n\n\r\n" + line + "2\n" + line + "3";
  EXPECT_EQ(ReadDay(bytes), std::pair(std::string("1 2 3 "), std::string()));
  EXPECT_EQ(CountTradeLines(TestFolder() / "day.csv"), 3U);
  // The blocks of a megabyte cut lines anywhere.
  std::string many = kTradeHeader;
  for (int i = 0; i < 30000; ++i) many += TradeLine("20131007-00:00:01", "9");
  EXPECT_EQ(ReadDay(many).first.size(), 60000U);
  EXPECT_EQ(CountTradeLines(TestFolder() / "day.csv"), 30000U);
}

TEST(TradeDay, RejectsOtherHeaders) {
  std::ostringstream reports;
  BadLineReport badLines(reports);
  for (const std::string& header :
       {std::string(), std::string("exchange_trade_time,exchange\n"), std::string(kSecurityHeader)}) {
    const auto file = WriteTestFile("day.csv", header);
    EXPECT_THROW(TradeDay(file, badLines), TerminalError) << header;
  }
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
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(gold->MasterRecord.data()) + 266), name);
  EXPECT_EQ(gold->MasterRecord.size(), 443U);
  EXPECT_EQ(gold->MasterRecord[441], 0x59);  // 100.0 is 0x4059000000000000
  EXPECT_EQ(gold->MasterRecord[442], 0x40);
  EXPECT_EQ(securities.Find("COMEX", "gc"), nullptr);
  EXPECT_EQ(securities.Find("COM", "EXGC"), nullptr);
}

// What the file's reader reports of one line, without the place.
std::string ReadOf(const std::string& header, const Fields& fields) {
  std::string line = fields.front();
  for (std::size_t i = 1; i < fields.size(); ++i) line += "," + fields[i];
  const auto file = WriteTestFile("one.csv", header + line + "\n");
  std::ostringstream reports;
  BadLineReport badLines(reports);
  DayTrade trade;
  try {
    if (header == kTradeHeader) TradeDay(file, badLines).Next(trade);
    if (header == kSecurityHeader) SecurityList(file, badLines);
    if (header == kDeskHeader) OrderDesk(file, badLines);
  } catch (const TerminalError& error) {
    EXPECT_STREQ(error.what(), (PathText(file) + ": no line of the desk can be used").c_str());
  }
  return Without(reports.str(), PathText(file) + ":2: ");
}

// Each text column takes its limit and no more; an empty text only where the table says "?".
TEST(CsvTables, HoldTextsToTheirLimits) {
  const struct {
    const char* Header;
    const char* Line;
    const char* Columns;  // place, name, limit
  } files[] = {
      {kTradeHeader, "20131007-00:00:01,A,B,C,D,E,F,0,Buy,1,1,1,1,1",
       "1 exchange 48 2 security_id 48 3 symbol 32? 4 security_type 16? 5 expiry_date 32? 6 option_type 16? "
       "12 exchange_order_no 32 13 exchange_trade_id 32"},
      {kSecurityHeader, "A,B,C,D,E,F,G,0,1",
       "0 exchange 48 1 security_id 48 2 symbol 32 3 name 48 4 security_type 16 5 expiry_date 32? 6 option_type 16?"},
      {kDeskHeader, "A,B,C,D,E,1,2,3,4,F,G,H,5,I,J",
       "0 user_id 20 1 manager_id 20? 2 member_id 20? 3 client_id 20? 4 ctcl_id 20? 9 pancard 16? "
       "10 terminal_info 24? 11 algo_id 16? 13 participant_id 16? 14 reference_text 64?"},
  };
  for (const auto& file : files) {
    std::istringstream columns(file.Columns);
    std::size_t place = 0;
    for (std::string name, limit; columns >> place >> name >> limit;) {
      SCOPED_TRACE(name);
      Fields fields;
      std::string reason;
      SplitCsvLine(file.Line, fields, reason);
      std::string& text = fields[place];
      text.assign(std::stoul(limit), 'x');
      EXPECT_EQ(ReadOf(file.Header, fields), "");
      text += 'x';
      EXPECT_EQ(ReadOf(file.Header, fields), name + " \"" + text + "\" is not a shorter text\n");
      text.clear();
      EXPECT_EQ(ReadOf(file.Header, fields), limit.ends_with('?') ? "" : name + " \"\" is not filled\n");
    }
  }
}

}  // namespace

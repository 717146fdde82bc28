#include "grid_ops/exports/trade_file_lines.h"

#include "tests/grid_ops/export_sample.h"
#include "tests/support/own_folder.h"

namespace {

std::string TextOf(const DescriptionList& entries) {
  std::string text;
  for (const auto& [name, title, dateFormat] : entries) text += name + '|' + title + '|' + dateFormat + ';';
  return text;
}

class DescriptionFiles : public OwnFolder {};

TEST_F(DescriptionFiles, ReadsLinesAsEntries) {
  const std::string mark = "\xEF\xBB\xBF";
  const struct {
    std::string Text, ExchangeFormat, BookExport;
  } rows[] = {
      {"", "", ""},
      {"Price\nSide", "Price||;Side||;", ""},
      {"\n\r\nPrice\r\n\nSide\n\n", "Price||;Side||;", ""},
      {"A,b\r\nC,d,e\r\n", "A||b;C||d;", "A|b|;C|d|e;"},
      {"A,b,c,d", "A||b;", ""},
      {",b\nA,\nA,,c\nA,b,\n,\n", "||b;A||;A||;A||b;||;", ""},
      {" A , b\rc \n", " A || b\rc ;", " A | b\rc |;"},
      {mark + "A,b\n" + mark + "C,d", "A||b;" + mark + "C||d;", "A|b|;" + mark + "C|d|;"},
      {{"A\0B,c", 5}, {"A\0B||c;", 7}, {"A\0B|c|;", 7}},
      {std::string(5000, 'n') + ",t", std::string(5000, 'n') + "||t;", std::string(5000, 'n') + "|t|;"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Text);
    WriteBytes(Folder / "EXCHANGETRADEFORMAT.TXT", row.Text);
    WriteBytes(Folder / "TRADEBOOKEXPORT.TXT", row.Text);
    EXPECT_EQ(TextOf(ReadExchangeFormat(Folder)), row.ExchangeFormat);
    EXPECT_EQ(TextOf(ReadBookExport(Folder)), row.BookExport);
  }
}

TEST_F(DescriptionFiles, AreEmptyIfUnreadable) {
  EXPECT_TRUE(ReadExchangeFormat(Folder).empty());
  std::filesystem::create_directory(Folder / "TRADEBOOKEXPORT.TXT");
  EXPECT_TRUE(ReadBookExport(Folder).empty());
}

// The line of the record in the FO file and in the CM file, with "|" between them.
std::string LinesOf(std::string_view format, const TradeRecord& record) {
  TradeFileLines lines(ParseExchangeFormat(format), IndexColumns(ColumnsOfGrid(), false), kNoDivisors);
  std::string text;
  for (const bool isCash : {false, true}) {
    LineBuffer line;
    line.Start(lines.Longest("Default"));
    lines.Append(line, isCash, "Default", record);
    text.append(isCash ? "|" : "").append(line.Text());
  }
  return text;
}

TEST(TradeFileLines, FollowsTheFormat) {
  const struct {
    const char *Format, *Lines;
  } rows[] = {
      {"", "|"},
      {"UserID\r\nSide\r\nQuantity", "USER1,2,150      |USER1,2,150      "},
      // In the cash market an empty cell drops its comma.
      {"Side\nStrikePrice\nSecurityType\nOptionType\nMemberID", "2,   2450.50,OPTSTK,CE,MEM12       |2,MEM12       "},
      {"Side\nTime\nManagerID\nTime", "2,,MGR,|2,MGR,"},
      // Unknown and empty names write nothing, but the last cell is that of the last entry.
      {"Side\nserver\nside\nSide ", "2,|2,"},
      {"Side\n,x\nManagerID\n,", "2,MGR,|2,MGR,"},
      {"ExchangeTradeTime,dd/MM/yyyy\n", "29 FEB 2024 10:15:02|29 FEB 2024 10:15:02"},
      {"Market Type\nBranch No\nTrade Status\nOpposite Broker Id\nCover/Uncover Flag",
       "1 ,1  ,11,Nil  ,UNCOVER,|1 ,1  ,11,Nil  ,0   ,7 ,"},
  };
  for (const auto& row : rows) EXPECT_EQ(LinesOf(row.Format, FullTrade()), row.Lines) << row.Format;
}

TEST(TradeFileLines, FillsNamedFieldsFromTheTrade) {
  const struct {
    int OrderType;
    const char *ClientID, *SecurityName, *Lines;
  } rows[] = {
      {1, "OWN", "abcdefghijklmnopqrstuvwxy", "1 ,RL ,2,abcdefghijklmnopqrstuvwxy,|0 ,1 ,2,abcdefghijklmnopqrstuvwxy,"},
      {2, "OWN ", "abcdefghijklmnopqrstuvwx", "1 ,RL ,1,abcdefghijklmnopqrstuvwx ,|0 ,1 ,1,abcdefghijklmnopqrstuvwx ,"},
      {74, "OWNER", "abcdefghijklmnopqrstuvwxyz",
       "2 ,MT ,1,abcdefghijklmnopqrstuvwxyz,|0 ,2 ,1,abcdefghijklmnopqrstuvwxyz,"},
      {4, "own", "n", "2 ,SL ,1,n                        ,|0 ,3 ,1,n                        ,"},
      {3, "", "n", "3 ,ST ,1,n                        ,|0 ,3 ,1,n                        ,"},
      {78, "", "n", "4 ,NT ,1,n                        ,|0 , ,1,n                        ,"},
      {82, "", "n", "1,n                        ,|1,n                        ,"},
      {0, "", "", "1,                         ,|1,                         ,"},
  };
  for (const auto& row : rows) {
    TradeRecord record = FullTrade();
    record.OrderType = static_cast<std::uint8_t>(row.OrderType);
    PutText(record.ClientID, row.ClientID);
    PutText(record.Text55107, row.SecurityName);
    EXPECT_EQ(LinesOf("Book Type\nPro/Client\nSecurity name", record), row.Lines) << row.OrderType;
  }
}

}  // namespace

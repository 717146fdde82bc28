#include "grid_ops/exports/exchange_files.h"

#include "tests/foundations/time_zone.h"
#include "tests/grid_ops/export_sample.h"
#include "tests/support/own_folder.h"

namespace {

namespace fs = std::filesystem;

constexpr std::int64_t kEvening = 1772913600;  // 2026-03-07 20:00:00 UTC, the next day in India

class ExchangeFiles : public OwnFolder {
 protected:
  TradeFileRun Run() const {
    return {Columns, Trades.ByServer, kNoDivisors, Folder / "grid", Folder / "plugin", kEvening};
  }
  ExchangeFiles() {
    fs::create_directory(Folder / "grid");
    fs::create_directory(Folder / "plugin");
    Columns[TradeColumnIndex("colUserID")].Visible = false;
  }
  // The content of the FO file and the CM file, with "|" between them; "none" for a missing file.
  std::string Files(const char* base, const char* name) const {
    const auto content = [&](const char* side) {
      const fs::path file = Folder / base / "ExchangeTradeFormat" / side / name;
      return fs::exists(file) ? ReadFile(file) : "none";
    };
    return content("FO") + "|" + content("CM");
  }

  const ZoneForTest Zone{"IST-5:30"};
  GridColumns Columns = ColumnsOfGrid();
  SampleTrades Trades;
};

TEST_F(ExchangeFiles, ExactNameOfExchangeChoosesTheFile) {
  int id = 0;
  for (const char* exchange : {"BSECM", "nsecm", "NSECM", "NSECM ", "NSEFO", "", "BSECMX"})
    PutText(Trades.Add("S", ++id).Exchange, exchange);
  PutText(Trades.Add("Before", 9).Exchange, "BSECM");
  WriteExchangeTradeFiles(Run());
  EXPECT_EQ(Files("grid", "0308TRD.txt"), "\r\n\r\n\r\n\r\n\r\n|\r\n\r\n\r\n") << "without a description file";
  WriteFile(Folder / "grid" / "EXCHANGETRADEFORMAT.TXT", "UserID\nVELDTradeID");
  WriteExchangeTradeFiles(Run());
  EXPECT_EQ(Files("grid", "0308TRD.txt"),
            "USER1,2       \r\nUSER1,4       \r\nUSER1,5       \r\nUSER1,6       \r\nUSER1,7       \r\n|"
            "USER1,9       \r\nUSER1,1       \r\nUSER1,3       \r\n");
}

TEST_F(ExchangeFiles, ManualExchangeBranchWritesShownRowsOnly) {
  for (const int id : {4, 5, 6}) PutText(Trades.Add("Default", id).Exchange, id == 5 ? "NSECM" : "NSEFO");
  WriteFile(Folder / "plugin" / "EXCHANGETRADEFORMAT.TXT", "UserID\nVELDTradeID\nSide");
  WriteManualExport(Run(), true, Folder / "unused", {});
  EXPECT_EQ(Files("plugin", "0803TRD.txt"), "|");
  WriteManualExport(Run(), true, Folder / "unused",
                    [](std::string_view server, std::int32_t id) { return server == "Default" && id < 6; });
  EXPECT_EQ(Files("plugin", "0803TRD.txt"), "4       ,2\r\n|5       ,2\r\n");
  EXPECT_FALSE(fs::exists(Folder / "unused"));
  EXPECT_EQ(ManualExchangeReport(kEvening), L"0803TRD.txt Successfully exported..!!");
}

TEST_F(ExchangeFiles, ManualFreeBranchWritesVisibleColumns) {
  Trades.Add("A", 4);
  Trades.Add("B", 3);
  const auto written = [&](const char* format) {
    WriteFile(Folder / "grid" / "TRADEBOOKEXPORT.TXT", format);
    WriteManualExport(Run(), false, Folder / "out.csv", {});
    return ReadFile(Folder / "out.csv");
  };
  EXPECT_EQ(written("VELDTradeID,No\nServer,Where\nPrice,At\n"), "No,Where,At,\r\n4,A,101.750000,\r\n3,B,101.750000,");
  EXPECT_EQ(written(""), "");
  EXPECT_EQ(written("UserID,User\nBook Type,Book\nSide,Side"), "Side,\r\nSell,\r\nSell,");
  EXPECT_EQ(written("UserID,User\n"), "\r\n\r\n");
  EXPECT_EQ(written("ExchangeTradeTime,T,yyyyMM\nOrderTime,O,yyyyMM"),
            "T,O,\r\n202402,20240229-10:15:00,\r\n202402,20240229-10:15:00,");
  EXPECT_EQ(Files("plugin", "0803TRD.txt"), "none|none");
}

TEST_F(ExchangeFiles, TellProgressPerTrade) {
  for (int id = 1; id <= 20'000; ++id) Trades.Add("A", id);
  Trades.Add("B", 1);
  std::string told;
  const auto tell = [&](std::size_t done, std::size_t all) { told += std::to_string(done * 100'000 + all) + " "; };
  WriteFile(Folder / "grid" / "TRADEBOOKEXPORT.TXT", "Side,Side");
  WriteExchangeTradeFiles(Run(), tell);
  EXPECT_EQ(told, "2000020001 ");
  WriteManualExport(Run(), true, {}, {}, tell);
  WriteManualExport(Run(), false, Folder / "out.csv", {}, tell);
  EXPECT_EQ(told, "2000020001 2000020001 2000020001 ");
}

// The entries of a text as both description files, with "#" between them.
std::string EntriesOf(std::string_view text) {
  std::string entries;
  for (const auto& [name, title, dateFormat] : ParseExchangeFormat(text))
    entries += name + '|' + title + '|' + dateFormat + ';';
  entries += '#';
  for (const auto& [name, title, dateFormat] : ParseBookExport(text))
    entries += name + '|' + title + '|' + dateFormat + ';';
  return entries;
}

TEST(DescriptionFiles, ReadLinesAsEntries) {
  EXPECT_EQ(EntriesOf(""), "#");
  EXPECT_EQ(EntriesOf("\n\r\nPrice\r\n\nSide\n\n"), "Price||;Side||;#");
  EXPECT_EQ(EntriesOf("A,b\r\nC,d,e"), "A||b;C||d;#A|b|;C|d|e;");
  EXPECT_EQ(EntriesOf("A,b,c,d"), "A||b;#");
  EXPECT_EQ(EntriesOf(",b\nA,\nA,,c\nA,b,\n,\n"), "||b;A||;A||;A||b;||;#");
  EXPECT_EQ(EntriesOf(" A , b\rc \n"), " A || b\rc ;# A | b\rc |;");
  EXPECT_EQ(EntriesOf("\xEF\xBB\xBF"
                      "A,b\n\xEF\xBB\xBFX,d"),
            "A||b;\xEF\xBB\xBFX||d;#A|b|;\xEF\xBB\xBFX|d|;");
  EXPECT_EQ(EntriesOf({"A\0B,c", 5}), std::string("A\0B||c;#A\0B|c|;", 15));
  EXPECT_EQ(EntriesOf(std::string(5000, 'n')), std::string(5000, 'n') + "||;#");
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
  const char* const kRows[][2] = {
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
  for (const auto& row : kRows) EXPECT_EQ(LinesOf(row[0], FullTrade()), row[1]) << row[0];
}

TEST(TradeFileLines, FillsNamedFieldsFromTheTrade) {
  TradeRecord record = FullTrade();
  const auto lines = [&](int orderType, const char* client, const char* security, const char* format) {
    record.OrderType = static_cast<std::uint8_t>(orderType);
    PutText(record.ClientID, client);
    PutText(record.Text55107, security);
    return LinesOf(format, record);
  };
  const std::pair<int, const char*> kBooks[] = {{1, "1 ,RL ,|0 ,1 ,"},
                                                {2, "1 ,RL ,|0 ,1 ,"},
                                                {74, "2 ,MT ,|0 ,2 ,"},
                                                {4, "2 ,SL ,|0 ,3 ,"},
                                                {3, "3 ,ST ,|0 ,3 ,"},
                                                {78, "4 ,NT ,|0 , ,"},
                                                {82, "|"},
                                                {0, "|"}};
  for (const auto& [orderType, text] : kBooks) EXPECT_EQ(lines(orderType, "", "", "Book Type"), text) << orderType;
  EXPECT_EQ(lines(1, "OWN", "", "Pro/Client"), "2,|2,");
  for (const char* client : {"OWN ", "OWNER", "own", ""}) EXPECT_EQ(lines(1, client, "", "Pro/Client"), "1,|1,");
  const std::string name = "abcdefghijklmnopqrstuvwxyz";
  for (const std::size_t size : {0, 1, 24, 25, 26}) {
    const std::string padded = name.substr(0, size) + std::string(size < 25 ? 25 - size : 0, ' ') + ",";
    EXPECT_EQ(lines(1, "", name.substr(0, size).c_str(), "Security name"), padded + "|" + padded);
  }
}

}  // namespace

#include "grid_ops/exports/exchange_files.h"

#include "grid_ops/exports/trade_file_lines.h"
#include "tests/support/own_folder.h"
#include "tests/grid_ops/export_sample.h"

namespace {

namespace fs = std::filesystem;

constexpr std::int64_t kNoon = 1772884800;  // 2026-03-07 12:00:00 UTC

// Each case has one trade of NSEFO and one of NSECM, and the line of each.
struct LayoutCase {
  const char* What;
  const char* Layout;
  const char* FO;
  const char* CM;
};

const LayoutCase kLayouts[] = {
    {"no layout", "", "", ""},
    {"cells, none behind the last", "UserID\r\nSide\r\nQuantity", "USER1,2,150      ", "USER1,2,150      "},
    {"empty cells of the cash market leave no comma", "Side\nStrikePrice\nSecurityType\nOptionType\nMemberID",
     "2,   2450.50,OPTSTK,CE,MEM12       ", "2,MEM12       "},
    {"the column Time is empty", "Side\nTime\nManagerID\nTime", "2,,MGR,", "2,MGR,"},
    {"unknown names write nothing and count", "Side\nserver\nside\nSide ", "2,", "2,"},
    {"nameless entries count", "Side\n,x\nManagerID\n,", "2,MGR,", "2,MGR,"},
    {"date formats have no effect", "ExchangeTradeTime,dd/MM/yyyy\n", "29 FEB 2024 10:15:02", "29 FEB 2024 10:15:02"},
    {"named fields end in a comma", "Market Type\nBranch No\nTrade Status\nOpposite Broker Id\nCover/Uncover Flag",
     "1 ,1  ,11,Nil  ,UNCOVER,", "1 ,1  ,11,Nil  ,0   ,7 ,"},
    {"named by the trade", "Security name\nPro/Client\nBook Type", "ABCD 2450.5 CE           ,1,2 ,SL ,",
     "ABCD 2450.5 CE           ,1,0 ,3 ,"},
    {"multiplier runs on in the cash market", "Multiplier\nOpenClose", "0.25,CLOSE", "PANCD1234F,N"},
};

class ExchangeFiles : public OwnFolder {
 protected:
  TradeFileRun Run() const { return {Columns, Trades.ByServer, Divisors, Folder / "grid", Folder / "plugin", kNoon}; }
  void SetUp() override {
    OwnFolder::SetUp();
    fs::create_directory(Folder / "grid");
    fs::create_directory(Folder / "plugin");
  }
  std::string FO(const char* name, const char* base = "grid") const {
    return BytesOf(Folder / base / "ExchangeTradeFormat" / "FO" / name);
  }
  std::string CM(const char* name, const char* base = "grid") const {
    return BytesOf(Folder / base / "ExchangeTradeFormat" / "CM" / name);
  }

  GridColumns Columns = ColumnsOfGrid();
  SampleTrades Trades;
  PriceDivisors Divisors;
};

TEST_F(ExchangeFiles, Layouts) {
  Trades.Add("Default", 2);
  PutText(Trades.Add("Default", 1).Exchange, "NSECM");
  for (const LayoutCase& test : kLayouts) {
    SCOPED_TRACE(test.What);
    WriteBytes(Folder / "grid" / "EXCHANGETRADEFORMAT.TXT", test.Layout);
    WriteExchangeTradeFiles(Run());
    EXPECT_EQ(FO("0307TRD.txt"), std::string(test.FO) + "\r\n");
    EXPECT_EQ(CM("0307TRD.txt"), std::string(test.CM) + "\r\n");
  }
  EXPECT_EQ(kExchangeReport, L"Exchange Trade File Sucessfully Write");
}

TEST_F(ExchangeFiles, ExchangeChoosesTheFileByItsExactName) {
  int id = 0;
  for (const char* exchange : {"BSECM", "nsecm", "NSECM", "NSECM ", "NSEFO", "", "BSECMX"})
    PutText(Trades.Add("S", ++id).Exchange, exchange);
  PutText(Trades.Add("Before", 9).Exchange, "BSECM");
  WriteBytes(Folder / "grid" / "EXCHANGETRADEFORMAT.TXT", "Server\nVELDTradeID");
  WriteExchangeTradeFiles(Run());
  EXPECT_EQ(CM("0307TRD.txt"), "Before,9       \r\nS,1       \r\nS,3       \r\n");
  EXPECT_EQ(FO("0307TRD.txt"), "S,2       \r\nS,4       \r\nS,5       \r\nS,6       \r\nS,7       \r\n");
}

TEST_F(ExchangeFiles, NamedFieldsOfTheTrade) {
  const struct {
    int OrderType;
    const char *ClientID, *SecurityName, *FO, *CM;
  } rows[] = {
      {1, "OWN", "abcdefghijklmnopqrstuvwxy", "1 ,RL ,2,abcdefghijklmnopqrstuvwxy,",
       "0 ,1 ,2,abcdefghijklmnopqrstuvwxy,"},
      {2, "OWN ", "abcdefghijklmnopqrstuvwx", "1 ,RL ,1,abcdefghijklmnopqrstuvwx ,",
       "0 ,1 ,1,abcdefghijklmnopqrstuvwx ,"},
      {74, "OWNER", "abcdefghijklmnopqrstuvwxyz", "2 ,MT ,1,abcdefghijklmnopqrstuvwxyz,",
       "0 ,2 ,1,abcdefghijklmnopqrstuvwxyz,"},
      {4, "own", "n", "2 ,SL ,1,n                        ,", "0 ,3 ,1,n                        ,"},
      {3, "", "n", "3 ,ST ,1,n                        ,", "0 ,3 ,1,n                        ,"},
      {78, "", "n", "4 ,NT ,1,n                        ,", "0 , ,1,n                        ,"},
      {82, "", "n", "1,n                        ,", "1,n                        ,"},
      {0, "", "n", "1,n                        ,", "1,n                        ,"},
  };
  TradeFileLines lines({{"Book Type", "", ""}, {"Pro/Client", "", ""}, {"Security name", "", ""}},
                       IndexColumns(Columns, false), Divisors);
  for (const auto& row : rows) {
    SCOPED_TRACE(row.OrderType);
    TradeRecord record = FullTrade();
    record.OrderType = static_cast<std::uint8_t>(row.OrderType);
    PutText(record.ClientID, row.ClientID);
    PutText(record.Text55107, row.SecurityName);
    for (const bool isCash : {false, true}) {
      LineBuffer line;
      line.Start(lines.Longest("Default"));
      lines.Append(line, isCash, "Default", record);
      EXPECT_EQ(line.Text(), isCash ? row.CM : row.FO);
    }
  }
}

TEST_F(ExchangeFiles, ManualExchangeBranchWritesRowsThatShow) {
  Trades.Add("Default", 4);
  PutText(Trades.Add("Default", 5).Exchange, "NSECM");
  Trades.Add("Default", 6);
  Columns[TradeColumnIndex("colUserID")].Visible = false;
  WriteBytes(Folder / "plugin" / "EXCHANGETRADEFORMAT.TXT", "UserID\nVELDTradeID\nSide");
  WriteManualExport(Run(), true, Folder / "unused", {});
  for (const bool isCash : {false, true})
    EXPECT_EQ(isCash ? CM("0703TRD.txt", "plugin") : FO("0703TRD.txt", "plugin"), "");
  EXPECT_TRUE(fs::exists(Folder / "plugin" / "ExchangeTradeFormat" / "CM" / "0703TRD.txt"));
  EXPECT_TRUE(fs::exists(Folder / "plugin" / "ExchangeTradeFormat" / "FO" / "0703TRD.txt"));
  WriteManualExport(Run(), true, Folder / "unused",
                    [](std::string_view server, std::int32_t id) { return server == "Default" && id < 6; });
  EXPECT_EQ(FO("0703TRD.txt", "plugin"), "4       ,2\r\n");
  EXPECT_EQ(CM("0703TRD.txt", "plugin"), "5       ,2\r\n");
  EXPECT_FALSE(fs::exists(Folder / "unused"));
  EXPECT_EQ(ManualExchangeReport(kNoon), L"0703TRD.txt Successfully exported..!!");
}

TEST_F(ExchangeFiles, ManualFreeBranch) {
  Trades.Add("A", 4);
  Trades.Add("B", 3);
  Columns[TradeColumnIndex("colUserID")].Visible = false;
  const struct {
    const char *What, *Layout, *Bytes;
  } rows[] = {
      {"no file", "", ""},
      {"titles and cells", "VELDTradeID,No\nServer,Where\nPrice,At\n",
       "No,Where,At,\r\n4,A,101.750000,\r\n3,B,101.750000,"},
      {"hidden and unknown names", "UserID,User\nBook Type,Book\nSide,Side", "Side,\r\nSell,\r\nSell,"},
      {"none that shows", "UserID,User\n", "\r\n\r\n"},
      {"date", "ExchangeTradeTime,T,yyyyMM\nOrderTime,O,yyyyMM",
       "T,O,\r\n202402,20240229-10:15:00,\r\n202402,20240229-10:15:00,"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.What);
    WriteBytes(Folder / "grid" / "TRADEBOOKEXPORT.TXT", row.Layout);
    WriteManualExport(Run(), false, Folder / "out.csv", {});
    EXPECT_EQ(BytesOf(Folder / "out.csv"), row.Bytes);
  }
  EXPECT_FALSE(fs::exists(Folder / "plugin" / "ExchangeTradeFormat"));
}

TEST_F(ExchangeFiles, FoldersThatCannotBeMadeAreSilent) {
  Trades.Add("A", 4);
  WriteBytes(Folder / "grid" / "ExchangeTradeFormat", "a file in the way");
  WriteExchangeTradeFiles(Run());
  WriteManualExport(Run(), false, Folder / "missing" / "out.csv", {});
  EXPECT_EQ(BytesOf(Folder / "grid" / "ExchangeTradeFormat"), "a file in the way");
}

}  // namespace

#include "grid_ops/exports/exchange_files.h"

#include "tests/grid_ops/export_sample.h"
#include "tests/support/own_folder.h"

namespace {

namespace fs = std::filesystem;

constexpr std::int64_t kNoon = 1772884800;  // 2026-03-07 12:00:00 UTC

class ExchangeFiles : public OwnFolder {
 protected:
  TradeFileRun Run() const {
    return {Columns, Trades.ByServer, kNoDivisors, Folder / "grid", Folder / "plugin", kNoon};
  }
  void SetUp() override {
    OwnFolder::SetUp();
    fs::create_directory(Folder / "grid");
    fs::create_directory(Folder / "plugin");
    Columns[TradeColumnIndex("colUserID")].Visible = false;
  }
  // The content of the FO file and the CM file, with "|" between them; "none" for a missing file.
  std::string Files(const char* base, const char* name) const {
    const auto content = [&](const char* side) {
      const fs::path file = Folder / base / "ExchangeTradeFormat" / side / name;
      return fs::exists(file) ? BytesOf(file) : "none";
    };
    return content("FO") + "|" + content("CM");
  }

  GridColumns Columns = ColumnsOfGrid();
  SampleTrades Trades;
};

TEST_F(ExchangeFiles, ExactNameOfExchangeChoosesTheFile) {
  int id = 0;
  for (const char* exchange : {"BSECM", "nsecm", "NSECM", "NSECM ", "NSEFO", "", "BSECMX"})
    PutText(Trades.Add("S", ++id).Exchange, exchange);
  PutText(Trades.Add("Before", 9).Exchange, "BSECM");
  WriteBytes(Folder / "grid" / "EXCHANGETRADEFORMAT.TXT", "UserID\nVELDTradeID");
  WriteExchangeTradeFiles(Run());
  EXPECT_EQ(Files("grid", "0307TRD.txt"),
            "USER1,2       \r\nUSER1,4       \r\nUSER1,5       \r\nUSER1,6       \r\nUSER1,7       \r\n|"
            "USER1,9       \r\nUSER1,1       \r\nUSER1,3       \r\n");
  EXPECT_EQ(kExchangeReport, L"Exchange Trade File Sucessfully Write");
}

TEST_F(ExchangeFiles, WritesAnEmptyLinePerTradeWithoutFormat) {
  Trades.Add("A", 4);
  Trades.Add("A", 5);
  WriteExchangeTradeFiles(Run());
  EXPECT_EQ(Files("grid", "0307TRD.txt"), "\r\n\r\n|");
}

TEST_F(ExchangeFiles, ManualExchangeBranchWritesShownRowsOnly) {
  Trades.Add("Default", 4);
  PutText(Trades.Add("Default", 5).Exchange, "NSECM");
  Trades.Add("Default", 6);
  WriteBytes(Folder / "plugin" / "EXCHANGETRADEFORMAT.TXT", "UserID\nVELDTradeID\nSide");
  EXPECT_EQ(Files("plugin", "0703TRD.txt"), "none|none");
  WriteManualExport(Run(), true, Folder / "unused", {});
  EXPECT_EQ(Files("plugin", "0703TRD.txt"), "|");
  WriteManualExport(Run(), true, Folder / "unused",
                    [](std::string_view server, std::int32_t id) { return server == "Default" && id < 6; });
  EXPECT_EQ(Files("plugin", "0703TRD.txt"), "4       ,2\r\n|5       ,2\r\n");
  EXPECT_FALSE(fs::exists(Folder / "unused"));
  EXPECT_EQ(ManualExchangeReport(kNoon), L"0703TRD.txt Successfully exported..!!");
}

TEST_F(ExchangeFiles, ManualFreeBranchWritesVisibleColumns) {
  Trades.Add("A", 4);
  Trades.Add("B", 3);
  const struct {
    const char *Format, *Bytes;
  } rows[] = {
      {"", ""},
      {"VELDTradeID,No\nServer,Where\nPrice,At\n", "No,Where,At,\r\n4,A,101.750000,\r\n3,B,101.750000,"},
      {"UserID,User\nBook Type,Book\nSide,Side", "Side,\r\nSell,\r\nSell,"},
      {"UserID,User\n", "\r\n\r\n"},
      {"ExchangeTradeTime,T,yyyyMM\nOrderTime,O,yyyyMM",
       "T,O,\r\n202402,20240229-10:15:00,\r\n202402,20240229-10:15:00,"},
  };
  for (const auto& row : rows) {
    WriteBytes(Folder / "grid" / "TRADEBOOKEXPORT.TXT", row.Format);
    WriteManualExport(Run(), false, Folder / "out.csv", {});
    EXPECT_EQ(BytesOf(Folder / "out.csv"), row.Bytes) << row.Format;
  }
  EXPECT_EQ(Files("plugin", "0703TRD.txt"), "none|none");
}

TEST_F(ExchangeFiles, TellProgressPerTrade) {
  for (int id = 1; id <= 20'000; ++id) Trades.Add("A", id);
  Trades.Add("B", 1);
  std::vector<std::size_t> told;
  const auto tell = [&](std::size_t done, std::size_t all) { told.insert(told.end(), {done, all}); };
  WriteBytes(Folder / "grid" / "TRADEBOOKEXPORT.TXT", "Side,Side");
  WriteExchangeTradeFiles(Run(), tell);
  EXPECT_EQ(told, (std::vector<std::size_t>{20'000, 20'001}));
  WriteManualExport(Run(), true, {}, {}, tell);
  WriteManualExport(Run(), false, Folder / "out.csv", {}, tell);
  EXPECT_EQ(told, (std::vector<std::size_t>{20'000, 20'001, 20'000, 20'001, 20'000, 20'001}));
}

TEST_F(ExchangeFiles, IgnoreFoldersThatCannotBeCreated) {
  Trades.Add("A", 4);
  WriteBytes(Folder / "grid" / "ExchangeTradeFormat", "a file in the way");
  WriteExchangeTradeFiles(Run());
  WriteManualExport(Run(), false, Folder / "missing" / "out.csv", {});
  EXPECT_EQ(BytesOf(Folder / "grid" / "ExchangeTradeFormat"), "a file in the way");
}

}  // namespace

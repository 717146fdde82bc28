#include "trade_data/daily_file/daily_file.h"

#include "foundations/text_tools.h"
#include "tests/support/own_folder.h"
#include "tests/support/sample_trade.h"
#include "tests/trade_data/cache_player.h"

namespace {

namespace fs = std::filesystem;

// What the columns of these names write, each with a comma after it; "?" for a name that is no column.
std::string ValuesOf(std::string_view names, const TradeRecord& record) {
  LineBuffer line;
  line.Start(1000);
  while (!names.empty()) {
    const DailyColumn* column = FindDailyColumn(TakeUntil(names, ','));
    if (column != nullptr) column->Append(line, record, "Default");
    line.Append(column != nullptr ? "," : "?,");
  }
  return std::string(line.Text());
}

TEST(DailyColumnsTest, WriteTheFieldsOfATradeByExactNames) {
  EXPECT_EQ(ValuesOf("Server,UserID,VELDTradeID,VELDOrderID,OrderID,ExchangeOrderID,ExchangeTradeID,OrderTime,"
                     "ExchangeOrderTime,ExchangeTradeTime,Exchange,SecurityID,Symbol,ExpiryDate,SecurityType",
                     SampleRecord()),
            "Default,USER1,-2130574588,16910597,4711,1100000000012345,XTRADE-77,10:15:00,"
            "10:15:01,10:15:02,NSEFO,35001,ABCD,29FEB2024,OPTSTK,");
  EXPECT_EQ(ValuesOf("Side,OrderType,Quantity,PendingQuantity,Price,StrikePrice,CTCLId,ClientID,ReferenceText,MemberID,"
                     "StrategyID,OptionType,ProductType,OpenClose,ManagerID,Pancard,TerminalInfo,Multiplier,AlgoID",
                     SampleRecord()),
            "Sell,StopLimit,150,50,101.75,2450.5,400123456789,CLIENT07,ref, first,MEM12,"
            "68,CE,INTRADAY,CloseYesterday,MGR,PANCD1234F,T-24,0.25,ALGO9,");
  EXPECT_EQ(ValuesOf(", ,Serve,Servers,server,UserID , UserID,ExchangeOrderNo,CTCLID,Time,Quantity\t,Side\r,Text55107",
                     SampleRecord()),
            "?,?,?,?,?,?,?,?,?,?,?,?,?,");
}

TEST(DailyColumnsTest, PreferTheMasterOfASecurity) {
  const SecurityMaster master{77, "MX", "MID", "MTYPE", "MSYM", "MEXP", "PE", "Master name", 1.5, 2.5};
  TradeRecord record = SampleRecord();
  record.MasterRecord = &master;
  EXPECT_EQ(
      ValuesOf("Exchange,SecurityID,SecurityType,Symbol,ExpiryDate,OptionType,StrikePrice,Multiplier,Price", record),
      "MX,MID,MTYPE,MSYM,MEXP,PE,1.5,2.5,101.75,");
}

// The codes whose text differs from that of an unknown one, up to 257.
std::string CodesOf(const char* column, const std::string& unknown) {
  std::string codes;
  for (unsigned code = 0; code < 258; ++code) {
    TradeRecord record{};
    record.Side = record.OrderType = record.OpenClose = static_cast<std::uint8_t>(code);
    record.ProductType = code;
    if (const std::string text = ValuesOf(column, record); text != unknown) codes += std::to_string(code) + text;
  }
  return codes;
}

TEST(DailyColumnsTest, WriteCodesAsTexts) {
  EXPECT_EQ(CodesOf("Side", "Both,"), "1Buy,2Sell,257Buy,");
  EXPECT_EQ(CodesOf("ProductType", "*,"), "1NORMAL,2DELIVERY,3INTRADAY,");
  EXPECT_EQ(CodesOf("OpenClose", "NONE,"),
            "1Open,2Close,3ForceClose,4CloseToday,5CloseYesterday,6ForceOff,7LocalForceClose,257Open,");
  EXPECT_EQ(CodesOf("OrderType", ","),
            "1Market,2Limit,3StopMarket,4StopLimit,11OCO,74MIT,78NegotiatedDealOrder,80PreOpenOrder,82MITLimit,"
            "87AuctionBuyIn,88AuctionSellOut,89AuctionTradingBuyIn,90AuctionTradingSellOut,101MultiLeg,102Spread,"
            "257Market,");
}

class DailyFileTest : public OwnFolder {
 protected:
  void WriteHeader(const std::string& lines) { WriteFile(Folder / "TradeHeaderFile.txt", lines); }
  // The one daily file of the folder, whatever its date; empty where there is none.
  fs::path FindFile() const {
    for (const auto& entry : fs::directory_iterator(Folder)) {
      const std::string name = entry.path().filename().string();
      if (name.size() == 17 && name.starts_with("Trade20") && name.ends_with(".CSV")) return entry.path();
    }
    return {};
  }
  std::string Content() const { return ReadFile(FindFile()); }

  // Opens the file of a day and writes lines of the record.
  void OpenAndWrite(DailyFile& file, int lines = 1) {
    file.OpenDailyFile(Folder, "20240229", "Default");
    for (int i = 0; i < lines; ++i) {
      file.WriteTradeLine(Record, "Default");
      if (i % 7 == 0) file.Flush();
    }
  }
  TradeRecord Record{};
};

std::string Trade(std::uint32_t id, std::uint32_t quantity, const std::string& execution) {
  return TradeMessage(id, quantity, execution, WireText(55103, "S" + execution));
}

TEST_F(DailyFileTest, TakesColumnsFromTheLinesOfTheHeaderFile) {
  Record.Quantity = 7;
  std::strcpy(Record.Symbol, "ABC");
  // The lines of the header file, and the header and the row that they give.
  const std::tuple<const char*, const char*, const char*, const char*> kRows[] = {
      {"an unknown name, carriage returns", "Symbol\r\nQuantity\r\nX\r\n", "Symbol,Quantity,X,", "ABC,7,"},
      {"no line end after the last", "Symbol\nQuantity", "Symbol,Quantity,", "ABC,7,"},
      {"empty lines", "\n\nSymbol\n\r\n\nQuantity\n\n", "Symbol,Quantity,", "ABC,7,"},
      {"commas", "Symbol,\n,\n,Side\nSide,Price\nQuantity\n", "Quantity,", "7,"},
      {"a name twice", "Symbol\nQuantity\nSymbol\n", "Symbol,Quantity,Symbol,", "ABC,7,ABC,"},
      {"a carriage return within", "Sym\rbol\nQuantity\r\r\n", "Sym\rbol,Quantity\r,", ""},
      {"a byte order mark, once and ahead", "\xEF\xBB\xBFSymbol\n\xEF\xBB\xBFSide\n",
       "Symbol,\xEF\xBB\xBF"
       "Side,",
       "ABC,"},
      {"blanks are a name", " \n", " ,", ""},
      {"empty", "", "", ""},
  };
  for (const auto& [what, lines, header, row] : kRows) {
    SCOPED_TRACE(what);
    WriteHeader(lines);
    OpenAndWrite(*std::make_unique<DailyFile>(), 2);
    EXPECT_EQ(Content(), std::string(header) + "\r\n" + row + "\r\n" + row);
    EXPECT_EQ(FindFile().filename(), "Trade20240229.CSV");
  }
}

TEST_F(DailyFileTest, WritesTheDownloadThenEachLiveTradeAtOnce) {
  WriteHeader("VELDTradeID\nServer\nSymbol\nQuantity\n");
  auto player = std::make_unique<CachePlayer>(std::map<std::string, BookSettings>{}, Folder);
  player->Play(Trade(2, 20, "b") + Trade(1, 10, "a") + Trade(1, 11, "a2"));
  EXPECT_EQ(FindFile(), fs::path());
  std::string expected = "VELDTradeID,Server,Symbol,Quantity,\r\n1,Default,Sa2,11,\r\n2,Default,Sb,20,";
  // The messages, and what they add to the file.
  const std::tuple<const char*, std::string, const char*> kRows[] = {
      {"the end of the download", kDownloadEnd, ""},
      {"a trade and a repeat", Trade(3, 30, "c") + Trade(4, 40, "c"), "\r\n3,Default,Sc,30,"},
      {"a change of a trade", Trade(1, 12, "a3"), "\r\n1,Default,Sa3,12,"},
      {"an amendment", WireMessage(9112, WireU32(20008, 2) + WireU32(20103, 25)), "\r\n2,Default,Sb,25,"},
      {"one of an unknown trade writes the record of the last",
       WireMessage(9112, WireU32(20008, 9) + WireU32(20104, 90) + WireText(55100, "new")), "\r\n2,Default,Sb,25,"},
      {"one that does nothing", WireMessage(9112, WireU32(20008, 9) + WireU32(20103, 90)), ""},
      {"cleared", kClear, ""},
      {"the next download, trade by trade but not at once", Trade(5, 50, "e"), ""},
      {"its end finds the file open: nothing from here on", kDownloadEnd + Trade(6, 60, "f"), ""},
  };
  for (const auto& [what, messages, added] : kRows) {
    SCOPED_TRACE(what);
    player->Play(messages);
    expected += added;
    EXPECT_EQ(Content(), expected);
    EXPECT_EQ(fs::file_size(FindFile()), expected.size());
  }
  // The end of the module closes the file, and with it goes out what the download had put there.
  player.reset();
  EXPECT_EQ(Content(), expected + "\r\n5,Default,Se,50,");
}

TEST_F(DailyFileTest, FollowsAutoTradeWriteCSV) {
  WriteHeader("Quantity\n");
  CachePlayer player({}, Folder);
  const auto play = [&](bool writes, const std::string& messages) {
    player.Cache().AutoTradeWriteCSV = writes;
    player.Play(messages);
    return Content();
  };
  EXPECT_EQ(play(false, Trade(1, 10, "a") + kDownloadEnd + Trade(2, 20, "b")), "");
  EXPECT_EQ(play(true, Trade(3, 30, "c")), "");
  EXPECT_EQ(FindFile(), fs::path());
  EXPECT_EQ(play(true, kDownloadEnd), "Quantity,\r\n10,\r\n20,\r\n30,");
  EXPECT_EQ(play(false, Trade(4, 40, "d")), "Quantity,\r\n10,\r\n20,\r\n30,");
  EXPECT_EQ(play(true, Trade(5, 50, "e")), "Quantity,\r\n10,\r\n20,\r\n30,\r\n50,");
}

// The names of every opening are taken, also of one that failed.
TEST_F(DailyFileTest, IgnoresAFolderInItsPlace) {
  WriteHeader("Quantity\n");
  const fs::path blocked = Folder / "Trade20240229.CSV";
  fs::create_directory(blocked);
  DailyFile file;
  OpenAndWrite(file);
  EXPECT_TRUE(fs::is_empty(blocked));
  fs::remove(blocked);
  file.WriteTradeLine(Record, "Default");
  EXPECT_FALSE(fs::exists(blocked));
  OpenAndWrite(file);
  EXPECT_EQ(Content(), "Quantity,Quantity,\r\n0,0,");
}

// A stream that failed stays failed: room on the disk does not bring it back.
TEST_F(DailyFileTest, IgnoresAFullDisk) {
  const fs::path link = Folder / "Trade20240229.CSV";
  std::error_code error;
  fs::create_symlink("/dev/full", link, error);
  if (error || !fs::is_character_file(link, error)) GTEST_SKIP() << "this system has no full device";
  WriteHeader("Quantity\n");
  DailyFile file;
  OpenAndWrite(file, 3000);
  EXPECT_TRUE(fs::is_symlink(link));
  fs::remove(link);
  OpenAndWrite(file);
  EXPECT_FALSE(fs::exists(link));
}

}  // namespace

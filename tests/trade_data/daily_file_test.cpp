#include "trade_data/daily_file/daily_file.h"

#include <gtest/gtest.h>

#include "tests/support/own_folder.h"
#include "tests/support/wire_bytes.h"
#include "tests/trade_data/cache_player.h"

namespace {

namespace fs = std::filesystem;

class DailyFileTest : public OwnFolder {
 protected:
  void WriteHeader(const std::string& lines) { WriteFile(Folder / "TradeHeaderFile.txt", lines); }
  // The one daily file of the folder, whatever its date; empty where there is none.
  fs::path FindFile() const {
    for (const auto& entry : fs::directory_iterator(Folder)) {
      const std::string name = entry.path().filename().string();
      if (name.size() == 17 && name.starts_with("Trade") && name.ends_with(".CSV") &&
          name.find_first_not_of("0123456789", 5) == 13)
        return entry.path();
    }
    return {};
  }
  std::string Content() const { return ReadFile(FindFile()); }
};

std::string Trade(std::uint32_t id, std::uint32_t quantity, const std::string& execution) {
  return WireMessage(8111, WireU32(20008, id) + WireText(55101, execution) + WireTerminator() +
                               WireU32(20014, quantity) + WireText(55103, "S" + execution));
}
const std::string kDownloadEnd = WireMessage(8112, "");

TEST_F(DailyFileTest, TakesColumnsFromTheLinesOfTheHeaderFile) {
  TradeRecord record{};
  record.Quantity = 7;
  std::strcpy(record.Symbol, "ABC");
  const struct {
    const char *What, *Lines, *Header, *Row;
  } kRows[] = {
      {"names and one that is none", "Symbol\nQuantity\nX\n", "Symbol,Quantity,X,", "ABC,7,"},
      {"carriage returns", "Symbol\r\nQuantity\r\n", "Symbol,Quantity,", "ABC,7,"},
      {"no line end behind the last", "Symbol\nQuantity", "Symbol,Quantity,", "ABC,7,"},
      {"empty lines", "\n\nSymbol\n\r\n\nQuantity\n\n", "Symbol,Quantity,", "ABC,7,"},
      {"commas", "Symbol,\n,\n,Side\nSide,Price\nQuantity\n", "Quantity,", "7,"},
      {"a name twice", "Symbol\nQuantity\nSymbol\n", "Symbol,Quantity,Symbol,", "ABC,7,ABC,"},
      {"names as they stand", " Symbol\nSymbol \nsymbol\nSymbol\t\n", " Symbol,Symbol ,symbol,Symbol\t,", ""},
      {"a carriage return within", "Sym\rbol\nQuantity\r\r\n", "Sym\rbol,Quantity\r,", ""},
      {"a byte order mark, once and ahead", "\xEF\xBB\xBFSymbol\n\xEF\xBB\xBFSide\n",
       "Symbol,\xEF\xBB\xBF"
       "Side,",
       "ABC,"},
      {"blanks are a name", " \n", " ,", ""},
      {"empty", "", "", ""},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.What);
    WriteHeader(row.Lines);
    {
      DailyFile file;
      file.OpenDailyFile(Folder, "20240229", "Default");
      file.WriteTradeLine(record, "Default");
      file.WriteTradeLine(record, "Default");
    }
    EXPECT_EQ(Content(), std::string(row.Header) + "\r\n" + row.Row + "\r\n" + row.Row);
    EXPECT_EQ(FindFile().filename(), "Trade20240229.CSV");
  }
}

TEST_F(DailyFileTest, WritesTheDownloadThenEachLiveTradeAtOnce) {
  WriteHeader("VELDTradeID\nServer\nSymbol\nQuantity\n");
  auto player = std::make_unique<CachePlayer>(std::map<std::string, BookSettings>{}, Folder);
  player->Play(Trade(2, 20, "b") + Trade(1, 10, "a") + Trade(1, 11, "a2"));
  EXPECT_EQ(FindFile(), fs::path());
  std::string expected = "VELDTradeID,Server,Symbol,Quantity,\r\n1,Default,Sa2,11,\r\n2,Default,Sb,20,";
  const struct {
    const char* What;
    std::string Messages;
    const char* Added;
  } kRows[] = {
      {"the end of the download", kDownloadEnd, ""},
      {"a trade", Trade(3, 30, "c"), "\r\n3,Default,Sc,30,"},
      {"a repeat", Trade(4, 40, "c"), ""},
      {"a change of a trade", Trade(1, 12, "a3"), "\r\n1,Default,Sa3,12,"},
      {"an amendment", WireMessage(9112, WireU32(20008, 2) + WireU32(20103, 25)), "\r\n2,Default,Sb,25,"},
      {"one of an unknown trade writes the record of the last",
       WireMessage(9112, WireU32(20008, 9) + WireU32(20104, 90) + WireText(55100, "new")), "\r\n2,Default,Sb,25,"},
      {"one that does nothing", WireMessage(9112, WireU32(20008, 9) + WireU32(20103, 90)), ""},
      {"cleared", WireMessage(30022, ""), ""},
      {"the next download, trade by trade but not at once", Trade(5, 50, "e"), ""},
      {"its end finds the file open: nothing from here on", kDownloadEnd + Trade(6, 60, "f"), ""},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.What);
    player->Play(row.Messages);
    expected += row.Added;
    EXPECT_EQ(Content(), expected);
    EXPECT_EQ(fs::file_size(FindFile()), expected.size());
  }
  // The end of the module closes the file, and with it goes out what the download had put there.
  player.reset();
  EXPECT_EQ(Content(), expected + "\r\n5,Default,Se,50,");
}

// More lines than any buffer holds back: some are on the disk early, none is torn or lost in the end.
TEST_F(DailyFileTest, KeepsTheDownloadOfASecondLoginWhole) {
  WriteHeader("VELDTradeID\n");
  std::string download, expected = "VELDTradeID,";
  for (std::uint32_t id = 1; id <= 5000; ++id) {
    download += Trade(id, 1, std::to_string(id));
    expected += "\r\n" + std::to_string(id) + ",";
  }
  auto player = std::make_unique<CachePlayer>(std::map<std::string, BookSettings>{}, Folder);
  player->Play(kDownloadEnd + WireMessage(30022, "") + download + kDownloadEnd + Trade(6000, 1, "late"));
  EXPECT_TRUE(expected.starts_with(Content()));
  EXPECT_LT(Content().size(), expected.size());
  EXPECT_GT(Content().size(), 12U);
  player.reset();
  EXPECT_EQ(Content(), expected);
}

TEST_F(DailyFileTest, WritesNothingAfterASecondOpening) {
  WriteHeader("Quantity\n");
  CachePlayer player({}, Folder);
  player.Play(kDownloadEnd + Trade(1, 10, "a") + kDownloadEnd + Trade(2, 20, "b") + kDownloadEnd + Trade(3, 30, "c"));
  EXPECT_EQ(Content(), "Quantity,\r\n10,");
  EXPECT_EQ(player.Cache().TradeNumbers.Size(), 3u);
}

TEST_F(DailyFileTest, FollowsAutoTradeWriteCSV) {
  WriteHeader("Quantity\n");
  CachePlayer player({}, Folder);
  player.Cache().AutoTradeWriteCSV = false;
  player.Play(Trade(1, 10, "a") + kDownloadEnd + Trade(2, 20, "b"));
  player.Cache().AutoTradeWriteCSV = true;
  player.Play(Trade(3, 30, "c"));
  EXPECT_EQ(FindFile(), fs::path());
  player.Play(kDownloadEnd);
  EXPECT_EQ(Content(), "Quantity,\r\n10,\r\n20,\r\n30,");
  player.Cache().AutoTradeWriteCSV = false;
  player.Play(Trade(4, 40, "d"));
  player.Cache().AutoTradeWriteCSV = true;
  player.Play(Trade(5, 50, "e"));
  EXPECT_EQ(Content(), "Quantity,\r\n10,\r\n20,\r\n30,\r\n50,");
}

TEST_F(DailyFileTest, StartsTheFileAnewInASecondRun) {
  WriteHeader("Quantity\n");
  for (const char* execution : {"a", "b"}) {
    CachePlayer player({}, Folder);
    player.Play(Trade(1, 10, execution) + kDownloadEnd);
    EXPECT_EQ(Content(), "Quantity,\r\n10,");
  }
}

TEST_F(DailyFileTest, WritesEmptyLinesWithoutAHeaderFile) {
  CachePlayer player({}, Folder);
  player.Play(Trade(1, 10, "a") + kDownloadEnd + Trade(2, 20, "b"));
  EXPECT_EQ(Content(), "\r\n\r\n");
}

// The names of every opening are taken, also of one that failed.
TEST_F(DailyFileTest, IgnoresAFolderInItsPlace) {
  WriteHeader("Quantity\n");
  const fs::path blocked = Folder / "Trade20240229.CSV";
  fs::create_directory(blocked);
  TradeRecord record{};
  DailyFile file;
  file.OpenDailyFile(Folder, "20240229", "Default");
  file.WriteTradeLine(record, "Default");
  file.Flush();
  EXPECT_TRUE(fs::is_empty(blocked));
  fs::remove(blocked);
  file.WriteTradeLine(record, "Default");
  EXPECT_FALSE(fs::exists(blocked));
  file.OpenDailyFile(Folder, "20240229", "Default");
  file.WriteTradeLine(record, "Default");
  file.Flush();
  EXPECT_EQ(Content(), "Quantity,Quantity,\r\n0,0,");
}

TEST_F(DailyFileTest, IgnoresAMissingFolder) {
  CachePlayer player({}, Folder / "none");
  player.Play(Trade(1, 10, "a") + kDownloadEnd + Trade(2, 20, "b"));
  EXPECT_FALSE(fs::exists(Folder / "none"));
  EXPECT_EQ(player.Cache().TradeNumbers.Size(), 2u);
}

TEST_F(DailyFileTest, IgnoresAFullDisk) {
  const fs::path link = Folder / "Trade20240229.CSV";
  std::error_code error;
  fs::create_symlink("/dev/full", link, error);
  if (error || !fs::is_character_file(link, error)) GTEST_SKIP() << "this system has no full device";
  WriteHeader("Quantity\n");
  TradeRecord record{};
  DailyFile file;
  file.OpenDailyFile(Folder, "20240229", "Default");
  for (int i = 0; i < 3000; ++i) {
    file.WriteTradeLine(record, "Default");
    if (i % 7 == 0) file.Flush();
  }
  EXPECT_TRUE(fs::is_symlink(link));
  // The stream stays failed: room on the disk does not bring it back.
  fs::remove(link);
  file.OpenDailyFile(Folder, "20240229", "Default");
  file.WriteTradeLine(record, "Default");
  file.Flush();
  EXPECT_FALSE(fs::exists(link));
}

}  // namespace

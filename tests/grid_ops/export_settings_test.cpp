#include "grid_ops/exports/export_settings.h"

#include "tests/support/own_folder.h"

namespace {

namespace fs = std::filesystem;

class ExportSettings : public OwnFolder {
 protected:
  fs::path File() const { return Folder / "config.ini"; }
};

TEST_F(ExportSettings, ReadsTheFlagOrWritesIt) {
  const char* const created = "[TRADECSV]\r\nExchangeFormatCSV=FALSE\r\n";
  const struct {
    const char *What, *Before;
    bool FlagFromFalse, FlagFromTrue;
    std::string After;
  } rows[] = {
      {"no file", "", false, false, created},
      {"TRUE", "[TRADECSV]\nExchangeFormatCSV=TRUE", true, true, "[TRADECSV]\nExchangeFormatCSV=TRUE"},
      {"names in another case, blanks, quotes", "[tradecsv]\nEXCHANGEFORMATCSV = \"TRUE\" \n", true, true,
       "[tradecsv]\nEXCHANGEFORMATCSV = \"TRUE\" \n"},
      {"true", "[TRADECSV]\nExchangeFormatCSV=true\n", false, true, "[TRADECSV]\nExchangeFormatCSV=true\n"},
      {"TRUE and more", "[TRADECSV]\nExchangeFormatCSV=TRUE1\n", false, true, "[TRADECSV]\nExchangeFormatCSV=TRUE1\n"},
      {"empty value", "[TRADECSV]\nExchangeFormatCSV=\n", false, false, created},
      {"another section's", "[CSV]\r\nExchangeFormatCSV=TRUE\r\n", false, false,
       std::string("[CSV]\r\nExchangeFormatCSV=TRUE\r\n\r\n") + created},
  };
  for (const auto& row : rows)
    for (const bool from : {false, true}) {
      SCOPED_TRACE(std::string(row.What) + (from ? ", from true" : ", from false"));
      fs::remove(File());
      if (*row.Before != '\0') WriteBytes(File(), row.Before);
      bool flag = from;
      ReadExchangeFormatFlag(File(), flag);
      EXPECT_EQ(flag, from ? row.FlagFromTrue : row.FlagFromFalse);
      EXPECT_EQ(BytesOf(File()), row.After);
    }
}

TEST_F(ExportSettings, SavesThePathAndKeepsTheRest) {
  WriteBytes(File(),
             "; of the desk\n\n; exports\n[TRADECSV]\nExchangeFormatCSV=TRUE\n; twice\nUser=a\nUser=b\n\xE9=\"c\"\n"
             "[PATH]\n; last\nTrade=OLD\n; the end\n");
  std::string folder = "c:\\Days\\\xE9z", remembered = "c:\\days";
  SaveTradePath(File(), folder, remembered);
  EXPECT_EQ(folder, "C:\\DAYS\\\xE9Z");
  EXPECT_EQ(remembered, "C:\\DAYS\\\xE9Z");
  const std::string expected =
      "; of the desk\r\n\r\n; exports\r\n[TRADECSV]\r\nExchangeFormatCSV=TRUE\r\n\r\n; "
      "twice\r\nUser=a\r\nUser=b\r\n"
      "\xE9=\"c\"\r\n\r\n[PATH]\r\n\r\n; last\r\nTrade=C:\\DAYS\\\xE9Z\r\n\r\n; the end\r\n";
  EXPECT_EQ(BytesOf(File()), expected);
  folder = "C:\\days\\\xE9z";  // the same but for its case: not written
  WriteBytes(File(), "");
  SaveTradePath(File(), folder, remembered);
  EXPECT_EQ(BytesOf(File()), "");
  EXPECT_EQ(FolderText(fs::path("a")), "a");
}

TEST_F(ExportSettings, KeepsFilesThatCannotBeWritten) {
  std::string folder = "new", remembered;
  SaveTradePath(Folder / "missing" / "config.ini", folder, remembered);
  EXPECT_EQ(remembered, "NEW");
  EXPECT_TRUE(fs::is_empty(Folder));
  const std::string zeros("[PATH]\0\n", 8);  // of a wide file, say
  WriteBytes(File(), zeros);
  bool flag = true;
  ReadExchangeFormatFlag(File(), flag);
  EXPECT_FALSE(flag);
  EXPECT_EQ(BytesOf(File()), zeros);
  WriteBytes(File(), "[PATH]\n");
  fs::permissions(File(), fs::perms::owner_read | fs::perms::group_read);
  const bool isWritable = std::ofstream(File(), std::ios::app).is_open();
  ReadExchangeFormatFlag(File(), flag);
  const std::string bytes = BytesOf(File());
  fs::permissions(File(), fs::perms::all);
  if (isWritable) GTEST_SKIP() << "this user can write any file";
  EXPECT_EQ(bytes, "[PATH]\n");
}

}  // namespace

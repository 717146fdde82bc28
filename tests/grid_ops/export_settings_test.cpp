#include "grid_ops/exports/export_settings.h"

#include "tests/support/own_folder.h"

namespace {

namespace fs = std::filesystem;

class ExportSettings : public OwnFolder {
 protected:
  fs::path File() const { return Folder / "config.ini"; }
};

TEST_F(ExportSettings, ReadsTheFlagOrWritesIt) {
  const std::string created = "[TRADECSV]\r\nExchangeFormatCSV=FALSE\r\n",
                    other = "[CSV]\r\nExchangeFormatCSV=TRUE\r\n";
  // The file before; whether the flag is set then if it was not, and if it was; and the file if it changes.
  const std::tuple<std::string, bool, bool, std::string> rows[] = {
      {"", false, false, created},
      {"[TRADECSV]\nExchangeFormatCSV=TRUE", true, true, ""},
      {"[tradecsv]\nEXCHANGEFORMATCSV = \"TRUE\" \n", true, true, ""},
      {"[TRADECSV]\nExchangeFormatCSV=true\n", false, true, ""},
      {"[TRADECSV]\nExchangeFormatCSV=TRUE1\n", false, true, ""},
      {"[TRADECSV]\nExchangeFormatCSV=\n", false, false, created},
      {other, false, false, other + "\r\n" + created},
  };
  for (const auto& [before, flagFromFalse, flagFromTrue, after] : rows)
    for (const bool from : {false, true}) {
      SCOPED_TRACE(before + (from ? ", from true" : ", from false"));
      fs::remove(File());
      if (!before.empty()) WriteFile(File(), before);
      bool flag = from;
      ReadExchangeFormatFlag(File(), flag);
      EXPECT_EQ(flag, from ? flagFromTrue : flagFromFalse);
      EXPECT_EQ(ReadFile(File()), after.empty() ? before : after);
    }
}

TEST_F(ExportSettings, SavesThePathAndKeepsTheRest) {
  WriteFile(File(),
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
  EXPECT_EQ(ReadFile(File()), expected);
  folder = "C:\\days\\\xE9z";  // differs only in case, so nothing is written
  WriteFile(File(), "");
  SaveTradePath(File(), folder, remembered);
  EXPECT_EQ(ReadFile(File()), "");
  EXPECT_EQ(FolderText(fs::path("a")), "a");
}

TEST_F(ExportSettings, KeepsFilesThatCannotBeWritten) {
  std::string folder = "new", remembered;
  SaveTradePath(Folder / "missing" / "config.ini", folder, remembered);
  EXPECT_EQ(remembered, "NEW");
  EXPECT_TRUE(fs::is_empty(Folder));
  const std::string zeros("[PATH]\0\n", 8);  // of a wide file, say
  WriteFile(File(), zeros);
  bool flag = true;
  ReadExchangeFormatFlag(File(), flag);
  EXPECT_FALSE(flag);
  EXPECT_EQ(ReadFile(File()), zeros);
  WriteFile(File(), "[PATH]\n");
  fs::permissions(File(), fs::perms::owner_read | fs::perms::group_read);
  const bool isWritable = std::ofstream(File(), std::ios::app).is_open();
  ReadExchangeFormatFlag(File(), flag);
  const std::string bytes = ReadFile(File());
  fs::permissions(File(), fs::perms::all);
  if (isWritable) GTEST_SKIP() << "this user can write any file";
  EXPECT_EQ(bytes, "[PATH]\n");
}

}  // namespace

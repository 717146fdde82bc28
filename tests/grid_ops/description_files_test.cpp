#include "grid_ops/exports/trade_file_lines.h"

#include "tests/support/own_folder.h"

namespace {

struct ListCase {
  const char* What;
  std::string Text;
  DescriptionList ExchangeFormat;
  DescriptionList BookExport;
};

const ListCase kCases[] = {
    {"nothing", "", {}, {}},
    {"names alone", "Price\nSide", {{"Price", "", ""}, {"Side", "", ""}}, {}},
    {"last line end and empty lines", "\n\r\nPrice\r\n\nSide\n\n", {{"Price", "", ""}, {"Side", "", ""}}, {}},
    {"two and three parts", "A,b\r\nC,d,e\r\n", {{"A", "", "b"}, {"C", "", "d"}}, {{"A", "b", ""}, {"C", "d", "e"}}},
    {"four parts", "A,b,c,d", {{"A", "", "b"}}, {}},
    {"empty parts",
     ",b\nA,\nA,,c\nA,b,\n,\n",
     {{"", "", "b"}, {"A", "", ""}, {"A", "", ""}, {"A", "", "b"}, {"", "", ""}},
     {}},
    {"blanks stay, a return within too", " A , b\rc \n", {{" A ", "", " b\rc "}}, {{" A ", " b\rc ", ""}}},
    {"byte order mark, ahead only",
     "\xEF\xBB\xBF"
     "A,b\n\xEF\xBB\xBF"
     "C,d",
     {{"A", "", "b"},
      {"\xEF\xBB\xBF"
       "C",
       "", "d"}},
     {{"A", "b", ""},
      {"\xEF\xBB\xBF"
       "C",
       "d", ""}}},
    {"zero byte", std::string("A\0B,c", 5), {{std::string("A\0B", 3), "", "c"}}, {{std::string("A\0B", 3), "c", ""}}},
};

class DescriptionFiles : public OwnFolder {};

TEST_F(DescriptionFiles, LinesAsEntries) {
  for (const ListCase& test : kCases) {
    SCOPED_TRACE(test.What);
    WriteBytes(Folder / "EXCHANGETRADEFORMAT.TXT", test.Text);
    WriteBytes(Folder / "TRADEBOOKEXPORT.TXT", test.Text);
    EXPECT_EQ(ReadExchangeFormat(Folder), test.ExchangeFormat);
    EXPECT_EQ(ReadBookExport(Folder), test.BookExport);
  }
}

TEST_F(DescriptionFiles, WhatCannotBeReadIsEmptyAndLongFilesAreRead) {
  EXPECT_TRUE(ReadExchangeFormat(Folder).empty());
  std::filesystem::create_directory(Folder / "EXCHANGETRADEFORMAT.TXT");
  EXPECT_TRUE(ReadExchangeFormat(Folder).empty());
  const std::string name(5000, 'n');
  WriteBytes(Folder / "TRADEBOOKEXPORT.TXT", name + ",title\n" + name + ",title");
  EXPECT_EQ(ReadBookExport(Folder), DescriptionList(2, {name, "title", ""}));
}

}  // namespace

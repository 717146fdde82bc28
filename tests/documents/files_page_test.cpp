#include <gtest/gtest.h>

#include <set>

#include "tests/documents/page.h"
#include "trade_data/daily_columns.h"

namespace {

// The sample of the header file names every column once, and the file that ships is that sample.
TEST(FilesPage, SampleHeaderFileNamesEveryColumn) {
  const std::vector<std::string> names = FencedBlock("files.md", "`TradeHeaderFile.txt`", "text");
  std::set<const DailyColumn*> columns;
  for (const std::string& name : names) {
    SCOPED_TRACE(name);
    EXPECT_NE(FindDailyColumn(name), nullptr);
    columns.insert(FindDailyColumn(name));
  }
  EXPECT_EQ(columns.size(), 34U);
  EXPECT_EQ(names.size(), 34U);
  std::ifstream shipped(TRADEBOOK_SOURCE_FOLDER "/terminal/data/working_folder/TradeHeaderFile.txt");
  std::vector<std::string> shippedNames;
  for (std::string name; std::getline(shipped, name);) shippedNames.push_back(name);
  EXPECT_EQ(shippedNames, names);
}

}  // namespace

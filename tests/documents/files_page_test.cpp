#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "foundations/text_tools.h"
#include "grid_ops/trade_file_lines.h"
#include "tests/documents/page.h"
#include "trade_data/daily_columns.h"

namespace {

std::string Shipped(const std::string& name) {
  std::ifstream file(TRADEBOOK_SOURCE_FOLDER "/terminal/data/working_folder/" + name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

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
  EXPECT_EQ(SplitText(Shipped("TradeHeaderFile.txt"), '\n'), names);
}

// The samples of the exports' files stand on the page as they ship, and all that they name is known.
TEST(FilesPage, SamplesOfTheExports) {
  for (const auto& [name, language] :
       {std::pair{"EXCHANGETRADEFORMAT.TXT", "text"}, {"TRADEBOOKEXPORT.TXT", "text"}, {"config.ini", "ini"}})
    EXPECT_EQ(SplitText(Shipped(name), '\n'), FencedBlock("files.md", "## `" + std::string(name) + "`", language));
  const auto isColumn = [](std::string_view name) {
    return std::any_of(std::begin(kTradeColumns), std::end(kTradeColumns),
                       [name](const TradeColumn& column) { return column.Title == name; });
  };
  const auto isNamed = [](std::string_view name) {
    return std::any_of(std::begin(kNamedFields), std::end(kNamedFields),
                       [name](const NamedField& field) { return field.Name == name; });
  };
  const std::string layout = Shipped("EXCHANGETRADEFORMAT.TXT");
  EXPECT_FALSE(layout.ends_with('\n'));
  EXPECT_EQ(ParseExchangeFormat(layout).size(), 22U);
  for (const DescriptionEntry& entry : ParseExchangeFormat(layout))
    EXPECT_TRUE(isColumn(entry.Name) || isNamed(entry.Name)) << entry.Name;
  EXPECT_EQ(ParseBookExport(Shipped("TRADEBOOKEXPORT.TXT")).size(), 10U);
  for (const DescriptionEntry& entry : ParseBookExport(Shipped("TRADEBOOKEXPORT.TXT")))
    EXPECT_TRUE(isColumn(entry.Name)) << entry.Name;
}

}  // namespace

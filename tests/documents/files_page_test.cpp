#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "foundations/text_tools.h"
#include "grid_base/settings/column_profile.h"
#include "grid_base/settings/settings_text.h"
#include "grid_base/settings/xml_settings.h"
#include "grid_ops/exports/exchange_files.h"
#include "platform/modules.h"
#include "tests/documents/page.h"
#include "tests/support/files.h"
#include "toolkit/model/bar_place.h"
#include "trade_data/daily_file/daily_file.h"

namespace {

std::string Shipped(const std::string& name) {
  return ReadFile(TRADEBOOK_SOURCE_FOLDER "/terminal/data/working_folder/" + name);
}

// The sample header file names every column once and is the file that ships.
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

// The page has the export files as they ship; every name in them is known.
TEST(FilesPage, SamplesOfExportsNameKnownFields) {
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

std::wstring SampleSettings(const std::string& behind) {
  std::wstring text;
  for (const std::string& line : FencedBlock("files.md", behind, "xml")) text.append(line.begin(), line.end());
  return text;
}

// The samples of settings parse to what the page says.
TEST(FilesPage, SamplesOfSettingsParse) {
  CVELDPXMLSettings settings;
  ASSERT_TRUE(ParseNode(settings.UserRoot(), SampleSettings("## `TradeBookSettings.xml`")));
  std::int32_t number = 0;
  ASSERT_TRUE(settings.OpenPath(L"PLUGINDLLS\\Trade Book\\TradeBook"));
  EXPECT_TRUE(settings.Read(L"BuyColor", number) && number == 16711680);
  EXPECT_TRUE(settings.Read(L"WholeRowSel", number) && number == 1);
  ASSERT_TRUE(ParseNode(settings.UserRoot(), L"<R>" + SampleSettings("Where a bar stands") + L"</R>"));
  std::wstring place;
  ASSERT_TRUE(settings.OpenPath(L"Trade Book : COMEX GOLD 201312TradeBook 17"));
  ASSERT_TRUE(settings.Read(L"Bar-1", place));
  const std::optional<BarPlace> bar = ParseBarPlace(place);
  ASSERT_TRUE(bar);
  EXPECT_EQ(BarPlaceText(*bar), place);
  std::string text;
  for (const std::string& line : FencedBlock("files.md", "## `ColumnProfile/", "xml")) text += line + '\n';
  const auto folder = ProgramFolder() / "sample profile";
  std::filesystem::create_directories(folder / "ColumnProfile" / "Trade Book");
  WriteFile(folder / "ColumnProfile" / "Trade Book" / "ColumnProfile.xml", text);
  ColumnProfile columns("Trade Book", L"ColumnProfile", folder);
  columns.LoadColumnProfileFile();
  EXPECT_EQ(columns.LoadMultipleSort(), 1);
  const ColumnState server = columns.InsertProfiledColumn({.Key = "colServer", .Header = L"x", .Width = 7}, 0);
  EXPECT_EQ(server.Header, L"Server");
  EXPECT_EQ(server.Width, 60);
  EXPECT_EQ(server.Visible, 0);
}

// A truncated file parses to nothing, at every length.
TEST(FilesPage, RejectsTruncatedSettings) {
  for (const char* behind : {"## `TradeBookSettings.xml`", "## `ColumnProfile/"}) {
    const std::wstring sample = SampleSettings(behind);
    for (std::size_t size = 0; size < sample.size(); ++size) {
      CVELDPXMLNode root;
      EXPECT_FALSE(ParseNode(root, sample.substr(0, size)));
      EXPECT_TRUE(root.Children().empty() && root.Value.empty()) << behind << ' ' << size;
    }
  }
}

}  // namespace

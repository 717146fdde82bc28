// The pages for users name the commands, options, files and texts that there are; the links of all pages have targets.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>

#include "book_windows/windows/trade_book_grid.h"
#include "foundations/text_tools.h"
#include "grid_base/settings/settings_text.h"
#include "grid_base/settings/xml_settings.h"
#include "grid_ops/exports/exchange_files.h"
#include "terminal/program/options.h"
#include "terminal/script/window_script.h"
#include "tests/documents/page.h"
#include "tests/support/files.h"
#include "toolkit/model/bar_place.h"
#include "trade_data/daily_file/daily_file.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kPages[] = {"README.md",          "docs/user_guide.md",   "docs/terminal.md",    "docs/files.md",
                                  "docs/host_guide.md", "docs/architecture.md", "docs/wire_format.md", "docs/feeds.md",
                                  "docs/positions.md",  "CHANGELOG.md"};

std::set<std::string> Firsts(const std::string& text, const char* pattern) {
  std::set<std::string> firsts;
  for (const Match& match : Matches(text, pattern)) firsts.insert(match[1]);
  return firsts;
}

// In blocks and within a text.
TEST(CommandLines, AreOptionsOfTheTerminal) {
  int count = 0;
  for (const char* page : kPages)
    for (const Match& line :
         Matches(SourceText(page), R"((?:\n|`)(?:\./run|(?:build/release/bin/)?terminal)((?: +[^ `#\n]+)+))")) {
      SCOPED_TRACE(page + line[0]);
      std::vector<fs::path> words;
      std::istringstream stream(line[1]);
      for (std::string word; stream >> word;) words.emplace_back(word);
      if (words.front() == "--demo") words.erase(words.begin());  // of ./run alone
      if (words.empty() || !words.front().string().starts_with("--")) continue;
      EXPECT_NO_THROW(ParseOptions(words));
      ++count;
    }
  EXPECT_GE(count, 6);
}

TEST(CommandLines, ArePresetsAndTargetsOfTheBuild) {
  const std::string build = SourceText("CMakePresets.json") + SourceText("cmake/package.cmake");
  const std::string checks = SourceText("test");
  int count = 0;
  for (const char* page : kPages)
    for (const auto& [pattern, before] :
         {std::pair{R"((?:--preset |\./test |build/)([a-z]+)\b)", "\""}, {R"(--target (\w+))", "add_custom_target("}})
      for (const Match& match : Matches(SourceText(page), pattern)) {
        const bool isKnown = build.find(before + match[1]) != std::string::npos ||
                             checks.find("    " + match[1] + ") echo ") != std::string::npos;
        EXPECT_TRUE(isKnown) << page << ": " << match[0];
        ++count;
      }
  EXPECT_GE(count, 4);
}

TEST(CommandLines, TerminalPageHasEveryOptionCommandAndExitCode) {
  const std::string page = SourceText("docs/terminal.md"), help = HelpText();
  const std::set<std::string> options = Firsts(help, R"(\n  (--[a-z-]+))");
  EXPECT_GE(options.size(), 15U);
  EXPECT_EQ(Firsts(page, R"(\n\| `(--[a-z-]+))"), options);
  const std::set<std::string> codes = Firsts(help.substr(help.find("Exit codes:")), R"(\n  (\d))");
  EXPECT_EQ(Firsts(page, R"(\n\| (\d) \|)"), codes);
  const std::set<std::string> commands = Firsts("\n" + ScriptHelpText(), R"(\n *([a-z][a-z-]+))");
  EXPECT_GE(commands.size(), 15U);
  std::set<std::string> told;
  const std::string rows = page.substr(page.find("## Scripts"));
  for (const Match& row : Matches(rows, R"(\n\| (`[^|]*) \|)")) told.merge(Firsts(row[1], R"(`([a-z][a-z-]+))"));
  for (const std::string& command : commands) EXPECT_TRUE(told.contains(command)) << command;
}

std::string Shipped(const std::string& name) {
  return SourceText("terminal/data/working_folder/" + name);
}

// The page has the files as they ship, and every name in them is known.
TEST(FilesPage, SamplesAreShippedAndNameKnownFields) {
  for (const auto& [name, language] : {std::pair{"EXCHANGETRADEFORMAT.TXT", "text"},
                                       {"TRADEBOOKEXPORT.TXT", "text"},
                                       {"TradeHeaderFile.txt", "text"},
                                       {"config.ini", "ini"}})
    EXPECT_EQ(SplitText(Shipped(name), '\n'), FencedBlock("files.md", "## `" + std::string(name) + "`", language));
  std::set<const DailyColumn*> daily;
  for (const std::string& name : SplitText(Shipped("TradeHeaderFile.txt"), '\n')) {
    EXPECT_NE(FindDailyColumn(name), nullptr) << name;
    EXPECT_TRUE(daily.insert(FindDailyColumn(name)).second) << name;
  }
  EXPECT_EQ(daily.size(), 34U);
  const auto isColumn = [](const auto& name) {
    return std::ranges::count(kTradeColumns, name, &TradeColumn::Title) > 0;
  };
  const auto isNamed = [](const auto& name) { return std::ranges::count(kNamedFields, name, &NamedField::Name) > 0; };
  const std::string layout = Shipped("EXCHANGETRADEFORMAT.TXT"), manual = Shipped("TRADEBOOKEXPORT.TXT");
  EXPECT_FALSE(layout.ends_with('\n'));
  EXPECT_EQ(ParseExchangeFormat(layout).size(), 22U);
  for (const DescriptionEntry& entry : ParseExchangeFormat(layout))
    EXPECT_TRUE(isColumn(entry.Name) || isNamed(entry.Name)) << entry.Name;
  EXPECT_EQ(ParseBookExport(manual).size(), 10U);
  for (const DescriptionEntry& entry : ParseBookExport(manual)) EXPECT_TRUE(isColumn(entry.Name)) << entry.Name;
}

// The samples of settings parse to what the page says.
TEST(FilesPage, SamplesOfSettingsParse) {
  const auto sample = [](const std::string& behind) {
    std::wstring text;
    for (const std::string& line : FencedBlock("files.md", behind, "xml")) text.append(line.begin(), line.end());
    return text;
  };
  CVELDPXMLSettings settings;
  std::int32_t number = 0;
  ASSERT_TRUE(ParseNode(settings.UserRoot(), sample("## `TradeBookSettings.xml`")));
  ASSERT_TRUE(settings.OpenPath(L"PLUGINDLLS\\Trade Book\\TradeBook"));
  EXPECT_TRUE(settings.Read(L"BuyColor", number) && number == 16711680);
  EXPECT_TRUE(settings.Read(L"WholeRowSel", number) && number == 1);
  std::wstring text;
  ASSERT_TRUE(ParseNode(settings.UserRoot(), L"<R>" + sample("Where a bar stands") + L"</R>"));
  ASSERT_TRUE(settings.OpenPath(L"Trade Book : COMEX GOLD 201312TradeBook 17"));
  ASSERT_TRUE(settings.Read(L"Bar-1", text));
  const std::optional<BarPlace> bar = ParseBarPlace(text);
  EXPECT_TRUE(bar && BarPlaceText(*bar) == text);
  ASSERT_TRUE(ParseNode(settings.UserRoot(), L"<R>" + sample("## `ColumnProfile/") + L"</R>"));
  ASSERT_TRUE(settings.OpenPath(L"ColumnProfile\\Trade Book\\colServer"));
  EXPECT_TRUE(settings.Read(L"Header", text) && text == L"Server");
  EXPECT_TRUE(settings.Read(L"Width", number) && number == 60);
  EXPECT_TRUE(settings.Read(L"Visible", number) && number == 0);
}

// The sample of the columns has each column of a book, wide enough for a title of its letters, and shows some in order.
TEST(FilesPage, SampleOfColumnsFitsTheBooks) {
  std::string profile = Shipped("ColumnProfile/Trade Book/ColumnProfile.xml");
  std::erase(profile, '\n');
  CVELDPXMLSettings settings;
  ASSERT_TRUE(ParseNode(settings.UserRoot(), L"<R>" + std::wstring(profile.begin(), profile.end()) + L"</R>"));
  std::map<std::int32_t, std::string_view> shown;
  for (const TradeColumn& column : kTradeColumns) {
    const std::string path = "ColumnProfile\\Trade Book\\" + std::string(column.Key);
    std::int32_t width = 0, visible = -1, order = -1;
    ASSERT_TRUE(settings.OpenPath(std::wstring(path.begin(), path.end()))) << path;
    EXPECT_TRUE(settings.Read(L"Width", width) && settings.Read(L"Visible", visible) && settings.Read(L"Order", order));
    EXPECT_GE(width, static_cast<int>(column.Title.size()) * 8 + 8) << path;
    EXPECT_EQ(visible != 0, order >= 0) << path;
    if (visible != 0) shown[order] = column.Title;
  }
  std::string titles;
  for (const auto& [order, title] : shown) titles.append(title).append(" ");
  EXPECT_EQ(titles,
            "ExchangeTradeTime Exchange Symbol ExpiryDate StrikePrice OptionType Side Quantity Price ClientID "
            "ExchangeOrderNo ExchangeTradeID ");
}

TEST(UserGuide, NamesMenuPropertiesAndMessages) {
  const std::string guide = SourceText("docs/user_guide.md");
  std::vector<std::string> texts = SplitText(
      "Font|Buy Color|Sell Color|Font Buy Color|Font Sell Color|No. of Frozen Columns|Whole Row Select|Show Grid Row|"
      "Header Hide|Multiple Trade Book Disable|Auto Trade Write CSV",
      '|');
  for (const std::wstring_view text :
       {kCsvReport, std::wstring_view(CopyRefusal(0, 0, 0)), std::wstring_view(CopyRefusal(1, 0, kMostCopiedRows))})
    texts.push_back(WideToNarrow(std::wstring(text)));
  for (const CQORPMenuItem& item : CTradeBookGrid::GridMenu()) texts.push_back(WideToNarrow(item.Text));
  for (std::string& text : texts) {
    std::erase(text, '&');
    EXPECT_NE(guide.find(text), std::string::npos) << text;
  }
}

// The script that makes the page's pictures expects the counts of its table of filters.
TEST(UserGuide, HasTheCountsOfTheScript) {
  const std::string script = SourceText("terminal/data/scripts/user_guide.txt");
  const std::string filters = script.substr(script.find("# The filters of the page."));
  std::multiset<std::string> counts, told;
  for (const Match& line : Matches(filters.substr(0, filters.find("\n\n")), R"(\nexpect-rows (\d+))"))
    counts.insert(line[1]);
  for (const Match& row :
       Matches(SourceText("docs/user_guide.md"), R"(\n\| [^|\n]+ \| [^|\n]*`[^|\n]+ \| ([0-9, ]+) \|)"))
    for (Match& number : Matches(row[1], R"((?:\d|,\d)+)")) {
      std::erase(number[0], ',');
      told.insert(number[0]);
    }
  EXPECT_EQ(told.size(), 8U);
  EXPECT_EQ(told, counts);
}

// The headings of a page as anchors of links: lower case, hyphens for blanks, letters and digits only.
std::set<std::string> AnchorsOf(const std::string& page) {
  std::set<std::string> anchors;
  for (const Match& heading : Matches(page, R"(\n#+ ([^\n]+))")) {
    std::string anchor;
    for (const char letter : heading[1]) {
      if (letter == ' ') anchor += '-';
      if (std::isalnum(static_cast<unsigned char>(letter)) != 0 || letter == '-' || letter == '_')
        anchor += static_cast<char>(std::tolower(letter));
    }
    anchors.insert(anchor);
  }
  return anchors;
}

TEST(Pages, EveryLinkHasATarget) {
  const fs::path root = TRADEBOOK_SOURCE_FOLDER;
  EXPECT_EQ(std::distance(fs::directory_iterator(root / "docs"), {}), 9) << "eight pages and the pictures";
  for (const fs::path page : kPages)
    for (const Match& link : Matches(SourceText(page.generic_string()), R"(\]\(([^)#:]*)(?:#([^)]+))?\))")) {
      SCOPED_TRACE(page.string() + " " + link[0]);
      const fs::path target = link[1].empty() ? page : page.parent_path() / link[1];
      ASSERT_TRUE(fs::exists(root / target));
      if (link[2].empty()) continue;
      EXPECT_TRUE(AnchorsOf(SourceText(target.generic_string())).contains(link[2]));
    }
}

}  // namespace

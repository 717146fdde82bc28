// The user guide names every menu entry, property and message; the links of all pages have targets.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "book_windows/windows/trade_book_grid.h"
#include "grid_ops/exports/csv_export.h"
#include "tests/documents/page.h"

namespace {

namespace fs = std::filesystem;

const fs::path kSources = TRADEBOOK_SOURCE_FOLDER;

// A heading as a link's anchor: lower case, hyphens for blanks, letters and digits only.
std::string AnchorOf(const std::string& heading) {
  std::string anchor;
  for (const char letter : heading) {
    if (letter == ' ') anchor += '-';
    if (std::isalnum(static_cast<unsigned char>(letter)) != 0 || letter == '-' || letter == '_')
      anchor += static_cast<char>(std::tolower(letter));
  }
  return anchor;
}

std::set<std::string> AnchorsOf(const std::string& page) {
  std::set<std::string> anchors;
  for (const Match& heading : Matches(page, R"(\n#+ ([^\n]+))")) anchors.insert(AnchorOf(heading[1]));
  return anchors;
}

TEST(UserGuide, NamesMenuPropertiesAndMessages) {
  const std::string guide = SourceText("docs/user_guide.md");
  std::vector<std::wstring> texts = {L"Font",
                                     L"Buy Color",
                                     L"Sell Color",
                                     L"Font Buy Color",
                                     L"Font Sell Color",
                                     L"No. of Frozen Columns",
                                     L"Whole Row Select",
                                     L"Show Grid Row",
                                     L"Header Hide",
                                     L"Multiple Trade Book Disable",
                                     L"Auto Trade Write CSV",
                                     std::wstring(kCsvReport),
                                     CopyRefusal(0, 0, 0),
                                     CopyRefusal(1, 0, kMostCopiedRows)};
  for (const CQORPMenuItem& item : CTradeBookGrid::GridMenu()) texts.emplace_back(item.Text);
  for (std::wstring& text : texts) {
    std::erase(text, L'&');
    EXPECT_NE(guide.find(std::string(text.begin(), text.end())), std::string::npos)
        << std::string(text.begin(), text.end());
  }
}

// The script that makes the page's pictures expects the counts of its table of filters.
TEST(UserGuide, HasTheCountsOfTheScript) {
  std::multiset<std::string> counts;
  const std::string script = SourceText("terminal/data/scripts/user_guide.txt");
  const std::size_t begin = script.find("# The filters of the page.");
  ASSERT_NE(begin, std::string::npos);
  for (const Match& line : Matches(script.substr(begin, script.find("\n\n", begin) - begin), R"(\nexpect-rows (\d+))"))
    counts.insert(line[1]);
  std::multiset<std::string> told;
  for (const Match& row :
       Matches(SourceText("docs/user_guide.md"), R"(\n\| [^|\n]+ \| [^|\n]*`[^|\n]+ \| ([0-9, ]+) \|)")) {
    std::string cell = row[1] + ", ";
    for (std::size_t end; (end = cell.find(", ")) != std::string::npos; cell.erase(0, end + 2)) {
      std::string number = cell.substr(0, end);
      std::erase(number, ',');
      told.insert(number);
    }
  }
  EXPECT_EQ(told.size(), 8U);
  EXPECT_EQ(told, counts);
}

TEST(Pages, EveryLinkHasATarget) {
  std::vector<fs::path> pages{"README.md", "CHANGELOG.md"};
  for (const auto& entry : fs::directory_iterator(kSources / "docs"))
    if (entry.path().extension() == ".md") pages.push_back("docs" / entry.path().filename());
  EXPECT_GE(pages.size(), 7U);
  for (const fs::path& page : pages)
    for (const Match& link : Matches(SourceText(page.generic_string()), R"(\]\(([^)#:]*)(?:#([^)]+))?\))")) {
      SCOPED_TRACE(page.string() + " " + link[0]);
      const fs::path target = link[1].empty() ? page : page.parent_path() / link[1];
      ASSERT_TRUE(fs::exists(kSources / target));
      if (link[2].empty()) continue;
      EXPECT_TRUE(AnchorsOf(SourceText(target.generic_string())).contains(link[2]));
    }
}

}  // namespace

// The dealer's page names every entry of the menu, every property and message; links between all pages lead somewhere.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "tests/documents/page.h"

namespace {

namespace fs = std::filesystem;

const fs::path kSources = TRADEBOOK_SOURCE_FOLDER;

// As a page's heading is written in a link: lower case, blanks as hyphens, nothing else but letters, digits and those.
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
  std::set<std::string> texts;
  for (const auto& [file, pattern] :
       {std::pair{"book_windows/windows/trade_book_commands.h", R"re(, L"([^"]+)"\})re"},
        {"book_windows/windows/grid_properties.cpp", R"re(\n    \{(?:L"\w+"|nullptr), L"([^"]+)", )re"},
        {"grid_ops/exports/csv_export.h", R"re(return L"(.*command\.?)";)re"},
        {"grid_ops/exports/csv_export.h", R"re(kCsvReport = L"([^"]+)";)re"}}) {
    const std::vector<Match> found = Matches(SourceText(file), pattern);
    EXPECT_FALSE(found.empty()) << file;
    for (Match text : found) {
      std::erase(text[1], '&');
      texts.insert(text[1]);
    }
  }
  EXPECT_GE(texts.size(), 30U);
  for (const std::string& text : texts) EXPECT_NE(guide.find(text), std::string::npos) << text;
}

// The script that makes the page's pictures tries the filters of its table: these are the counts that it expects.
TEST(UserGuide, CountsAreThoseOfTheScript) {
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

TEST(Pages, EveryLinkLeadsSomewhere) {
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

// The programs take the commands on the pages, and the terminal's page has all of its options.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <sstream>

#include "terminal/common/errors.h"
#include "terminal/program/options.h"
#include "terminal/script/window_script.h"
#include "tests/documents/page.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kPages[] = {"README.md",          "docs/user_guide.md",   "docs/terminal.md",   "docs/files.md",
                                  "docs/host_guide.md", "docs/architecture.md", "docs/wire_format.md"};

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
      if (!words.front().string().starts_with("--")) continue;
      EXPECT_NO_THROW(ParseOptions(words));
      ++count;
    }
  EXPECT_GE(count, 6);
}

TEST(CommandLines, ArePresetsAndTargetsOfTheBuild) {
  const std::string presets = SourceText("CMakePresets.json");
  const std::string targets = SourceText("cmake/package.cmake");
  int count = 0;
  for (const char* page : kPages) {
    const std::string text = SourceText(page);
    for (const Match& match : Matches(text, R"((?:--preset |\./test |build/)([a-z]+)\b)")) {
      EXPECT_NE(presets.find("\"" + match[1] + "\""), std::string::npos) << page << ": " << match[0];
      ++count;
    }
    for (const Match& match : Matches(text, R"(--target (\w+))")) {
      EXPECT_NE(targets.find("add_custom_target(" + match[1]), std::string::npos) << page << ": " << match[0];
      ++count;
    }
  }
  EXPECT_GE(count, 4);
}

TEST(CommandLines, TerminalPageHasEveryOptionCommandAndExitCode) {
  const std::string page = SourceText("docs/terminal.md");
  const std::string help = HelpText();
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

}  // namespace

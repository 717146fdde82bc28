// The tables of the host guide have what the tables of host_link have: every message, field and function.
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <tuple>

#include "host_link/host_functions/terminal_functions.h"
#include "host_link/messages/message_table.h"
#include "tests/documents/page.h"

namespace {

using Fields = std::map<int, std::string>;  // type by tag

std::string TypeText(const MessageField& field) {
  constexpr const char* kNames[] = {"u8", "u16", "u32", "u64", "double", "text", "bytes", "none"};
  const std::string name = kNames[static_cast<std::size_t>(field.Type)];
  return field.Size == 0 ? name : name + " " + std::to_string(field.Size);
}

TEST(HostGuide, NamesEveryFieldWithItsType) {
  std::map<int, Fields> guide;
  const std::string page = SourceText("docs/host_guide.md");
  for (const Match& heading : Matches(page, R"(\n### Fields of ([0-9, ]+))")) {
    Fields fields;
    for (const Match& row : Matches(PageSection(page, heading[0]), R"(\n\| (\d+) \| ([a-z0-9 ]+) \|)"))
      EXPECT_TRUE(fields.emplace(std::stoi(row[1]), row[2]).second) << row[0];
    for (const Match& number : Matches(heading[1], R"(\d+)"))
      EXPECT_TRUE(guide.emplace(std::stoi(number[0]), fields).second) << number[0];
  }
  std::map<int, Fields> table;
  for (const MessageRow& row : kMessages)
    for (const MessageField& field : row.Fields) table[row.Number][field.Tag] = TypeText(field);
  EXPECT_EQ(guide, table);
}

// The meaning starts with the words of the terminal's log.
TEST(HostGuide, NamesEveryMessageWithItsWayAndMeaning) {
  constexpr const char* kWays[] = {"", "OnMessage", "OnPluginMessage", "GetDllInfo", "PluginDataSend", "32022"};
  std::set<std::tuple<int, std::string, std::string>> guide, table;
  for (const Match& row : Matches(SourceText("docs/host_guide.md"),
                                  R"(\n\| (\d+) \| (in|out) \| (?:the callback of )?`?(\w+)`? \| ([^|]+) \|)")) {
    guide.emplace(std::stoi(row[1]), row[2], row[3]);
    const MessageRow* message = FindMessage(static_cast<std::uint16_t>(std::stoi(row[1])));
    EXPECT_TRUE(message != nullptr && row[4].starts_with(message->Meaning)) << row[0];
  }
  for (const MessageRow& row : kMessages) {
    if (row.ToPlugin != MessageWay::None)
      table.emplace(row.Number, "in", kWays[static_cast<std::size_t>(row.ToPlugin)]);
    if (row.ToTerminal != MessageWay::None)
      table.emplace(row.Number, "out", kWays[static_cast<std::size_t>(row.ToTerminal)]);
  }
  EXPECT_EQ(guide, table);
}

TEST(HostGuide, NamesTheFunctionsThatAreCalled) {
  std::set<std::string> guide, table;
  const std::string section = PageSection(SourceText("docs/host_guide.md"), "\n## The terminal's functions");
  for (const Match& row : Matches(section, R"(\n\| `(\w+)` \|)")) guide.insert(row[1]);
  for (const TerminalFunctionRow& row : kTerminalFunctions)
    if (row.IsCalled) table.insert(row.Name);
  EXPECT_EQ(guide, table);
}

TEST(HostGuide, QuotesTheExampleLineForLine) {
  const std::string example = SourceText("examples/minimal_host.cpp");
  const std::vector<Match> blocks = Matches(SourceText("docs/host_guide.md"), "```cpp\\n([^`]*)```");
  EXPECT_GE(blocks.size(), 4U);
  for (const Match& block : blocks) EXPECT_NE(example.find(block[1]), std::string::npos) << block[1];
}

}  // namespace

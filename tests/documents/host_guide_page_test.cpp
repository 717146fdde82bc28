// The tables of the host guide say what the code does: every message, every tag with its type, every function.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <set>

#include "host_link/messages/packet_reader.h"
#include "host_link/module/plugin_info.h"
#include "tests/documents/page.h"
#include "tests/host_link/reply_for_test.h"
#include "trade_data/records/trade_fields.h"

namespace {

namespace fs = std::filesystem;

using Fields = std::map<int, std::string>;  // type by tag
using Messages = std::map<int, Fields>;     // fields by number
// Number, direction and what the message goes through.
using Ways = std::set<std::tuple<int, std::string, std::string>>;

std::string Between(const std::string& text, const std::string& from, const std::string& to) {
  const std::size_t begin = text.find(from);
  if (begin == std::string::npos) throw std::runtime_error("nothing holds '" + from + "'");
  return text.substr(begin, text.find(to, begin + from.size()) - begin);
}

// Each of the guide's tables of fields, for every number in its heading.
Messages GuideFields() {
  Messages messages;
  std::string guide = SourceText("docs/host_guide.md");
  for (std::size_t at = guide.find("### Fields of "); at != std::string::npos;
       at = guide.find("### Fields of ", at + 1)) {
    const std::string section = guide.substr(at, guide.find("\n#", at) - at);
    const std::string heading = section.substr(0, section.find('\n'));
    const std::string rows = section.substr(heading.size());
    Fields fields;
    for (const Match& row : Matches(rows, R"(\n\| (\d+) \| ([a-z0-9 ]+) \|)"))
      EXPECT_TRUE(fields.emplace(std::stoi(row[1]), row[2]).second) << row[0];
    for (const Match& number : Matches(heading, R"(\d+)"))
      EXPECT_TRUE(messages.emplace(std::stoi(number[0]), fields).second) << number[0];
  }
  return messages;
}

std::string TypeOf(Field kind, std::uint16_t limit) {
  constexpr const char* kNames[] = {"u8", "u16", "u32", "u64", "double", "text", "u16", "u32"};
  const std::string name = kNames[static_cast<std::size_t>(kind)];
  return kind == Field::Text ? name + " " + std::to_string(limit) : name;
}

template <std::size_t Count>
void AddTable(Fields& fields, const WireField (&table)[Count]) {
  for (const WireField& field : table)
    if (field.Tag != 10002) fields[field.Tag] = TypeOf(field.Kind, field.Limit);
}

// The rows of a table in a source file whose places are in that record; a limit may be a constant of the file.
void AddSourceTable(Fields& fields, const std::string& source, const std::string& record) {
  const std::string pattern = R"(\{(\d+), Field::(\w+), offsetof\()" + record + R"(, \w+\)(?:, (\w+))?\})";
  for (const Match& row : Matches(source, pattern.c_str())) {
    std::string limit = row[3];
    for (const Match& named : Matches(source, R"(uint16_t (k\w+) = (\d+);)"))
      if (named[1] == limit) limit = named[2];
    std::string type = row[2];
    for (char& letter : type) letter = static_cast<char>(std::tolower(letter));
    fields[std::stoi(row[1])] = limit.empty() ? type : type + " " + limit;
  }
}

// What GetDllInfo appends, taken from its bytes.
Messages DescriptionFields() {
  ReplyForTest reply(4096, false);
  AppendPluginInfo(reply.Buffer, false, {});
  Messages messages;
  for (Bytes rest = reply.Content(); !rest.empty();) {
    CQORPacketReader reader(rest.data(), static_cast<std::uint16_t>(rest.size()));
    std::uint16_t needed = 0;
    std::uint16_t consumed = 0;
    if (!reader.ParseHeader(needed, consumed)) throw std::runtime_error("the description breaks off");
    Fields& fields = messages[reader.MessageNumber];
    while (reader.NextTag()) {
      const std::uint16_t from = reader.Cursor;
      reader.SkipValue();
      const int width = reader.Cursor - from;
      fields[reader.Tag] = ValueWidth(reader.Tag) == kCountedWidth ? (width == 130 ? "bytes 128" : "text")
                           : width == 0                            ? "none"
                                                                   : "u" + std::to_string(width * 8);
    }
    rest.erase(rest.begin(), rest.begin() + consumed);
  }
  return messages;
}

// Every message that the plug-in builds in its source, with the fields that stand behind its number.
Messages BuiltFields() {
  Messages messages;
  for (const char* folder : {"host_link", "book_windows", "grid_base"})
    for (const auto& entry : fs::recursive_directory_iterator(fs::path(TRADEBOOK_SOURCE_FOLDER) / folder)) {
      if (entry.path().extension() != ".cpp" || entry.path().filename() == "plugin_info.cpp") continue;
      const std::string source = SourceText(entry.path().lexically_relative(TRADEBOOK_SOURCE_FOLDER).generic_string());
      for (const Match& begin : Matches(source, R"(AddU16\(10002, (\d+)\);)")) {
        const std::string built = Between(source, begin[0], "\n}\n");
        Fields& fields = messages[std::stoi(begin[1])];
        for (const Match& row : Matches(built, R"(\.AddU(\d+)\((\d+),)"))
          if (row[2] != "10002") fields[std::stoi(row[2])] = "u" + row[1];
        for (const Match& row : Matches(built, R"(\.AddText\((\d+),)")) fields[std::stoi(row[1])] = "text 48";
      }
    }
  return messages;
}

Messages CodeFields() {
  Messages messages = DescriptionFields();
  for (const auto& [number, fields] : BuiltFields()) messages[number] = fields;
  AddTable(messages[8111], kTradeKeyFields);
  AddTable(messages[8111], kTradeBodyFields);
  messages[8111][kSectionTerminator] = "none";
  messages[9101] = messages[8111];
  AddSourceTable(messages[9112], SourceText("trade_data/cache/trade_cache.cpp"), R"((?:TradeRecord|Amendment))");
  const std::string router = SourceText("host_link/module/message_router.cpp");
  for (const auto& [number, record] : {std::pair{32022, "AddressPair"}, {32023, "FilterKey"}, {30026, "RestoreValues"}})
    AddSourceTable(messages[number], router, record);
  std::erase_if(messages, [](const auto& message) { return message.second.empty(); });
  return messages;
}

TEST(HostGuide, NamesEveryFieldWithItsType) {
  const Messages guide = GuideFields();
  const Messages code = CodeFields();
  for (const auto& [number, fields] : code) {
    SCOPED_TRACE(number);
    ASSERT_TRUE(guide.contains(number));
    EXPECT_EQ(guide.at(number), fields);
  }
  EXPECT_EQ(guide.size(), code.size());
}

TEST(HostGuide, NamesEveryMessageAndItsWay) {
  Ways guide;
  for (const Match& row :
       Matches(SourceText("docs/host_guide.md"), R"(\n\| (\d+) \| (in|out) \| (?:the callback of )?`?(\w+)`? \|)"))
    guide.emplace(std::stoi(row[1]), row[2], row[3]);
  Ways code;
  const std::string router = SourceText("host_link/module/message_router.cpp");
  for (const auto& [table, entry] :
       {std::pair{"::kMessageRoutes[]", "OnMessage"}, {"::kPluginMessageRoutes[]", "OnPluginMessage"}})
    for (const Match& row : Matches(Between(router, table, "};"), R"(\{(\d+), &)"))
      code.emplace(std::stoi(row[1]), "in", entry);
  for (const auto& [number, fields] : DescriptionFields()) code.emplace(number, "out", "GetDllInfo");
  for (const auto& [number, fields] : BuiltFields())
    code.emplace(number, "out", number == 32023 ? "32022" : "PluginDataSend");
  EXPECT_EQ(guide, code);
}

TEST(HostGuide, NamesTheFunctionsThatAreCalled) {
  std::set<std::string> guide;
  const std::string section = Between(SourceText("docs/host_guide.md"), "## The terminal's functions", "\n## ");
  for (const Match& row : Matches(section, R"(\n\| `(\w+)` \|)")) guide.insert(row[1]);
  std::set<std::string> code;
  for (const Match& call :
       Matches(SourceText("host_link/host_functions/function_table.cpp"), R"(\(TerminalFunction::(\w+)\))"))
    code.insert(call[1]);
  EXPECT_EQ(guide, code);
  EXPECT_EQ(code.size(), 5U);
}

// The code on the page is that of the example, line for line.
TEST(HostGuide, QuotesTheExample) {
  const std::string example = SourceText("examples/minimal_host.cpp");
  const std::vector<Match> blocks = Matches(SourceText("docs/host_guide.md"), "```cpp\\n([^`]*)```");
  EXPECT_GE(blocks.size(), 4U);
  for (const Match& block : blocks) EXPECT_NE(example.find(block[1]), std::string::npos) << block[1];
}

}  // namespace

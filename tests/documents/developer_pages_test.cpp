// Architecture page, wire format and host guide say what the code does.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <sstream>

#include "foundations/text_tools.h"
#include "grid_ops/columns/cell_text.h"
#include "grid_ops/exports/csv_export.h"
#include "grid_ops/exports/exchange_files.h"
#include "host_link/host_functions/terminal_functions.h"
#include "host_link/messages/message_table.h"
#include "tests/documents/page.h"
#include "tests/support/own_folder.h"
#include "tests/support/plain_book.h"
#include "tests/support/programs.h"
#include "tests/support/wire_bytes.h"

namespace {

namespace fs = std::filesystem;

TEST(ArchitecturePage, NamesFilesAndFunctionsThatExist) {
  const std::string page = SourceText("docs/architecture.md");
  std::set<std::string> files;
  std::string sources;
  const fs::path root = TRADEBOOK_SOURCE_FOLDER;
  for (const char* folder : {"platform", "foundations", "host_link", "trade_data", "grid_base", "grid_ops", "toolkit",
                             "book_windows", "terminal", "feeds", "gateway", "demo_venue", "tests"})
    for (const auto& entry : fs::recursive_directory_iterator(root / folder)) {
      const std::string path = entry.path().lexically_relative(root).generic_string();
      files.insert({path, entry.path().filename().string()});
      if (path.ends_with(".cpp") && !path.starts_with("tests")) sources += SourceText(path);
    }
  const std::vector<Match> named = Matches(page, R"(`([a-z_/]+\.(?:h|cpp|sh|txt))`)");
  EXPECT_GE(named.size(), 30U);
  for (const Match& file : named) EXPECT_TRUE(files.contains(file[1])) << file[1];
  const std::vector<Match> functions = Matches(page, R"(`(\w+::\w+)`)");
  EXPECT_GE(functions.size(), 15U);
  for (const Match& name : functions) EXPECT_NE(sources.find(name[1] + "("), std::string::npos) << name[1];
}

// The message of the wire format's page, with more fields behind.
Bytes ExampleMessage(std::string_view moreFields = {}) {
  Bytes bytes;
  for (const std::string& line : FencedBlock("wire_format.md", "## A trade", "hex"))
    bytes = bytes + Hex(line.substr(0, line.find('|')));
  const Bytes body = Part(bytes, 10, bytes.size());
  EXPECT_EQ(bytes, Framed(body));
  return Framed(body + Bytes(moreFields.begin(), moreFields.end()));
}

void WithReader(const Bytes& message, const std::function<void(CQORPacketReader&)>& read) {
  CQORPacketReader reader(message.data(), static_cast<std::uint16_t>(message.size()));
  std::uint16_t needed = 0, consumed = 0;
  ASSERT_TRUE(reader.ParseHeader(needed, consumed));
  EXPECT_EQ(reader.MessageNumber, 9101);
  read(reader);
}

// The functions that the page names make the texts that it quotes.
using LifeOfOneTrade = OwnFolder;
TEST_F(LifeOfOneTrade, LeavesWhatThePageQuotes) {
  WriteFile(Folder / "TradeHeaderFile.txt", "SecurityID\nSide\nQuantity\nPrice");
  WriteFile(Folder / "EXCHANGETRADEFORMAT.TXT", "Trade Status\nSide\nQuantity\nPrice");
  CQORTradeImpl decoder;
  TradeBooks books;
  TradeCache cache(decoder, books, Folder);
  PlainBook book(cache);
  books["a book"] = &book;
  cache.OnDownloadEnd();
  WithReader(ExampleMessage(WireDouble(40008, 100)), [&](CQORPacketReader& message) { cache.OnTrade(message); });

  const std::vector<TradeRecord*> rows = book.Rows.RowRecords();
  std::vector<std::string> told;
  for (const SummaryValue total : {SummaryValue::BuyQty, SummaryValue::BuyAmt, SummaryValue::NetAmt})
    told.push_back(WideToNarrow(std::wstring(book.Line.TextOf(total))));
  GridColumns columns;
  for (const TradeColumn& column : kTradeColumns) {
    const int index = static_cast<int>(columns.size());
    const bool isCode = column.Title == "Side" || column.Title == "Price";
    CellScratch scratch;
    if (isCode) told.emplace_back(ShownText("", *rows.at(0), index, scratch));
    const bool shown = isCode || column.Title == "SecurityID" || column.Title == "Quantity";
    columns.push_back({std::string(column.Title), shown, index, false});
  }
  ExportGridCsv("Visible Columns", Folder / "visible", {columns, rows, {}, cache.ServerName, cache.LiveTrades});
  WriteExchangeTradeFiles({columns, cache.LiveTrades, {}, Folder, Folder, 0});
  for (const auto& entry : fs::recursive_directory_iterator(Folder)) {
    std::string text = entry.is_directory() ? "" : ReadFile(entry.path());
    if (text.empty() || text.ends_with("Price")) continue;  // a folder, or what was there before
    std::erase(text, '\r');
    if (text.ends_with('\n')) text.pop_back();
    told.push_back(text.substr(text.rfind('\n') + 1));
  }
  EXPECT_EQ(told.size(), 8U);
  const std::string page = PageSection(SourceText("docs/architecture.md"), "\n## The life of one trade");
  for (const std::string& text : told) EXPECT_NE(page.find("`" + text + "`"), std::string::npos) << text;
}

TEST(WireFormatPage, ExampleDecodesToItsRemarks) {
  WithReader(ExampleMessage(), [](CQORPacketReader& reader) {
    TradeRecord record{};
    CQORTradeImpl().DecodeMessage(reader, record);
    std::ostringstream text;
    text.precision(10);
    text << record.UserID << ' ' << std::uint32_t{record.VELDTradeID} << ' ' << std::uint32_t{record.VELDOrderID} << ' '
         << record.ExchangeTradeID << ' ' << record.ExchangeOrderNo << ' ' << record.Exchange << ' '
         << record.SecurityID << ' ' << int{record.Side} << ' ' << std::uint32_t{record.Quantity} << ' '
         << double{record.Price};
    EXPECT_EQ(text.str(), "DEALER01 4711 815 700003 1100000000004 COMEX GC201312 1 2 1313.25");
  });
}

TEST(WireFormatPage, HasTheWidthsOfAllTags) {
  std::vector<std::pair<int, int>> page, rules;  // last tag of a range, width
  for (const Match& row : Matches(PageSection(SourceText("docs/wire_format.md"), "\n## Body"),
                                  R"(\n\| (?:\d+ to )?(\d+) \| (none|a 16-bit count|\d+)\b[^|]* \|)"))
    page.emplace_back(std::stoi(row[1]), row[2] == "none"             ? 0
                                         : row[2] == "a 16-bit count" ? kCountedWidth
                                                                      : std::stoi(row[2]));
  for (const SkipRule& rule : kSkipRules) rules.emplace_back(rule.LastTag, rule.Width);
  EXPECT_EQ(page, rules);
}

TEST(HostGuide, NamesEveryFieldWithItsType) {
  constexpr const char* kTypes[] = {"u8", "u16", "u32", "u64", "double", "text", "bytes", "none"};
  std::set<std::string> guide, table;
  const std::string page = SourceText("docs/host_guide.md");
  for (const Match& heading : Matches(page, R"(\n### Fields of ([0-9, ]+))"))
    for (const Match& row : Matches(PageSection(page, heading[0]), R"(\n\| (\d+) \| ([a-z0-9 ]+) \|)"))
      for (const Match& number : Matches(heading[1], R"(\d+)"))
        EXPECT_TRUE(guide.insert(number[0] + " " + row[1] + " " + row[2]).second) << row[0];
  for (const MessageRow& row : kMessages)
    for (const MessageField& field : row.Fields)
      table.insert(std::to_string(row.Number) + " " + std::to_string(field.Tag) + " " +
                   kTypes[static_cast<std::size_t>(field.Type)] +
                   (field.Size == 0 ? "" : " " + std::to_string(field.Size)));
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

// The example does what the guide says. Its exit code is 0 or not.
using MinimalHost = OwnFolder;
TEST_F(MinimalHost, PrintsWhatTheGuideShowsAndWritesADailyFile) {
  const fs::path former = fs::current_path();
  fs::current_path(Folder);
  const auto run = [](const std::string& arguments) {
    return RunCommand(BuiltProgram("../bin/minimal_host") + ' ' + arguments + " > out 2>&1");
  };
  EXPECT_EQ(run(""), 0);
  std::string out = ReadFile("out");
  std::erase(out, '\r');
  EXPECT_EQ(SplitText(out, '\n'), FencedBlock("host_guide.md", "The example prints", "text")) << out;
  EXPECT_EQ(ReadFile(DailyFileIn("minimal_host")),
            "VELDTradeID,SecurityID,Side,Quantity,Price,\r\n1,GC201312,Buy,2,1313.25,\r\n2,GC201312,Buy,2,1313.4,");
  EXPECT_NE(run("no_such_module"), 0);
  EXPECT_TRUE(ReadFile("out").starts_with("the module cannot be used: ")) << ReadFile("out");
  EXPECT_GT(ReadFile("out").size(), 35U);
  fs::current_path(former);
}

}  // namespace

// The architecture page names files and functions that exist and follows one trade as the code does.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "grid_ops/columns/cell_text.h"
#include "grid_ops/exports/csv_export.h"
#include "grid_ops/exports/exchange_files.h"
#include "host_link/messages/packet_writer.h"
#include "platform/modules.h"
#include "tests/documents/page.h"
#include "tests/support/files.h"
#include "tests/support/plain_book.h"

namespace {

namespace fs = std::filesystem;

TEST(ArchitecturePage, NamesFilesAndFunctionsThatExist) {
  const std::string page = SourceText("docs/architecture.md");
  std::set<std::string> files;
  std::string sources;
  const fs::path root = TRADEBOOK_SOURCE_FOLDER;
  for (const char* folder : {"platform", "foundations", "host_link", "trade_data", "grid_base", "grid_ops", "toolkit",
                             "book_windows", "terminal", "tests"})
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

std::string Narrow(const std::wstring& text) {
  return {text.begin(), text.end()};
}

// The functions that the page names make the texts that it quotes.
TEST(ArchitecturePage, QuotesWhatOneTradeLeaves) {
  const fs::path folder = ProgramFolder() / "life of a trade";
  fs::remove_all(folder);
  fs::create_directories(folder);
  WriteFile(folder / "TradeHeaderFile.txt", "SecurityID\nSide\nQuantity\nPrice");
  WriteFile(folder / "EXCHANGETRADEFORMAT.TXT", "Trade Status\nSide\nQuantity\nPrice");
  CQORTradeImpl decoder;
  TradeBooks books;
  TradeCache cache(decoder, books, folder);
  PlainBook book(cache);
  books["a book"] = &book;
  cache.OnDownloadEnd();
  std::vector<std::uint8_t> bytes = HexBlock("wire_format.md", "## A trade");
  CQORPacketReader example(bytes.data(), static_cast<std::uint16_t>(bytes.size()));
  std::uint16_t needed = 0, consumed = 0;
  ASSERT_TRUE(example.ParseHeader(needed, consumed));
  TradeRecord record{};
  decoder.DecodeMessage(example, record);
  record.Multiplier = 100;
  CQORPacketWriter writer(0);
  decoder.EncodeRecord(writer, record, false, 9101, false);
  writer.Finish();
  CQORPacketReader message(writer.GetData(), writer.GetSize());
  ASSERT_TRUE(message.ParseHeader(needed, consumed));
  cache.OnTrade(message);

  std::vector<std::string> told;
  told.push_back(Narrow(book.Line.TextOf(SummaryValue::BuyQty)));
  told.push_back(Narrow(book.Line.TextOf(SummaryValue::BuyAmt)));
  told.push_back(Narrow(book.Line.TextOf(SummaryValue::NetAmt)));
  for (const auto& entry : fs::directory_iterator(folder))
    if (entry.path().extension() == ".CSV")
      told.push_back(ReadFile(entry.path()).substr(std::string("SecurityID,Side,Quantity,Price,\r\n").size()));
  GridColumns columns;
  for (const TradeColumn& column : kTradeColumns) {
    const std::string name(column.Title);
    const bool shown = name == "SecurityID" || name == "Side" || name == "Quantity" || name == "Price";
    columns.push_back({name, shown, static_cast<int>(columns.size()), false});
    CellScratch scratch;
    if (name == "Side" || name == "Price")
      told.emplace_back(ShownText("", *book.Rows.RowRecords().at(0), static_cast<int>(columns.size()) - 1, scratch));
  }
  const std::vector<TradeRecord*> rows = book.Rows.RowRecords();
  const std::vector<const TradeRecord*> shown(rows.begin(), rows.end());
  ExportGridCsv("Visible Columns", folder / "visible", {columns, shown, {}, cache.ServerName, cache.LiveTrades});
  const std::string visible = ReadFile(folder / "visible");
  told.push_back(visible.substr(visible.rfind('\n') + 1));
  WriteExchangeTradeFiles({columns, cache.LiveTrades, {}, folder, folder, 0});
  for (const auto& entry : fs::directory_iterator(folder / "ExchangeTradeFormat" / "FO"))
    told.push_back(ReadFile(entry.path()));
  ASSERT_EQ(told.size(), 8U);
  std::erase(told.back(), '\r'), std::erase(told.back(), '\n');
  std::string page = SourceText("docs/architecture.md");
  page.erase(0, page.find("## The life of one trade"));
  for (const std::string& text : told) EXPECT_NE(page.find("`" + text + "`"), std::string::npos) << text;
}

}  // namespace

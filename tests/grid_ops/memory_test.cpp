// Plays a day once for each of its allocations and lets that allocation fail. The failed step is repeated, like a
// message that the terminal sends again, and the day must end as if nothing had happened.
#include <gtest/gtest.h>

#include <functional>

#include "grid_ops/exports/csv_export.h"
#include "grid_ops/exports/exchange_files.h"
#include "tests/grid_ops/export_sample.h"
#include "tests/grid_ops/twin_book.h"
#include "tests/support/failing_memory.h"
#include "tests/support/own_folder.h"
#include "tests/support/plain_book.h"
#include "tests/support/wire_bytes.h"

namespace {

namespace fs = std::filesystem;

struct Day {
  explicit Day(const fs::path& folder) : Cache(Decoder, Books, folder), Folder(folder) {
    for (PlainBook* book : {&All, &Security, &Bar, &Sorted}) Books[std::to_string(Books.size())] = book;
    Security.Rows.Filtered = true;
    PutText(Security.Rows.Security.Exchange, "NSE");
    PutText(Security.Rows.Security.SecurityID, "1");
  }
  CQORTradeImpl Decoder;
  TradeBooks Books;
  TradeCache Cache;
  PlainBook All{Cache}, Security{Cache}, Bar{Cache}, Sorted{Cache};
  fs::path Folder;
};

using Step = std::function<void(Day&)>;

Step Message(unsigned number, const std::string& fields = {}) {
  return [bytes = WireMessage(number, fields)](Day& day) { DeliverMessage(day.Cache, bytes); };
}

Step Trade(unsigned number, unsigned id, unsigned execution) {
  static const char* const kSymbols[] = {"abc", "M\xDCLL\xC4", "buy or sell"};
  return Message(number, WireU32(20008, id) + WireText(55101, std::to_string(execution)) + WireTerminator() +
                             WireText(55010, "NSE") + WireText(55104, std::to_string(id % 3)) +
                             WireText(55103, kSymbols[id % 3]) + WireU8(101, 1 + id % 2) + WireU32(20014, id % 50) +
                             WireDouble(40002, id % 7) + WireDouble(40008, 1));
}

Step Amend(unsigned id, unsigned newQuantity, unsigned addQuantity) {
  return Message(9112, WireU32(20008, id) + WireU32(20084, 2) + WireU32(20103, newQuantity) +
                           WireU32(20104, addQuantity) + WireText(55100, "amended" + std::to_string(id)));
}

void Export(Day& day) {
  const GridColumns columns = ColumnsOfGrid();
  const std::vector<TradeRecord*> rows = day.Sorted.Rows.RowRecords();
  const std::vector<const TradeRecord*> shown(rows.begin(), rows.end());
  for (const char* mode : {"All Columns", "Visible Columns"})
    ExportGridCsv(mode, day.Folder / mode, {columns, shown, {}, day.Cache.ServerName, day.Cache.LiveTrades});
  WriteExchangeTradeFiles({columns, day.Cache.LiveTrades, {}, day.Folder, day.Folder, 0});
  WriteManualExport({columns, day.Cache.LiveTrades, {}, day.Folder, day.Folder, 0}, false, day.Folder / "manual", {});
}

// Leaves no room for another row.
void CopyRows(Day& day) {
  for (PlainBook* book : {&day.All, &day.Security, &day.Sorted}) book->Rows.CopyAllRows();
}

// Enough trades to grow each table and to split blocks of trades.
std::vector<Step> LongDay() {
  constexpr unsigned kColSymbol = 12, kColSide = 16, kColQuantity = 18;
  std::vector<Step> steps;
  for (unsigned i = 0; i < 700; ++i) steps.push_back(Trade(8111, i % 7 == 0 ? 5000 - i : 2 * i, i));
  steps.push_back(Amend(9, 0, 4));
  steps.push_back(Message(8112));
  steps.push_back([](Day& day) { day.Security.Rows.CollectSecurityRows(); });
  steps.push_back([](Day& day) { day.Bar.Rows.OnFilterBarChanged(kColSide, L"Buy"); });
  steps.push_back([](Day& day) { day.Bar.Rows.OnFilterBarChanged(kColSymbol, L"\xFC"); });
  steps.push_back([](Day& day) { day.Sorted.Rows.ResortRows(std::vector<SortState>{{kColQuantity, 1}, {2, -1}}); });
  for (unsigned i = 0; i < 300; ++i) steps.push_back(Trade(9101, 2 * i + 1 + i % 2, 1000 + i));
  for (unsigned i = 0; i < 4; ++i) {
    steps.push_back(CopyRows);
    steps.push_back(Amend(2 * i + 2, i % 3, 0));
    steps.push_back(CopyRows);
    steps.push_back(Amend(9000 - i, 0, 5));
  }
  steps.push_back([](Day& day) { day.Bar.Rows.OnFilterBarClearAll(); });
  steps.push_back([](Day& day) { day.Security.Rows.RebuildRows(); });
  steps.push_back([](Day& day) { day.All.Rows.ResortRows({}); });
  steps.push_back(Message(30022));
  for (unsigned i = 0; i < 5; ++i) steps.push_back(Trade(8111, 10 - i, i));
  steps.push_back(Message(8112));
  for (unsigned i = 0; i < 50; ++i) steps.push_back(Trade(9101, 3000 - i, 3000 + i));
  return steps;
}

std::vector<Step> DayOfExports() {
  return {Trade(8111, 1, 1), Message(8112), Trade(9101, 2, 2), Export, Trade(9101, 3, 3), Export};
}

std::string TextOf(const ServerTrades& servers) {
  std::string text;
  for (const auto& [server, trades] : servers)
    for (const TradeMap::Entry trade : trades)
      text += server + std::to_string(trade.Id) +
              std::string(reinterpret_cast<const char*>(trade.Record), sizeof *trade.Record);
  return text;
}

std::string TextOf(const PlainBook& book) {
  std::string text = "next " + std::to_string(book.Rows.NextRowKey);
  for (std::size_t row = 0; row < book.Rows.RowCount(); ++row)
    text += " " + std::to_string(book.Rows.Rows.KeyAt(row)) + "=" +
            std::to_string(TradeIdOf(*book.Rows.Rows.RecordAt(row)));
  return text + " bought " + std::to_string(book.Totals.BuyQty) + " sold " + std::to_string(book.Totals.SellAmt);
}

// The state in memory and the files after a day, piece by piece.
std::vector<std::string> Outcome(Day& day) {
  std::vector<std::string> pieces{TextOf(day.Cache.LiveTrades), TextOf(day.Cache.PendingTrades),
                                  std::to_string(day.Cache.NextTradeNumber),
                                  std::to_string(day.Cache.KnownExecutions.Size())};
  std::string numbers;
  for (const TradeRecord* record : day.Cache.TradeNumbers.All()) numbers += std::to_string(TradeIdOf(*record)) + " ";
  pieces.push_back(numbers);
  for (const PlainBook* book : {&day.All, &day.Security, &day.Bar, &day.Sorted}) pieces.push_back(TextOf(*book));
  for (const auto& entry : fs::recursive_directory_iterator(day.Folder))
    if (entry.is_regular_file()) pieces.push_back(entry.path().filename().string() + BytesOf(entry.path()));
  std::sort(pieces.begin() + 9, pieces.end());
  return pieces;
}

struct Played {
  std::vector<std::string> Pieces;
  bool Failed;
};

// A day whose count-th allocation fails; repeats the failed step.
Played PlayDay(const std::vector<Step>& steps, const fs::path& folder, int count) {
  fs::remove_all(folder);
  fs::create_directories(folder);
  std::ofstream(folder / "TradeHeaderFile.txt") << "VELDTradeID\nExchangeTradeTime\nSymbol";
  std::ofstream(folder / "EXCHANGETRADEFORMAT.TXT") << "Trade Status\nSide\nCover/Uncover Flag\nPrice";
  std::ofstream(folder / "TRADEBOOKEXPORT.TXT") << "Side,Side\nExchangeTradeTime,Time of the exchange,yyyyMMdd_HHmm\n";
  Day day(folder);
  FailAllocation(count);
  for (const Step& step : steps) {
    try {
      step(day);
    } catch (const std::bad_alloc&) {
      step(day);
    }
  }
  const bool failed = StopFailing();
  day.Cache.AutoFile.Flush();
  return {Outcome(day), failed};
}

class MemoryTest : public OwnFolder {};

TEST_F(MemoryTest, RepeatedStepLeavesTheSameDay) {
  for (const auto& steps : {LongDay(), DayOfExports()}) {
    const std::vector<std::string> expected = PlayDay(steps, Folder, 0).Pieces;
    int count = 0;
    for (bool failed = true; failed;) {
      const Played played = PlayDay(steps, Folder, ++count);
      ASSERT_EQ(played.Pieces.size(), expected.size()) << "allocation " << count;
      for (std::size_t i = 0; i < expected.size(); ++i)
        ASSERT_TRUE(played.Pieces[i] == expected[i]) << "allocation " << count << ", piece " << i;
      failed = played.Failed;
    }
    EXPECT_GT(count, 100);
  }
}

}  // namespace

// Plays a day once for each of its allocations and lets that allocation fail. The failed step is repeated, like a
// message that the terminal sends again, and the day must end as if nothing had happened.
#include <gtest/gtest.h>

#include <functional>
#include <set>

#include "tests/support/failing_memory.h"
#include "tests/support/own_folder.h"
#include "tests/support/plain_book.h"
#include "tests/support/wire_bytes.h"
#include "tests/trade_data/deliver.h"

namespace {

namespace fs = std::filesystem;

struct Day {
  explicit Day(const fs::path& folder) : Cache(Decoder, Books, folder), Folder(folder) {
    for (PlainBook* book : {&All, &Security, &Bar, &Sorted}) Books[std::to_string(Books.size())] = book;
    Security.Rows.Filtered = true;
    Security.Rows.Security = {"NSE", "1"};
  }
  CQORTradeImpl Decoder;
  TradeBooks Books;
  TradeCache Cache;
  PlainBook All{Cache}, Security{Cache}, Bar{Cache}, Sorted{Cache};
  fs::path Folder;
};

using Step = std::function<void(Day&)>;

Step Message(unsigned number, const std::string& fields = {}) {
  return [bytes = WireMessage(number, fields)](Day& day) { Deliver(day.Cache, bytes); };
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

// Leaves no room for another row.
void CopyRows(Day& day) {
  for (PlainBook* book : {&day.All, &day.Security, &day.Sorted}) book->Rows.CopyAllRows();
}

// Enough trades to grow each table and to split blocks of trades.
std::vector<Step> LongDay() {
  constexpr unsigned kColSymbol = 12, kColSide = 16, kColQuantity = 18;
  std::vector<Step> steps;
  for (unsigned i = 0; i < 700; ++i) steps.push_back(Trade(8111, i % 7 == 0 ? 5000 - i : 2 * i, i));
  const auto add = [&steps](const std::vector<Step>& more) { steps.insert(steps.end(), more.begin(), more.end()); };
  add({Amend(9, 0, 4), Message(8112), [](Day& day) { day.Security.Rows.CollectSecurityRows(); },
       [](Day& day) { day.Bar.Rows.OnFilterBarChanged(kColSide, L"Buy"); },
       [](Day& day) { day.Bar.Rows.OnFilterBarChanged(kColSymbol, L"\xFC"); },
       [](Day& day) {
         day.Sorted.Rows.ResortRows(std::vector<SortState>{{kColQuantity, 1}, {2, -1}});
       }});
  for (unsigned i = 0; i < 300; ++i) steps.push_back(Trade(9101, 2 * i + 1 + i % 2, 1000 + i));
  for (unsigned i = 0; i < 4; ++i) add({CopyRows, Amend(2 * i + 2, i % 3, 0), CopyRows, Amend(9000 - i, 0, 5)});
  add({[](Day& day) { day.Bar.Rows.OnFilterBarClearAll(); }, [](Day& day) { day.Security.Rows.RebuildRows(); },
       [](Day& day) { day.All.Rows.ResortRows({}); }, Message(30022)});
  for (unsigned i = 0; i < 5; ++i) steps.push_back(Trade(8111, 10 - i, i));
  steps.push_back(Message(8112));
  for (unsigned i = 0; i < 50; ++i) steps.push_back(Trade(9101, 3000 - i, 3000 + i));
  return steps;
}

// All that a day leaves in memory and in files.
std::string Outcome(const Day& day) {
  std::string text = std::to_string(day.Cache.NextTradeNumber) + " " + std::to_string(day.Cache.KnownExecutions.Size());
  for (const ServerTrades* servers : {&day.Cache.LiveTrades, &day.Cache.PendingTrades})
    for (const auto& [server, trades] : *servers)
      for (const TradeMap::Entry trade : trades)
        text += server + std::to_string(trade.Id) + BytesOfValue(*trade.Record);
  for (const TradeRecord* record : day.Cache.TradeNumbers.All()) text += std::to_string(TradeIdOf(*record)) + " ";
  for (const PlainBook* book : {&day.All, &day.Security, &day.Bar, &day.Sorted}) {
    text += "next " + std::to_string(book->Rows.NextRowKey) + " bought " + std::to_string(book->Totals.BuyQty);
    for (std::size_t row = 0; row < book->Rows.RowCount(); ++row)
      text +=
          " " + std::to_string(book->Rows.Rows.KeyAt(row)) + "=" + std::to_string(TradeIdOf(*book->Rows.RecordAt(row)));
  }
  for (const fs::path& file : std::set<fs::path>(fs::recursive_directory_iterator(day.Folder), {}))
    text += file.filename().string() + ReadFile(file);
  return text;
}

// A day whose count-th allocation fails, if it has so many; repeats the failed step.
std::string PlayDay(const std::vector<Step>& steps, const fs::path& folder, int count, bool& failed) {
  fs::remove_all(folder);
  fs::create_directories(folder);
  WriteFile(folder / "TradeHeaderFile.txt", "VELDTradeID\nExchangeTradeTime\nSymbol");
  Day day(folder);
  FailAllocation(count);
  for (const Step& step : steps) {
    try {
      step(day);
    } catch (const std::bad_alloc&) {
      step(day);
    }
  }
  failed = StopFailing();
  day.Cache.AutoFile.Flush();
  return Outcome(day);
}

using MemoryTest = OwnFolder;

TEST_F(MemoryTest, RepeatedStepLeavesTheSameDay) {
  const std::vector<Step> steps = LongDay();
  bool failed = false;
  const std::string expected = PlayDay(steps, Folder, 0, failed);
  int count = 0;
  for (failed = true; failed;)
    ASSERT_TRUE(PlayDay(steps, Folder, ++count, failed) == expected) << "allocation " << count;
  EXPECT_GT(count, 100);
}

}  // namespace

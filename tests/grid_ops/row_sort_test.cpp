#include "grid_ops/rows/row_sort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "tests/grid_ops/slow_book.h"
#include "tests/support/wire_bytes.h"

namespace {

// Few values per column, so that many rows are equal in it: texts that are prefixes of others, that end before, at and
// after the eighth byte or fill their field, and numbers of either sign.
std::vector<TradeRecord> RandomRecords(std::size_t count, unsigned seed) {
  std::mt19937 dice(seed);
  const std::string longText(70, 'x'), wordText(16, 'x');
  const std::string_view kTexts[] = {"",       "a",       "A",        "ab",        "aab",
                                     "\xE4",   "abcdefg", "abcdefgh", "abcdefghi", "abcdefgh\1",
                                     "\x80zz", longText,  wordText,   {"a\0x", 3}, {"abcdefgh\0y", 10}};
  constexpr std::int32_t kNumbers[] = {0, 1, -1, 2, 255, 256, 65536, 0x7FFFFFFF, -0x7FFFFFFF - 1};
  constexpr double kDoubles[] = {0, -0.0, 1, -1, 0.05, 100.25, 100.5, 1e20, -1e20, 1e-300, -1e-300};
  const auto of = [&dice](const auto& values) { return values[dice() % std::size(values)]; };
  std::vector<TradeRecord> records(count);
  for (TradeRecord& record : records) {
    for (int column = 1; column < 36; ++column) PutCell(record, column, of(kTexts));
    for (const int column : {2, 3, 4, 16, 17, 18, 19, 26, 28, 29, 34})
      PutCell(record, column, BytesOfValue(of(kNumbers)));
    for (const int column : {20, 21, 30}) PutCell(record, column, BytesOfValue(of(kDoubles)));
    if (dice() % 2) PutCell(record, 7, "20240229-1" + std::string(of(kTexts)));
  }
  return records;
}

std::vector<TradeRecord*> PointersTo(std::vector<TradeRecord>& records) {
  std::vector<TradeRecord*> pointers;
  for (TradeRecord& record : records) pointers.push_back(&record);
  return pointers;
}

void CheckSort(std::vector<TradeRecord>& records, const SlowSort& sort) {
  std::vector<TradeRecord*> fast = PointersTo(records), slow = fast;
  SortRows(fast, sort);
  std::stable_sort(slow.begin(), slow.end(),
                   [&](const TradeRecord* a, const TradeRecord* b) { return SlowCompare(*a, *b, sort) < 0; });
  EXPECT_TRUE(fast == slow) << records.size() << " rows, first by " << (sort.empty() ? -2 : sort[0].Column);
}

TEST(RowSortTest, AgreesWithAStableSort) {
  for (const std::size_t count : {0, 1, 2, 63, 64, 65, 300, 5000}) {
    std::vector<TradeRecord> records = RandomRecords(count, static_cast<unsigned>(count));
    for (int column = -1; column <= 37; ++column)
      for (const int state : {1, -1})
        if (count < 5000 || (column % 2 == 0) == (state == 1)) CheckSort(records, {{column, state}});
    CheckSort(records, {{16, 1}, {12, -1}, {20, 1}});
    CheckSort(records, {{23, -1}, {99, 1}, {34, 0}, {36, 1}});
    CheckSort(records, {{0, 1}, {21, -1}, {21, 1}, {28, -1}});
    CheckSort(records, {});
  }
}

// Intentional: a NaN has no defined place; the sort must only lose no row.
TEST(RowSortTest, KeepsRowsWithNaN) {
  std::vector<TradeRecord> records = RandomRecords(500, 3);
  for (std::size_t i = 0; i < records.size(); i += 3) records[i].Price = i % 2 ? std::nan("") : -std::nan("");
  std::vector<TradeRecord*> sorted = PointersTo(records);
  const SortState kByPrice[] = {{20, 1}};
  SortRows(sorted, kByPrice);
  std::sort(sorted.begin(), sorted.end());
  EXPECT_TRUE(sorted == PointersTo(records));
}

TEST(BookSortTest, HeaderClickGoesThroughTheStates) {
  BookSort sort;
  for (const std::vector<int>& states : {std::vector{1, 1}, {0, 0, 0, -1}}) sort.Begin(states);
  const auto click = [&](int column, bool multiple) {
    const char* const kSteps[] = {"remove", "rising", "falling"};
    std::string text = kSteps[static_cast<int>(sort.Toggle(column, multiple))];
    for (const auto& [each, state] : sort.States()) text += " " + std::to_string(each) + ":" + std::to_string(state);
    return text;
  };
  EXPECT_EQ(click(5, true), "rising 3:-1 5:1");
  EXPECT_EQ(click(5, true), "falling 3:-1 5:-1");
  EXPECT_EQ(click(2, true), "rising 3:-1 5:-1 2:1");
  EXPECT_EQ(click(5, true), "remove 3:-1 2:1");
  EXPECT_EQ(click(5, true), "rising 3:-1 2:1 5:1");
  // With a single sort column the list stays as it is, and its columns lose their states.
  EXPECT_EQ(click(7, false), "rising 3:0 2:0 5:0");
  EXPECT_EQ(click(7, false), "falling 3:0 2:0 5:0");
  EXPECT_EQ(click(7, false), "rising 3:0 2:0 5:0");
  EXPECT_EQ(click(3, false), "rising 3:1 2:0 5:0");
  EXPECT_EQ(sort.StateOf(7) + sort.StateOf(99) + sort.StateOf(-1), 0);
  EXPECT_TRUE(sort.Keep({0, 0, 0, 1, 0, 1}));
  EXPECT_EQ(sort.SortColumns, (std::vector<int>{3, 5}));
  EXPECT_FALSE(sort.Keep({0, 0, 0, -1, 0, 1}));
  EXPECT_EQ(sort.StateOf(3), -1);
}

}  // namespace

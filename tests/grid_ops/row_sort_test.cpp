#include "grid_ops/rows/row_sort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "tests/grid_ops/slow_book.h"
#include "tests/support/wire_bytes.h"

namespace {

std::vector<SortState> StatesOf(const SlowSort& sort) {
  std::vector<SortState> states;
  for (const auto& [column, state] : sort) states.push_back({column, state});
  return states;
}

// Few values per column, so that many rows are equal in it: texts that are prefixes of others, that end before, at and
// after the eighth byte or fill their field, and numbers of either sign.
std::vector<TradeRecord> RandomRecords(std::size_t count, unsigned seed) {
  std::mt19937 dice(seed);
  const std::string longText(70, 'x'), wordText(16, 'x');
  const std::string_view kTexts[] = {"",         "a",         "A",          "ab",     "aab",    "\xE4",  "abcdefg",
                                     "abcdefgh", "abcdefghi", "abcdefgh\1", "\x80zz", longText, wordText};
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
  SCOPED_TRACE(testing::Message() << records.size() << " rows by " << testing::PrintToString(sort));
  std::vector<TradeRecord*> fast = PointersTo(records), slow = fast;
  SortRows(fast, StatesOf(sort));
  std::stable_sort(slow.begin(), slow.end(),
                   [&](const TradeRecord* a, const TradeRecord* b) { return SlowCompare(*a, *b, sort) < 0; });
  EXPECT_TRUE(fast == slow);
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
  std::vector<TradeRecord> records = RandomRecords(30, 7);
  for (const SlowSort& sort : {SlowSort{{16, 1}, {20, -1}, {36, 1}}, SlowSort{{12, -1}, {0, 1}, {2, 1}}})
    for (const TradeRecord& first : records)
      for (const TradeRecord& second : records) {
        const int order = CompareRows(first, second, StatesOf(sort)), slow = SlowCompare(first, second, sort);
        ASSERT_TRUE(order == 0 ? slow == 0 : order * slow > 0);
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

// The first of two records after a sort that starts with them in this order.
TradeRecord* FirstOf(TradeRecord& one, TradeRecord& other, const SortState& by) {
  std::vector<TradeRecord*> rows = {&one, &other};
  SortRows(rows, {&by, 1});
  return rows.front();
}

TEST(RowSortTest, ComparesTheFieldOfEachColumn) {
  const std::string kFull(33, 'x');
  constexpr bool kBefore = true, kEqual = false;
  // clang-format off
  const struct {
    int Column;
    int Written;  // the column whose field gets the cells
    bool Order;
    std::string First, Second;
  } kRows[] = {
      {12, 12, kBefore, "ab", "abc"}, {12, 12, kBefore, "Z", "a"}, {12, 12, kBefore, "z", "\xE4"},
      {12, 12, kBefore, "abcdefgh", "abcdefgh\1"}, {12, 12, kBefore, std::string("ab\0z", 4), "ac"},
      {12, 12, kBefore, kFull.substr(1), kFull}, {12, 12, kEqual, std::string("a\0x", 3), "a"},
      {18, 18, kBefore, BytesOfValue(0xFFFFFFFFu), BytesOfValue(0)},
      {2, 2, kBefore, BytesOfValue(0x80000000u), BytesOfValue(0xFFFFFFFFu)},
      {20, 20, kBefore, BytesOfValue(-2.0), BytesOfValue(-1.0)},
      {20, 20, kBefore, BytesOfValue(-1e-300), BytesOfValue(-0.0)},
      {20, 20, kEqual, BytesOfValue(-0.0), BytesOfValue(0.0)},
      {16, 16, kBefore, "\x02", "\xC8"}, {17, 17, kBefore, "\x02", "\xC8"}, {29, 29, kBefore, "\x02", "\xC8"},
      {28, 28, kBefore, BytesOfValue(0x80000000u), BytesOfValue(1)},
      {34, 34, kBefore, "\xFF\xFF", BytesOfValue(std::uint16_t{1})}, {35, 35, kBefore, "a", "b"},
      // The number and time of the order, not of the trade.
      {6, 5, kBefore, "a", "b"}, {6, 6, kEqual, "a", "b"}, {9, 8, kBefore, "a", "b"}, {9, 9, kEqual, "a", "b"},
      {36, 7, kBefore, "20240229-10:15:00", "20240101-10:15:01"},
      {36, 7, kBefore, "20240229", "20240101-00:00:00"}, {36, 7, kEqual, "20240229", "20240101"},
      {7, 7, kBefore, "20240101-10:15:01", "20240229-10:15:00"}, {0, 1, kEqual, "a", "b"},
  };
  // clang-format on
  for (const auto& row : kRows) {
    SCOPED_TRACE(testing::Message() << row.Column << " " << testing::PrintToString(row.First));
    TradeRecord first{}, second{};
    PutCell(first, row.Written, row.First);
    PutCell(second, row.Written, row.Second);
    for (const int state : {1, -1, 0}) {
      const SortState by{row.Column, state};
      TradeRecord* winner = state == 1 ? &first : &second;
      EXPECT_EQ(FirstOf(first, second, by), row.Order == kEqual ? &first : winner) << state;
      EXPECT_EQ(FirstOf(second, first, by), row.Order == kEqual ? &second : winner) << state;
    }
  }
}

TEST(BookSortTest, HeaderClickGoesThroughTheStates) {
  BookSort sort;
  sort.Begin({0, 0, 0, -1});
  using Pairs = std::vector<std::pair<int, int>>;
  const struct {
    int Column;
    bool Multiple;
    SortStep Step;
    Pairs States;
  } kRows[] = {
      {5, true, SortStep::Rising, {{3, -1}, {5, 1}}},
      {5, true, SortStep::Falling, {{3, -1}, {5, -1}}},
      {2, true, SortStep::Rising, {{3, -1}, {5, -1}, {2, 1}}},
      {5, true, SortStep::Remove, {{3, -1}, {2, 1}}},
      {5, true, SortStep::Rising, {{3, -1}, {2, 1}, {5, 1}}},
      // With a single sort column the list stays as it is, and its columns lose their states.
      {7, false, SortStep::Rising, {{3, 0}, {2, 0}, {5, 0}}},
      {7, false, SortStep::Falling, {{3, 0}, {2, 0}, {5, 0}}},
      {7, false, SortStep::Rising, {{3, 0}, {2, 0}, {5, 0}}},
      {3, false, SortStep::Rising, {{3, 1}, {2, 0}, {5, 0}}},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(testing::Message() << row.Column << " " << row.States.size());
    EXPECT_EQ(sort.Toggle(row.Column, row.Multiple), row.Step);
    Pairs states;
    for (const SortState& state : sort.States()) states.emplace_back(state.Column, state.State);
    EXPECT_EQ(states, row.States);
  }
  EXPECT_EQ(sort.StateOf(7) + sort.StateOf(99) + sort.StateOf(-1), 0);
  EXPECT_TRUE(sort.Keep({0, 0, 0, 1, 0, 1}));
  EXPECT_EQ(sort.SortColumns, (std::vector<int>{3, 5}));
  EXPECT_FALSE(sort.Keep({0, 0, 0, -1, 0, 1}));
  EXPECT_EQ(sort.StateOf(3), -1);
}

}  // namespace

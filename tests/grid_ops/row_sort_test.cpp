#include "grid_ops/rows/row_sort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <tuple>

#include "tests/grid_ops/slow_book.h"

namespace {

template <typename Value>
std::string BytesOf(Value value) {
  return std::string(reinterpret_cast<const char*>(&value), sizeof value);
}

std::vector<SortState> StatesOf(const SlowSort& sort) {
  std::vector<SortState> states;
  for (const auto& [column, state] : sort) states.push_back({column, state});
  return states;
}

// Few values a column, so that many rows are equal in it: texts that begin others, that end at, before and behind the
// eighth byte, that fill their field, and numbers of either sign.
std::vector<TradeRecord> RandomRecords(std::size_t count, unsigned seed) {
  std::mt19937 dice(seed);
  const std::string kTexts[] = {"",
                                "a",
                                "A",
                                "ab",
                                "aab",
                                "\xE4",
                                "abcdefg",
                                "abcdefgh",
                                "abcdefghi",
                                "abcdefgh\1",
                                "\x80zz",
                                std::string(70, 'x'),
                                std::string(16, 'x')};
  constexpr std::int32_t kNumbers[] = {0, 1, -1, 2, 255, 256, 65536, 0x7FFFFFFF, -0x7FFFFFFF - 1};
  constexpr double kDoubles[] = {0, -0.0, 1, -1, 0.05, 100.25, 100.5, 1e20, -1e20, 1e-300, -1e-300};
  const auto of = [&dice](const auto& values) { return values[dice() % std::size(values)]; };
  std::vector<TradeRecord> records(count);
  for (TradeRecord& record : records)
    for (int column = 1; column < 36; ++column) {
      const bool isDouble = column == 20 || column == 21 || column == 30;
      const bool isNumber = (column >= 2 && column <= 4) || (column >= 16 && column <= 19) || column == 26 ||
                            column == 28 || column == 29 || column == 34;
      PutCell(record, column, isDouble ? BytesOf(of(kDoubles)) : isNumber ? BytesOf(of(kNumbers)) : of(kTexts));
      if (column == 7 && dice() % 2) PutCell(record, column, "20240229-1" + of(kTexts));
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

int SignOf(int number) {
  return (number > 0) - (number < 0);
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
      for (const TradeRecord& second : records)
        ASSERT_EQ(SignOf(CompareRows(first, second, StatesOf(sort))), SlowCompare(first, second, sort));
}

// What is no number has no place among the others: the records stay the same ones.
TEST(RowSortTest, LosesNothingThatIsNoNumber) {
  std::vector<TradeRecord> records = RandomRecords(500, 3);
  for (std::size_t i = 0; i < records.size(); i += 3) records[i].Price = i % 2 ? std::nan("") : -std::nan("");
  std::vector<TradeRecord*> sorted = PointersTo(records);
  const SortState kByPrice[] = {{20, 1}};
  SortRows(sorted, kByPrice);
  std::sort(sorted.begin(), sorted.end());
  EXPECT_TRUE(sorted == PointersTo(records));
}

// What each column compares: of two cells, the one that stands first with state 1.
TEST(RowSortTest, Orders) {
  const std::string kFull(33, 'x');
  // clang-format off
  const struct {
    int Column;
    int Written;  // the column whose field is written
    std::string First, Second;
  } kRows[] = {
      {12, 12, "ab", "abc"}, {12, 12, "Z", "a"}, {12, 12, "z", "\xE4"}, {12, 12, "abcdefgh", "abcdefgh\1"},
      {12, 12, std::string("ab\0z", 4), "ac"}, {12, 12, kFull.substr(1), kFull},
      {18, 18, BytesOf(0xFFFFFFFFu), BytesOf(0)}, {2, 2, BytesOf(0x80000000u), BytesOf(0xFFFFFFFFu)},
      {20, 20, BytesOf(-2.0), BytesOf(-1.0)}, {20, 20, BytesOf(-1e-300), BytesOf(-0.0)}, {16, 16, "\x02", "\xC8"},
      {17, 17, "\x02", "\xC8"}, {29, 29, "\x02", "\xC8"}, {28, 28, BytesOf(0x80000000u), BytesOf(1)},
      {34, 34, "\xFF\xFF", BytesOf(std::uint16_t{1})}, {35, 35, "a", "b"},
      // The order's number and time, not the trade's.
      {6, 5, "a", "b"}, {9, 8, "a", "b"}, {36, 7, "20240229-10:15:00", "20240101-10:15:01"},
      {36, 7, "20240229", "20240101-00:00:00"}, {7, 7, "20240101-10:15:01", "20240229-10:15:00"},
  };
  // clang-format on
  for (const auto& row : kRows) {
    SCOPED_TRACE(testing::Message() << row.Column << " " << testing::PrintToString(row.First));
    TradeRecord first{}, second{};
    PutCell(first, row.Written, row.First);
    PutCell(second, row.Written, row.Second);
    for (const int state : {1, -1, 0}) {
      std::vector<TradeRecord*> rows = {&first, &second}, turned = {&second, &first};
      const SortState sort[] = {{row.Column, state}};
      const std::vector<TradeRecord*> expected = state == 1 ? rows : turned;
      SortRows(rows, sort);
      SortRows(turned, sort);
      EXPECT_TRUE(rows == expected && turned == expected) << state;
    }
  }
  // Equal: the trade's own number and time, server, zeros of either sign, what stands behind a NUL.
  const std::tuple<int, int, std::string> kEqual[] = {
      {6, 6, "x"}, {9, 9, "x"}, {0, 1, "x"}, {20, 20, BytesOf(-0.0)}, {12, 12, {"\0x", 2}}, {36, 7, "20240229"}};
  for (const auto& [column, written, cell] : kEqual) {
    TradeRecord first{}, second{};
    PutCell(first, written, cell);
    std::vector<TradeRecord*> rows = {&first, &second};
    for (const int state : {1, -1}) {
      const SortState sort[] = {{column, state}};
      SortRows(rows, sort);
      EXPECT_TRUE(rows.front() == &first) << column;
      EXPECT_EQ(CompareRows(first, second, sort), 0) << column;
    }
  }
}

TEST(RowSortTest, HeaderClicks) {
  std::vector<int> columns = {3};
  // clang-format off
  const struct {
    int Column, State;
    bool Multiple;
    SortStep Step;
    std::vector<int> Columns;
  } kRows[] = {
      {5, 0, true, SortStep::Rising, {3, 5}},      {5, 1, true, SortStep::Falling, {3, 5}},
      {2, 0, true, SortStep::Rising, {3, 5, 2}},   {5, -1, true, SortStep::Remove, {3, 2}},
      {5, 0, true, SortStep::Rising, {3, 2, 5}},   {7, 0, false, SortStep::Rising, {3, 2, 5}},
      {7, 1, false, SortStep::Falling, {3, 2, 5}}, {7, -1, false, SortStep::Rising, {3, 2, 5}},
  };
  // clang-format on
  for (const auto& row : kRows) {
    SCOPED_TRACE(testing::Message() << row.Column << " " << row.State);
    EXPECT_EQ(ToggleSortColumn(columns, row.Column, row.State, row.Multiple), row.Step);
    EXPECT_EQ(columns, row.Columns);
  }
}

}  // namespace

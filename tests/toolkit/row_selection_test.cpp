#include "toolkit/model/row_selection.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

using Ranges = std::vector<RowRange>;

struct Case {
  const char* What;
  std::function<void(RowSelection&)> Change;
  int Current;
  Ranges Expected;
};

// Each on ten rows, of which 3 was selected by a click, then 5 and 7 with Ctrl held.
const Case kCases[] = {
    {"nothing", [](auto&) {}, 7, {{3, 3}, {5, 5}, {7, 7}}},
    {"click", [](auto& rows) { rows.SelectOnly(1); }, 1, {{1, 1}}},
    {"click beyond the rows", [](auto& rows) { rows.SelectOnly(10); }, 9, {{9, 9}}},
    {"ctrl+click between joins", [](auto& rows) { rows.Toggle(4); }, 4, {{3, 5}, {7, 7}}},
    {"ctrl+click again lets go", [](auto& rows) { rows.Toggle(5); }, 5, {{3, 3}, {7, 7}}},
    {"shift+click", [](auto& rows) { rows.Extend(9, false); }, 9, {{7, 9}}},
    {"ctrl+shift+click upwards", [](auto& rows) { rows.Extend(6, true); }, 6, {{3, 3}, {5, 7}}},
    {"a longer drag grows, a shorter one shrinks",
     [](auto& rows) {
       rows.Extend(2, true);
       rows.Extend(8, true);
     },
     8,
     {{3, 3}, {5, 5}, {7, 8}}},
    {"a hole in a range",
     [](auto& rows) {
       rows.SelectAll();
       rows.Toggle(4);
     },
     4,
     {{0, 3}, {5, 9}}},
    {"select all keeps the current row", [](auto& rows) { rows.SelectAll(); }, 7, {{0, 9}}},
    {"shift after select all starts at the anchor",
     [](auto& rows) {
       rows.SelectAll();
       rows.Extend(8, false);
     },
     8,
     {{7, 8}}},
    {"rows on top", [](auto& rows) { rows.InsertRows(0, 4); }, 11, {{7, 7}, {9, 9}, {11, 11}}},
    {"rows below the current one", [](auto& rows) { rows.InsertRows(8, 4); }, 7, {{3, 3}, {5, 5}, {7, 7}}},
    {"rows at the current one", [](auto& rows) { rows.InsertRows(7, 4); }, 11, {{3, 3}, {5, 5}, {11, 11}}},
    {"rows within a range",
     [](auto& rows) {
       rows.Extend(2, false);
       rows.InsertRows(5, 4);
     },
     2,
     {{2, 4}, {9, 11}}},
    {"rows on top move the anchor",
     [](auto& rows) {
       rows.InsertRows(0, 4);
       rows.Extend(12, true);
     },
     12,
     {{7, 7}, {9, 9}, {11, 12}}},
    {"rows gone below the last selected", [](auto& rows) { rows.SetRows(8); }, 7, {{3, 3}, {5, 5}, {7, 7}}},
    {"rows gone with a selected one", [](auto& rows) { rows.SetRows(7); }, 6, {{3, 3}, {5, 5}}},
    {"rows gone within a range",
     [](auto& rows) {
       rows.Extend(2, false);
       rows.SetRows(4);
     },
     2,
     {{2, 3}}},
    {"no rows", [](auto& rows) { rows.SetRows(0); }, -1, {}},
    {"no rows, then all that a hand can do",
     [](auto& rows) {
       rows.SetRows(0);
       rows.Toggle(0);
       rows.Extend(1, true);
       rows.SelectAll();
       rows.SelectOnly(0);
     },
     -1,
     {}},
    {"the current row alone", [](auto& rows) { rows.MoveCurrent(0); }, 0, {{3, 3}, {5, 5}, {7, 7}}},
    {"cleared", [](auto& rows) { rows.Clear(); }, -1, {}},
    {"extended from nothing",
     [](auto& rows) {
       rows.Clear();
       rows.Extend(2, false);
     },
     2,
     {{2, 2}}},
};

TEST(RowSelection, SelectsAsAHandDoes) {
  for (const Case& test : kCases) {
    SCOPED_TRACE(test.What);
    RowSelection rows;
    rows.SetRows(10);
    rows.SelectOnly(3);
    rows.Toggle(5);
    rows.Toggle(7);
    test.Change(rows);
    EXPECT_EQ(rows.GetCurrent(), test.Current);
    EXPECT_EQ(rows.GetRanges(), test.Expected);
    for (int row = -1; row <= rows.GetRows(); ++row) {
      bool expected = false;
      for (const RowRange& range : test.Expected) expected |= row >= range.First && row <= range.Last;
      EXPECT_EQ(rows.Contains(row), expected) << row;
    }
  }
}

}  // namespace

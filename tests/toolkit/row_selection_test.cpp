#include "toolkit/model/row_selection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace {

using Rows = RowSelection;
constexpr auto Only = &Rows::SelectOnly, Ctrl = &Rows::Toggle, Move = &Rows::MoveCurrent, Cut = &Rows::SetRows;
constexpr auto Shift = [](Rows& rows, int row) { rows.Extend(row, false); };
constexpr auto Both = [](Rows& rows, int row) { rows.Extend(row, true); };
constexpr auto All = [](Rows& rows, int) { rows.SelectAll(); };
constexpr auto None = [](Rows& rows, int) { rows.Clear(); };
constexpr auto Four = [](Rows& rows, int before) { rows.InsertRows(before, 4); };

struct Case {
  const char* What;
  std::vector<std::pair<std::function<void(Rows&, int)>, int>> Steps;
  int Current;
  std::vector<RowRange> Expected;
};

// On ten rows: a click has selected row 3, then clicks with Ctrl rows 5 and 7.
const Case kCases[] = {
    {"nothing", {}, 7, {{3, 3}, {5, 5}, {7, 7}}},
    {"click", {{Only, 1}}, 1, {{1, 1}}},
    {"click beyond the rows", {{Only, 10}}, 9, {{9, 9}}},
    {"Ctrl joins neighbours", {{Ctrl, 4}}, 4, {{3, 5}, {7, 7}}},
    {"Ctrl unselects", {{Ctrl, 5}}, 5, {{3, 3}, {7, 7}}},
    {"Ctrl splits a range", {{All, 0}, {Ctrl, 4}}, 4, {{0, 3}, {5, 9}}},
    {"Shift", {{Shift, 9}}, 9, {{7, 9}}},
    {"Ctrl and Shift upwards", {{Both, 6}}, 6, {{3, 3}, {5, 7}}},
    {"a drag grows and shrinks", {{Both, 2}, {Both, 8}}, 8, {{3, 3}, {5, 5}, {7, 8}}},
    {"an unselected row is not kept", {{Ctrl, 5}, {Both, 6}}, 6, {{3, 3}, {5, 7}}},
    {"Shift drops what was kept", {{Shift, 8}, {Both, 9}}, 9, {{7, 9}}},
    {"a moved current row keeps all", {{Shift, 9}, {Move, 1}, {Both, 2}}, 2, {{1, 2}, {7, 9}}},
    {"select all", {{All, 0}}, 7, {{0, 9}}},
    {"select all keeps anchor, not ranges", {{All, 0}, {Both, 8}}, 8, {{7, 8}}},
    {"select all without a current row", {{None, 0}, {All, 0}}, 0, {{0, 9}}},
    {"cleared", {{None, 0}}, -1, {}},
    {"clear drops what was kept", {{None, 0}, {Both, 2}}, 2, {{2, 2}}},
    {"rows on top", {{Four, 0}}, 11, {{7, 7}, {9, 9}, {11, 11}}},
    {"rows below the current one", {{Four, 8}}, 7, {{3, 3}, {5, 5}, {7, 7}}},
    {"rows at the current one", {{Four, 7}}, 11, {{3, 3}, {5, 5}, {11, 11}}},
    {"rows within a range", {{Shift, 2}, {Four, 5}}, 2, {{2, 4}, {9, 11}}},
    {"rows on top move anchor and kept ranges", {{Four, 0}, {Both, 12}}, 12, {{7, 7}, {9, 9}, {11, 12}}},
    {"rows gone below the selection", {{Cut, 8}}, 7, {{3, 3}, {5, 5}, {7, 7}}},
    {"a selected row gone", {{Cut, 7}}, 6, {{3, 3}, {5, 5}}},
    {"rows gone within a range", {{Shift, 2}, {Cut, 4}}, 2, {{2, 3}}},
    {"kept rows gone", {{Cut, 6}, {Both, 4}}, 4, {{3, 5}}},
    {"gone rows do not come back", {{Cut, 6}, {Cut, 10}}, 5, {{3, 3}, {5, 5}}},
    {"a negative count", {{Cut, -1}}, -1, {}},
    {"no rows", {{Cut, 0}, {Ctrl, 0}, {Both, 1}, {All, 0}, {Only, 0}}, -1, {}},
};

TEST(RowSelection, SelectsAsMouseAndKeysAsk) {
  for (const Case& test : kCases) {
    SCOPED_TRACE(test.What);
    Rows rows;
    rows.SetRows(10);
    rows.SelectOnly(3);
    for (const int row : {5, 7}) rows.Toggle(row);
    for (const auto& [step, row] : test.Steps) step(rows, row);
    EXPECT_EQ(rows.GetCurrent(), test.Current);
    EXPECT_EQ(rows.GetRanges(), test.Expected);
    for (int row = -1; row <= rows.GetRows(); ++row) {
      const auto holds = [row](const RowRange& range) { return row >= range.First && row <= range.Last; };
      EXPECT_EQ(rows.Contains(row), std::ranges::any_of(test.Expected, holds)) << row;
    }
  }
}

}  // namespace

#include "toolkit/model/row_selection.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

enum class Do { SelectOnly, Toggle, Extend, ExtendAndKeep, MoveCurrent, SelectAll, Clear, SetRows, InsertRows };

struct Step {
  Do What;
  int Row = 0;
  int Rows = 0;  // of InsertRows
};

void Apply(const Step& step, RowSelection& rows) {
  switch (step.What) {
    case Do::SelectOnly:
      return rows.SelectOnly(step.Row);
    case Do::Toggle:
      return rows.Toggle(step.Row);
    case Do::Extend:
      return rows.Extend(step.Row, false);
    case Do::ExtendAndKeep:
      return rows.Extend(step.Row, true);
    case Do::MoveCurrent:
      return rows.MoveCurrent(step.Row);
    case Do::SelectAll:
      return rows.SelectAll();
    case Do::Clear:
      return rows.Clear();
    case Do::SetRows:
      return rows.SetRows(step.Row);
    case Do::InsertRows:
      return rows.InsertRows(step.Row, step.Rows);
  }
}

struct Case {
  const char* What;
  std::vector<Step> Steps;
  int Current;
  std::vector<RowRange> Expected;
};

// On ten rows: a click has selected row 3, then clicks with Ctrl rows 5 and 7.
const Case kCases[] = {
    {"nothing", {}, 7, {{3, 3}, {5, 5}, {7, 7}}},
    {"click", {{Do::SelectOnly, 1}}, 1, {{1, 1}}},
    {"click beyond the rows", {{Do::SelectOnly, 10}}, 9, {{9, 9}}},
    {"Ctrl joins neighbours", {{Do::Toggle, 4}}, 4, {{3, 5}, {7, 7}}},
    {"Ctrl unselects", {{Do::Toggle, 5}}, 5, {{3, 3}, {7, 7}}},
    {"Ctrl splits a range", {{Do::SelectAll}, {Do::Toggle, 4}}, 4, {{0, 3}, {5, 9}}},
    {"Shift", {{Do::Extend, 9}}, 9, {{7, 9}}},
    {"Ctrl and Shift upwards", {{Do::ExtendAndKeep, 6}}, 6, {{3, 3}, {5, 7}}},
    {"a drag grows and shrinks", {{Do::ExtendAndKeep, 2}, {Do::ExtendAndKeep, 8}}, 8, {{3, 3}, {5, 5}, {7, 8}}},
    {"an unselected row is not kept", {{Do::Toggle, 5}, {Do::ExtendAndKeep, 6}}, 6, {{3, 3}, {5, 7}}},
    {"Shift drops what was kept", {{Do::Extend, 8}, {Do::ExtendAndKeep, 9}}, 9, {{7, 9}}},
    {"a moved current row keeps all",
     {{Do::Extend, 9}, {Do::MoveCurrent, 1}, {Do::ExtendAndKeep, 2}},
     2,
     {{1, 2}, {7, 9}}},
    {"select all", {{Do::SelectAll}}, 7, {{0, 9}}},
    {"select all keeps anchor, not ranges", {{Do::SelectAll}, {Do::ExtendAndKeep, 8}}, 8, {{7, 8}}},
    {"select all without a current row", {{Do::Clear}, {Do::SelectAll}}, 0, {{0, 9}}},
    {"cleared", {{Do::Clear}}, -1, {}},
    {"clear drops what was kept", {{Do::Clear}, {Do::ExtendAndKeep, 2}}, 2, {{2, 2}}},
    {"rows on top", {{Do::InsertRows, 0, 4}}, 11, {{7, 7}, {9, 9}, {11, 11}}},
    {"rows below the current one", {{Do::InsertRows, 8, 4}}, 7, {{3, 3}, {5, 5}, {7, 7}}},
    {"rows at the current one", {{Do::InsertRows, 7, 4}}, 11, {{3, 3}, {5, 5}, {11, 11}}},
    {"rows within a range", {{Do::Extend, 2}, {Do::InsertRows, 5, 4}}, 2, {{2, 4}, {9, 11}}},
    {"rows on top move anchor and kept ranges",
     {{Do::InsertRows, 0, 4}, {Do::ExtendAndKeep, 12}},
     12,
     {{7, 7}, {9, 9}, {11, 12}}},
    {"rows gone below the selection", {{Do::SetRows, 8}}, 7, {{3, 3}, {5, 5}, {7, 7}}},
    {"a selected row gone", {{Do::SetRows, 7}}, 6, {{3, 3}, {5, 5}}},
    {"rows gone within a range", {{Do::Extend, 2}, {Do::SetRows, 4}}, 2, {{2, 3}}},
    {"kept rows gone", {{Do::SetRows, 6}, {Do::ExtendAndKeep, 4}}, 4, {{3, 5}}},
    {"gone rows do not come back", {{Do::SetRows, 6}, {Do::SetRows, 10}}, 5, {{3, 3}, {5, 5}}},
    {"a negative count", {{Do::SetRows, -1}}, -1, {}},
    {"no rows",
     {{Do::SetRows, 0}, {Do::Toggle, 0}, {Do::ExtendAndKeep, 1}, {Do::SelectAll}, {Do::SelectOnly, 0}},
     -1,
     {}},
};

TEST(RowSelection, SelectsAsMouseAndKeysAsk) {
  for (const Case& test : kCases) {
    SCOPED_TRACE(test.What);
    RowSelection rows;
    for (const Step& step : {Step{Do::SetRows, 10}, {Do::SelectOnly, 3}, {Do::Toggle, 5}, {Do::Toggle, 7}})
      Apply(step, rows);
    for (const Step& step : test.Steps) Apply(step, rows);
    EXPECT_EQ(rows.GetCurrent(), test.Current);
    EXPECT_EQ(rows.GetRanges(), test.Expected);
    for (int row = -1; row <= rows.GetRows(); ++row) {
      const auto holds = [row](const RowRange& range) { return row >= range.First && row <= range.Last; };
      EXPECT_EQ(rows.Contains(row), std::any_of(test.Expected.begin(), test.Expected.end(), holds)) << row;
    }
  }
}

}  // namespace

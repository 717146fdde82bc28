#include "toolkit/model/columns_info.h"

#include <gtest/gtest.h>

namespace {

// Columns 0 to 5; 1 and 4 hidden; 3 and 5 locked: on the screen stand 3 5 0 2.
CQORPGridColumnsInfo SixColumns() {
  CQORPGridColumnsInfo columns;
  for (int column = 0; column < 6; ++column) columns.InsertColumn(column, L"Column", 10 + column);
  for (const int hidden : {1, 4}) columns.SetColumnVisible(hidden, false);
  for (const int locked : {3, 5}) columns.SetColumnLocked(locked, true);
  return columns;
}

using Places = std::vector<int>;

TEST(ColumnsInfo, PlacesKeepLockedColumnsBeforeTheOthers) {
  const std::tuple<int, int, Places> cases[] = {
      {0, 5, {5, 3, 0, 2}}, {1, 3, {5, 3, 0, 2}}, {3, 5, {3, 5, 0, 2}}, {9, 3, {5, 3, 0, 2}},  {2, 2, {3, 5, 2, 0}},
      {0, 2, {3, 5, 2, 0}}, {3, 0, {3, 5, 2, 0}}, {9, 0, {3, 5, 2, 0}}, {-1, 0, {3, 5, 0, 2}}, {0, -1, {3, 5, 0, 2}},
      {0, 6, {3, 5, 0, 2}}, {1, 5, {3, 5, 0, 2}}, {3, 4, {3, 5, 0, 2}},  // hidden: its place shows when it does
  };
  for (const auto& [place, column, expected] : cases) {
    CQORPGridColumnsInfo columns = SixColumns();
    columns.SetColumnDisplayPos(place, column);
    EXPECT_EQ(columns.DisplayColumns(), expected) << "column " << column << " to place " << place;
  }
  CQORPGridColumnsInfo columns = SixColumns();
  columns.SetColumnDisplayPos(3, 4);
  for (const int hidden : {4, 1}) columns.SetColumnVisible(hidden, true);
  EXPECT_EQ(columns.DisplayColumns(), (Places{3, 5, 0, 1, 4, 2}));
  columns.SetColumnLocked(3, false);
  EXPECT_EQ(columns.DisplayColumns(), (Places{5, 0, 1, 4, 2, 3})) << "an unlocked column goes back to its neighbours";
  EXPECT_EQ(columns.GetColumnOrder(3), 5);
  columns.SetColumnVisible(3, false);
  EXPECT_EQ(columns.GetColumnOrder(3), -1);
  EXPECT_EQ(columns.GetColumnWidth(3), 13) << "a hidden column keeps its width";
}

TEST(ColumnsInfo, ADroppedColumnIsLockedAmongLockedOnes) {
  const std::tuple<int, int, Places, bool, bool> cases[] = {
      {2, 0, {3, 5, 0, 2}, false, false}, {3, 0, {3, 5, 0, 2}, false, false}, {4, 0, {3, 5, 2, 0}, true, false},
      {1, 0, {3, 0, 5, 2}, true, true},   {0, 2, {2, 3, 5, 0}, true, true},   {2, 2, {3, 5, 2, 0}, true, false},
      {2, 3, {5, 3, 0, 2}, true, true},   {3, 3, {5, 0, 3, 2}, true, false},  {4, 5, {3, 0, 2, 5}, true, false},
      {2, 5, {3, 5, 0, 2}, false, true},  {0, 1, {3, 5, 0, 2}, false, false}, {0, 9, {3, 5, 0, 2}, false, false},
  };
  for (const auto& [place, column, expected, moves, locked] : cases) {
    CQORPGridColumnsInfo columns = SixColumns();
    EXPECT_EQ(columns.DropColumn(place, column), moves) << "column " << column << " before place " << place;
    EXPECT_EQ(columns.DisplayColumns(), expected);
    EXPECT_EQ(columns.GetColumnLocked(column), locked);
  }
}

TEST(ColumnsInfo, AnOrderComesBackForWhatIsVisible) {
  const std::tuple<Places, Places, Places> cases[] = {
      {{3, 5, 0, 2}, {3, 5, 0, 2}, {3, 5, 0, 1, 2, 4}}, {{5, 3, 2, 0}, {5, 3, 2, 0}, {5, 3, 2, 1, 0, 4}},
      {{2}, {3, 5, 2, 0}, {3, 5, 2, 1, 0, 4}},          {{2, 4, 0, 2, 9, -1}, {3, 5, 2, 0}, {3, 5, 2, 4, 0, 1}},
      {{}, {3, 5, 0, 2}, {3, 5, 0, 1, 2, 4}},
  };
  for (const auto& [order, expected, allShown] : cases) {
    CQORPGridColumnsInfo columns = SixColumns();
    columns.SetColumnOrderArray(order);
    EXPECT_EQ(columns.GetColumnOrderArray(), expected);
    for (const int hidden : {1, 4}) columns.SetColumnVisible(hidden, true);
    EXPECT_EQ(columns.DisplayColumns(), allShown);
  }
}

TEST(ColumnsInfo, SortColumnsKeepTheOrderInWhichTheyWereSet) {
  CQORPGridColumnsInfo columns = SixColumns();
  // The states and priorities of columns 0, 2 and 4.
  const auto sort = [&columns] {
    Places sorts;
    for (const int column : {0, 2, 4})
      sorts.insert(sorts.end(), {columns.GetColumnState(column), columns.GetSortPriority(column)});
    return sorts;
  };
  columns.SetSortColumn(2, true, true);
  columns.SetSortColumn(0, false, true);
  columns.SetSortColumn(2, false, true);
  EXPECT_EQ(sort(), (Places{-1, 1, -1, 0, 0, -1})) << "another direction is not another priority";
  columns.RemoveSortColumn(2);
  EXPECT_EQ(sort(), (Places{-1, 0, 0, -1, 0, -1}));
  columns.SetSortColumn(4, true, false);
  EXPECT_EQ(sort(), (Places{0, -1, 0, -1, 1, 0}));
  columns.SetSortColumn(6, true, false);
  EXPECT_EQ(sort(), (Places{0, -1, 0, -1, 1, 0})) << "no such column, no change";
}

TEST(ColumnsInfo, ColumnsComeWithoutGapsAndWithAWidth) {
  CQORPGridColumnsInfo columns = SixColumns();
  for (const int column : {-1, 5, 7}) columns.InsertColumn(column, L"New", 1);
  EXPECT_EQ(columns.GetColumnCount(), 6);
  columns.InsertColumn(6, L"Narrow", -1);
  columns.SetColumnWidth(5, -1);
  EXPECT_EQ(columns.GetColumnWidth(5) + columns.GetColumnWidth(6), 0);
  EXPECT_EQ(columns.GetColumnName(5) + columns.GetColumnName(6) + columns.GetColumnName(7), L"ColumnNarrow");
}

// Two frozen columns at 0 to 100 and 100 to 150; of the others, scrolled by 60, the first lies half under them.
const std::vector<int> kWidths{100, 50, 80, 8, 200};
const ColumnStrip kStrip(kWidths, 2, 60);

TEST(ColumnStrip, FindsWhatTheMousePointsAt) {
  // The x, the column, the edge within 4 pixels and the place of a drop.
  const std::tuple<int, int, int, int> rows[] = {
      {-1, -1, -1, 0}, {0, 0, -1, 0},    {49, 0, -1, 0},  {50, 0, -1, 1},  {95, 0, -1, 1}, {96, 0, 0, 1},
      {100, 1, -1, 1}, {124, 1, -1, 1},  {125, 1, -1, 2}, {140, 1, -1, 2}, {149, 1, 1, 2}, {150, 2, 1, 3},
      {154, 2, 1, 3},  {155, 2, -1, 3},  {166, 2, 2, 3},  {173, 3, 2, 3},  {174, 3, 3, 4}, {178, 4, 3, 4},
      {182, 4, 3, 4},  {183, 4, -1, 4},  {277, 4, -1, 4}, {278, 4, -1, 5}, {377, 4, 4, 5}, {378, -1, 4, 5},
      {382, -1, 4, 5}, {383, -1, -1, 5},
  };
  for (const auto& [x, place, edge, drop] : rows)
    EXPECT_EQ(std::tuple(x, kStrip.PlaceAt(x), kStrip.PlaceOfEdgeAt(x, 4), kStrip.DropPlaceAt(x)),
              std::tuple(x, place, edge, drop));
  // A column without room for its edge: the right one of two edges in one place counts.
  EXPECT_EQ(ColumnStrip(std::vector<int>{50, 0, 50}, 0, 0).PlaceOfEdgeAt(48, 4), 1);
}

TEST(ColumnStrip, CountsTheColumnsThatCanBeFrozen) {
  const std::tuple<int, int, int> rows[] = {{-1, 900, 0}, {0, 900, 0}, {2, 900, 2}, {4, 900, 4},
                                            {5, 900, 4},  {2, 151, 2}, {2, 150, 1}, {2, 101, 1},
                                            {2, 100, 0},  {2, -40, 0}, {4, 238, 3}};
  for (const auto& [wanted, room, expected] : rows)
    EXPECT_EQ(CountFrozen(kWidths, wanted, room), expected) << wanted << " in " << room;
  EXPECT_EQ(CountFrozen({}, 3, 900), 0);
}

}  // namespace

#include "toolkit/model/column_strip.h"

#include <gtest/gtest.h>

namespace {

// Two frozen columns at 0 to 100 and 100 to 150; of the others, scrolled by 60, the first lies half under them.
const std::vector<int> kWidths{100, 50, 80, 8, 200};
const ColumnStrip kStrip(kWidths, 2, 60);

TEST(ColumnStrip, FrozenColumnsStayWhileTheOthersScroll) {
  const ColumnSpan expected[] = {{0, 100}, {100, 150}, {90, 170}, {170, 178}, {178, 378}};
  for (int place = 0; place < 5; ++place) EXPECT_EQ(kStrip.SpanOf(place), expected[place]) << place;
  EXPECT_EQ(kStrip.FrozenWidth(), 150);
  const ColumnStrip none(kWidths, 0, 60);
  EXPECT_EQ(none.SpanOf(0), (ColumnSpan{-60, 40}));
  EXPECT_EQ(none.FrozenWidth(), 0);
}

TEST(ColumnStrip, FindsWhatTheMousePointsAt) {
  const struct {
    int X, At, Edge, Drop;  // edges are found within 4 pixels
  } rows[] = {
      {-1, -1, -1, 0}, {0, 0, -1, 0},   {49, 0, -1, 0},  {50, 0, -1, 1},  {95, 0, -1, 1},  {96, 0, 0, 1},
      {100, 1, -1, 1}, {124, 1, -1, 1}, {125, 1, -1, 2}, {150, 2, 1, 3},  {154, 2, 1, 3},  {155, 2, -1, 3},
      {166, 2, 2, 3},  {173, 3, 2, 3},  {174, 3, 3, 4},  {178, 4, 3, 4},  {182, 4, 3, 4},  {183, 4, -1, 4},
      {277, 4, -1, 4}, {278, 4, -1, 5}, {377, 4, 4, 5},  {378, -1, 4, 5}, {382, -1, 4, 5}, {383, -1, -1, 5},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.X);
    EXPECT_EQ(kStrip.PlaceAt(row.X), row.At);
    EXPECT_EQ(kStrip.PlaceOfEdgeAt(row.X, 4), row.Edge);
    EXPECT_EQ(kStrip.DropPlaceAt(row.X), row.Drop);
  }
  // A column without room for its edge: the right one of two edges in one place counts.
  EXPECT_EQ(ColumnStrip(std::vector<int>{50, 0, 50}, 0, 0).PlaceOfEdgeAt(48, 4), 1);
}

TEST(ColumnStrip, CountsTheColumnsThatCanBeFrozen) {
  const struct {
    int Wanted, Room, Expected;
  } rows[] = {{-1, 900, 0}, {0, 900, 0}, {2, 900, 2}, {4, 900, 4}, {5, 900, 4}, {2, 151, 2},
              {2, 150, 1},  {2, 101, 1}, {2, 100, 0}, {2, -40, 0}, {4, 238, 3}};
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.Wanted << " in " << row.Room);
    EXPECT_EQ(CountFrozen(kWidths, row.Wanted, row.Room), row.Expected);
  }
  EXPECT_EQ(CountFrozen({}, 3, 900), 0);
}

}  // namespace

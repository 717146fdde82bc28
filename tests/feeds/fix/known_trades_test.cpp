#include "feeds/fix/known_trades.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace {

// Ids of every length around the blocks of the store, of which they fill one, some of them the begin of others.
TEST(IdTableTest, AgreesWithAMap) {
  IdStore store;
  IdTable table(store);
  std::map<std::string, std::uint32_t> slow;
  std::mt19937 random(1);
  for (int i = 0; i < 160'000; ++i) {
    const std::string id = std::string(random() % 40, 'x') + std::to_string(random() % 3'000);
    const std::uint32_t expected = slow.try_emplace(id, static_cast<std::uint32_t>(slow.size() + 1)).first->second;
    ASSERT_EQ(table.OrdinalOf(IdKey(id)), expected) << id;
  }
  EXPECT_EQ(table.Size(), slow.size());
  for (const auto& [id, ordinal] : slow) ASSERT_EQ(*table.Find(IdKey(id)).Number, ordinal) << id;
  for (const char* id : {"", "y1", "x", "xx"}) EXPECT_EQ(table.Find(IdKey(id)).Number, nullptr) << id;
}

TEST(IdTableTest, TellsIdsApartByTheirJoint) {
  IdStore store;
  IdTable table(store);
  EXPECT_EQ(table.OrdinalOf(IdKey("1234", 1)), 1);
  EXPECT_TRUE(table.Find(IdKey("1234", 2)).HasOtherJoint);
  EXPECT_FALSE(table.Find(IdKey("1235", 2)).HasOtherJoint);
  EXPECT_EQ(table.OrdinalOf(IdKey("1234", 2)), 2);
  EXPECT_EQ(*table.Find(IdKey("1234", 1)).Number, 1);
  EXPECT_EQ(table.Find(IdKey("1234")).Number, nullptr);
}

TEST(KnownTradesTest, ShowsEveryExecutionUnderAPairOfItsOwn) {
  KnownTrades known;
  const std::string longest(32, 'a'), tooLong(33, 'a');
  const std::tuple<std::string, std::string, std::string, std::string> rows[] = {
      {"1", "23", "23", ""},
      {"12", "3", "3~2", "17=3 is shown as 3~2"},  // joined like the one before
      {"1", longest, longest, ""},
      {"1", tooLong, std::string(30, 'a') + "~4", "17=" + tooLong + " is shown as " + std::string(30, 'a') + "~4"},
      {"1", tooLong + "b", std::string(30, 'a') + "~5",
       "17=" + tooLong + "b is shown as " + std::string(30, 'a') + "~5"},
      {"1", "z~7", "z~7", ""},
      {"1", "z\n", "z?~7", "17=z? is shown as z?~7"},
      {"1", "y~9", "y~9", ""},
      {"1", "y", "y", ""},
      {"1", "y", "y~10", "17=y is shown as y~10"},
      {"1", "y~11", "y~11", ""},
      {"1", "y", "y~12", "17=y is shown as y~12"},
      {"1", "y~14", "y~14", ""},
      {"1", "y", "y~15", "17=y is shown as y~15"},  // 14 is taken
  };
  for (const auto& [order, id, shown, reason] : rows) {
    std::string told;
    EXPECT_EQ(known.ShownTrade(order, id, nullptr, false, told), shown);
    EXPECT_EQ(told, reason);
  }
}

TEST(KnownTradesTest, ShowsOrdersThatDoNotFitWithTheirNumber) {
  KnownTrades known;
  std::string told;
  EXPECT_EQ(known.ShownOrder(std::string(32, 'o'), 815, false, told), std::string(32, 'o'));
  EXPECT_EQ(told, "");
  EXPECT_EQ(known.ShownOrder(std::string(33, 'o'), 815, false, told), std::string(28, 'o') + "~815");
  EXPECT_EQ(told, "37=" + std::string(33, 'o') + " is shown as " + std::string(28, 'o') + "~815");
}

}  // namespace

#include "feeds/fix/known_trades.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace {

// Ids of every length around the blocks of the table, some of them the begin of others.
TEST(IdTableTest, AgreesWithAMap) {
  IdTable table;
  std::map<std::string, std::uint32_t> slow;
  std::mt19937 random(1);
  for (int i = 0; i < 40'000; ++i) {
    const std::string id = std::string(random() % 40, 'x') + std::to_string(random() % 3'000);
    const std::uint32_t expected = slow.try_emplace(id, static_cast<std::uint32_t>(slow.size() + 1)).first->second;
    ASSERT_EQ(table.OrdinalOf(id), expected) << id;
  }
  EXPECT_EQ(table.Size(), slow.size());
  for (const auto& [id, ordinal] : slow) ASSERT_EQ(*table.Find(id), ordinal) << id;
  for (const char* id : {"", "y1", "x", "xx"}) EXPECT_EQ(table.Find(id), nullptr) << id;
}

TEST(IdHashesTest, InsertsEachHashOnce) {
  IdHashes hashes;
  for (std::uint64_t hash = 0; hash < 5'000; ++hash) ASSERT_TRUE(hashes.Insert(hash << 40)) << hash;
  for (std::uint64_t hash = 0; hash < 5'000; ++hash) ASSERT_FALSE(hashes.Insert(hash << 40)) << hash;
  EXPECT_EQ(hashes.Size(), 5'000);
}

// Written down, as shown ids depend on it wherever a day is mapped again.
TEST(IdHashesTest, HashesTheSameForEver) {
  EXPECT_EQ(HashOfId(""), 0x0u);
  EXPECT_EQ(HashOfId("11000000000047000"), 5409054002303412151u);
  EXPECT_NE(HashOfId("a"), HashOfId(std::string_view("a\0", 2)));
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
    EXPECT_EQ(known.ShownTrade(order, id, told), shown);
    EXPECT_EQ(told, reason);
  }
}

TEST(KnownTradesTest, ShowsOrdersThatDoNotFitWithTheirNumber) {
  KnownTrades known;
  std::string told;
  EXPECT_EQ(known.ShownOrder(std::string(32, 'o'), 815, told), std::string(32, 'o'));
  EXPECT_EQ(told, "");
  EXPECT_EQ(known.ShownOrder(std::string(33, 'o'), 815, told), std::string(28, 'o') + "~815");
  EXPECT_EQ(told, "37=" + std::string(33, 'o') + " is shown as " + std::string(28, 'o') + "~815");
}

}  // namespace

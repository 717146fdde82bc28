#include "trade_data/cache/trade_map.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <numeric>
#include <random>
#include <vector>

namespace {

using Ids = std::vector<std::int32_t>;

constexpr std::int32_t kLowest = INT32_MIN;
constexpr std::int32_t kHighest = INT32_MAX;

Ids Sequence(std::int32_t first, std::int32_t step, std::size_t count) {
  Ids ids(count);
  for (std::size_t i = 0; i < count; ++i) ids[i] = first + step * static_cast<std::int32_t>(i);
  return ids;
}

Ids Shuffled(Ids ids, unsigned seed) {
  std::shuffle(ids.begin(), ids.end(), std::minstd_rand(seed));
  return ids;
}

Ids Joined(Ids ids, const Ids& more) {
  ids.insert(ids.end(), more.begin(), more.end());
  return ids;
}

void ExpectSame(const TradeMap& trades, const std::map<std::int32_t, TradeRecord*>& expected) {
  ASSERT_EQ(trades.Size(), expected.size());
  ASSERT_EQ(trades.Empty(), expected.empty());
  auto each = expected.begin();
  for (const TradeMap::Entry entry : trades) {
    ASSERT_NE(each, expected.end());
    ASSERT_EQ(entry.Id, each->first);
    ASSERT_EQ(entry.Record, each->second);
    ++each;
  }
  ASSERT_EQ(each, expected.end());
}

TEST(TradeMapTest, FindsAndOrdersAsAnOrderedMapDoes) {
  const struct {
    const char* What;
    Ids Inserted;
  } kRows[] = {
      {"none", {}},
      {"the ends of the range", {0, kHighest, kLowest, -1, 1}},
      {"rising, one full block", Sequence(1, 1, 512)},
      {"rising, one more", Sequence(1, 1, 513)},
      {"rising over many blocks", Sequence(-3000, 3, 5000)},
      {"falling over many blocks", Sequence(9000, -2, 5000)},
      {"into gaps of full blocks", Joined(Sequence(0, 2, 2048), Sequence(1, 2, 2047))},
      {"below a full block", Joined(Sequence(0, 1, 512), {-1, -2})},
      {"one split at its middle", Joined(Sequence(0, 2, 512), {511, 513, 509})},
      {"shuffled", Shuffled(Sequence(-5000, 1, 10000), 1)},
      {"mostly rising", Joined(Shuffled(Sequence(0, 7, 3000), 2), Shuffled(Sequence(30000, 1, 3000), 3))},
  };
  std::vector<TradeRecord> records(10000);
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.What);
    TradeMap trades;
    std::map<std::int32_t, TradeRecord*> expected;
    for (std::size_t i = 0; i < row.Inserted.size(); ++i) {
      const std::int32_t id = row.Inserted[i];
      ASSERT_EQ(trades.Find(id), nullptr) << id;
      trades.Insert(id, &records[i]);
      expected[id] = &records[i];
      ASSERT_EQ(trades.Find(id), &records[i]) << id;
      if (i % 509 == 0) ExpectSame(trades, expected);
    }
    ExpectSame(trades, expected);
    for (const auto& [id, record] : expected) {
      ASSERT_EQ(trades.Find(id), record);
      for (const std::int64_t beside : {std::int64_t{id} - 1, std::int64_t{id} + 1})
        EXPECT_TRUE(beside < kLowest || beside > kHighest || expected.contains(static_cast<std::int32_t>(beside)) ||
                    trades.Find(static_cast<std::int32_t>(beside)) == nullptr)
            << beside;
    }
    trades.Clear();
    ExpectSame(trades, {});
    EXPECT_EQ(trades.Find(0), nullptr);
    trades.Insert(5, records.data());
    EXPECT_EQ(trades.Find(5), records.data());
  }
}

}  // namespace

// The containers of the trade cache.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "foundations/byte_words.h"
#include "trade_data/cache/execution_set.h"
#include "trade_data/cache/trade_map.h"

namespace {

using Ids = std::vector<std::int32_t>;

Ids Sequence(std::int32_t first, std::int32_t step, std::size_t count) {
  Ids ids(count);
  for (std::int32_t& id : ids) id = first + step * static_cast<std::int32_t>(&id - ids.data());
  return ids;
}

Ids Shuffled(Ids ids, unsigned seed) {
  std::shuffle(ids.begin(), ids.end(), std::minstd_rand(seed));
  return ids;
}

Ids operator+(Ids ids, const Ids& more) {
  ids.insert(ids.end(), more.begin(), more.end());
  return ids;
}

void ExpectSame(const TradeMap& trades, const std::map<std::int32_t, TradeRecord*>& expected) {
  ASSERT_EQ(trades.Size(), expected.size());
  ASSERT_EQ(trades.Empty(), expected.empty());
  auto each = expected.begin();
  for (const TradeMap::Entry entry : trades) {
    ASSERT_NE(each, expected.end());
    ASSERT_EQ(std::pair(entry.Id, entry.Record), std::pair(each->first, each->second));
    // An id between this one and the next is not found.
    const std::int32_t beside = entry.Id == INT32_MAX ? entry.Id : entry.Id + 1;
    const auto next = expected.find(beside);
    ASSERT_EQ(trades.Find(beside), next == expected.end() ? nullptr : next->second);
    ++each;
  }
  ASSERT_EQ(each, expected.end());
}

TEST(TradeMapTest, FindsAndOrdersAsAnOrderedMapDoes) {
  const std::pair<const char*, Ids> kRows[] = {
      {"the ends of the range", {0, INT32_MAX, INT32_MIN, -1, 1}},
      {"rising, one full block", Sequence(1, 1, 512)},
      {"rising, one more", Sequence(1, 1, 513)},
      {"rising over many blocks", Sequence(-3000, 3, 5000)},
      {"falling over many blocks", Sequence(9000, -2, 5000)},
      {"into gaps of full blocks", Sequence(0, 2, 2048) + Sequence(1, 2, 2047)},
      {"below a full block", Sequence(0, 1, 512) + Ids{-1, -2}},
      {"one split at its middle", Sequence(0, 2, 512) + Ids{511, 513, 509}},
      {"shuffled", Shuffled(Sequence(-5000, 1, 10000), 1)},
      {"mostly rising", Shuffled(Sequence(0, 7, 3000), 2) + Shuffled(Sequence(30000, 1, 3000), 3)},
      {"none", {}},
  };
  std::vector<TradeRecord> records(10000);
  TradeMap trades;
  for (const auto& [what, inserted] : kRows) {
    SCOPED_TRACE(what);
    std::map<std::int32_t, TradeRecord*> expected;
    for (std::size_t i = 0; i < inserted.size(); ++i) {
      const std::int32_t id = inserted[i];
      ASSERT_EQ(trades.Find(id), nullptr) << id;
      trades.Insert(id, &records[i]);
      expected[id] = &records[i];
      ASSERT_EQ(trades.Find(id), &records[i]) << id;
      if (i % 509 == 0) ExpectSame(trades, expected);
    }
    ExpectSame(trades, expected);
    trades.Clear();
  }
}

// Keeps the next record, which is zeroed and the same until it is kept.
TradeRecord* KeepNext(RecordPool& pool, std::uint32_t quantity) {
  pool.Spare().Quantity = 1;
  TradeRecord& spare = pool.Spare();
  EXPECT_TRUE(BytesOfValue(spare) == std::string(sizeof spare, '\0') && pool.PeekSpare() == &spare);
  spare.Quantity = quantity;
  spare.ParticipantID[16] = 'x';
  EXPECT_EQ(pool.Keep(), &spare);
  return &spare;
}

TEST(RecordPoolTest, KeepsRecordsApartAndReusesReturnedOnes) {
  RecordPool pool;
  std::vector<TradeRecord*> kept;
  for (std::uint32_t i = 0; i < 6000; ++i) kept.push_back(KeepNext(pool, i));
  for (std::uint32_t i = 0; i < 6000; ++i) ASSERT_EQ(+kept[i]->Quantity, i) << "no record overlaps another";
  for (TradeRecord* record : {kept[0], kept[1]}) pool.GiveBack(record);
  for (TradeRecord* record : {kept[1], kept[0]}) EXPECT_EQ(KeepNext(pool, 7), record);
  pool.GiveBack(KeepNext(pool, 7));
  pool.Spare();
  pool.Clear();
  TradeRecord* first = KeepNext(pool, 1);
  EXPECT_NE(KeepNext(pool, 2), first);
  EXPECT_EQ(+first->Quantity, 1u);
}

TEST(ExecutionSetTest, KeepsWholeTextsAndTheirCase) {
  const std::string full(32, 'o');
  EXPECT_EQ(ExecutionKey(full.c_str(), full.c_str()).Text(), full + full);
  ExecutionSet executions;
  for (const char* trade : {"", "12C", "12c"}) EXPECT_TRUE(executions.Insert({"", trade})) << trade;
}

// Enough keys for the table to double eight times and the characters to fill several blocks.
TEST(ExecutionSetTest, AgreesWithASetOfTexts) {
  std::minstd_rand random(7);
  ExecutionSet executions;
  for (int round = 0; round < 2; ++round) {
    std::set<std::string> expected;
    for (int i = 0; i < 60000; ++i) {
      const std::string order = std::to_string(random() % 300);
      const std::string trade = (random() % 2 == 0 ? "execution-" : "") + std::to_string(random() % 400);
      const ExecutionKey key(order.c_str(), trade.c_str());
      executions.Prefetch(key);
      ASSERT_EQ(executions.Insert(key), expected.insert(order + trade).second) << order << ' ' << trade;
      ASSERT_EQ(executions.Size(), expected.size());
    }
    ASSERT_GT(expected.size(), 30000u);
    for (const std::string& text : expected) ASSERT_TRUE(executions.Contains({"", text.c_str()})) << text;
    executions.Clear();
    ASSERT_EQ(executions.Size(), 0u);
    ASSERT_FALSE(executions.Contains({"", expected.begin()->c_str()}));
  }
}

}  // namespace

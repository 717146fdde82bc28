#include "trade_data/cache/record_pool.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace {

bool IsZero(const TradeRecord& record) {
  const auto* bytes = reinterpret_cast<const char*>(&record);
  return std::all_of(bytes, bytes + sizeof record, [](char byte) { return byte == 0; });
}

TEST(RecordPoolTest, KeepsRecordsAtTheirAddresses) {
  RecordPool pool;
  std::vector<TradeRecord*> kept;
  for (std::uint32_t i = 0; i < 6000; ++i) {
    TradeRecord& spare = pool.Spare();
    ASSERT_TRUE(IsZero(spare));
    ASSERT_EQ(pool.PeekSpare(), &spare);
    spare.VELDTradeID = i;
    spare.ParticipantID[16] = 'x';
    kept.push_back(pool.Keep());
    ASSERT_EQ(kept.back(), &spare);
  }
  for (std::uint32_t i = 0; i < kept.size(); ++i) {
    ASSERT_EQ(+kept[i]->VELDTradeID, i) << "no record overlaps another";
    ASSERT_EQ(kept[i]->ParticipantID[16], 'x');
  }
}

TEST(RecordPoolTest, GivesTheSameSpareUntilItIsKept) {
  RecordPool pool;
  TradeRecord& first = pool.Spare();
  first.Quantity = 5;
  EXPECT_EQ(&pool.Spare(), &first);
  EXPECT_TRUE(IsZero(first));
  EXPECT_EQ(pool.Keep(), &first);
  EXPECT_NE(&pool.Spare(), &first);
}

TEST(RecordPoolTest, ReusesReturnedRecordsAndStartsAnewAfterClear) {
  RecordPool pool;
  TradeRecord* kept[3];
  for (TradeRecord*& record : kept) {
    pool.Spare().Quantity = 9;
    record = pool.Keep();
  }
  pool.GiveBack(kept[0]);
  pool.GiveBack(kept[1]);
  for (TradeRecord* expected : {kept[1], kept[0]}) {
    TradeRecord& spare = pool.Spare();
    EXPECT_EQ(&spare, expected);
    EXPECT_EQ(pool.PeekSpare(), expected);
    EXPECT_TRUE(IsZero(spare));
    EXPECT_EQ(pool.Keep(), expected);
  }
  TradeRecord& fresh = pool.Spare();
  for (const TradeRecord* record : kept) EXPECT_NE(&fresh, record);
  EXPECT_EQ(+kept[2]->Quantity, 9u);
  pool.GiveBack(pool.Keep());
  pool.Clear();
  TradeRecord* anew[2];
  for (TradeRecord*& record : anew) {
    EXPECT_TRUE(IsZero(pool.Spare()));
    record = pool.Keep();
  }
  EXPECT_NE(anew[0], anew[1]);
}

}  // namespace

#include "trade_data/cache/trade_cache.h"

#include <gtest/gtest.h>

#include "tests/support/sample_trade.h"
#include "tests/support/wire_bytes.h"
#include "tests/trade_data/cache_player.h"

namespace {

using Books = std::map<std::string, BookSettings>;

std::string Trade(std::uint32_t id, std::uint32_t quantity, const char* execution, const std::string& more = {}) {
  return WireMessage(
      8111, WireU32(20008, id) + WireText(55101, execution) + WireTerminator() + WireU32(20014, quantity) + more);
}
std::string Amend(std::uint32_t id, std::uint32_t product, std::uint32_t newQuantity, std::uint32_t addQuantity,
                  const std::string& more = {}) {
  return WireMessage(9112, WireU32(20008, id) + WireU32(20084, product) + WireU32(20103, newQuantity) +
                               WireU32(20104, addQuantity) + more);
}
const std::string kDownloadEnd = WireMessage(8112, "");
const std::string kClear = WireMessage(30022, "");
const std::string kReopen = WireMessage(kReopenDownload, "");

struct Step {
  const char* What;
  std::string Messages;
  const char* State;
};

template <std::size_t Count>
void PlaySteps(const Step (&steps)[Count], CachePlayer& player) {
  for (const Step& step : steps) {
    SCOPED_TRACE(step.What);
    player.Play(step.Messages);
    EXPECT_EQ(player.State(), step.State);
  }
}

TEST(TradeCacheTest, NumbersTradesOfTheDownloadAndThenLiveOnes) {
  const std::string download = Trade(3, 30, "c") + Trade(1, 10, "a") + Trade(2, 20, "b");
  const Step kSteps[] = {
      {"start", "", "live, pending, rows, next 0"},
      {"in the download", download, "live, pending 1:10/1 2:20/1 3:30/1, rows, next 0"},
      {"repeats", download + Trade(9, 90, "a"), "live, pending 1:10/1 2:20/1 3:30/1, rows, next 0"},
      {"another execution", Trade(2, 25, "b2"), "live, pending 1:10/1 2:25/1 3:30/1, rows, next 0"},
      {"its end", kDownloadEnd, "live 1:10/1 2:25/1 3:30/1, pending, rows 0=1 1=2 2=3, next 3"},
      {"live", Trade(5, 50, "e"), "live 1:10/1 2:25/1 3:30/1 5:50/1, pending, rows 0=1 1=2 2=3 3=5, next 4"},
      {"an older id", Trade(4, 40, "d"),
       "live 1:10/1 2:25/1 3:30/1 4:40/1 5:50/1, pending, rows 0=1 1=2 2=3 3=5 4=4, next 5"},
      {"a known id", Trade(1, 11, "a2"),
       "live 1:11/1 2:25/1 3:30/1 4:40/1 5:50/1, pending, rows 0=1 1=2 2=3 3=5 4=4, next 5"},
      {"a known execution", Trade(7, 70, "e"),
       "live 1:11/1 2:25/1 3:30/1 4:40/1 5:50/1, pending, rows 0=1 1=2 2=3 3=5 4=4, next 5"},
      {"its end again", kDownloadEnd,
       "live 1:11/1 2:25/1 3:30/1 4:40/1 5:50/1, pending, rows 0=1 1=2 2=3 3=5 4=4, next 5"},
      {"cleared", kClear, "live, pending, rows, next 5"},
      {"the next login", download, "live, pending 1:10/1 2:20/1 3:30/1, rows, next 5"},
      {"numbers go on", kDownloadEnd + Trade(0x80000000u, 8, "n"),
       "live -2147483648:8/1 1:10/1 2:20/1 3:30/1, pending, rows 5=1 6=2 7=3 8=-2147483648, next 9"},
  };
  CachePlayer player;
  PlaySteps(kSteps, player);
}

TEST(TradeCacheTest, TakesOneTradeForEachJoinedExecutionKey) {
  const auto trade = [](std::uint32_t id, const char* orderNo, const char* tradeId) {
    return WireMessage(9101,
                       WireU32(20008, id) + WireText(55100, orderNo) + WireText(55101, tradeId) + WireTerminator());
  };
  const Step kSteps[] = {
      {"an empty download", kDownloadEnd, "live, pending, rows, next 0"},
      {"the first with an empty key", Trade(0, 1, ""), "live 0:1/1, pending, rows 0=0, next 1"},
      {"the second", Trade(2, 2, ""), "live 0:1/1, pending, rows 0=0, next 1"},
      {"1 and 23", trade(5, "1", "23"), "live 0:1/1 5:0/1, pending, rows 0=0 1=5, next 2"},
      {"12 and 3", trade(6, "12", "3"), "live 0:1/1 5:0/1, pending, rows 0=0 1=5, next 2"},
      {"12 and 4", trade(6, "12", "4"), "live 0:1/1 5:0/1 6:0/1, pending, rows 0=0 1=5 2=6, next 3"},
  };
  CachePlayer player;
  PlaySteps(kSteps, player);
  EXPECT_EQ(player.Cache().KnownExecutions.Size(), 3u);
}

TEST(TradeCacheTest, TakesNumbersFromNewerTradesInAMerge) {
  const Step kSteps[] = {
      {"numbered", kDownloadEnd + Trade(5, 50, "e") + Trade(6, 60, "f") + Trade(9, 90, "i"),
       "live 5:50/1 6:60/1 9:90/1, pending, rows 0=5 1=6 2=9, next 3"},
      {"one older than the newest", kReopen + Trade(7, 70, "g") + kDownloadEnd,
       "live 5:50/1 6:60/1 7:70/1 9:90/1, pending, rows 0=5 1=6 2=7, next 3"},
      {"one older than all", kReopen + Trade(1, 10, "a") + kDownloadEnd,
       "live 1:10/1 5:50/1 6:60/1 7:70/1 9:90/1, pending, rows 0=1, next 1"},
      {"newer ones, one of them known",
       kReopen + Trade(8, 80, "h") + Trade(3, 30, "c") + Trade(5, 55, "e2") + kDownloadEnd,
       "live 1:10/1 3:30/1 5:55/1 6:60/1 7:70/1 8:80/1 9:90/1, pending, rows 0=1 1=3 2=8, next 3"},
      {"one with a negative id", kReopen + Trade(0xFFFFFFFFu, 1, "m") + kDownloadEnd,
       "live -1:1/1 1:10/1 3:30/1 5:55/1 6:60/1 7:70/1 8:80/1 9:90/1, pending, rows 0=-1, next 1"},
  };
  CachePlayer player;
  PlaySteps(kSteps, player);
}

TEST(TradeCacheTest, AmendsKnownTradesAndAddsUnknownOnes) {
  const Step kSteps[] = {
      {"before any trade", Amend(7, 2, 0, 70) + Amend(7, 2, 9, 0), "live, pending, rows, next 0"},
      {"a trade", kDownloadEnd + Trade(5, 50, "e"), "live 5:50/1, pending, rows 0=5, next 1"},
      {"unknown, nothing to add", Amend(7, 2, 0, 0) + Amend(7, 2, 9, 0), "live 5:50/1, pending, rows 0=5, next 1"},
      {"product alone", Amend(5, 2, 0, 0), "live 5:50/2, pending, rows 0=5, next 1"},
      {"quantity to add of a known trade", Amend(5, 2, 0, 77), "live 5:50/2, pending, rows 0=5, next 1"},
      {"quantity and product", Amend(5, 3, 60, 0), "live 5:60/3, pending, rows 0=5, next 1"},
      {"no product is product 0", WireMessage(9112, WireU32(20008, 5)), "live 5:60/0, pending, rows 0=5, next 1"},
      {"unknown, without a book", Amend(7, 2, 0, 70, WireText(55100, "o")), "live 5:60/0, pending, rows 0=5, next 1"},
      {"its execution is known", WireMessage(8111, WireU32(20008, 9) + WireText(55100, "oe") + WireTerminator()),
       "live 5:60/0, pending, rows 0=5, next 1"},
      {"in the download the earlier amendment waits under the new id",
       kReopen + Trade(2, 20, "b") + Amend(8, 2, 0, 80, WireText(55100, "o8")),
       "live 5:60/0, pending 2:20/1 8(5):60/0, rows 0=5, next 1"},
      {"a repeat of it", Amend(9, 2, 0, 90, WireText(55100, "o8")),
       "live 5:60/0, pending 2:20/1 8(5):60/0, rows 0=5, next 1"},
      {"an amendment flushes what waits", Amend(5, 1, 61, 0),
       "live 2:20/1 5:61/1 8(5):60/0, pending, rows 0=2 1=5, next 2"},
      {"a trade under another id writes to its own", Amend(8, 3, 81, 0),
       "live 2:20/1 5:81/3 8(5):81/3, pending, rows 0=2 1=5, next 2"},
  };
  CachePlayer player;
  PlaySteps(kSteps, player);
}

TEST(TradeCacheTest, KeepsWhatEarlierAmendmentsLeft) {
  CachePlayer player(Books{{"A", {}}});
  player.Play(kDownloadEnd + Trade(1, 1, "a"));
  TradeRecord expected{};
  expected.VELDTradeID = 7;
  expected.ProductType = 2;
  expected.Quantity = 70;
  std::string fields = WireText(55103, "not taken");
  for (const int tag : {101, 55001, 55010, 55018, 55100, 55102, 55104, 55109, 55131}) {
    fields += FindSampleField(tag)->Wire();
    PutSampleField(expected, *FindSampleField(tag));
  }
  std::memset(expected.CTCLID, 'c', 20);
  player.Play(Amend(7, 2, 0, 70, fields + WireText(55012, std::string(25, 'c'))));
  player.Play(Amend(8, 3, 0, 80, WireText(55100, "order 2") + WireText(55102, "other")));
  const TradeMap& live = *player.Cache().LiveTradesOf("Default");
  EXPECT_TRUE(BytesOfValue(*live.Find(7)) == BytesOfValue(expected));
  expected.VELDTradeID = 8;
  expected.ProductType = 3;
  expected.Quantity = 80;
  std::memcpy(expected.ExchangeOrderNo, "order 2", 8);
  // A shorter text ends with its NUL; the bytes after it stay.
  std::memcpy(expected.ClientID, "other\0", 6);
  EXPECT_TRUE(BytesOfValue(*live.Find(8)) == BytesOfValue(expected));
  // The known trade 1 replaces all of it.
  player.Play(Amend(1, 1, 5, 0) + Amend(9, 1, 0, 90, WireText(55100, "order 3")));
  EXPECT_STREQ(live.Find(9)->UserID, "");
  EXPECT_STREQ(live.Find(9)->ExchangeTradeID, "a");
}

TEST(TradeCacheTest, TellsBooks) {
  const Books none, one{{"A", {}}}, two{{"A", {}}, {"B", {}}};
  const Books filtered{{"B", {true}}}, filteredLast{{"A", {}}, {"B", {true}}}, filteredFirst{{"A", {true}}, {"B", {}}};
  const Books refusing{{"A", {false, 2}}, {"B", {}}};
  const std::string start = kDownloadEnd + Trade(1, 1, "a");
  const char* const kShown = "A admit 1, A totals 1, B admit 1, B totals 1";
  const char* const kTwice =
      "A admit 1, A totals 1, B admit 1, B totals 1, A admit 1, A totals 1, B admit 1, B totals 1";
  const char* const kKept = "live 1:1/1, pending, rows 0=1, next 1";
  const char* const kStored = "live 1:1/1 7:70/2, pending, rows 0=1 1=7, next 2";
  const struct {
    const char* What;
    const Books& Open;
    std::string Before, Messages;
    const char *Calls, *State;
  } kRows[] = {
      {"nothing in the download", one, "", Trade(1, 1, "a"), "", "live, pending 1:1/1, rows, next 0"},
      {"its end", filteredLast, "", kDownloadEnd, "A copy, B copy", "live, pending, rows, next 0"},
      {"a new trade", filteredLast, kDownloadEnd, Trade(1, 1, "a"), kShown, kKept},
      {"a refused trade", refusing, kDownloadEnd, Trade(1, 1, "a", WireU8(101, 2)), "A admit 1, B admit 1, B totals 1",
       kKept},
      {"a repeat", one, start, Trade(2, 2, "a"), "", kKept},
      {"a known trade", one, start, Trade(1, 2, "b"), "", "live 1:2/1, pending, rows 0=1, next 1"},
      {"a product amended", two, start, Amend(1, 2, 0, 0), kShown, "live 1:1/2, pending, rows 0=1, next 1"},
      {"a quantity amended, once a book", filteredLast, start, Amend(1, 2, 9, 0), kTwice,
       "live 1:9/2, pending, rows 0=1, next 1"},
      {"a quantity amended, no book", none, start, Amend(1, 2, 9, 0), "", "live 1:9/2, pending, rows 0=1, next 1"},
      {"unknown, two plain books", two, start, Amend(7, 2, 0, 70), "A admit 7, A totals 7, B admit 7, B totals 7",
       kStored},
      {"unknown, filtered alone", filtered, start, Amend(7, 2, 0, 70), "B refilter 7", kKept},
      {"unknown, plain then filtered", filteredLast, start, Amend(7, 2, 0, 70),
       "A admit 7, A totals 7, B admit 7, B totals 7, B refilter 7", kStored},
      {"unknown, filtered then plain", filteredFirst, start, Amend(7, 2, 0, 70),
       "A refilter 7, A admit 7, A totals 7, B admit 7, B totals 7", kStored},
      {"unknown, known execution", one, start, Amend(7, 2, 0, 70) + Amend(8, 2, 0, 80), "A admit 7, A totals 7",
       kStored},
      {"cleared", two, start, kClear, "A clear, B clear", "live, pending, rows, next 1"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.What);
    CachePlayer player(row.Open);
    player.Play(row.Before);
    player.TakeCalls();
    player.Play(row.Messages);
    EXPECT_EQ(player.TakeCalls(), row.Calls);
    EXPECT_EQ(player.State(), row.State);
  }
}

TEST(TradeCacheTest, AsksForARepaintAfterChanges) {
  const std::string start = kDownloadEnd + Trade(1, 1, "a");
  const struct {
    const char* What;
    std::string Before, Messages;
    bool Asked;
  } kRows[] = {
      {"download", "", Trade(1, 1, "a"), false},
      {"its end", "", kDownloadEnd, true},
      {"new", start, Trade(2, 2, "b"), true},
      {"known", start, Trade(1, 2, "b"), true},
      {"repeat", start, Trade(3, 3, "a"), false},
      {"amended", start, Amend(1, 2, 0, 0), true},
      {"unknown", start, Amend(7, 2, 0, 0), false},
      {"no book", start, Amend(7, 2, 0, 70), false},
      {"another number", start, WireMessage(8113, ""), false},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.What);
    CachePlayer player;
    player.Play(row.Before);
    player.Cache().GridsRefreshed = true;
    player.Play(row.Messages);
    EXPECT_EQ(player.Cache().GridsRefreshed, !row.Asked);
  }
}

TEST(TradeCacheTest, KeepsRecordsAtTheirAddresses) {
  CachePlayer player;
  for (std::uint32_t id = 1; id <= 3000; ++id) player.Play(Trade(id, id, std::to_string(id).c_str()));
  player.Play(kDownloadEnd);
  std::map<std::int32_t, TradeRecord*> kept;
  const auto look = [&] {
    for (const TradeMap::Entry trade : *player.Cache().LiveTradesOf("Default"))
      ASSERT_EQ(kept.try_emplace(trade.Id, trade.Record).first->second, trade.Record);
  };
  look();
  player.Play(Amend(3, 2, 7, 0) + Trade(4, 4, "other") + Trade(5000, 1, "new") + Amend(3, 1, 8, 0));
  player.Play(kReopen + Trade(4000, 1, "p") + Trade(5, 55, "q") + Amend(3000, 2, 0, 0) + kDownloadEnd);
  for (std::uint32_t id = 6000; id <= 9000; ++id) player.Play(Trade(id, id, std::to_string(id).c_str()));
  look();
  EXPECT_EQ(kept.size(), 6003u);
  EXPECT_EQ(+kept[5]->Quantity, 55u);
  EXPECT_EQ(+kept[3]->Quantity, 8u);
}

}  // namespace

#include "trade_data/cache/trade_cache.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/support/sample_trade.h"
#include "tests/trade_data/cache_player.h"

namespace {

using Books = std::map<std::string, BookSettings>;

std::string Amend(std::uint32_t id, std::uint32_t product, std::uint32_t newQuantity, std::uint32_t addQuantity,
                  const std::string& more = {}) {
  return WireMessage(9112, WireU32(20008, id) + WireU32(20084, product) + WireU32(20103, newQuantity) +
                               WireU32(20104, addQuantity) + more);
}
const std::string kReopen = WireMessage(kReopenDownload, "");

// What comes, its messages, and the state then: one after the other, from the start.
void CheckSteps(std::initializer_list<std::tuple<const char*, std::string, const char*>> steps) {
  CachePlayer player;
  for (const auto& [what, messages, state] : steps) {
    EXPECT_EQ(player.Play(messages), "") << what;
    EXPECT_EQ(player.State(), state) << what;
  }
}

TEST(TradeCacheTest, NumbersTradesOfTheDownloadAndThenLiveOnes) {
  const std::string download = TradeMessage(3, 30, "c") + TradeMessage(1, 10, "a") + TradeMessage(2, 20, "b");
  CheckSteps({
      {"in the download", download, "live, pending 1:10/1 2:20/1 3:30/1, rows, next 0"},
      {"repeats", download + TradeMessage(9, 90, "a"), "live, pending 1:10/1 2:20/1 3:30/1, rows, next 0"},
      {"another execution", TradeMessage(2, 25, "b2"), "live, pending 1:10/1 2:25/1 3:30/1, rows, next 0"},
      {"its end", kDownloadEnd, "live 1:10/1 2:25/1 3:30/1, pending, rows 0=1 1=2 2=3, next 3"},
      {"live", TradeMessage(5, 50, "e"), "live 1:10/1 2:25/1 3:30/1 5:50/1, pending, rows 0=1 1=2 2=3 3=5, next 4"},
      {"an older id", TradeMessage(4, 40, "d"),
       "live 1:10/1 2:25/1 3:30/1 4:40/1 5:50/1, pending, rows 0=1 1=2 2=3 3=5 4=4, next 5"},
      {"a known id", TradeMessage(1, 11, "a2"),
       "live 1:11/1 2:25/1 3:30/1 4:40/1 5:50/1, pending, rows 0=1 1=2 2=3 3=5 4=4, next 5"},
      {"known executions, and the end again", TradeMessage(7, 70, "e") + kDownloadEnd,
       "live 1:11/1 2:25/1 3:30/1 4:40/1 5:50/1, pending, rows 0=1 1=2 2=3 3=5 4=4, next 5"},
      {"cleared", kClear, "live, pending, rows, next 5"},
      {"the next login", download, "live, pending 1:10/1 2:20/1 3:30/1, rows, next 5"},
      {"numbers go on", kDownloadEnd + TradeMessage(0x80000000u, 8, "n"),
       "live -2147483648:8/1 1:10/1 2:20/1 3:30/1, pending, rows 5=1 6=2 7=3 8=-2147483648, next 9"},
  });
}

TEST(TradeCacheTest, AmendsKnownTradesAndAddsUnknownOnes) {
  CheckSteps({
      {"a trade", Amend(7, 2, 0, 70) + Amend(7, 2, 9, 0) + kDownloadEnd + TradeMessage(5, 50, "e"),
       "live 5:50/1, pending, rows 0=5, next 1"},
      {"unknown, nothing to add", Amend(7, 2, 0, 0) + Amend(7, 2, 9, 0), "live 5:50/1, pending, rows 0=5, next 1"},
      {"product alone", Amend(5, 2, 0, 77), "live 5:50/2, pending, rows 0=5, next 1"},
      {"quantity and product", Amend(5, 3, 60, 0), "live 5:60/3, pending, rows 0=5, next 1"},
      {"no product is product 0", WireMessage(9112, WireU32(20008, 5)), "live 5:60/0, pending, rows 0=5, next 1"},
      {"unknown, without a book", Amend(7, 2, 0, 70, WireText(55100, "o")), "live 5:60/0, pending, rows 0=5, next 1"},
      {"its execution is known", WireMessage(8111, WireU32(20008, 9) + WireText(55100, "oe") + WireTerminator()),
       "live 5:60/0, pending, rows 0=5, next 1"},
      {"in the download the earlier amendment waits under the new id",
       kReopen + TradeMessage(2, 20, "b") + Amend(8, 2, 0, 80, WireText(55100, "o8")),
       "live 5:60/0, pending 2:20/1 8(5):60/0, rows 0=5, next 1"},
      {"a repeat of it", Amend(9, 2, 0, 90, WireText(55100, "o8")),
       "live 5:60/0, pending 2:20/1 8(5):60/0, rows 0=5, next 1"},
      {"an amendment flushes what waits", Amend(5, 1, 61, 0),
       "live 2:20/1 5:61/1 8(5):60/0, pending, rows 0=2 1=8, next 2"},
      {"a trade under another id writes to its own", Amend(8, 3, 81, 0),
       "live 2:20/1 5:81/3 8(5):81/3, pending, rows 0=2 1=8, next 2"},
  });
}

// Messages from small ranges, so that ids and executions meet often.
class RandomMessages {
 public:
  explicit RandomMessages(unsigned seed) : Random(seed) {}

  std::string Next() {
    const unsigned kind = Below(24);
    if (kind <= 3) return kind == 0 ? kClear : kind == 1 ? kReopen : kDownloadEnd;
    return kind <= 9 ? Amendment() : Trade();
  }

 private:
  unsigned Below(unsigned end) { return static_cast<unsigned>(Random() >> 8) % end; }
  std::string Maybe(const std::string& field) { return Below(3) == 0 ? field : ""; }
  std::uint32_t Id() { return Below(14) - 2; }
  // Mostly short, sometimes longer than any field.
  std::string Text(int tag) {
    const std::size_t size = 1 + Below(Below(9) == 0 ? 80 : 3);
    return WireText(tag, std::string(size, static_cast<char>('a' + Below(4))));
  }
  std::string Number(int tag) { return WireU32(tag, Below(4)); }

  // Without a terminator the body is lost.
  std::string Trade() {
    std::string fields;
    for (const SampleField& field : kSampleFields) {
      if (field.Tag == 55010) fields += Text(55101) + WireU32(20008, Id()) + (Below(30) == 0 ? "" : WireTerminator());
      fields += Maybe(field.IsText() ? Text(field.Tag) : field.Wire());
    }
    return WireMessage(8111 + 990 * Below(2), fields + Number(20014) + WireU8(101, Below(3)) + Maybe(Number(20084)));
  }
  // A symbol is none of its fields.
  std::string Amendment() {
    std::string fields = WireU32(20008, Id()) + Maybe(WireU8(101, Below(3)));
    for (const int tag : {20084, 20103, 20104}) fields += Maybe(Number(tag));
    for (const int tag : {55001, 55010, 55012, 55018, 55100, 55102, 55103, 55104, 55109, 55131})
      fields += Maybe(Text(tag));
    return WireMessage(9112, fields);
  }

  std::minstd_rand Random;
};

TEST(TradeCacheTest, AgreesWithTheSlowCache) {
  const Books kBooks[] = {
      {}, {{"A", {}}}, {{"A", {true, 1}}}, {{"A", {true, 2}}, {"B", {}}, {"C", {}}}, {{"A", {false, 1}}, {"B", {true}}},
  };
  for (unsigned seed = 1; seed <= 60; ++seed) {
    RandomMessages messages(seed);
    CachePlayer player(kBooks[seed % std::size(kBooks)]);
    for (int step = 0; step < 300; ++step) {
      ASSERT_EQ(player.Play(messages.Next(), true), "") << "seed " << seed << ", step " << step;
      player.ForgetCalls();
    }
  }
}

}  // namespace

#include "tests/trade_data/slow_trade_cache.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/support/wire_bytes.h"
#include "tests/trade_data/cache_player.h"

namespace {

// Messages from small ranges, so that ids and executions meet often.
class RandomMessages {
 public:
  explicit RandomMessages(unsigned seed) : Random(seed) {}

  std::string Next() {
    const unsigned kind = Below(24);
    if (kind == 0) return WireMessage(30022, "");
    if (kind == 1) return WireMessage(kReopenDownload, "");
    if (kind <= 3) return WireMessage(8112, "");
    return kind <= 9 ? Amendment() : Trade();
  }

 private:
  unsigned Below(unsigned end) { return static_cast<unsigned>(Random() >> 8) % end; }
  std::string Maybe(const std::string& field) { return Below(3) == 0 ? field : ""; }
  std::uint32_t Id() { return Below(14) - 2; }
  std::string Short(int tag) { return WireText(tag, std::string(1 + Below(3), static_cast<char>('a' + Below(4)))); }
  std::string Number(int tag) { return WireU32(tag, Below(4)); }

  std::string Trade() {
    return WireMessage(8111 + 990 * Below(2), WireU32(20008, Id()) + Maybe(Short(55100)) + Short(55101) +
                                                  Maybe(Short(55001)) + (Below(30) == 0 ? "" : WireTerminator()) +
                                                  Number(20014) + WireU8(101, Below(3)) + Maybe(Number(20084)) +
                                                  Maybe(Short(55102)) + Maybe(WireDouble(40002, Below(9) / 4.0)));
  }
  std::string Amendment() {
    return WireMessage(9112, WireU32(20008, Id()) + Maybe(Number(20084)) + Maybe(Number(20103)) + Maybe(Number(20104)) +
                                 Maybe(Short(55100)) + Maybe(Short(55001)) + Maybe(Short(55102)) +
                                 Maybe(WireU8(101, Below(3))) + Maybe(Short(55109)));
  }

  std::minstd_rand Random;
};

TEST(SlowTradeCacheTest, TheTradeCacheAgrees) {
  const std::map<std::string, BookSettings> kBooks[] = {
      {}, {{"A", {}}}, {{"A", {true, 1}}}, {{"A", {true, 2}}, {"B", {}}, {"C", {}}}, {{"A", {false, 1}}, {"B", {true}}},
  };
  for (unsigned seed = 1; seed <= 60; ++seed) {
    RandomMessages messages(seed);
    CachePlayer player(kBooks[seed % std::size(kBooks)]);
    for (int step = 0; step < 300; ++step) {
      ASSERT_EQ(player.PlayBoth(messages.Next(), true), "") << "seed " << seed << ", step " << step;
      player.TakeCalls();
    }
  }
}

}  // namespace

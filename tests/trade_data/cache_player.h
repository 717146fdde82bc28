// CachePlayer: a trade cache with books of a test, fed with wire messages as the terminal feeds it, and the slow cache
// beside it.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/wire_bytes.h"
#include "tests/trade_data/slow_trade_cache.h"
#include "trade_data/cache/trade_cache.h"

inline std::string TradeMessage(std::uint32_t id, std::uint32_t quantity, const std::string& execution,
                                const std::string& more = {}) {
  return WireMessage(
      8111, WireU32(20008, id) + WireText(55101, execution) + WireTerminator() + WireU32(20014, quantity) + more);
}
inline const std::string kDownloadEnd = WireMessage(8112, "");
inline const std::string kClear = WireMessage(30022, "");

class CachePlayer {
 public:
  // Without a folder the daily file is off.
  explicit CachePlayer(const std::map<std::string, BookSettings>& books = {}, std::filesystem::path folder = {});

  // Plays whole messages to both caches, one after the other; anything else ends it. Empty, or how they differ in the
  // end or, with compareEach, after a message.
  std::string Play(std::string_view messages, bool compareEach = false);

  // The state as text: trades as id:quantity/product, a trade stored under another id as key(id); numbers as their
  // distance below 0x7FFFFFFF.
  std::string State();
  // What the books were told so far is compared no more.
  void ForgetCalls() { Told.clear(), Slow.Told.clear(); }

  TradeCache& Cache() { return *Fast; }

 private:
  CacheState Look();
  std::string Difference();

  CQORTradeImpl Decoder;
  std::vector<std::unique_ptr<TradeBook>> Owned;
  TradeBooks Books;
  std::vector<BookCall> Told;
  std::unique_ptr<TradeCache> Fast;
  SlowTradeCache Slow;
  std::map<std::int32_t, const TradeRecord*> Addresses;  // of live trades
};

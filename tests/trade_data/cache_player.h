// CachePlayer: a trade cache with books of a test, fed with wire messages as the terminal feeds it.
// Not a second set of rules: that is SlowTradeCache, which a player can drive along.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/trade_data/book_calls.h"
#include "tests/trade_data/slow_trade_cache.h"
#include "trade_data/cache/trade_cache.h"

// A number that no handler takes. Here it opens the download again with the trades still there, which no message does
// and the rules of the merge provide for.
inline constexpr unsigned kReopenDownload = 8110;

// A book that writes down what it is told.
class FakeBook : public TradeBook {
 public:
  FakeBook(std::string key, BookSettings settings, BookCalls& told)
      : Key(std::move(key)), Settings(settings), Told(told) {}
  bool HasGrid() const override { return Settings.HasGrid; }
  bool HasWindow() const override { return Settings.HasWindow; }
  bool FilterActive() const override { return Settings.FilterActive; }
  void MakeRoom(std::size_t) override {}
  bool AdmitRow(TradeRecord& record) override;
  void UpdateTotals(const TradeRecord& record) override { Told.push_back(CallWith(Key, "totals", record)); }
  void RefilterRow(TradeRecord& record) override { Told.push_back(CallWith(Key, "refilter", record)); }
  void CopyAllRows(const TradeNumberMap& trades, std::int32_t nextTradeNumber) override;
  void ClearRows() override { Told.push_back({Key + " clear", ""}); }

 private:
  std::string Key;
  BookSettings Settings;
  BookCalls& Told;
};

class CachePlayer {
 public:
  // Without a folder the daily file is off.
  explicit CachePlayer(const std::map<std::string, BookSettings>& books = {}, std::filesystem::path folder = {});

  // Plays whole messages, one behind the other; bytes that are none end it.
  void Play(std::string_view messages);
  // The same with the slow cache alongside: empty, or the first difference after any message.
  std::string PlayBoth(std::string_view messages, bool compareEach);

  // The state to be read: trades as id:quantity/product, a trade stored under another id as key(id); numbers as their
  // distance below 0x7FFFFFFF; what the books were told since the last time.
  std::string State() const;
  std::string TakeCalls();

  TradeCache& Cache() { return *Fast; }

 private:
  std::string Difference() const;
  template <typename Handler>
  void EachMessage(std::string_view messages, Handler handle);

  CQORTradeImpl Decoder;
  std::vector<std::unique_ptr<FakeBook>> Owned;
  TradeBooks Books;
  BookCalls Told;
  std::unique_ptr<TradeCache> Fast;
  SlowTradeCache Slow;
};

// CachePlayer: a trade cache with books of a test, fed with wire messages as the terminal feeds it, alone or with the
// slow cache beside it.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/trade_data/book_calls.h"
#include "tests/trade_data/slow_trade_cache.h"
#include "trade_data/cache/trade_cache.h"

// A book that records its calls.
class FakeBook : public TradeBook {
 public:
  FakeBook(std::string key, BookSettings settings, BookCalls& told)
      : Key(std::move(key)), Settings(settings), Told(told) {}
  bool FilterBarActive() const override { return Settings.FilterActive; }
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

  // Plays whole messages, one after the other; anything else ends it.
  void Play(std::string_view messages);
  // The same with the slow cache: empty, or the first difference.
  std::string PlayBoth(std::string_view messages, bool compareEach);

  // The state as text: trades as id:quantity/product, a trade stored under another id as key(id); numbers as their
  // distance below 0x7FFFFFFF; what the books were told since the last call.
  std::string State() const;
  std::string TakeCalls();

  TradeCache& Cache() { return *Fast; }

 private:
  std::string Difference();
  template <typename Handler>
  void EachMessage(std::string_view messages, Handler handle);

  CQORTradeImpl Decoder;
  std::vector<std::unique_ptr<FakeBook>> Owned;
  TradeBooks Books;
  BookCalls Told;
  std::unique_ptr<TradeCache> Fast;
  SlowTradeCache Slow;
};

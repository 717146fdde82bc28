// SlowTradeCache: the rules of the trade cache on ordered maps of whole records, with its own decoder. It shares only
// the record with the cache and is compared with it. Not fast.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tests/trade_data/book_calls.h"
#include "trade_data/records/trade_record.h"

// A number that no handler takes. Here it opens the download again while the trades stay, which no message does and
// which the rules of the merge allow for.
inline constexpr unsigned kReopenDownload = 8110;

// The record of a trade message's body; nothing is fetched for its key.
TradeRecord SlowDecodeTrade(std::string_view body);

class SlowTradeCache {
 public:
  using Trades = std::map<std::int32_t, TradeRecord>;

  explicit SlowTradeCache(std::map<std::string, BookSettings> books) : Books(std::move(books)) {}

  // The body is what follows the message number.
  void Handle(unsigned number, std::string_view body);

  Trades Pending, Live;
  std::vector<std::int32_t> Rows;         // the keys of numbered trades, oldest number first
  std::int32_t FirstNumber = 0x7FFFFFFF;  // of the first row; each later row is one below
  std::set<std::string> KnownExecutions;
  bool DownloadComplete = false;
  bool GridsRefreshed = false;
  BookCalls Told;

  std::int32_t NumberOfRow(std::size_t row) const { return FirstNumber - static_cast<std::int32_t>(row); }

 private:
  void Trade(const TradeRecord& record);
  void EndDownload();
  void Clear();
  void Amend(std::string_view body);
  void AmendUnknown(std::int32_t tradeId);
  void Merge();
  void TellBooks(const TradeRecord& record);

  std::map<std::string, BookSettings> Books;
  TradeRecord AmendRecord{};
  TradeRecord AmendCopy{};
};

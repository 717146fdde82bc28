// SlowTradeCache: the rules of the trade cache on ordered maps of whole records, with its own decoder. It shares only
// the record with the cache and is compared with it. Not fast.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "foundations/byte_words.h"
#include "trade_data/records/trade_record.h"

// A number that no handler takes. Here it opens the download again while the trades stay, which no message does and
// which the rules of the merge allow for.
inline constexpr unsigned kReopenDownload = 8110;

struct BookSettings {
  bool FilterActive = false;
  int RefusedSide = -1;  // records of this side do not enter
};

// Book key, call and trade, to be read, and the bytes of the records handed over.
using BookCall = std::pair<std::string, std::string>;

inline BookCall CallWith(const std::string& book, const char* call, const TradeRecord& record) {
  return {book + " " + call + " " + std::to_string(TradeIdOf(record)), BytesOfValue(record)};
}

inline bool operator==(const TradeRecord& left, const TradeRecord& right) {
  return BytesOfValue(left) == BytesOfValue(right);
}

// What a cache holds and has told.
struct CacheState {
  std::map<std::int32_t, TradeRecord> Live, Pending;
  std::map<std::int32_t, std::int32_t> Rows;  // the keys of numbered trades, by number
  std::int32_t NextNumber = 0x7FFFFFFF;
  bool DownloadComplete = false;
  bool GridsRefreshed = false;
  std::vector<BookCall> Told;
  bool operator==(const CacheState&) const = default;
};

// The record of a trade message's body; nothing is fetched for its key.
TradeRecord SlowDecodeTrade(std::string_view body);

class SlowTradeCache : public CacheState {
 public:
  explicit SlowTradeCache(std::map<std::string, BookSettings> books) : Books(std::move(books)) {}

  // The body is what follows the message number.
  void Handle(unsigned number, std::string_view body);

  std::set<std::string> KnownExecutions;

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

// SlowTradeCache: the rules of the trade cache once more, on ordered maps of whole records and with a decoder of its
// own. It shares nothing with the cache but the record, and is there to be compared with it. Not fast.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include "tests/trade_data/book_calls.h"
#include "trade_data/records/trade_record.h"

// The record of a trade message's body; the key section's terminator fetches nothing.
TradeRecord SlowDecodeTrade(std::string_view body);

class SlowTradeCache {
 public:
  using Trades = std::map<std::string, std::map<std::int32_t, TradeRecord>>;

  // Each takes the fields behind the message number.
  void OnTrade(std::string_view body);
  void OnTradeAmend(std::string_view body);
  void OnDownloadEnd();
  void OnClearTrades();

  std::int32_t NextTradeNumber = 0x7FFFFFFF;
  Trades PendingTrades;
  Trades LiveTrades;
  std::map<std::int32_t, TradeRecord*> TradeNumbers;
  std::set<std::string> KnownExecutions;
  bool DownloadComplete = false;
  bool GridsRefreshed = false;
  std::map<std::string, BookSettings> Books;
  BookCalls Told;

 private:
  void GiveNumber(TradeRecord& stored);
  void TellBooks(const TradeRecord& record);
  void MergePending();
  void AmendUnknown(std::int32_t tradeId, std::uint32_t productType, std::uint32_t addQuantity);
  void AmendKnown(TradeRecord& stored, std::uint32_t productType, std::uint32_t newQuantity);

  TradeRecord AmendRecord{};
  TradeRecord AmendCopy{};
};

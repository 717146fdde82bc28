// TradeCache: what the plug-in knows of the day's trades, fed by messages 8111, 9101, 9112, 8112 and 30022 alone. There
// is no lock on anything here: the handlers, and whatever walks the trades, come one at a time on the terminal's
// calling thread.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>

#include "host_link/messages/packet_reader.h"
#include "trade_data/cache/execution_set.h"
#include "trade_data/cache/record_pool.h"
#include "trade_data/cache/trade_map.h"
#include "trade_data/daily_file/daily_file.h"
#include "trade_data/records/trade_impl.h"
#include "trade_data/records/trade_record.h"

// TradeBook: what the trade cache tells one open book. The windows implement it; the cache knows nothing else of them.
// Records stay at their addresses until ClearRows.
class TradeBook {
 public:
  virtual ~TradeBook() = default;

  virtual bool HasGrid() const = 0;
  virtual bool HasWindow() const = 0;
  virtual bool FilterActive() const = 0;

  // The next rows, so many of them, enter without taking memory: a trade reaches all books or fails before any.
  virtual void MakeRoom(std::size_t rows) = 0;
  // Offers a record; true when it entered the book.
  virtual bool AdmitRow(TradeRecord& record) = 0;
  // Moves the summary line by a record that has just entered.
  virtual void UpdateTotals(const TradeRecord& record) = 0;
  virtual void RefilterRow(TradeRecord& record) = 0;
  // Takes all numbered trades as rows; later ones go on from the next number.
  virtual void CopyAllRows(const TradeNumberMap& trades, std::int32_t nextTradeNumber) = 0;
  virtual void ClearRows() = 0;
};

// The books that take part in trades, refresh and properties, by book key.
using TradeBooks = std::map<std::string, TradeBook*>;

// By server name. One server exists, "Default".
using ServerTrades = std::map<std::string, TradeMap, std::less<>>;

// Promises: a trade that comes in costs the same however many there are; records in LiveTrades stay at their addresses
// until OnClearTrades; a trade's number is never given twice but where a merge takes it back. When memory runs out in a
// message, std::bad_alloc leaves the handler and the same message, sent again, has its whole effect: trades and
// amendments ask for all their memory before they change anything, and what the end of a download has done by then
// does no harm twice.
// Works with one record a trade, decoded into the place where it stays: the pending and the live map hold references,
// and the merge moves those.
class TradeCache {
 public:
  TradeCache(CQORTradeImpl& decoder, const TradeBooks& books, std::filesystem::path workingFolder);

  void OnTrade(CQORPacketReader& reader);
  void OnTradeAmend(CQORPacketReader& reader);
  void OnDownloadEnd();
  void OnClearTrades();

  const TradeMap* LiveTradesOf(std::string_view server) const noexcept;

  std::int32_t NextTradeNumber = 0x7FFFFFFF;  // the next local number; only falls, and is never reset
  ServerTrades PendingTrades;                 // what comes before the end of the download
  ServerTrades LiveTrades;                    // the trades of record
  TradeNumberMap TradeNumbers;                // local number to live trade; the lowest is the newest
  ExecutionSet KnownExecutions;
  bool DownloadComplete = false;
  bool AutoTradeWriteCSV = true;
  std::string ServerName = "Default";
  bool GridsRefreshed = false;  // false after a change that the refresh callback has not painted yet
  DailyFile AutoFile;

 private:
  // What message 9112 is decoded into: the record that earlier amendments left, and four numbers of this one.
  struct Amendment {
    TradeRecord AmendRecord;
    std::uint32_t TradeId;
    std::uint32_t ProductType;
    std::uint32_t NewQuantity;
    std::uint32_t AddQuantity;
  };
  struct AmendmentFields;

  struct Stored {
    TradeRecord* Record;
    bool IsNew;
  };

  TradeMap& DefaultPending() { return PendingTrades[kDefaultServer]; }
  // Memory for what follows, all that can fail of it.
  void MakeRoomForTrade(TradeMap& trades);
  void MakeRoomForRows(std::size_t rowsOfEachBook);
  void MakeRoomForMerge(std::size_t added);
  Stored StoreSpare(TradeMap& trades, std::int32_t tradeId);
  Stored StoreCopy(TradeMap& trades, std::int32_t tradeId, const TradeRecord& record);
  void ShowTrade(const Stored& trade);
  void GiveNextNumber(TradeRecord* record);
  void TellBooks(TradeRecord& record);
  void MergePending();
  void MergeTrade(TradeMap& live, std::int32_t tradeId, TradeRecord* record);
  void WriteTradeLine(const TradeRecord& record);
  void AmendUnknown();
  void AmendUnknownInBooks();
  void AmendKnown(TradeRecord& stored);

  static inline const std::string kDefaultServer = "Default";

  CQORTradeImpl& Decoder;
  const TradeBooks& BooksByKey;
  std::filesystem::path WorkingFolder;
  RecordPool Records;
  // Never cleared: what an amendment does not carry stays as an earlier one left it. Books may hold a reference to
  // AmendCopy.
  Amendment Amend{};
  TradeRecord AmendCopy{};
};

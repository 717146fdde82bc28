// TradeCache: the day's trades, changed only by messages 8111, 9101, 9112, 8112 and 30022. It has no lock: handlers,
// and all that reads the trades, run one at a time on the thread that the terminal calls from.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>

#include "host_link/messages/packet_reader.h"
#include "trade_data/cache/execution_set.h"
#include "trade_data/cache/trade_map.h"
#include "trade_data/daily_file/daily_file.h"
#include "trade_data/records/trade_impl.h"
#include "trade_data/records/trade_record.h"

// TradeBook: what the trade cache tells one open book. The windows implement it; the cache knows nothing else of them.
// Records stay at their addresses until ClearRows.
class TradeBook {
 public:
  virtual ~TradeBook() = default;

  virtual bool FilterBarActive() const = 0;

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

// A trade costs O(1). Records in LiveTrades stay at their addresses until OnClearTrades. A number is used once, unless
// a merge takes it back. After std::bad_alloc the same message can be sent again and has its whole effect: trades and
// amendments allocate before they change anything, and the end of a download can be repeated.
//
// One record per trade, decoded where it stays; the pending and the live map refer to it, and the merge moves the
// references.
class TradeCache {
 public:
  TradeCache(CQORTradeImpl& decoder, const TradeBooks& books, std::filesystem::path workingFolder);

  void OnTrade(CQORPacketReader& reader);
  void OnTradeAmend(CQORPacketReader& reader);
  void OnDownloadEnd();
  void OnClearTrades();

  const TradeMap* LiveTradesOf(std::string_view server) const noexcept;

  std::int32_t NextTradeNumber = 0x7FFFFFFF;  // the next local number; only falls, and is never reset
  ServerTrades PendingTrades;                 // received before the end of the download
  ServerTrades LiveTrades;                    // the trades of record
  TradeNumberMap TradeNumbers;                // local number to live trade; the lowest is the newest
  ExecutionSet KnownExecutions;
  bool DownloadComplete = false;
  bool AutoTradeWriteCSV = true;
  std::string ServerName = "Default";
  bool GridsRefreshed = false;  // false after a change until the refresh callback paints it
  DailyFile AutoFile;

 private:
  // Message 9112 is decoded into this: the record that earlier amendments left, and four numbers.
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
  // Allocates all memory of the steps that follow.
  void MakeRoomForTrade(TradeMap& trades);
  void MakeRoomForRows(std::size_t rowsOfEachBook);
  void MakeRoomForMerge(std::size_t added);
  Stored StoreSpare(TradeMap& trades, std::int32_t tradeId);
  Stored StoreCopy(TradeMap& trades, std::int32_t tradeId, const TradeRecord& record);
  void ShowTrade(const Stored& trade);
  void GiveNextNumber(TradeRecord* record);
  void TellBooks(TradeRecord& record);
  void ReloadAllBooks();
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
  // Intentional: never cleared; fields that an amendment lacks keep the values of earlier ones. Books may refer to
  // AmendCopy.
  Amendment Amend{};
  TradeRecord AmendCopy{};
};

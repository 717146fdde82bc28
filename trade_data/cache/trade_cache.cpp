#include "trade_data/cache/trade_cache.h"

#include "foundations/date_time.h"
#include "host_link/messages/message_table.h"
#include "platform/locale.h"

TradeCache::TradeCache(CQORTradeImpl& decoder, const TradeBooks& books, std::filesystem::path workingFolder)
    : Decoder(decoder), BooksByKey(books), WorkingFolder(std::move(workingFolder)) {}

const TradeMap* TradeCache::LiveTradesOf(std::string_view server) const noexcept {
  const auto found = LiveTrades.find(server);
  return found == LiveTrades.end() ? nullptr : &found->second;
}

void TradeCache::OnTrade(CQORPacketReader& reader) {
  TradeRecord& incoming = Records.Spare();
  Decoder.DecodeKeySection(reader, incoming);
  // The table loads the key's place while the body is decoded.
  const ExecutionKey key(incoming.ExchangeOrderNo, incoming.ExchangeTradeID);
  KnownExecutions.Prefetch(key);
  Decoder.DecodeBody(reader, incoming);
  if (KnownExecutions.Contains(key)) return;
  TradeMap& trades = DownloadComplete ? LiveTrades[ServerName] : DefaultPending();
  MakeRoomForTrade(trades);
  KnownExecutions.Insert(key);
  const Stored trade = StoreSpare(trades, TradeIdOf(incoming));
  if (DownloadComplete) ShowTrade(trade);
  WriteTradeLine(*trade.Record);
}

void TradeCache::MakeRoomForTrade(TradeMap& trades) {
  KnownExecutions.MakeRoom();
  trades.MakeRoom(1);
  if (!DownloadComplete) return;
  TradeNumbers.MakeRoom(1);
  MakeRoomForRows(1);
}

void TradeCache::MakeRoomForRows(std::size_t rowsOfEachBook) {
  for (const auto& [key, book] : BooksByKey) book->MakeRoom(rowsOfEachBook);
}

// The spare record becomes the trade of that id, or is copied to the existing one.
TradeCache::Stored TradeCache::StoreSpare(TradeMap& trades, std::int32_t tradeId) {
  if (TradeRecord* known = trades.Find(tradeId); known != nullptr) {
    *known = *Records.PeekSpare();
    return {known, false};
  }
  TradeRecord* record = Records.Keep();
  trades.Insert(tradeId, record);
  return {record, true};
}

TradeCache::Stored TradeCache::StoreCopy(TradeMap& trades, std::int32_t tradeId, const TradeRecord& record) {
  if (TradeRecord* known = trades.Find(tradeId); known != nullptr) {
    *known = record;
    return {known, false};
  }
  Records.Spare() = record;
  return StoreSpare(trades, tradeId);
}

// A known trade keeps its number, and books are not told: their rows refer to the record that has changed.
void TradeCache::ShowTrade(const Stored& trade) {
  if (trade.IsNew) {
    GiveNextNumber(trade.Record);
    TellBooks(*trade.Record);
  }
  GridsRefreshed = false;
}

void TradeCache::GiveNextNumber(TradeRecord* record) {
  TradeNumbers.Insert(NextTradeNumber, record);
  --NextTradeNumber;
}

void TradeCache::TellBooks(TradeRecord& record) {
  for (const auto& [key, book] : BooksByKey)
    if (book->AdmitRow(record)) book->UpdateTotals(record);
}

// Intentional: filtered books take all trades too, until message 30020 or a change of their state.
void TradeCache::ReloadAllBooks() {
  for (const auto& [key, book] : BooksByKey) book->CopyAllRows(TradeNumbers, NextTradeNumber);
}

// The daily file comes last because it is opened once; the steps before it can be repeated.
void TradeCache::OnDownloadEnd() {
  DownloadComplete = true;
  MergePending();
  ReloadAllBooks();
  if (AutoTradeWriteCSV) {
    AutoFile.OpenDailyFile(WorkingFolder, FormatTimeText(CurrentInstant(), "yyyyMMdd", false), ServerName);
    for (const auto& [server, trades] : LiveTrades)
      for (const TradeMap::Entry trade : trades) AutoFile.WriteTradeLine(*trade.Record, ServerName);
    AutoFile.Flush();
  }
  GridsRefreshed = false;
}

void TradeCache::MakeRoomForMerge(std::size_t added) {
  std::size_t trades = added;
  for (const auto& [server, pending] : PendingTrades) {
    LiveTrades[server].MakeRoom(pending.Size() + added);
    trades += pending.Size();
  }
  TradeNumbers.MakeRoom(trades);
}

void TradeCache::MergePending() {
  MakeRoomForMerge(0);
  for (const auto& [server, pending] : PendingTrades) {
    TradeMap& live = LiveTrades[server];
    for (const TradeMap::Entry trade : pending) MergeTrade(live, trade.Id, trade.Record);
    live.DropRoom();
  }
  PendingTrades.clear();
}

void TradeCache::MergeTrade(TradeMap& live, std::int32_t tradeId, TradeRecord* record) {
  if (TradeRecord* known = live.Find(tradeId); known != nullptr) {
    *known = *record;
    Records.GiveBack(record);
    return;
  }
  live.Insert(tradeId, record);
  // Intentional: newer trades lose their numbers to an older one, get no others, and stay in LiveTrades without a row.
  while (!TradeNumbers.Empty() && TradeIdOf(*TradeNumbers.LowestRecord()) > tradeId) {
    TradeNumbers.RemoveLowest();
    ++NextTradeNumber;
  }
  GiveNextNumber(record);
}

void TradeCache::OnClearTrades() {
  TradeNumbers.Clear();
  PendingTrades.clear();
  LiveTrades.clear();
  KnownExecutions.Clear();
  DownloadComplete = false;
  for (const auto& [key, book] : BooksByKey) book->ClearRows();
  // Last, because books refer to records until now.
  Records.Clear();
}

void TradeCache::WriteTradeLine(const TradeRecord& record) {
  if (!AutoTradeWriteCSV) return;
  AutoFile.WriteTradeLine(record, ServerName);
  // Other programs read the file trade by trade.
  if (DownloadComplete) AutoFile.Flush();
}

// Message 9112: an amendment changes a known trade or adds one.
struct TradeCache::AmendmentFields {
  static constexpr WireField kFields[] = {
      {101, Field::U8, offsetof(TradeRecord, Side)},
      {20008, Field::U32, offsetof(Amendment, TradeId)},
      {20084, Field::U32, offsetof(Amendment, ProductType)},
      {20103, Field::U32, offsetof(Amendment, NewQuantity)},
      {20104, Field::U32, offsetof(Amendment, AddQuantity)},
      {55001, Field::Text, offsetof(TradeRecord, UserID), 20},
      {55010, Field::Text, offsetof(TradeRecord, Exchange), 48},
      {55012, Field::Text, offsetof(TradeRecord, CTCLID), 20},
      {55018, Field::Text, offsetof(TradeRecord, ManagerID), 20},
      {55100, Field::Text, offsetof(TradeRecord, ExchangeOrderNo), 32},
      {55102, Field::Text, offsetof(TradeRecord, ClientID), 20},
      {55104, Field::Text, offsetof(TradeRecord, SecurityID), 48},
      {55109, Field::Text, offsetof(TradeRecord, ReferenceText), 64},
      {55131, Field::Text, offsetof(TradeRecord, MemberID), 20},
  };
  static_assert(FieldsFit(kFields, sizeof(Amendment)) && offsetof(Amendment, AmendRecord) == 0);
  static_assert(ReadsSection(9112, 0, kFields));
  static constexpr FieldIndex kIndex{kFields};
};

void TradeCache::OnTradeAmend(CQORPacketReader& reader) {
  Amend.TradeId = Amend.ProductType = Amend.NewQuantity = Amend.AddQuantity = 0;
  ReadFields(reader, AmendmentFields::kFields, AmendmentFields::kIndex, &Amend);
  AmendCopy = Amend.AmendRecord;
  const TradeMap* live = LiveTradesOf(ServerName);
  if (live == nullptr) return;
  if (TradeRecord* stored = live->Find(static_cast<std::int32_t>(Amend.TradeId)); stored != nullptr)
    AmendKnown(*stored);
  else if (Amend.AddQuantity != 0)
    AmendUnknown();
}

void TradeCache::AmendUnknown() {
  AmendCopy.VELDTradeID = Amend.TradeId;
  AmendCopy.ProductType = Amend.ProductType;
  AmendCopy.Quantity = Amend.AddQuantity;
  const ExecutionKey key(AmendCopy.ExchangeOrderNo, Amend.AmendRecord.ExchangeTradeID);
  if (KnownExecutions.Contains(key)) return;
  Records.Spare();
  // A book may take the trade once for itself and once when it is stored for another book.
  MakeRoomForTrade(DownloadComplete ? LiveTrades[ServerName] : DefaultPending());
  MakeRoomForRows(2);
  KnownExecutions.Insert(key);
  // Intentional: during the download AmendRecord is stored, without the id, product and quantity from above.
  if (DownloadComplete)
    AmendUnknownInBooks();
  else
    StoreCopy(DefaultPending(), static_cast<std::int32_t>(Amend.TradeId), Amend.AmendRecord);
  WriteTradeLine(Amend.AmendRecord);
}

// The first book without a filter stores the trade; without such a book it is not stored.
void TradeCache::AmendUnknownInBooks() {
  for (const auto& [key, book] : BooksByKey) {
    if (book->FilterBarActive())
      book->RefilterRow(AmendCopy);
    else
      ShowTrade(StoreCopy(LiveTrades[ServerName], static_cast<std::int32_t>(Amend.TradeId), AmendCopy));
    GridsRefreshed = false;
  }
}

void TradeCache::AmendKnown(TradeRecord& stored) {
  // Intentional: a changed quantity is told once per open book, so each book gets the trade that many times.
  const std::size_t tellings = Amend.NewQuantity != 0 ? BooksByKey.size() : 1;
  Records.Spare();
  DefaultPending().MakeRoom(1);
  MakeRoomForMerge(1);
  MakeRoomForRows(tellings);
  if (Amend.NewQuantity != 0) stored.Quantity = Amend.NewQuantity;
  stored.ProductType = Amend.ProductType;
  Amend.AmendRecord = stored;
  for (std::size_t i = 0; i < tellings; ++i) TellBooks(stored);
  StoreCopy(DefaultPending(), TradeIdOf(Amend.AmendRecord), Amend.AmendRecord);
  MergePending();
  GridsRefreshed = false;
  WriteTradeLine(Amend.AmendRecord);
}

// Message 9112: an amendment changes a known trade, or adds one. Its steps are kept as they are, oddities included.
#include "trade_data/trade_cache.h"
#include "trade_data/trade_fields.h"

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
  static constexpr FieldIndex kIndex{kFields};
};

void TradeCache::OnTradeAmend(CQORPacketReader& reader) {
  Amend.TradeId = Amend.ProductType = Amend.NewQuantity = Amend.AddQuantity = 0;
  ReadFields(reader, AmendmentFields::kFields, AmendmentFields::kIndex, reinterpret_cast<std::uint8_t*>(&Amend));
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
  // Each book may take the trade for itself, and once more when another has it stored.
  MakeRoomForTrade(DownloadComplete ? LiveTrades[ServerName] : DefaultPending());
  MakeRoomForRows(2);
  KnownExecutions.Insert(key);
  // In the download it is AmendRecord that waits, without the id, product and quantity set above: meant so.
  if (DownloadComplete)
    AmendUnknownInBooks();
  else
    StoreCopy(DefaultPending(), static_cast<std::int32_t>(Amend.TradeId), Amend.AmendRecord);
  WriteTradeLine(Amend.AmendRecord);
}

// The trade is stored on behalf of the first book without a filter; with no such book it is not stored at all.
void TradeCache::AmendUnknownInBooks() {
  for (const auto& [key, book] : BooksByKey) {
    if (book->HasGrid() && book->FilterActive())
      book->RefilterRow(AmendCopy);
    else
      ShowTrade(StoreCopy(LiveTrades[ServerName], static_cast<std::int32_t>(Amend.TradeId), AmendCopy));
    GridsRefreshed = false;
  }
}

void TradeCache::AmendKnown(TradeRecord& stored) {
  // A changed quantity is told once for every open book, so that each book sees the trade that many times.
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

#include "tests/trade_data/slow_trade_cache.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace {

class SlowReader {
 public:
  explicit SlowReader(std::string_view bytes) : Bytes(bytes) {}

  // The next field's tag, -1 where there is none.
  int NextTag() {
    const std::size_t mark = Bytes.find('#');
    Bytes.remove_prefix(mark == std::string_view::npos ? Bytes.size() : mark + 1);
    return Bytes.size() < 2 ? -1 : TakeU16();
  }
  void TakeNumber(char* to, std::size_t width) {
    if (Bytes.size() < width) return;
    std::copy_n(Bytes.data(), width, to);
    Bytes.remove_prefix(width);
  }
  void TakeText(char* to, std::size_t limit) {
    if (Bytes.size() < 2) return;
    const std::size_t count = std::min<std::size_t>(static_cast<std::size_t>(TakeU16()), limit);
    if (Bytes.size() < count) return;
    std::copy_n(Bytes.data(), count, to);
    if (count < limit) to[count] = '\0';
    Bytes.remove_prefix(count);
  }
  void Skip(int tag) {
    std::size_t width = 0;
    if (tag >= 1 && tag <= 10000) width = 1;
    if (tag >= 10001 && tag <= 20000) width = 2;
    if (tag >= 20001 && tag <= 30000) width = 4;
    if (tag >= 30001 && tag <= 35000) width = 8;
    if (tag >= 35001 && tag <= 40000) width = 4;
    if (tag >= 40001 && tag <= 45000) width = 8;
    if (tag >= 45001 && tag <= 50000) width = 16;
    if (tag >= 50001 && tag <= 55000) width = 8;
    if (tag >= 55001 && tag <= 65000 && Bytes.size() >= 2) width = static_cast<std::size_t>(TakeU16());
    if (width <= Bytes.size()) Bytes.remove_prefix(width);
  }

 private:
  int TakeU16() {
    const int value = static_cast<unsigned char>(Bytes[0]) + 256 * static_cast<unsigned char>(Bytes[1]);
    Bytes.remove_prefix(2);
    return value;
  }
  std::string_view Bytes;
};

struct Place {
  std::size_t Offset, Size;
};
using Places = std::map<int, Place>;

#define PLACE(field) \
  { offsetof(TradeRecord, field), sizeof(TradeRecord::field) }

const Places kKeyPlaces = {{55001, PLACE(UserID)},
                           {20008, PLACE(VELDTradeID)},
                           {20009, PLACE(VELDOrderID)},
                           {55101, PLACE(ExchangeTradeID)},
                           {55100, PLACE(ExchangeOrderNo)}};

const Places kBodyPlaces = {{55018, PLACE(ManagerID)},
                            {55118, PLACE(ExchangeTradeTime)},
                            {20011, PLACE(OrderID)},
                            {55116, PLACE(OrderTime)},
                            {55117, PLACE(ExchangeOrderTime)},
                            {55010, PLACE(Exchange)},
                            {55104, PLACE(SecurityID)},
                            {55105, PLACE(SecurityType)},
                            {55103, PLACE(Symbol)},
                            {55143, PLACE(ExpiryDate)},
                            {55106, PLACE(OptionType)},
                            {40004, PLACE(StrikePrice)},
                            {55107, PLACE(Text55107)},
                            {101, PLACE(Side)},
                            {102, PLACE(OrderType)},
                            {20014, PLACE(Quantity)},
                            {20013, PLACE(PendingQuantity)},
                            {20036, PLACE(Value20036)},
                            {40002, PLACE(Price)},
                            {20084, PLACE(ProductType)},
                            {115, PLACE(OpenClose)},
                            {55102, PLACE(ClientID)},
                            {55131, PLACE(MemberID)},
                            {55012, PLACE(CTCLID)},
                            {55109, PLACE(ReferenceText)},
                            {20083, PLACE(Value20083)},
                            {20068, PLACE(StrategyID)},
                            {20081, PLACE(Value20081)},
                            {20082, PLACE(Value20082)},
                            {55151, PLACE(Text55151)},
                            {40008, PLACE(Multiplier)},
                            {20101, PLACE(Value20101)},
                            {55124, PLACE(TerminalInfo)},
                            {55123, PLACE(Pancard)},
                            {55328, PLACE(AlgoID)},
                            {11115, PLACE(AlgoCategory)},
                            {55329, PLACE(ParticipantID)}};

const Places kAmendPlaces = {{55001, PLACE(UserID)},     {55010, PLACE(Exchange)},        {55012, PLACE(CTCLID)},
                             {55018, PLACE(ManagerID)},  {55100, PLACE(ExchangeOrderNo)}, {55102, PLACE(ClientID)},
                             {55104, PLACE(SecurityID)}, {55109, PLACE(ReferenceText)},   {55131, PLACE(MemberID)},
                             {101, PLACE(Side)}};

#undef PLACE

// False when the tag has no place.
bool TakeField(SlowReader& reader, int tag, const Places& places, TradeRecord& record) {
  const auto found = places.find(tag);
  if (found == places.end()) return false;
  char* to = reinterpret_cast<char*>(&record) + found->second.Offset;
  if (tag > 55000)
    reader.TakeText(to, found->second.Size - 1);
  else
    reader.TakeNumber(to, found->second.Size);
  return true;
}

}  // namespace

TradeRecord SlowDecodeTrade(std::string_view body) {
  TradeRecord record{};
  SlowReader reader(body);
  char dropped[4];
  for (int tag = reader.NextTag(); tag != -1 && tag != 65535; tag = reader.NextTag())
    if (!TakeField(reader, tag, kKeyPlaces, record) && tag == 10002) reader.TakeNumber(dropped, 2);
  for (int tag = reader.NextTag(); tag != -1; tag = reader.NextTag()) {
    if (TakeField(reader, tag, kBodyPlaces, record)) continue;
    if (tag == 20007)
      reader.TakeNumber(dropped, 4);
    else
      reader.Skip(tag);
  }
  if (record.ProductType == 0) record.ProductType = 1;
  return record;
}

void SlowTradeCache::OnTrade(std::string_view body) {
  const TradeRecord record = SlowDecodeTrade(body);
  if (!KnownExecutions.insert(std::string(record.ExchangeOrderNo) + record.ExchangeTradeID).second) return;
  if (!DownloadComplete) {
    PendingTrades["Default"][TradeIdOf(record)] = record;
    return;
  }
  auto& live = LiveTrades["Default"];
  const bool isNew = !live.contains(TradeIdOf(record));
  TradeRecord& stored = live[TradeIdOf(record)];
  stored = record;
  if (isNew) {
    GiveNumber(stored);
    TellBooks(stored);
  }
  GridsRefreshed = false;
}

void SlowTradeCache::GiveNumber(TradeRecord& stored) {
  TradeNumbers[NextTradeNumber] = &stored;
  NextTradeNumber = NextTradeNumber - 1;
}

void SlowTradeCache::TellBooks(const TradeRecord& record) {
  for (const auto& [key, book] : Books) {
    Told.push_back(CallWith(key, "admit", record));
    if (record.Side != book.RefusedSide) Told.push_back(CallWith(key, "totals", record));
  }
}

void SlowTradeCache::OnDownloadEnd() {
  DownloadComplete = true;
  MergePending();
  for (const auto& [key, book] : Books) {
    if (!book.HasGrid || !book.HasWindow) continue;
    BookCall call{key + " copy", ""};
    for (const auto& [number, record] : TradeNumbers) call.Bytes += std::to_string(number) + BytesOfRecord(*record);
    call.Bytes += std::to_string(NextTradeNumber);
    Told.push_back(call);
  }
  GridsRefreshed = false;
}

void SlowTradeCache::MergePending() {
  for (const auto& [server, pending] : PendingTrades) {
    for (const auto& [tradeId, record] : pending) {
      auto& live = LiveTrades[server];
      if (live.contains(tradeId)) {
        live[tradeId] = record;
        continue;
      }
      live[tradeId] = record;
      std::map<std::int32_t, TradeRecord*> displaced;
      while (!TradeNumbers.empty() && TradeIdOf(*TradeNumbers.begin()->second) > tradeId) {
        displaced.insert(*TradeNumbers.begin());
        TradeNumbers.erase(TradeNumbers.begin());
        NextTradeNumber = NextTradeNumber + 1;
      }
      GiveNumber(live[tradeId]);
    }
  }
  PendingTrades.clear();
}

void SlowTradeCache::OnTradeAmend(std::string_view body) {
  std::map<int, std::uint32_t> numbers = {{20008, 0}, {20084, 0}, {20103, 0}, {20104, 0}};
  SlowReader reader(body);
  for (int tag = reader.NextTag(); tag != -1; tag = reader.NextTag()) {
    if (const auto number = numbers.find(tag); number != numbers.end())
      reader.TakeNumber(reinterpret_cast<char*>(&number->second), 4);
    else if (!TakeField(reader, tag, kAmendPlaces, AmendRecord))
      reader.Skip(tag);
  }
  AmendCopy = AmendRecord;
  if (!LiveTrades.contains("Default")) return;
  auto& live = LiveTrades["Default"];
  const auto tradeId = static_cast<std::int32_t>(numbers[20008]);
  if (live.contains(tradeId))
    AmendKnown(live[tradeId], numbers[20084], numbers[20103]);
  else if (numbers[20104] != 0)
    AmendUnknown(tradeId, numbers[20084], numbers[20104]);
}

void SlowTradeCache::AmendUnknown(std::int32_t tradeId, std::uint32_t productType, std::uint32_t addQuantity) {
  AmendCopy.VELDTradeID = static_cast<std::uint32_t>(tradeId);
  AmendCopy.ProductType = productType;
  AmendCopy.Quantity = addQuantity;
  if (!KnownExecutions.insert(std::string(AmendCopy.ExchangeOrderNo) + AmendRecord.ExchangeTradeID).second) return;
  if (!DownloadComplete) {
    PendingTrades["Default"][tradeId] = AmendRecord;
    return;
  }
  auto& live = LiveTrades["Default"];
  for (const auto& [key, book] : Books) {
    GridsRefreshed = false;
    if (book.HasGrid && book.FilterActive) {
      Told.push_back(CallWith(key, "refilter", AmendCopy));
    } else if (live.contains(tradeId)) {
      live[tradeId] = AmendCopy;
    } else {
      live[tradeId] = AmendCopy;
      GiveNumber(live[tradeId]);
      TellBooks(live[tradeId]);
    }
  }
}

void SlowTradeCache::AmendKnown(TradeRecord& stored, std::uint32_t productType, std::uint32_t newQuantity) {
  if (newQuantity != 0) stored.Quantity = newQuantity;
  stored.ProductType = productType;
  AmendRecord = stored;
  if (newQuantity == 0) {
    TellBooks(stored);
  } else {
    for (std::size_t i = 0; i < Books.size(); ++i) TellBooks(stored);
  }
  PendingTrades["Default"][TradeIdOf(AmendRecord)] = AmendRecord;
  MergePending();
  GridsRefreshed = false;
}

void SlowTradeCache::OnClearTrades() {
  TradeNumbers.clear();
  PendingTrades.clear();
  LiveTrades.clear();
  KnownExecutions.clear();
  DownloadComplete = false;
  for (const auto& [key, book] : Books)
    if (book.HasGrid) Told.push_back({key + " clear", ""});
}

#include "tests/trade_data/cache_player.h"

#include "tests/trade_data/wire_bytes.h"

namespace {

std::string TradesText(const ServerTrades& servers) {
  std::string text;
  for (const auto& [server, trades] : servers) {
    if (server != "Default") text += " " + server;
    for (const TradeMap::Entry trade : trades) {
      text += " " + std::to_string(trade.Id);
      if (TradeIdOf(*trade.Record) != trade.Id) text += "(" + std::to_string(TradeIdOf(*trade.Record)) + ")";
      text += ":" + std::to_string(trade.Record->Quantity) + "/" + std::to_string(trade.Record->ProductType);
    }
  }
  return text;
}

std::string TradesDifference(const char* what, const ServerTrades& fast, const SlowTradeCache::Trades& slow) {
  auto server = slow.begin();
  for (const auto& [key, trades] : fast) {
    if (server == slow.end() || server->first != key) return std::string(what) + " has another server " + key;
    auto trade = server->second.begin();
    for (const TradeMap::Entry entry : trades) {
      if (trade == server->second.end() || trade->first != entry.Id ||
          BytesOfRecord(trade->second) != BytesOfRecord(*entry.Record) || trades.Find(entry.Id) != entry.Record)
        return std::string(what) + " differs at trade " + std::to_string(entry.Id);
      ++trade;
    }
    if (trade != server->second.end()) return std::string(what) + " lacks trade " + std::to_string(trade->first);
    ++server;
  }
  return server == slow.end() ? "" : std::string(what) + " lacks server " + server->first;
}

void Deliver(TradeCache& cache, CQORPacketReader& reader) {
  switch (reader.MessageNumber) {
    case 8111:
    case 9101:
      return cache.OnTrade(reader);
    case 9112:
      return cache.OnTradeAmend(reader);
    case 8112:
      return cache.OnDownloadEnd();
    case 30022:
      return cache.OnClearTrades();
    case kReopenDownload:
      cache.DownloadComplete = false;
  }
}

void DeliverSlowly(SlowTradeCache& cache, unsigned number, std::string_view body) {
  if (number == 8111 || number == 9101) cache.OnTrade(body);
  if (number == 9112) cache.OnTradeAmend(body);
  if (number == 8112) cache.OnDownloadEnd();
  if (number == 30022) cache.OnClearTrades();
  if (number == kReopenDownload) cache.DownloadComplete = false;
}

}  // namespace

bool FakeBook::AdmitRow(TradeRecord& record) {
  Told.push_back(CallWith(Key, "admit", record));
  return record.Side != Settings.RefusedSide;
}

void FakeBook::CopyAllRows(const TradeNumberMap& trades, std::int32_t nextTradeNumber) {
  BookCall call{Key + " copy", ""};
  for (std::size_t place = trades.Size(); place-- > 0;)
    call.Bytes += std::to_string(trades.NumberAt(place)) + BytesOfRecord(*trades.RecordAt(place));
  call.Bytes += std::to_string(nextTradeNumber);
  Told.push_back(call);
}

CachePlayer::CachePlayer(const std::map<std::string, BookSettings>& books, std::filesystem::path folder) {
  for (const auto& [key, settings] : books)
    Books[key] = Owned.emplace_back(std::make_unique<FakeBook>(key, settings, Told)).get();
  Slow.Books = books;
  const bool writesFile = !folder.empty();
  Fast = std::make_unique<TradeCache>(Decoder, Books, std::move(folder));
  Fast->AutoTradeWriteCSV = writesFile;
}

template <typename Handler>
void CachePlayer::EachMessage(std::string_view messages, Handler handle) {
  for (std::uint16_t consumed = 1; consumed != 0 && !messages.empty();) {
    std::uint16_t needed = 0;
    const ExactBytes bytes(messages.substr(0, 65535));
    CQORPacketReader reader(bytes.Data(), bytes.Size());
    if (reader.ParseHeader(needed, consumed) && !handle(reader)) return;
    messages.remove_prefix(consumed);
  }
}

void CachePlayer::Play(std::string_view messages) {
  EachMessage(messages, [this](CQORPacketReader& reader) {
    Deliver(*Fast, reader);
    return true;
  });
}

std::string CachePlayer::PlayBoth(std::string_view messages, bool compareEach) {
  std::string difference;
  EachMessage(messages, [&](CQORPacketReader& reader) {
    const std::string body(reinterpret_cast<const char*>(reader.Data) + reader.Cursor,
                           static_cast<std::size_t>(reader.End - reader.Cursor));
    Fast->GridsRefreshed = Slow.GridsRefreshed = true;
    Deliver(*Fast, reader);
    DeliverSlowly(Slow, reader.MessageNumber, body);
    if (compareEach || Fast->GridsRefreshed != Slow.GridsRefreshed) difference = Difference();
    return difference.empty();
  });
  return difference.empty() ? Difference() : difference;
}

std::string CachePlayer::Difference() const {
  if (std::string text = TradesDifference("LiveTrades", Fast->LiveTrades, Slow.LiveTrades); !text.empty()) return text;
  if (std::string text = TradesDifference("PendingTrades", Fast->PendingTrades, Slow.PendingTrades); !text.empty())
    return text;
  if (Fast->TradeNumbers.Size() != Slow.TradeNumbers.size()) return "TradeNumbers differ in size";
  std::size_t place = Fast->TradeNumbers.Size();
  for (const auto& [number, record] : Slow.TradeNumbers) {
    --place;
    if (Fast->TradeNumbers.NumberAt(place) != number ||
        BytesOfRecord(*Fast->TradeNumbers.RecordAt(place)) != BytesOfRecord(*record))
      return "TradeNumbers differ at number " + std::to_string(number);
  }
  if (Fast->NextTradeNumber != Slow.NextTradeNumber) return "NextTradeNumber differs";
  if (Fast->KnownExecutions.Size() != Slow.KnownExecutions.size()) return "KnownExecutions differ in size";
  for (const std::string& execution : Slow.KnownExecutions) {
    const std::string front = execution.substr(0, 32);
    if (!Fast->KnownExecutions.Contains({front.c_str(), execution.c_str() + front.size()}))
      return "KnownExecutions lack " + execution;
  }
  if (Fast->DownloadComplete != Slow.DownloadComplete) return "DownloadComplete differs";
  if (Fast->GridsRefreshed != Slow.GridsRefreshed) return "GridsRefreshed differs";
  return Told == Slow.Told ? "" : "the books were told otherwise";
}

std::string CachePlayer::State() const {
  std::string text = "live" + TradesText(Fast->LiveTrades) + ", pending" + TradesText(Fast->PendingTrades) + ", rows";
  for (std::size_t place = 0; place < Fast->TradeNumbers.Size(); ++place)
    text += " " + std::to_string(0x7FFFFFFF - Fast->TradeNumbers.NumberAt(place)) + "=" +
            std::to_string(TradeIdOf(*Fast->TradeNumbers.RecordAt(place)));
  return text + ", next " + std::to_string(0x7FFFFFFF - Fast->NextTradeNumber);
}

std::string CachePlayer::TakeCalls() {
  std::string text;
  for (const BookCall& call : Told) text += (text.empty() ? "" : ", ") + call.Text;
  Told.clear();
  Slow.Told.clear();
  return text;
}

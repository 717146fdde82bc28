#include "tests/trade_data/cache_player.h"

#include "tests/support/wire_bytes.h"

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

// A server without trades is as good as none.
std::string TradesDifference(const char* what, const ServerTrades& servers, const SlowTradeCache::Trades& slow) {
  const auto server = servers.find("Default");
  if (servers.size() > 1 || (server == servers.end() && !slow.empty())) return std::string(what) + " has other servers";
  if (server == servers.end()) return "";
  auto expected = slow.begin();
  for (const TradeMap::Entry trade : server->second) {
    if (expected == slow.end() || expected->first != trade.Id ||
        BytesOfValue(expected->second) != BytesOfValue(*trade.Record) || server->second.Find(trade.Id) != trade.Record)
      return std::string(what) + " differs at trade " + std::to_string(trade.Id);
    ++expected;
  }
  return expected == slow.end() ? "" : std::string(what) + " lacks trade " + std::to_string(expected->first);
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

}  // namespace

bool FakeBook::AdmitRow(TradeRecord& record) {
  Told.push_back(CallWith(Key, "admit", record));
  return record.Side != Settings.RefusedSide;
}

void FakeBook::CopyAllRows(const TradeNumberMap& trades, std::int32_t nextTradeNumber) {
  BookCall call{Key + " copy", ""};
  for (std::size_t place = trades.Size(); place-- > 0;)
    call.Bytes += std::to_string(trades.NumberAt(place)) + BytesOfValue(*trades.RecordAt(place));
  call.Bytes += std::to_string(nextTradeNumber);
  Told.push_back(call);
}

CachePlayer::CachePlayer(const std::map<std::string, BookSettings>& books, std::filesystem::path folder) : Slow(books) {
  for (const auto& [key, settings] : books)
    Books[key] = Owned.emplace_back(std::make_unique<FakeBook>(key, settings, Told)).get();
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
    const std::string body(reader.Data + reader.Cursor, reader.Data + reader.End);
    Fast->GridsRefreshed = Slow.GridsRefreshed = true;
    Deliver(*Fast, reader);
    Slow.Handle(reader.MessageNumber, body);
    if (compareEach || Fast->GridsRefreshed != Slow.GridsRefreshed) difference = Difference();
    return difference.empty();
  });
  return difference.empty() ? Difference() : difference;
}

std::string CachePlayer::Difference() {
  if (std::string text = TradesDifference("LiveTrades", Fast->LiveTrades, Slow.Live); !text.empty()) return text;
  if (std::string text = TradesDifference("PendingTrades", Fast->PendingTrades, Slow.Pending); !text.empty())
    return text;
  if (Fast->TradeNumbers.Size() != Slow.Rows.size()) return "TradeNumbers differ in size";
  for (std::size_t row = 0; row < Slow.Rows.size(); ++row)
    if (Fast->TradeNumbers.NumberAt(row) != Slow.NumberOfRow(row) ||
        BytesOfValue(*Fast->TradeNumbers.RecordAt(row)) != BytesOfValue(Slow.Live[Slow.Rows[row]]))
      return "TradeNumbers differ at row " + std::to_string(row);
  if (Fast->NextTradeNumber != Slow.NumberOfRow(Slow.Rows.size())) return "NextTradeNumber differs";
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

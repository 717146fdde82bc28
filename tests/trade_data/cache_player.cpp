#include "tests/trade_data/cache_player.h"

#include <stdexcept>

#include "tests/trade_data/deliver.h"

namespace {

// A book that records its calls.
class FakeBook : public TradeBook {
 public:
  FakeBook(std::string key, BookSettings settings, std::vector<BookCall>& told)
      : Key(std::move(key)), Settings(settings), Told(told) {}
  bool FilterBarActive() const override { return Settings.FilterActive; }
  void MakeRoom(std::size_t) override {}
  bool AdmitRow(TradeRecord& record) override {
    Told.push_back(CallWith(Key, "admit", record));
    return record.Side != Settings.RefusedSide;
  }
  void UpdateTotals(const TradeRecord& record) override { Told.push_back(CallWith(Key, "totals", record)); }
  void RefilterRow(TradeRecord& record) override { Told.push_back(CallWith(Key, "refilter", record)); }
  void CopyAllRows(const TradeNumberMap& trades, std::int32_t nextTradeNumber) override {
    std::string rows;
    for (std::size_t place = trades.Size(); place-- > 0;)
      rows += std::to_string(trades.NumberAt(place)) + BytesOfValue(*trades.RecordAt(place));
    Told.push_back({Key + " copy", rows + std::to_string(nextTradeNumber)});
  }
  void ClearRows() override { Told.push_back({Key + " clear", ""}); }

 private:
  std::string Key;
  BookSettings Settings;
  std::vector<BookCall>& Told;
};

std::string TextOf(const std::map<std::int32_t, TradeRecord>& trades) {
  std::string text;
  for (const auto& [id, record] : trades) {
    text += " " + std::to_string(id);
    if (TradeIdOf(record) != id) text += "(" + std::to_string(TradeIdOf(record)) + ")";
    text += ":" + std::to_string(record.Quantity) + "/" + std::to_string(record.ProductType);
  }
  return text;
}

std::string TextOf(const CacheState& state) {
  std::string text = "live" + TextOf(state.Live) + ", pending" + TextOf(state.Pending) + ", rows";
  for (auto row = state.Rows.rbegin(); row != state.Rows.rend(); ++row)
    text += " " + std::to_string(0x7FFFFFFF - row->first) + "=" + std::to_string(row->second);
  return text + ", next " + std::to_string(0x7FFFFFFF - state.NextNumber);
}

}  // namespace

CachePlayer::CachePlayer(const std::map<std::string, BookSettings>& books, std::filesystem::path folder) : Slow(books) {
  for (const auto& [key, settings] : books)
    Books[key] = Owned.emplace_back(std::make_unique<FakeBook>(key, settings, Told)).get();
  const bool writesFile = !folder.empty();
  Fast = std::make_unique<TradeCache>(Decoder, Books, std::move(folder));
  Fast->AutoTradeWriteCSV = writesFile;
}

std::string CachePlayer::Play(std::string_view messages, bool compareEach) {
  std::string difference;
  for (std::uint16_t consumed = 1; consumed != 0 && difference.empty(); messages.remove_prefix(consumed)) {
    std::uint16_t needed = 0;
    const ExactBytes bytes(messages.substr(0, 65535));
    CQORPacketReader reader(bytes.Data(), bytes.Size());
    consumed = 0;
    if (messages.empty() || !reader.ParseHeader(needed, consumed)) continue;
    Fast->GridsRefreshed = Slow.GridsRefreshed = true;
    Slow.Handle(reader.MessageNumber, std::string(reader.Data + reader.Cursor, reader.Data + reader.End));
    Deliver(*Fast, reader);
    if (reader.MessageNumber == kReopenDownload) Fast->DownloadComplete = false;
    if (reader.MessageNumber == 30022) Addresses.clear();
    if (compareEach || Fast->GridsRefreshed != Slow.GridsRefreshed) difference = Difference();
  }
  return difference.empty() ? Difference() : difference;
}

// Rows refer to the records of LiveTrades, which do not move.
CacheState CachePlayer::Look() {
  CacheState state{{}, {}, {}, Fast->NextTradeNumber, Fast->DownloadComplete, Fast->GridsRefreshed, Told};
  std::map<const TradeRecord*, std::int32_t> ids;
  for (auto [servers, trades] : {std::pair(&Fast->LiveTrades, &state.Live), {&Fast->PendingTrades, &state.Pending}})
    for (const auto& [server, map] : *servers)
      for (const TradeMap::Entry trade : map) {
        const bool moved =
            servers == &Fast->LiveTrades && Addresses.try_emplace(trade.Id, trade.Record).first->second != trade.Record;
        if (moved || server != "Default" || map.Find(trade.Id) != trade.Record) throw std::logic_error("lost trade");
        trades->emplace(trade.Id, *trade.Record);
        ids[trade.Record] = trade.Id;
      }
  for (std::size_t place = 0; place < Fast->TradeNumbers.Size(); ++place)
    state.Rows[Fast->TradeNumbers.NumberAt(place)] = ids.at(Fast->TradeNumbers.RecordAt(place));
  return state;
}

std::string CachePlayer::Difference() {
  if (Fast->KnownExecutions.Size() != Slow.KnownExecutions.size()) return "KnownExecutions differ in size";
  const CacheState fast = Look();
  return fast == Slow ? "" : TextOf(fast) + "\n  but slowly\n" + TextOf(Slow);
}

std::string CachePlayer::State() {
  return TextOf(Look());
}

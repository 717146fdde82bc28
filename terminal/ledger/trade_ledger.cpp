#include "terminal/ledger/trade_ledger.h"

#include <algorithm>
#include <cstring>

namespace {

std::int32_t Signed(std::uint32_t number) {
  return static_cast<std::int32_t>(number);
}

template <std::size_t Size>
void SetText(char (&text)[Size], std::string_view value) {
  std::memset(text, 0, Size);
  std::memcpy(text, value.data(), std::min(value.size(), Size - 1));
}

template <typename Element>
std::size_t BytesOf(const std::vector<Element>& elements) {
  return elements.capacity() * sizeof(Element);
}

}  // namespace

void TradeLedger::Clear() {
  Live.clear();
  LiveExecutions.clear();
  Pending.clear();
  AllSecurities.clear();
  AllClients.clear();
  Executions.clear();
  Characters.clear();
  for (IndexTable* table : {&ByNumber, &PendingByNumber, &BySecurity, &ByClient, &ByExecution}) table->Clear();
  DownloadComplete = false;
  Rewritten = 0;
  ++Clears;
}

std::optional<std::uint32_t> TradeLedger::FindSecurity(std::string_view exchange, std::string_view securityId) const {
  const std::uint32_t found = BySecurity.Find(IndexTable::HashOf(exchange, securityId), [&](std::uint32_t at) {
    return AllSecurities[at].SecurityID == securityId && AllSecurities[at].Exchange == exchange;
  });
  return found == IndexTable::kNone ? std::nullopt : std::optional(found);
}

std::uint32_t TradeLedger::NumberPlace(std::uint32_t number) const {
  return ByNumber.Find(IndexTable::HashOf(number), [&](std::uint32_t at) { return Live[at].Number == number; });
}

void TradeLedger::OnTradeSent(const TradePrint& print) {
  ByNumber.Prefetch(IndexTable::HashOf(print.Number));
  const ExecutionKey key(print);
  ByExecution.Prefetch(key.Hash);
  const std::int64_t seconds = SecondsOf(print);  // meanwhile
  const auto execution = AddExecution(key);
  if (!execution) return;
  const Entry entry = EntryOf(print, seconds, *execution);
  if (DownloadComplete)
    Enter(entry);
  else
    Hold(entry);
}

// By rising numbers, which the plug-in takes as signed.
void TradeLedger::OnDownloadEndSent() {
  DownloadComplete = true;
  std::ranges::sort(Pending, {}, [](const Entry& entry) { return Signed(entry.Trade.Number); });
  for (const Entry& entry : Pending) Enter(entry);
  Pending = {};
  PendingByNumber.Clear();
}

std::string_view TradeLedger::KeyOf(const Execution& execution) const {
  return std::string_view(Characters)
      .substr(execution.Start, execution.OrderLength + std::size_t{execution.TradeLength});
}

// Intentional: the two texts joined without a separator are the key, as in the plug-in.
TradeLedger::ExecutionKey::ExecutionKey(const TradePrint& print) {
  OrderLength = std::strlen(print.ExchangeOrderNo);
  TradeLength = std::strlen(print.ExchangeTradeID);
  std::memcpy(Characters, print.ExchangeOrderNo, OrderLength);
  std::memcpy(Characters + OrderLength, print.ExchangeTradeID, TradeLength);
  Hash = IndexTable::HashOf(Text());
}

std::optional<std::uint32_t> TradeLedger::AddExecution(const ExecutionKey& key) {
  const auto isIt = [&](std::uint32_t at) { return KeyOf(Executions[at]) == key.Text(); };
  if (ByExecution.Find(key.Hash, isIt) != IndexTable::kNone) return std::nullopt;
  const auto added = static_cast<std::uint32_t>(Executions.size());
  Executions.push_back({static_cast<std::uint32_t>(Characters.size()), static_cast<std::uint8_t>(key.OrderLength),
                        static_cast<std::uint8_t>(key.TradeLength)});
  Characters.append(key.Text());
  ByExecution.Add(key.Hash, added);
  return added;
}

std::uint32_t TradeLedger::SecurityOf(const TradePrint& print) {
  if (const auto found = FindSecurity(print.Exchange, print.SecurityID)) return *found;
  const auto added = static_cast<std::uint32_t>(AllSecurities.size());
  AllSecurities.push_back({print.Exchange, print.SecurityID, print.Symbol, print.Name, print.ExpiryDate, {}, 0});
  BySecurity.Add(IndexTable::HashOf(print.Exchange, print.SecurityID), added);
  return added;
}

std::uint32_t TradeLedger::ClientOf(std::string_view client) {
  const std::uint32_t hash = IndexTable::HashOf(client);
  const std::uint32_t found = ByClient.Find(hash, [&](std::uint32_t at) { return AllClients[at] == client; });
  if (found != IndexTable::kNone) return found;
  const auto added = static_cast<std::uint32_t>(AllClients.size());
  AllClients.emplace_back(client);
  ByClient.Add(hash, added);
  return added;
}

std::int64_t TradeLedger::SecondsOf(const TradePrint& print) {
  return ParseDayTime(print.Time, Time) ? Time.Seconds : LedgerTrade::kNoSeconds;
}

TradeLedger::Entry TradeLedger::EntryOf(const TradePrint& print, std::int64_t seconds, std::uint32_t execution) {
  return {{seconds, print.Price, print.Multiplier, print.Quantity, print.Number, SecurityOf(print),
           ClientOf(print.ClientID), print.Side},
          execution};
}

void TradeLedger::Hold(const Entry& entry) {
  const std::uint32_t number = entry.Trade.Number;
  const std::uint32_t hash = IndexTable::HashOf(number);
  const std::uint32_t held =
      PendingByNumber.Find(hash, [&](std::uint32_t at) { return Pending[at].Trade.Number == number; });
  if (held != IndexTable::kNone) {
    Pending[held] = entry;
    return;
  }
  PendingByNumber.Add(hash, static_cast<std::uint32_t>(Pending.size()));
  Pending.push_back(entry);
}

void TradeLedger::Enter(const Entry& entry) {
  if (const std::uint32_t known = NumberPlace(entry.Trade.Number); known != IndexTable::kNone)
    return Rewrite(known, entry);
  const auto place = static_cast<std::uint32_t>(Live.size());
  Live.push_back(entry.Trade);
  LiveExecutions.push_back(entry.Execution);
  AllSecurities[entry.Trade.Security].Trades.push_back(place);
  ByNumber.Add(IndexTable::HashOf(entry.Trade.Number), place);
}

// The same trade once more is no change.
void TradeLedger::Rewrite(std::uint32_t place, const Entry& entry) {
  LiveExecutions[place] = entry.Execution;
  const LedgerTrade former = std::exchange(Live[place], entry.Trade);
  if (former == entry.Trade) return;
  LedgerSecurity& left = AllSecurities[former.Security];
  LedgerSecurity& entered = AllSecurities[entry.Trade.Security];
  ++Rewritten;
  ++entered.Rewrites;
  if (&left == &entered) return;
  ++Rewritten;
  ++left.Rewrites;
  std::erase(left.Trades, place);
  entered.Trades.insert(std::ranges::lower_bound(entered.Trades, place), place);
}

void TradeLedger::OnAmendmentSent(CQORPacketReader& message) {
  ReadTradeAmendment(message, Amendment);
  if (Live.empty()) return;  // as during the download
  if (const std::uint32_t place = NumberPlace(Amendment.Number); place != IndexTable::kNone)
    AmendKnown(place);
  else if (Amendment.AddQuantity != 0)
    AmendUnknown();
}

void TradeLedger::AmendKnown(std::uint32_t place) {
  Entry entry{Live[place], LiveExecutions[place]};
  if (Amendment.NewQuantity != 0) entry.Trade.Quantity = Amendment.NewQuantity;
  Rewrite(place, entry);
  KeepAsAmended(place);
}

void TradeLedger::KeepAsAmended(std::uint32_t place) {
  const LedgerTrade& trade = Live[place];
  const LedgerSecurity& security = AllSecurities[trade.Security];
  const Execution& execution = Executions[LiveExecutions[place]];
  const std::string_view key = KeyOf(execution);
  TradePrint& kept = Amendment.Trade;
  SetText(kept.Exchange, security.Exchange);
  SetText(kept.SecurityID, security.SecurityID);
  SetText(kept.Symbol, security.Symbol);
  SetText(kept.Name, security.Name);
  SetText(kept.ExpiryDate, security.ExpiryDate);
  SetText(kept.ClientID, AllClients[trade.Client]);
  SetText(kept.ExchangeOrderNo, key.substr(0, execution.OrderLength));
  SetText(kept.ExchangeTradeID, key.substr(execution.OrderLength));
  kept.Quantity = trade.Quantity;
  kept.Price = trade.Price;
  kept.Number = trade.Number;
  kept.Multiplier = trade.Multiplier;
  kept.Side = trade.Side;
  AmendedSeconds = trade.Seconds;
}

void TradeLedger::AmendUnknown() {
  TradePrint added = Amendment.Trade;
  const auto execution = AddExecution(ExecutionKey(added));
  if (!execution) return;
  added.Number = Amendment.Number;
  added.Quantity = Amendment.AddQuantity;
  Enter(EntryOf(added, AmendedSeconds, *execution));
}

std::size_t TradeLedger::MemoryBytes() const noexcept {
  std::size_t bytes = BytesOf(Live) + BytesOf(LiveExecutions) + BytesOf(Pending) + BytesOf(AllSecurities) +
                      BytesOf(AllClients) + BytesOf(Executions) + Characters.capacity();
  for (const LedgerSecurity& security : AllSecurities) bytes += BytesOf(security.Trades);
  for (const IndexTable* table : {&ByNumber, &PendingByNumber, &BySecurity, &ByClient, &ByExecution})
    bytes += table->MemoryBytes();
  return bytes;
}

#include "terminal/positions/position_table.h"

#include <utility>

void PositionTable::Use(const PositionSettings& settings) {
  if (Used == settings) return;
  Used = settings;
  Stale = true;
}

const std::string& PositionTable::ClientAt(std::uint32_t row) const {
  static const std::string kAllClients;
  return Used.ByClient ? Ledger.Clients()[All[row].Client] : kAllClients;
}

PositionChanges PositionTable::TakeChanges() {
  PositionChanges changes;
  changes.All = IsStale();
  if (changes.All) StartOver();
  Securities.resize(Ledger.Securities().size());
  CountRewritten();
  const std::vector<LedgerTrade>& trades = Ledger.Trades();
  while (Seen < trades.size()) Take(trades[Seen++]);
  NoteOpenRows();
  for (const std::uint32_t row : ChangedRows) All[row].Changed = false;
  if (changes.All) ChangedRows.clear();
  changes.Rows = std::exchange(ChangedRows, {});
  return changes;
}

void PositionTable::StartOver() {
  Stale = false;
  Epoch = Ledger.Epoch();
  Rewrites = 0;
  Seen = 0;
  All.clear();
  Securities.clear();
  ByClient.Clear();
}

void PositionTable::CountRewritten() {
  const std::uint64_t former = std::exchange(Rewrites, Ledger.AllRewrites());
  if (former == Rewrites) return;
  for (std::uint32_t security = 0; security < Securities.size(); ++security)
    if (Securities[security].Rewrites != Ledger.Securities()[security].Rewrites) CountAgain(security);
}

// Trades that were not seen yet follow later.
void PositionTable::CountAgain(std::uint32_t security) {
  SecurityState& state = Securities[security];
  state.Last.reset();
  NoteSecurity(security);
  for (const std::uint32_t row : state.Rows) {
    All[row].Counted = {};
    NoteRow(row);
  }
  const LedgerSecurity& told = Ledger.Securities()[security];
  for (const std::uint32_t place : told.Trades) {
    if (place >= Seen) break;
    Take(Ledger.Trades()[place]);
  }
  state.Rewrites = told.Rewrites;
}

void PositionTable::Take(const LedgerTrade& trade) {
  const std::uint32_t row = RowOf(trade);
  All[row].Counted.Add(trade, Used.Method);
  NoteRow(row);
  if (trade.Quantity == 0) return;
  Securities[trade.Security].Last = trade.Price;
  NoteSecurity(trade.Security);
}

std::uint32_t PositionTable::RowOf(const LedgerTrade& trade) {
  SecurityState& security = Securities[trade.Security];
  if (!Used.ByClient && !security.Rows.empty()) return security.Rows.front();
  const std::uint32_t hash = IndexTable::HashOf(trade.Security) + IndexTable::HashOf(IndexTable::HashOf(trade.Client));
  if (Used.ByClient) {
    const std::uint32_t found = ByClient.Find(
        hash, [&](std::uint32_t at) { return All[at].Client == trade.Client && All[at].Security == trade.Security; });
    if (found != IndexTable::kNone) return found;
  }
  const auto added = static_cast<std::uint32_t>(All.size());
  All.push_back({trade.Security, trade.Client});
  security.Rows.push_back(added);
  if (Used.ByClient) ByClient.Add(hash, added);
  return added;
}

void PositionTable::NoteSecurity(std::uint32_t security) {
  if (!std::exchange(Securities[security].Changed, true)) ChangedSecurities.push_back(security);
}

void PositionTable::NoteRow(std::uint32_t row) {
  if (!std::exchange(All[row].Changed, true)) ChangedRows.push_back(row);
}

// The last price changes all rows of the security that have something open.
void PositionTable::NoteOpenRows() {
  for (const std::uint32_t security : ChangedSecurities) {
    Securities[security].Changed = false;
    for (const std::uint32_t row : Securities[security].Rows)
      if (!All[row].Counted.IsEmpty()) NoteRow(row);
  }
  ChangedSecurities.clear();
}

double PositionTable::OpenProfit(std::uint32_t row) const {
  const std::optional<double> last = LastPrice(row);
  return last ? At(row).OpenProfit(*last) : 0;
}

PositionSums PositionTable::Sum(std::span<const std::uint32_t> rows) const {
  PositionSums sums;
  long double realised = 0;
  long double open = 0;
  for (const std::uint32_t row : rows) {
    sums.Bought += At(row).Bought();
    sums.Sold += At(row).Sold();
    realised += At(row).Realised();
    open += OpenProfit(row);
  }
  sums.Realised = static_cast<double>(realised);
  sums.Open = static_cast<double>(open);
  return sums;
}

std::size_t PositionTable::MemoryBytes() const noexcept {
  std::size_t bytes =
      All.capacity() * sizeof(Row) + Securities.capacity() * sizeof(SecurityState) + ByClient.MemoryBytes();
  for (const Row& row : All) bytes += row.Counted.MemoryBytes();
  for (const SecurityState& security : Securities) bytes += security.Rows.capacity() * sizeof(std::uint32_t);
  return bytes;
}

#include "grid_ops/rows/book_rows.h"

#include <algorithm>

namespace {

using Guard = QOR::Thread::CQORLockGuard;

constexpr std::size_t kTradesAhead = 24;  // records fetched before they are looked at

// Keys wrap around at 32 bits.
constexpr std::int32_t KeyBelow(std::int32_t key) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(key) - 1);
}

}  // namespace

// Reading needs no lock: only this thread changes the rows.
void BookRows::MakeRoom(std::size_t rows) {
  if (rows == 1 && Rows.HasRoomBelow(NextRowKey)) return;
  const Guard guard(RowLock);
  Rows.MakeRoom(NextRowKey, rows);
}

void BookRows::AddRow(TradeRecord& record) {
  Rows.Store(NextRowKey, &record);
  NextRowKey = KeyBelow(NextRowKey);
}

bool BookRows::AdmitRow(TradeRecord& record) {
  const Guard rows(RowLock);
  if (Filters.Active() && !Filters.Accepts(Cache.ServerName, record)) return false;
  if (Filtered && !Security.Matches(record)) return false;
  AddRow(record);
  return true;
}

void BookRows::RefilterRow(TradeRecord& record) {
  const Guard rows(RowLock);
  if (Filters.Active()) {
    if (Filters.Accepts(Cache.ServerName, record)) AddRow(record);
    return;
  }
  NextRowKey = kFirstRowKey;
  if (!Rows.Holds(&record)) AddRow(record);
}

template <typename LetsIn>
void BookRows::CollectRows(LetsIn letsIn) {
  const std::vector<TradeRecord*>& trades = Cache.TradeNumbers.All();
  RowMap collected;
  std::int32_t key = kFirstRowKey;
  for (std::size_t i = 0; i < trades.size(); ++i) {
    if (i + kTradesAhead < trades.size()) letsIn.Prefetch(trades[i + kTradesAhead]);
    if (!letsIn.Accepts(*trades[i])) continue;
    collected.Store(key, trades[i]);
    key = KeyBelow(key);
  }
  Rows = std::move(collected);
  NextRowKey = key;
}

namespace {

struct BySecurity {
  const FilterKey& Security;
  static void Prefetch(const TradeRecord* record) noexcept {
    __builtin_prefetch(record->Exchange);
    __builtin_prefetch(record->SecurityID);
  }
  bool Accepts(const TradeRecord& record) const noexcept { return Security.Matches(record); }
};

struct ByFilterBar {
  const FilterBar& Filters;
  std::string_view ServerName;
  void Prefetch(const TradeRecord* record) const noexcept { Filters.Prefetch(record); }
  bool Accepts(const TradeRecord& record) const { return Filters.Accepts(ServerName, record); }
};

struct ByBoth {
  ByFilterBar Bar;
  BySecurity Security;
  bool Filtered;
  void Prefetch(const TradeRecord* record) const noexcept {
    Bar.Prefetch(record);
    if (Filtered) Security.Prefetch(record);
  }
  bool Accepts(const TradeRecord& record) const {
    return Bar.Accepts(record) && (!Filtered || Security.Accepts(record));
  }
};

}  // namespace

void BookRows::RebuildRows() {
  const Guard rows(RowLock);
  const Guard exports(ExportLock);
  CollectRows(ByBoth{{Filters, Cache.ServerName}, {Security}, Filtered});
}

void BookRows::CollectSecurityRows() {
  const Guard rows(RowLock);
  CollectRows(BySecurity{Security});
}

void BookRows::CopyAllRows() {
  CopyAllRows(Cache.TradeNumbers, Cache.NextTradeNumber);
}

void BookRows::CopyAllRows(const TradeNumberMap& trades, std::int32_t nextTradeNumber) {
  const Guard rows(RowLock);
  Rows.CopyNumbers(trades);
  NextRowKey = nextTradeNumber;
}

void BookRows::CopyNumberedRows() {
  const Guard rows(RowLock);
  Rows.CopyNumbers(Cache.TradeNumbers);
}

void BookRows::ClearRows() {
  const Guard rows(RowLock);
  Rows.Clear();
}

bool BookRows::OnFilterBarChanged(int column, const std::wstring& text) {
  FilterBar changed = Filters;
  if (!changed.Change(column, text)) return false;
  CollectFilteredRows(changed);
  Filters = std::move(changed);
  return true;
}

void BookRows::OnFilterBarClearAll() {
  if (!Filters.Active()) return;
  CollectFilteredRows({});
  Filters.Clear();
}

void BookRows::OnFilterBarUpdate() {
  CollectFilteredRows(Filters);
}

void BookRows::CollectFilteredRows(const FilterBar& filters) {
  const Guard rows(RowLock);
  if (filters.Active())
    CollectRows(ByFilterBar{filters, Cache.ServerName});
  else if (NextRowKey != Cache.NextTradeNumber)
    CopyAllRows();
}

void BookRows::ResortRows(std::span<const SortState> sort) {
  const Guard rows(RowLock);
  if (sort.empty()) return Filters.Active() ? OnFilterBarUpdate() : CopyNumberedRows();
  std::vector<TradeRecord*> records = Rows.Records();
  std::erase(records, nullptr);
  SortRows(records, sort);
  Rows.NumberFromZero(records);
}

std::optional<std::size_t> BookRows::NewestRow() const noexcept {
  const Guard rows(RowLock);
  return Rows.RowOf(static_cast<std::int32_t>(static_cast<std::uint32_t>(NextRowKey) + 1));
}

const TradeRecord* BookRows::RecordAt(std::size_t row) const noexcept {
  const Guard rows(RowLock);
  return row < Rows.Size() ? Rows.RecordAt(row) : nullptr;
}

std::size_t BookRows::CopyRecords(std::size_t first, std::span<TradeRecord*> to) const noexcept {
  const Guard rows(RowLock);
  const std::size_t count = std::min(to.size(), Rows.Size() - std::min(first, Rows.Size()));
  Rows.CopyRecords(first, to.first(count));
  return count;
}

std::vector<TradeRecord*> BookRows::RowRecords() const {
  const Guard rows(RowLock);
  return Rows.Records();
}

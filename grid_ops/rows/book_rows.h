// BookRows: the rows of a book in their order, by its security and its filter bar.
//
// Row keys fall from kFirstRowKey with each row: the newest row is first. A sort numbers the rows from 0; later rows
// still take the next falling key and stay below all sorted rows until the next sort. Adding under an existing key
// replaces that row. Strong guarantee: if memory runs out, nothing has changed.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "foundations/qor_lock.h"
#include "grid_ops/rows/column_filter.h"
#include "grid_ops/rows/row_map.h"
#include "grid_ops/rows/row_sort.h"
#include "trade_data/cache/trade_cache.h"

class BookRows {
 public:
  static constexpr std::int32_t kFirstRowKey = 0x7FFFFFFF;

  // The cache must outlive the book.
  explicit BookRows(const TradeCache& cache) : Cache(cache) {}

  // Reserves memory for that many rows.
  void MakeRoom(std::size_t rows);
  // Appends a new trade if security and filter bar accept it; true if it is a row now.
  bool AdmitRow(TradeRecord& record);
  // Appends a record if the filter bar accepts it, whatever its security. Intentional: without a filter bar a record
  // that is no row yet takes the first key.
  void RefilterRow(TradeRecord& record);

  // Filters all trades of the cache again: the newest on top.
  void RebuildRows();
  // Every numbered trade becomes a row, whatever security and filter bar say.
  void CopyAllRows();
  void CopyAllRows(const TradeNumberMap& trades, std::int32_t nextTradeNumber);
  // The same without a change of the next key. Intentional: later rows may replace others.
  void CopyNumberedRows();
  // The trades of the book's security, whatever the filter bar says.
  void CollectSecurityRows();
  // The next key stays as it is.
  void ClearRows();

  // Applies an edited filter field; false if it changes nothing.
  bool OnFilterBarChanged(int column, const std::wstring& text);
  // Empties the fields. Without one that holds text nothing changes.
  void OnFilterBarClearAll();
  // Applies the filter bar. Without one, rows that already end with the cache's next number stay, sorted or not.
  void OnFilterBarUpdate();

  // Sorts the rows once. Without a sort column all trades become rows, or all that the filter bar accepts, whatever the
  // security. Intentional: so does the third click on a header; RebuildRows is for commands that end a sort.
  void ResortRows(std::span<const SortState> sort);

  std::size_t RowCount() const noexcept { return Rows.Size(); }
  // The index of the row with the last key; nothing if it is gone.
  std::optional<std::size_t> NewestRow() const noexcept;
  // Null if there is no such row. O(1).
  const TradeRecord* RecordAt(std::size_t row) const noexcept;
  // Copies the records of the rows from the first on, as many as there are room and rows; returns their count.
  std::size_t CopyRecords(std::size_t first, std::span<TradeRecord*> to) const noexcept;
  // The records of all rows, the first row first.
  std::vector<TradeRecord*> RowRecords() const;

  bool Filtered = false;  // the book is kept to one security
  FilterKey Security{};
  FilterBar Filters;
  RowMap Rows;
  std::int32_t NextRowKey = kFirstRowKey;
  // Order of taking: RowLock, ExportLock, RowLock.
  mutable QOR::Thread::CQORLock RowLock;  // of Rows and NextRowKey
  mutable QOR::Thread::CQORLock ExportLock;

 private:
  void AddRow(TradeRecord& record);
  // Asks about every numbered trade, the oldest first; those that are let in become the rows.
  template <typename LetsIn>
  void CollectRows(LetsIn letsIn);
  void CollectFilteredRows(const FilterBar& filters);

  const TradeCache& Cache;
};

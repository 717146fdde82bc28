// BookRows: which trades a book holds and in which order: the security that it is kept to, its filter bar, its row keys
// and its sort.
//
// Row keys fall from kFirstRowKey with every row, so that the newest row stands first. A sort numbers the rows from 0
// on; what comes after it still takes the next falling key and stands below all sorted rows until the next sort. A
// record that gets a key in use takes the place of the one that has it. When memory runs out, nothing has changed.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "foundations/qor_lock.h"
#include "grid_ops/columns/filter_key.h"
#include "grid_ops/rows/column_filter.h"
#include "grid_ops/rows/row_map.h"
#include "grid_ops/rows/row_sort.h"
#include "trade_data/cache/trade_cache.h"

class BookRows {
 public:
  static constexpr std::int32_t kFirstRowKey = 0x7FFFFFFF;

  // The cache must outlive the book.
  explicit BookRows(const TradeCache& cache) : Cache(cache) {}

  // The next rows, so many of them, take no memory.
  void MakeRoom(std::size_t rows);
  // Takes a new trade as a row, where security and filter bar let it in; true when it has become one.
  bool AdmitRow(TradeRecord& record);
  // Takes a record as a row where the filter bar lets it in; the security is not asked. Without a filter bar a record
  // that is no row yet takes the first key: meant so.
  void RefilterRow(TradeRecord& record);

  // Every trade of the cache is offered anew, the oldest first: the book's own rows, the newest on top.
  void RebuildRows();
  // Every numbered trade is a row, whatever security and filter bar say.
  void CopyAllRows();
  void CopyAllRows(const TradeNumberMap& trades, std::int32_t nextTradeNumber);
  // The same, with the next key left as it is: rows that come later can take the place of others. Meant so.
  void CopyNumberedRows();
  // The trades of the book's security alone; the filter bar is not asked.
  void CollectSecurityRows();
  // The next key stays as it is.
  void ClearRows();

  // A filter bar field was edited; false when that changes nothing, else the rows follow.
  bool OnFilterBarChanged(int column, const std::wstring& text);
  // Empties the fields. Without one that holds text nothing changes.
  void OnFilterBarClearAll();
  // Brings the rows into line with the filter bar. Without one, rows that already end with the cache's next number stay
  // as they are, sorted or not.
  void OnFilterBarUpdate();

  // Orders the rows. The sort ends there: it does not hold for rows that come later. Without a sort column all trades
  // become rows, or all that the filter bar lets in, whatever the security. Intentional: so does the third click on a
  // header; RebuildRows is for commands that end a sort.
  void ResortRows(std::span<const SortState> sort);

  std::size_t RowCount() const noexcept { return Rows.Size(); }
  // The place of the row that took the last key; nothing where it is none any more.
  std::optional<std::size_t> NewestRow() const noexcept;
  // Copies the record of a row; false when there is no such row. The same cost for every row.
  bool GetRecordCopy(std::size_t row, TradeRecord& copy) const noexcept;
  // The records of all rows, the first row first.
  std::vector<TradeRecord*> RowRecords() const;

  bool Filtered = false;  // the book is kept to one security
  FilterKey Security{};
  FilterBar Filters;
  std::vector<int> SortColumns;  // in order of priority
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

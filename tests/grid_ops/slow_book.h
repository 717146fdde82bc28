// SlowBook: a second implementation of a book's rows, filter bar and sort on ordered maps, for comparison. It
// shares no code with grid_ops but the name of a sort state.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "grid_ops/rows/row_sort.h"
#include "trade_data/cache/trade_cache.h"

using SlowSort = std::vector<SortState>;
using SlowKey = std::pair<std::string, std::string>;  // exchange and security

// Writes bytes to the field of a column, cut to its size; a no-op for a column without a field.
void PutCell(TradeRecord& record, int column, std::string_view bytes);
bool SlowMatch(const std::string& server, const TradeRecord& record, int column, const std::wstring& filter);
int SlowCompare(const TradeRecord& first, const TradeRecord& second, const SlowSort& sort);

class SlowBook : public TradeBook {
 public:
  explicit SlowBook(const TradeCache& cache) : Cache(cache) {}

  bool FilterBarActive() const override { return !Filters.empty(); }
  void MakeRoom(std::size_t) override {}
  bool AdmitRow(TradeRecord& record) override;
  void UpdateTotals(const TradeRecord&) override {}
  void RefilterRow(TradeRecord& record) override;
  void CopyAllRows(const TradeNumberMap&, std::int32_t) override { CopyAllRows(); }
  void ClearRows() override { Rows.clear(); }

  void RebuildRows();
  void CopyAllRows();
  void CollectSecurityRows();
  bool OnFilterBarChanged(int column, const std::wstring& text);
  void OnFilterBarUpdate();
  void ResortRows(const SlowSort& sort);

  bool Filtered = false;
  SlowKey Security;
  std::vector<std::pair<int, std::wstring>> Filters;
  std::map<std::int32_t, TradeRecord*> Rows;
  std::int32_t NextRowKey = 0x7FFFFFFF;

 private:
  std::map<std::int32_t, TradeRecord*> Trades() const;
  template <typename Offer>
  void CollectRows(Offer offer);
  bool PassesFilters(const TradeRecord& record) const;
  bool IsOfSecurity(const TradeRecord& record) const { return Security == SlowKey{record.Exchange, record.SecurityID}; }
  void Insert(TradeRecord& record) { Rows[NextRowKey--] = &record; }

  const TradeCache& Cache;
};

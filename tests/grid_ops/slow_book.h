// SlowBook: a second implementation of a book's rows, filter bar, sort and totals on ordered maps, for comparison. It
// shares no code with grid_ops.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "trade_data/cache/trade_cache.h"

using SlowSort = std::vector<std::pair<int, int>>;    // column and state
using SlowKey = std::pair<std::string, std::string>;  // exchange and security

// The inputs of the averages of all books.
struct SlowMarket {
  SlowKey Selected, Restored;
  std::map<SlowKey, double> Multipliers;  // of the masters
};

// Writes bytes to the field of a column, cut to its size; a no-op for a column without a field.
void PutCell(TradeRecord& record, int column, std::string_view bytes);
bool SlowMatch(const std::string& server, const TradeRecord& record, int column, const std::wstring& filter);
int SlowCompare(const TradeRecord& first, const TradeRecord& second, const SlowSort& sort);

class SlowBook {
 public:
  SlowBook(const TradeCache& cache, const SlowMarket& market) : Cache(cache), Market(market) {}

  bool AdmitRow(TradeRecord& record);
  void RefilterRow(TradeRecord& record);
  void RebuildRows();
  void CopyAllRows();
  void CollectSecurityRows();
  void ClearRows() { Rows.clear(); }
  bool OnFilterBarChanged(int column, const std::wstring& text);
  void OnFilterBarUpdate();
  void ResortRows(const SlowSort& sort);

  void CountTotals();
  void UpdateTotals(const TradeRecord& record);

  bool Filtered = false;
  SlowKey Security;
  std::vector<std::pair<int, std::wstring>> Filters;
  std::map<std::int32_t, TradeRecord*> Rows;
  std::int32_t NextRowKey = 0x7FFFFFFF;
  std::map<std::string, double> Totals;  // by name, BuyQty to NetAmt

 private:
  std::map<std::int32_t, TradeRecord*> Trades() const;
  template <typename Offer>
  void CollectRows(Offer offer);
  bool PassesFilters(const TradeRecord& record) const;
  bool IsOfSecurity(const TradeRecord& record) const { return Security == SlowKey{record.Exchange, record.SecurityID}; }
  void Insert(TradeRecord& record) { Rows[NextRowKey--] = &record; }
  bool IsSecuritySelected() const { return !Market.Selected.first.empty() && !Market.Selected.second.empty(); }
  void Add(const TradeRecord& record);
  void Average(double multiplier);

  const TradeCache& Cache;
  const SlowMarket& Market;
};

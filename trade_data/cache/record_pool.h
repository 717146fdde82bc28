// RecordPool: the memory of the day's trade records.
#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "trade_data/records/trade_record.h"

// Records stay at their addresses until Clear. Spare and Keep are O(1); a record takes its 750 bytes and no more; Clear
// frees 2,796 records at a time.
//
// Slabs of two megabytes, filled from the front. A message is decoded into the record that Keep would keep, so that a
// new trade is never copied. Returned records are linked through their first bytes: returning one does not allocate.
class RecordPool {
 public:
  // The next free record, zeroed. The same one until Keep.
  TradeRecord& Spare();
  // The record of the last Spare, as it is now.
  const TradeRecord* PeekSpare() const noexcept { return SpareRecord; }
  TradeRecord* Keep() noexcept { return std::exchange(SpareRecord, nullptr); }
  // Returns a kept record to the pool. Requires: nothing points to it.
  void GiveBack(TradeRecord* record) noexcept;
  void Clear() noexcept;

 private:
  struct Slab;
  struct SlabDeleter {
    void operator()(Slab* slab) const noexcept;
  };
  TradeRecord* TakeFree();

  std::vector<std::unique_ptr<Slab, SlabDeleter>> Slabs;
  TradeRecord* SpareRecord = nullptr;
  TradeRecord* FirstReturned = nullptr;  // its first bytes are the address of the next one
  std::size_t UsedInLastSlab = 0;
};

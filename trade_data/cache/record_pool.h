// RecordPool: the memory of the day's trade records.
#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "trade_data/records/trade_record.h"

// Promises: a record stays at its address until Clear; Spare and Keep are constant time; a record costs its 750 bytes
// and nothing beside them; Clear gives all memory back in one step per 2,796 records.
// Works in slabs of two megabytes, filled from the front. The next free record is decoded into where it will stay, and
// kept only when it turns out to be new. Returned records are chained through their own first bytes, so that returning
// one takes no memory.
class RecordPool {
 public:
  // The next free record, zeroed. Calling again without Keep gives the same one.
  TradeRecord& Spare();
  // The record that Spare last gave, as it is now.
  const TradeRecord* PeekSpare() const noexcept { return SpareRecord; }
  // Keeps it.
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
  TradeRecord* FirstReturned = nullptr;  // its first bytes hold the address of the next one
  std::size_t UsedInLastSlab = 0;
};

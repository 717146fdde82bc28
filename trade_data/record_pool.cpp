#include "trade_data/record_pool.h"

#include <cstring>
#include <new>

#include "platform/pages.h"

namespace {
constexpr std::size_t kRecordsPerSlab = kPageBlockSize / sizeof(TradeRecord);
}

struct RecordPool::Slab {
  TradeRecord Records[kRecordsPerSlab];
};

void RecordPool::SlabDeleter::operator()(Slab* slab) const noexcept {
  FreePageBlock(slab);
}

TradeRecord& RecordPool::Spare() {
  TradeRecord* record = FindFree();
  std::memset(record, 0, sizeof *record);
  return *record;
}

TradeRecord* RecordPool::FindFree() {
  if (!Returned.empty()) return Returned.back();
  if (Slabs.empty() || UsedInLastSlab == kRecordsPerSlab) {
    std::unique_ptr<Slab, SlabDeleter> slab(static_cast<Slab*>(AllocatePageBlock()));
    if (slab == nullptr) throw std::bad_alloc();
    Slabs.push_back(std::move(slab));
    UsedInLastSlab = 0;
  }
  return &Slabs.back()->Records[UsedInLastSlab];
}

const TradeRecord* RecordPool::PeekSpare() const noexcept {
  return Returned.empty() ? &Slabs.back()->Records[UsedInLastSlab] : Returned.back();
}

TradeRecord* RecordPool::Keep() noexcept {
  if (Returned.empty()) return &Slabs.back()->Records[UsedInLastSlab++];
  TradeRecord* record = Returned.back();
  Returned.pop_back();
  return record;
}

void RecordPool::GiveBack(TradeRecord* record) {
  Returned.push_back(record);
}

void RecordPool::Clear() noexcept {
  Returned.clear();
  Slabs.clear();
  UsedInLastSlab = 0;
}

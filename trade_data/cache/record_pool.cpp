#include "trade_data/cache/record_pool.h"

#include <cstring>
#include <new>

#include "platform/memory.h"

namespace {
constexpr std::size_t kRecordsPerSlab = kPageBlockSize / sizeof(TradeRecord);
constexpr std::size_t kLinkSize = sizeof(TradeRecord*);
}  // namespace

struct RecordPool::Slab {
  TradeRecord Records[kRecordsPerSlab];
};

void RecordPool::SlabDeleter::operator()(Slab* slab) const noexcept {
  FreePageBlock(slab);
}

TradeRecord& RecordPool::Spare() {
  if (SpareRecord == nullptr) SpareRecord = TakeFree();
  std::memset(SpareRecord, 0, sizeof *SpareRecord);
  return *SpareRecord;
}

TradeRecord* RecordPool::TakeFree() {
  if (FirstReturned != nullptr) {
    TradeRecord* record = FirstReturned;
    std::memcpy(&FirstReturned, record, kLinkSize);
    return record;
  }
  if (Slabs.empty() || UsedInLastSlab == kRecordsPerSlab) {
    std::unique_ptr<Slab, SlabDeleter> slab(static_cast<Slab*>(AllocatePageBlock()));
    if (slab == nullptr) throw std::bad_alloc();
    Slabs.push_back(std::move(slab));
    UsedInLastSlab = 0;
  }
  return &Slabs.back()->Records[UsedInLastSlab++];
}

void RecordPool::GiveBack(TradeRecord* record) noexcept {
  std::memcpy(record, &FirstReturned, kLinkSize);
  FirstReturned = record;
}

void RecordPool::Clear() noexcept {
  Slabs.clear();
  SpareRecord = FirstReturned = nullptr;
  UsedInLastSlab = 0;
}

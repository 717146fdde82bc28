#include "trade_data/cache/trade_map.h"

#include <algorithm>
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

std::size_t TradeMap::Block::LowerBound(std::int32_t id) const noexcept {
  return static_cast<std::size_t>(std::lower_bound(Ids, Ids + Used, id) - Ids);
}

void TradeMap::Block::InsertAt(std::size_t at, std::int32_t id, TradeRecord* record) noexcept {
  std::copy_backward(Ids + at, Ids + Used, Ids + Used + 1);
  std::copy_backward(Records + at, Records + Used, Records + Used + 1);
  Ids[at] = id;
  Records[at] = record;
  ++Used;
}

bool TradeMap::IsBehindAll(std::int32_t id) const noexcept {
  if (Blocks.empty()) return true;
  const Block& last = *Blocks.back().Content;
  return last.Ids[last.Used - 1] < id;
}

// The only block that can have the id; the first one for an id below all. Requires a block.
std::size_t TradeMap::BlockFor(std::int32_t id) const noexcept {
  const auto behind =
      std::upper_bound(Blocks.begin(), Blocks.end(), id,
                       [](std::int32_t wanted, const BlockEntry& entry) { return wanted < entry.FirstId; });
  return behind == Blocks.begin() ? 0 : static_cast<std::size_t>(behind - Blocks.begin()) - 1;
}

TradeRecord* TradeMap::Find(std::int32_t id) const noexcept {
  if (IsBehindAll(id)) return nullptr;
  const Block& block = *Blocks[BlockFor(id)].Content;
  const std::size_t at = block.LowerBound(id);
  return at < block.Used && block.Ids[at] == id ? block.Records[at] : nullptr;
}

// An insert adds at most one block. A block after a split takes half a block of ids before it is full, so few of many
// inserts add one.
void TradeMap::MakeRoom(std::size_t inserts) {
  const std::size_t needed = std::min(inserts, Blocks.size() + inserts / (kBlockSize / 2) + 1);
  ::MakeRoom(Blocks, needed);
  Spares.reserve(needed);
  while (Spares.size() < needed) Spares.push_back(std::make_unique_for_overwrite<Block>());
}

std::unique_ptr<TradeMap::Block> TradeMap::TakeSpare() noexcept {
  std::unique_ptr<Block> block = std::move(Spares.back());
  Spares.pop_back();
  return block;
}

void TradeMap::Insert(std::int32_t id, TradeRecord* record) {
  if (IsBehindAll(id)) {
    Append(id, record);
  } else {
    std::size_t blockAt = BlockFor(id);
    if (Blocks[blockAt].Content->Used == kBlockSize) {
      Split(blockAt);
      blockAt = BlockFor(id);
    }
    Block& block = *Blocks[blockAt].Content;
    block.InsertAt(block.LowerBound(id), id, record);
    Blocks[blockAt].FirstId = block.Ids[0];
  }
  ++Count;
}

void TradeMap::Append(std::int32_t id, TradeRecord* record) {
  if (Blocks.empty() || Blocks.back().Content->Used == kBlockSize) {
    MakeRoom(1);
    Blocks.push_back({id, TakeSpare()});
  }
  Block& block = *Blocks.back().Content;
  block.InsertAt(block.Used, id, record);
}

void TradeMap::Split(std::size_t blockAt) {
  MakeRoom(1);
  std::unique_ptr<Block> upper = TakeSpare();
  Block& lower = *Blocks[blockAt].Content;
  constexpr std::size_t half = kBlockSize / 2;
  std::copy_n(lower.Ids + half, half, upper->Ids);
  std::copy_n(lower.Records + half, half, upper->Records);
  upper->Used = half;
  const std::int32_t firstId = upper->Ids[0];
  Blocks.insert(Blocks.begin() + static_cast<std::ptrdiff_t>(blockAt) + 1, {firstId, std::move(upper)});
  lower.Used = half;
}

void TradeMap::Clear() noexcept {
  Blocks.clear();
  Spares.clear();
  Count = 0;
}

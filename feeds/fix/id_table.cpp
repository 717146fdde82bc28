#include "feeds/fix/id_table.h"

#include <cstring>
#include <new>
#include <random>
#include <utility>

namespace {

constexpr std::size_t kFirstSlots = 1024;
constexpr std::size_t kBlockSize = std::size_t{1} << 18;
constexpr std::size_t kStep = 8;       // of places
constexpr std::size_t kEntryHead = 6;  // the number and the count of characters
constexpr std::size_t kCountOffset = 4;

std::uint64_t Mixed(std::uint64_t hash) noexcept {
  hash ^= hash >> 32;
  hash *= 0x9E3779B97F4A7C15;
  return hash ^ (hash >> 29);
}

std::uint64_t HashFrom(std::uint64_t start, std::string_view id) noexcept {
  std::uint64_t hash = start + id.size() * kByteOnes;
  for (; id.size() >= 8; id.remove_prefix(8)) hash = Mixed(hash ^ LoadValue<std::uint64_t>(id.data()));
  return Mixed(hash ^ LoadShortText(id));
}

// Both halves of the product: every bit of both numbers is in each of the low ones.
std::uint64_t Folded(std::uint64_t one, std::uint64_t other) noexcept {
  __extension__ using Wide = unsigned __int128;
  const Wide product = Wide{one} * other;
  return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

std::uint64_t SeedOfProcess() {
  static const std::uint64_t seed = [] {
    std::random_device device;
    return (std::uint64_t{device()} << 32) | device();
  }();
  return seed;
}

}  // namespace

std::uint64_t HashOfId(std::string_view id) noexcept {
  return Mixed(HashFrom(0, id));
}

IdTable::IdTable() : Seed(SeedOfProcess()), Slots(kFirstSlots), UsedInLastBlock(kBlockSize) {}

// From the seed on: ids that collide without it do not collide with it.
std::uint32_t IdTable::SlotHash(std::string_view id) const noexcept {
  constexpr std::uint64_t kOdd = 0x9E3779B97F4A7C15;
  const char* const end = id.data() + id.size();
  if (id.size() <= 8)
    return static_cast<std::uint32_t>(
        Folded((id.size() == 8 ? LoadValue<std::uint64_t>(id.data()) : LoadShortText(id)) ^ Seed, kOdd ^ id.size()));
  std::uint64_t hash = Seed ^ id.size();
  for (const char* at = id.data(); end - at > 16; at += 16)
    hash = Folded(LoadValue<std::uint64_t>(at) ^ hash, LoadValue<std::uint64_t>(at + 8) ^ kOdd);
  const char* const first = id.size() > 16 ? end - 16 : id.data();
  return static_cast<std::uint32_t>(
      Folded(LoadValue<std::uint64_t>(first) ^ hash, LoadValue<std::uint64_t>(end - 8) ^ Seed ^ kOdd));
}

const std::uint8_t* IdTable::EntryAt(std::uint32_t place) const noexcept {
  const std::size_t offset = (place - std::size_t{1}) * kStep;
  return &Blocks[offset / kBlockSize][offset % kBlockSize];
}

const std::uint32_t* IdTable::Find(std::string_view id) noexcept {
  const std::uint32_t hash = SlotHash(id);
  const std::size_t mask = Slots.size() - 1;
  std::size_t at = hash & mask;
  for (; Slots[at].Place != 0; at = (at + 1) & mask) {
    if (Slots[at].Hash != hash) continue;
    const std::uint8_t* entry = EntryAt(Slots[at].Place);
    if (LoadValue<std::uint16_t>(entry + kCountOffset) == id.size() &&
        std::memcmp(entry + kEntryHead, id.data(), id.size()) == 0)
      return reinterpret_cast<const std::uint32_t*>(entry);
  }
  LastHash = hash;
  LastAt = at;
  return nullptr;
}

void IdTable::Insert(std::string_view id, std::uint32_t number) {
  if ((Count + std::size_t{1}) * 4 > Slots.size() * 3) {
    Grow();
    LastAt = FreePlace(LastHash);
  }
  Slots[LastAt] = {LastHash, Keep(id, number)};
  ++Count;
}

std::uint32_t IdTable::OrdinalOf(std::string_view id) {
  if (const std::uint32_t* known = Find(id); known != nullptr) return *known;
  Insert(id, Count + 1);
  return Count;
}

std::size_t IdTable::FreePlace(std::uint32_t hash) const noexcept {
  std::size_t at = hash & (Slots.size() - 1);
  while (Slots[at].Place != 0) at = (at + 1) & (Slots.size() - 1);
  return at;
}

std::uint32_t IdTable::Keep(std::string_view id, std::uint32_t number) {
  const std::size_t size = (kEntryHead + id.size() + kStep - 1) / kStep * kStep;
  if (UsedInLastBlock + size > kBlockSize) {
    if (Blocks.size() * (kBlockSize / kStep) > 0xFFFFFFFF - kBlockSize) throw std::bad_alloc();
    Blocks.push_back(std::make_unique_for_overwrite<std::uint8_t[]>(kBlockSize));
    UsedInLastBlock = 0;
  }
  const std::size_t offset = (Blocks.size() - 1) * kBlockSize + UsedInLastBlock;
  std::uint8_t* entry = &Blocks.back()[UsedInLastBlock];
  StoreValue(entry, number);
  StoreValue(entry + kCountOffset, static_cast<std::uint16_t>(id.size()));
  std::memcpy(entry + kEntryHead, id.data(), id.size());
  UsedInLastBlock += size;
  return static_cast<std::uint32_t>(offset / kStep + 1);
}

void IdTable::Grow() {
  std::vector<Slot> old(Slots.size() * 2);
  std::swap(old, Slots);
  for (const Slot& slot : old)
    if (slot.Place != 0) Slots[FreePlace(slot.Hash)] = slot;
}

IdHashes::IdHashes() : Seed(SeedOfProcess()), Slots(kFirstSlots) {}

bool IdHashes::Insert(std::uint64_t hash) {
  if ((Count + std::size_t{1}) * 4 > Slots.size() * 3) {
    std::vector<std::uint64_t> old(Slots.size() * 2);
    std::swap(old, Slots);
    for (const std::uint64_t kept : old)
      if (kept != 0) Put(kept);
  }
  const bool isNew = Put(hash == 0 ? 1 : hash);
  Count += isNew ? 1 : 0;
  return isNew;
}

bool IdHashes::Put(std::uint64_t hash) noexcept {
  std::size_t at = Mixed(hash ^ Seed) & (Slots.size() - 1);
  for (; Slots[at] != 0; at = (at + 1) & (Slots.size() - 1))
    if (Slots[at] == hash) return false;
  Slots[at] = hash;
  return true;
}

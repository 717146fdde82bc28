#include "feeds/fix/id_table.h"

#include <emmintrin.h>

#include <bit>
#include <cstring>
#include <new>
#include <random>
#include <utility>

namespace {

constexpr unsigned kAllUsed = 0xFFFF;

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

// From the seed on: ids that collide without it do not collide with it.
std::uint32_t HashOf(std::string_view id) noexcept {
  constexpr std::uint64_t kOdd = 0x9E3779B97F4A7C15;
  const std::uint64_t seed = SeedOfProcess();
  const char* const end = id.data() + id.size();
  if (id.size() <= 8)
    return static_cast<std::uint32_t>(
        Folded((id.size() == 8 ? LoadValue<std::uint64_t>(id.data()) : LoadShortText(id)) ^ seed, kOdd ^ id.size()));
  std::uint64_t hash = seed ^ id.size();
  for (const char* at = id.data(); end - at > 16; at += 16)
    hash = Folded(LoadValue<std::uint64_t>(at) ^ hash, LoadValue<std::uint64_t>(at + 8) ^ kOdd);
  const char* const first = id.size() > 16 ? end - 16 : id.data();
  return static_cast<std::uint32_t>(
      Folded(LoadValue<std::uint64_t>(first) ^ hash, LoadValue<std::uint64_t>(end - 8) ^ seed ^ kOdd));
}

}  // namespace

IdKey::IdKey(std::string_view text, std::size_t joint) noexcept
    : Text(text), Hash(HashOf(text)), Joint(static_cast<std::uint16_t>(joint)) {}

std::uint32_t IdStore::Keep(const IdKey& id, std::uint32_t number) {
  const std::size_t size = (sizeof(Entry) + id.Text.size() + kStep - 1) / kStep * kStep;
  if (Used + size > kPageBlockSize) AddBlock();
  std::uint8_t* const place = Blocks.back().get() + Used;
  new (place) Entry{number, static_cast<std::uint16_t>(id.Text.size()), id.Joint};
  std::memcpy(place + sizeof(Entry), id.Text.data(), id.Text.size());
  const std::size_t offset = (Blocks.size() - 1) * kPageBlockSize + Used;
  Used += size;
  return static_cast<std::uint32_t>(offset / kStep);
}

void IdStore::AddBlock() {
  if (Blocks.size() == kMostBlocks) throw std::bad_alloc();
  MakeRoom(Blocks, 1);
  auto* const block = static_cast<std::uint8_t*>(AllocatePageBlock());
  if (block == nullptr) throw std::bad_alloc();
  Blocks.emplace_back(block);
  Used = 0;
}

inline IdTable::TagBits IdTable::BitsOf(std::size_t group, std::uint32_t hash) const noexcept {
  const __m128i tags = _mm_loadu_si128(reinterpret_cast<const __m128i*>(&Tags[group]));
  const __m128i same = _mm_cmpeq_epi8(tags, _mm_set1_epi8(static_cast<char>(TagOf(hash))));
  return {static_cast<unsigned>(_mm_movemask_epi8(same)), static_cast<unsigned>(_mm_movemask_epi8(tags))};
}

IdTable::Found IdTable::Find(const IdKey& id) const noexcept {
  Found found;
  for (std::size_t group = FirstGroup(id.Hash);; group = NextGroup(group)) {
    const TagBits bits = BitsOf(group, id.Hash);
    for (unsigned same = bits.Same; same != 0; same &= same - 1) {
      const Slot& slot = Slots[group + static_cast<unsigned>(std::countr_zero(same))];
      if (slot.Hash != id.Hash) continue;
      const IdStore::Entry& entry = Store.At(slot.Place);
      if (entry.Size != id.Text.size() || std::memcmp(entry.Text(), id.Text.data(), entry.Size) != 0) continue;
      if (entry.Joint == id.Joint) return {&entry.Number};
      found.HasOtherJoint = true;
    }
    if (bits.Used == kAllUsed) continue;
    found.FreeSlot = group + static_cast<unsigned>(std::countr_one(bits.Used));
    return found;
  }
}

void IdTable::Insert(const IdKey& id, std::uint32_t number) {
  InsertAt(FreeSlot(id.Hash), id, number);
}

void IdTable::InsertAt(std::size_t slot, const IdKey& id, std::uint32_t number) {
  const Slot kept{id.Hash, Store.Keep(id, number)};
  if ((Count + std::size_t{1}) * 8 > Slots.size() * 7) {
    Grow();
    slot = FreeSlot(id.Hash);
  }
  Put(kept, slot);
  ++Count;
}

std::uint32_t IdTable::OrdinalOf(const IdKey& id) {
  const Found known = Find(id);
  if (known.Number != nullptr) return *known.Number;
  InsertAt(known.FreeSlot, id, Count + 1);
  return Count;
}

std::size_t IdTable::FreeSlot(std::uint32_t hash) const noexcept {
  std::size_t group = FirstGroup(hash);
  unsigned used = BitsOf(group, hash).Used;
  for (; used == kAllUsed; used = BitsOf(group, hash).Used) group = NextGroup(group);
  return group + static_cast<unsigned>(std::countr_one(used));
}

void IdTable::Put(const Slot& slot, std::size_t at) noexcept {
  Tags[at] = TagOf(slot.Hash);
  Slots[at] = slot;
}

void IdTable::Grow() {
  std::vector<std::uint8_t> tags(Slots.size() * 2);
  std::vector<Slot> slots(Slots.size() * 2);
  std::swap(tags, Tags);
  std::swap(slots, Slots);
  for (std::size_t i = 0; i < slots.size(); ++i)
    if (tags[i] != 0) Put(slots[i], FreeSlot(slots[i].Hash));
}

// IndexTable: finds elements that stand in a vector of their owner by a hash of their keys.
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

// Find and Add are O(1). An open table of 8-byte slots, at most three quarters full, searched from the slot of the
// hash's highest bits; it doubles, and walks the old slots then, not the elements.
class IndexTable {
 public:
  static constexpr std::uint32_t kNone = 0xFFFFFFFF;

  // The index of the element of that hash for which isIt(index) holds; kNone without one.
  template <typename IsIt>
  std::uint32_t Find(std::uint32_t hash, IsIt isIt) const {
    if (Slots.empty()) return kNone;
    for (std::size_t at = HomeOf(hash); Slots[at].Index != kNone; at = Next(at))
      if (Slots[at].Hash == hash && isIt(Slots[at].Index)) return Slots[at].Index;
    return kNone;
  }
  // Has the memory load the place where Find begins.
  void Prefetch(std::uint32_t hash) const noexcept {
    if (!Slots.empty()) __builtin_prefetch(&Slots[HomeOf(hash)], 1);
  }
  // Requires: Find does not find the element.
  void Add(std::uint32_t hash, std::uint32_t index) {
    if ((Count + 1) * 4 > Slots.size() * 3) Grow();
    Put({hash, index});
    ++Count;
  }
  void Clear() {
    Slots.clear();
    Count = 0;
  }
  std::size_t MemoryBytes() const noexcept { return Slots.capacity() * sizeof(Slot); }

  static std::uint32_t HashOf(std::uint32_t number) noexcept { return number * 0x9E3779B1U; }
  static std::uint32_t HashOf(std::string_view text) noexcept {
    const std::uint64_t hash = std::hash<std::string_view>{}(text);
    return static_cast<std::uint32_t>(hash ^ (hash >> 32));
  }
  // Of a key of two parts.
  static std::uint32_t HashOf(std::string_view first, std::string_view second) noexcept {
    return HashOf(HashOf(first)) + HashOf(second);
  }

 private:
  struct Slot {
    std::uint32_t Hash = 0;
    std::uint32_t Index = kNone;
  };
  static constexpr unsigned kFirstBits = 8;

  std::size_t HomeOf(std::uint32_t hash) const noexcept { return hash >> (32 - Bits); }
  std::size_t Next(std::size_t at) const noexcept { return (at + 1) & (Slots.size() - 1); }
  void Put(const Slot& slot) {
    std::size_t at = HomeOf(slot.Hash);
    while (Slots[at].Index != kNone) at = Next(at);
    Slots[at] = slot;
  }
  void Grow() {
    Bits = Slots.empty() ? kFirstBits : Bits + 1;
    for (const Slot& slot : std::exchange(Slots, std::vector<Slot>(std::size_t{1} << Bits)))
      if (slot.Index != kNone) Put(slot);
  }

  std::vector<Slot> Slots;
  unsigned Bits = 0;
  std::size_t Count = 0;
};

// IdTable: a number for each id of a day. It only grows.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "foundations/byte_words.h"
#include "platform/memory.h"

// The bytes of a text of less than 8, with zeros behind them.
[[gnu::always_inline]] inline std::uint64_t LoadShortText(std::string_view text) noexcept {
  const char* const at = text.data();
  const std::size_t size = text.size();
  if (size >= 4)
    return LoadValue<std::uint32_t>(at) | std::uint64_t{LoadValue<std::uint32_t>(at + size - 4)} << (8 * (size - 4));
  if (size >= 2)
    return LoadValue<std::uint16_t>(at) | std::uint64_t{LoadValue<std::uint16_t>(at + size - 2)} << (8 * (size - 2));
  return size == 0 ? 0 : static_cast<std::uint8_t>(*at);
}

// An id as a table looks for it, hashed once. Ids that are joined of two are told apart by the place of the joint: "1"
// and "23", "12" and "3".
struct IdKey {
  static constexpr std::uint16_t kNoJoint = 0;

  // Requires: the text outlives the key.
  explicit IdKey(std::string_view text, std::size_t joint = kNoJoint) noexcept;

  std::string_view Text;
  std::uint32_t Hash;  // of the text alone, with a seed of the process: nobody can choose ids that all collide
  std::uint16_t Joint;
};

// The characters of the ids of a day with a number each: they stay where they are.
class IdStore {
 public:
  struct Entry {
    std::uint32_t Number;
    std::uint16_t Size;
    std::uint16_t Joint;

    const char* Text() const noexcept { return reinterpret_cast<const char*>(this + 1); }
  };

  // The place of the entry, for At. Throws std::bad_alloc without memory, and for more than 32 GB.
  std::uint32_t Keep(const IdKey& id, std::uint32_t number);
  const Entry& At(std::uint32_t place) const noexcept {
    const std::size_t offset = place * kStep;
    return *reinterpret_cast<const Entry*>(Blocks[offset / kPageBlockSize].get() + offset % kPageBlockSize);
  }

 private:
  static constexpr std::size_t kStep = 8;  // of places
  static constexpr std::size_t kMostBlocks = (std::size_t{1} << 32) * kStep / kPageBlockSize;
  struct FreeBlock {
    void operator()(std::uint8_t* block) const noexcept { FreePageBlock(block); }
  };

  void AddBlock();

  std::vector<std::unique_ptr<std::uint8_t, FreeBlock>> Blocks;
  std::size_t Used = kPageBlockSize;  // of the last block
};

// Find and Insert are O(1). An id takes its characters, 8 bytes and 10 to 21 bytes of table. Compares characters, so no
// two ids are ever confused.
//
// An open table of groups of 16 slots, at most seven eighths full, with a tag byte for each slot: 7 bits of the hash,
// or free. The tags of a group are compared at once, and a group with a free slot ends the search: an id that is not
// known mostly costs one look at 16 bytes.
class IdTable {
 public:
  static constexpr std::size_t kLongest = 4096;

  struct Found {
    const std::uint32_t* Number = nullptr;  // null if the id is not known
    bool HasOtherJoint = false;             // if it is not known: the same text with another joint is
    std::size_t FreeSlot = 0;               // if it is not known: where Insert would put it
  };

  // Tables may share a store.
  explicit IdTable(IdStore& store) : Store(store), Tags(kFirstSlots), Slots(kFirstSlots) {}
  Found Find(const IdKey& id) const noexcept;
  // Says that Find will look for the id soon: so that its slot is on its way from far memory meanwhile.
  void Expect(const IdKey& id) const noexcept {
    __builtin_prefetch(&Tags[FirstGroup(id.Hash)]);
    __builtin_prefetch(&Slots[FirstGroup(id.Hash)]);
  }
  // Requires: the id is not known and has at most kLongest characters.
  void Insert(const IdKey& id, std::uint32_t number);
  // The ordinal of the id, from 1; a new id gets the next.
  std::uint32_t OrdinalOf(const IdKey& id);
  std::uint32_t Size() const noexcept { return Count; }

 private:
  static constexpr std::size_t kFirstSlots = std::size_t{1} << 14;
  static constexpr std::size_t kGroup = 16;
  static constexpr std::uint8_t kUsed = 0x80;  // of a tag; 0 is a free slot
  static constexpr unsigned kTagBits = 7;

  struct Slot {
    std::uint32_t Hash = 0;
    std::uint32_t Place = 0;  // in the store
  };
  // Bit n: of the tag n of the group.
  struct TagBits {
    unsigned Same, Used;
  };
  TagBits BitsOf(std::size_t group, std::uint32_t hash) const noexcept;
  std::size_t FirstGroup(std::uint32_t hash) const noexcept { return (hash >> kTagBits) * kGroup & (Slots.size() - 1); }
  std::size_t NextGroup(std::size_t group) const noexcept { return (group + kGroup) & (Slots.size() - 1); }
  static std::uint8_t TagOf(std::uint32_t hash) noexcept { return static_cast<std::uint8_t>(hash | kUsed); }
  std::size_t FreeSlot(std::uint32_t hash) const noexcept;
  void InsertAt(std::size_t slot, const IdKey& id, std::uint32_t number);
  void Put(const Slot& slot, std::size_t at) noexcept;
  void Grow();

  IdStore& Store;
  std::vector<std::uint8_t> Tags;
  std::vector<Slot> Slots;
  std::uint32_t Count = 0;
};

// IdTable: a number for each id, and IdHashes, a set of hashes of ids. Both only grow.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "foundations/byte_words.h"

// The bytes of a text of less than 8, with zeros behind them.
inline std::uint64_t LoadShortText(std::string_view text) noexcept {
  const char* const at = text.data();
  const std::size_t size = text.size();
  if (size >= 4)
    return LoadValue<std::uint32_t>(at) | std::uint64_t{LoadValue<std::uint32_t>(at + size - 4)} << (8 * (size - 4));
  if (size >= 2)
    return LoadValue<std::uint16_t>(at) | std::uint64_t{LoadValue<std::uint16_t>(at + size - 2)} << (8 * (size - 2));
  return size == 0 ? 0 : static_cast<std::uint8_t>(*at);
}

// The same everywhere and for ever: what depends on it is the same wherever messages are mapped.
std::uint64_t HashOfId(std::string_view id) noexcept;

// Find and Insert are O(1). An id takes its characters, 6 bytes and 11 to 21 bytes of table. Compares characters, so no
// two ids are ever confused.
//
// An open table of 8-byte slots, at most three quarters full; the characters are in blocks. The slots depend on a seed
// of the process, so that nobody can choose ids that all search the same slots.
class IdTable {
 public:
  static constexpr std::size_t kLongest = 4096;

  IdTable();
  // The number of the id; null if it is not known.
  const std::uint32_t* Find(std::string_view id) noexcept;
  // Says that Find will look for the id soon: so that its slot is on its way from far memory meanwhile.
  void Expect(std::string_view id) const noexcept { __builtin_prefetch(&Slots[SlotHash(id) & (Slots.size() - 1)]); }
  // Requires: the id is the one that Find has looked for last and not found, with at most kLongest characters.
  void Insert(std::string_view id, std::uint32_t number);
  // The ordinal of the id, from 1; a new id gets the next.
  std::uint32_t OrdinalOf(std::string_view id);
  std::uint32_t Size() const noexcept { return Count; }

 private:
  struct Slot {
    std::uint32_t Hash = 0;
    std::uint32_t Place = 0;  // of the id in the blocks, counted from 1 in steps of 8 bytes; 0 is a free slot
  };
  std::uint32_t SlotHash(std::string_view id) const noexcept;
  const std::uint8_t* EntryAt(std::uint32_t place) const noexcept;
  std::uint32_t Keep(std::string_view id, std::uint32_t number);
  std::size_t FreePlace(std::uint32_t hash) const noexcept;
  void Grow();

  std::uint64_t Seed;
  std::vector<Slot> Slots;
  // Where Find has ended: Insert needs no second search.
  std::uint32_t LastHash = 0;
  std::size_t LastAt = 0;
  std::uint32_t Count = 0;
  std::vector<std::unique_ptr<std::uint8_t[]>> Blocks;
  std::size_t UsedInLastBlock;
};

// Insert is O(1) and takes 11 to 21 bytes. Two ids with one hash count as one.
class IdHashes {
 public:
  IdHashes();
  // False if the hash is known.
  bool Insert(std::uint64_t hash);
  std::uint32_t Size() const noexcept { return Count; }

 private:
  bool Put(std::uint64_t hash) noexcept;

  std::uint64_t Seed;
  std::vector<std::uint64_t> Slots;  // 0 is a free slot
  std::uint32_t Count = 0;
};

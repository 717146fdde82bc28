// ExecutionSet: the executions of the day, by the exchange's order number followed by its trade number.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

// The two texts joined without a separator, at most 64 characters.
class ExecutionKey {
 public:
  static constexpr std::size_t kLongest = 64;

  ExecutionKey(const char* exchangeOrderNo, const char* exchangeTradeId) noexcept;
  std::string_view Text() const noexcept { return {Characters, Length}; }
  std::uint32_t Hash() const noexcept { return HashCode; }

 private:
  void Append(const char* text) noexcept;

  std::uint8_t Length = 0;
  std::uint32_t HashCode = 0;
  char Characters[kLongest];
};

// Contains and Insert are O(1): a new key touches one place in memory, which Prefetch loads during other work. A trade
// takes its characters, one byte and 11 to 21 bytes of table.
//
// An open table of 8-byte slots, at most three quarters full, searched from the slot of the hash's highest bits; the
// characters are in blocks. Doubling walks the old table once, in the order of the new one. A std::unordered_set of
// strings takes three times the memory, and without Prefetch the cache miss in a table of a million keys costs as much
// as decoding the trade.
class ExecutionSet {
 public:
  void Prefetch(const ExecutionKey& key) const noexcept;
  bool Contains(const ExecutionKey& key) const noexcept;
  // The next Insert does not allocate.
  void MakeRoom();
  // False, with nothing changed, if the key is known. On std::bad_alloc nothing has changed.
  bool Insert(const ExecutionKey& key);
  std::size_t Size() const noexcept { return Count; }
  void Clear() noexcept;

 private:
  struct Slot {
    std::uint32_t Hash = 0;
    std::uint32_t Place = 0;  // of the characters in the blocks, counted from 1; 0 is a free slot
  };
  static constexpr std::size_t kBlockSize = std::size_t{1} << 18;
  static constexpr unsigned kFirstBits = 10;

  std::size_t HomeOf(std::uint32_t hash) const noexcept { return hash >> (32 - Bits); }
  std::size_t SlotFor(const ExecutionKey& key) const noexcept;
  std::string_view TextAt(std::uint32_t place) const noexcept;
  std::uint32_t KeepText(std::string_view text) noexcept;
  void Grow();

  std::vector<Slot> Slots;
  unsigned Bits = 0;  // the table has 2^Bits slots
  std::size_t Count = 0;
  std::vector<std::unique_ptr<char[]>> Blocks;
  std::size_t UsedInLastBlock = kBlockSize;
};

// ExecutionSet: every execution that the day has brought, by the exchange's order number with its trade number behind
// it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

// The key of one execution: the two texts joined, without a separator. At most 64 characters.
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

// Promises: the set of keys, each with its own bytes, for a cost that does not grow with the day: one place in memory
// is touched for a new key, and Prefetch brings it in while other work is done. A trade takes its characters, one byte
// and 11 to 21 bytes of table. Works as an open table of 8-byte slots, at most three quarters full, searched from the
// slot that the hash's highest bits name; the characters stand one behind the other in blocks. Doubling walks the old
// table from end to end in the order of the new one. It is our own because a set of strings costs three times the
// memory, and because of Prefetch: the miss in a table of a million keys would cost as much as the decoding of the
// trade.
class ExecutionSet {
 public:
  void Prefetch(const ExecutionKey& key) const noexcept;
  bool Contains(const ExecutionKey& key) const noexcept;
  // The next insert takes no memory.
  void MakeRoom();
  // False, with nothing changed, when the key is known. Nothing changes when memory runs out.
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

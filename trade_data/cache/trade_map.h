// The containers of trade records. RecordPool: their memory. TradeMap: by rising VELDTradeID. TradeNumberMap: by
// falling local number.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "platform/memory.h"
#include "trade_data/records/trade_record.h"

// Records stay at their addresses until Clear. Spare and Keep are O(1); a record takes its 750 bytes and no more; Clear
// frees 2,796 records at a time.
//
// Slabs of two megabytes, filled from the front. A message is decoded into the record that Keep would keep, so that a
// new trade is never copied. Returned records are linked through their first bytes: returning one does not allocate.
class RecordPool {
 public:
  // The next free record, zeroed. The same one until Keep.
  TradeRecord& Spare();
  // The record of the last Spare, as it is now.
  const TradeRecord* PeekSpare() const noexcept { return SpareRecord; }
  TradeRecord* Keep() noexcept { return std::exchange(SpareRecord, nullptr); }
  // Returns a kept record to the pool. Requires: nothing points to it.
  void GiveBack(TradeRecord* record) noexcept;
  void Clear() noexcept;

 private:
  struct Slab;
  struct SlabDeleter {
    void operator()(Slab* slab) const noexcept;
  };
  TradeRecord* TakeFree();

  std::vector<std::unique_ptr<Slab, SlabDeleter>> Slabs;
  TradeRecord* SpareRecord = nullptr;
  TradeRecord* FirstReturned = nullptr;  // its first bytes are the address of the next one
  std::size_t UsedInLastSlab = 0;
};

// An ordered map of signed ids. Adding an id above all others is O(1); any other Find or Insert takes some hundred
// nanoseconds at a million trades. 12 bytes per trade while ids mostly rise, at most about twice that.
//
// Sorted blocks of up to 512 ids, found by binary search of their first ids. A full block is split in halves, or
// followed by an empty one if the new id is above all. MakeRoom allocates blocks in advance, so that inserts cannot
// fail.
class TradeMap {
 public:
  struct Entry {
    std::int32_t Id;
    TradeRecord* Record;
  };

  // Null without one.
  TradeRecord* Find(std::int32_t id) const noexcept;
  // Requires: the map does not have the id. On std::bad_alloc nothing has changed.
  void Insert(std::int32_t id, TradeRecord* record);
  // That many inserts do not allocate.
  void MakeRoom(std::size_t inserts);
  // Frees what MakeRoom has allocated and no insert has used.
  void DropRoom() noexcept { Spares.clear(); }
  void Clear() noexcept;
  std::size_t Size() const noexcept { return Count; }
  bool Empty() const noexcept { return Count == 0; }

  // Rising order of id. Insert invalidates iterators.
  class Iterator {
   public:
    Entry operator*() const noexcept {
      const Block& block = *Map->Blocks[BlockAt].Content;
      return {block.Ids[At], block.Records[At]};
    }
    Iterator& operator++() noexcept {
      if (++At == Map->Blocks[BlockAt].Content->Used) {
        ++BlockAt;
        At = 0;
      }
      return *this;
    }
    bool operator==(const Iterator&) const noexcept = default;

   private:
    friend class TradeMap;
    Iterator(const TradeMap* map, std::size_t blockAt) noexcept : Map(map), BlockAt(blockAt) {}
    const TradeMap* Map;
    std::size_t BlockAt;
    std::size_t At = 0;
  };
  Iterator begin() const noexcept { return {this, 0}; }
  Iterator end() const noexcept { return {this, Blocks.size()}; }

 private:
  static constexpr std::size_t kBlockSize = 512;
  // A block in the list is not empty.
  struct Block {
    std::size_t Used = 0;
    std::int32_t Ids[kBlockSize];
    TradeRecord* Records[kBlockSize];

    std::size_t LowerBound(std::int32_t id) const noexcept;
    void InsertAt(std::size_t at, std::int32_t id, TradeRecord* record) noexcept;
  };

  struct BlockEntry {
    std::int32_t FirstId;
    std::unique_ptr<Block> Content;
  };

  bool IsBehindAll(std::int32_t id) const noexcept;
  std::size_t BlockFor(std::int32_t id) const noexcept;
  void Append(std::int32_t id, TradeRecord* record);
  void Split(std::size_t blockAt);
  std::unique_ptr<Block> TakeSpare() noexcept;

  std::vector<BlockEntry> Blocks;
  std::vector<std::unique_ptr<Block>> Spares;
  std::size_t Count = 0;
};

// From local number to record; every operation is O(1), 8 bytes per trade. Each number is one below the one before, so
// the lowest is the newest trade, and only the lowest are removed: there are no gaps, and the number gives the place in
// a vector.
class TradeNumberMap {
 public:
  // That many inserts do not allocate.
  void MakeRoom(std::size_t inserts) { ::MakeRoom(Records, inserts); }
  // Requires: the number is one below the lowest, or the map is empty. On std::bad_alloc nothing has changed.
  void Insert(std::int32_t number, TradeRecord* record) {
    MakeRoom(1);
    if (Records.empty()) HighestNumber = number;
    Records.push_back(record);
  }
  bool Empty() const noexcept { return Records.empty(); }
  std::size_t Size() const noexcept { return Records.size(); }
  void Clear() noexcept { Records.clear(); }

  // The newest trade. Requires a record.
  TradeRecord* LowestRecord() const noexcept { return Records.back(); }
  void RemoveLowest() noexcept { Records.pop_back(); }

  // All records, oldest first.
  const std::vector<TradeRecord*>& All() const noexcept { return Records; }

  // Place 0 is the highest number, the oldest trade.
  TradeRecord* RecordAt(std::size_t place) const noexcept { return Records[place]; }
  std::int32_t NumberAt(std::size_t place) const noexcept {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(HighestNumber) - static_cast<std::uint32_t>(place));
  }

 private:
  std::int32_t HighestNumber = 0;
  std::vector<TradeRecord*> Records;
};

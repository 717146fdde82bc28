// TradeMap: references to trade records in rising order of VELDTradeID.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "foundations/make_room.h"
#include "trade_data/records/trade_record.h"

// Promises: the order of a map keyed by signed id; an id above all others is added in constant time, and any other
// found or added in some hundred nanoseconds at a million trades; 12 bytes a trade while ids mostly rise, at most about
// twice that. Works in blocks of up to 512 ids, each sorted, found by bisecting the list of their first ids. A full
// block is split in halves, or, where the new id comes behind everything, followed by an empty one. Blocks for inserts
// to come can be made ahead, so that those cannot fail.
class TradeMap {
 public:
  struct Entry {
    std::int32_t Id;
    TradeRecord* Record;
  };

  // Null when there is none.
  TradeRecord* Find(std::int32_t id) const noexcept;
  // The map must not hold the id yet. Nothing changes when memory runs out.
  void Insert(std::int32_t id, TradeRecord* record);
  // The next inserts, so many of them, take no memory.
  void MakeRoom(std::size_t inserts);
  // Releases what MakeRoom made and no insert took.
  void DropRoom() noexcept { Spares.clear(); }
  void Clear() noexcept;
  std::size_t Size() const noexcept { return Count; }
  bool Empty() const noexcept { return Count == 0; }

  // Walks the entries in rising order of id. Inserting ends the use of an iterator.
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
  // Never empty once it stands in the list.
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

// TradeNumberMap: local trade numbers and the records that they stand for. Numbers fall, so the lowest is the newest
// trade.

// Promises: a map from number to record whose every operation is constant time; 8 bytes a trade.
// Works because numbers are given one below the other and taken back only from the low end: they stand without a gap,
// and the place in a row of records follows from the number.
class TradeNumberMap {
 public:
  // The next inserts, so many of them, take no memory.
  void MakeRoom(std::size_t inserts) { ::MakeRoom(Records, inserts); }
  // The number must be one below the lowest; into an empty map any number goes. Nothing changes when memory runs out.
  void Insert(std::int32_t number, TradeRecord* record) {
    MakeRoom(1);
    if (Records.empty()) HighestNumber = number;
    Records.push_back(record);
  }
  bool Empty() const noexcept { return Records.empty(); }
  std::size_t Size() const noexcept { return Records.size(); }
  void Clear() noexcept { Records.clear(); }

  // The newest trade: the map must not be empty.
  TradeRecord* LowestRecord() const noexcept { return Records.back(); }
  void RemoveLowest() noexcept { Records.pop_back(); }

  // All records, the one with the highest number first.
  const std::vector<TradeRecord*>& All() const noexcept { return Records; }

  // Place 0 holds the highest number, which is the oldest trade.
  TradeRecord* RecordAt(std::size_t place) const noexcept { return Records[place]; }
  std::int32_t NumberAt(std::size_t place) const noexcept {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(HighestNumber) - static_cast<std::uint32_t>(place));
  }

 private:
  std::int32_t HighestNumber = 0;
  std::vector<TradeRecord*> Records;
};

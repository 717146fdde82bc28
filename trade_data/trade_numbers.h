// TradeNumberMap: local trade numbers and the records that they stand for. Numbers fall, so the lowest is the newest
// trade. Used on the terminal's calling thread only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "foundations/make_room.h"
#include "trade_data/trade_record.h"

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

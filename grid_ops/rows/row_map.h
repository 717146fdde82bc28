// RowMap: the rows of a book, references to records by signed row key; rising keys are the order on the screen.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "trade_data/cache/trade_map.h"

// Row lookup and append at the next lower key are O(1); 8 bytes per row.
// Keys are dense, as each is one below the last: the map holds a few runs of keys without a gap, mostly one, two after
// a sort. A run stores its highest key first, so that the newest record is appended.
class RowMap {
 public:
  void Clear() noexcept;
  bool Empty() const noexcept { return Count == 0; }
  std::size_t Size() const noexcept { return Count; }

  // A row under that key, one below a run, needs no memory.
  bool HasRoomBelow(std::int32_t key) const noexcept;
  // Reserves memory for that many rows from the key down.
  void MakeRoom(std::int32_t key, std::size_t rows);
  // Stores the record under the key; replaces one that has it. Strong guarantee if memory runs out.
  void Store(std::int32_t key, TradeRecord* record);

  // Row 0 has the lowest key. The row must be below Size.
  TradeRecord* RecordAt(std::size_t row) const noexcept;
  std::int32_t KeyAt(std::size_t row) const noexcept;
  // The row of that key; nothing where no row has it.
  std::optional<std::size_t> RowOf(std::int32_t key) const noexcept;
  bool Holds(const TradeRecord* record) const noexcept;

  // The records of all rows, the first row first.
  std::vector<TradeRecord*> Records() const;

  // Copies the records of the rows from the first on; those rows must exist.
  void CopyRecords(std::size_t first, std::span<TradeRecord*> to) const noexcept;

  // Visits all records, the first row first; fetch is called for each that many rows before its visit.
  template <typename Fetch, typename Visit>
  void ForEach(std::size_t ahead, Fetch fetch, Visit visit) const;

  // Every numbered trade under its number. Nothing changes when memory runs out, here and below.
  void CopyNumbers(const TradeNumberMap& trades);
  // The records as rows with the keys 0, 1, 2 and on.
  void NumberFromZero(const std::vector<TradeRecord*>& records);

 private:
  struct Run {
    std::int64_t HighestKey = 0;
    std::vector<TradeRecord*> Records;  // the highest key first
    std::int64_t LowestKey() const noexcept { return HighestKey + 1 - static_cast<std::int64_t>(Records.size()); }
  };

  template <typename Visit>
  auto VisitRow(std::size_t row, Visit visit) const noexcept;

  void BecomeRun(Run run);

  std::vector<Run> Runs;            // the run with the highest keys first; none is empty
  std::vector<TradeRecord*> Spare;  // room for the records of a run to come
  std::size_t Count = 0;
};

template <typename Fetch, typename Visit>
void RowMap::ForEach(std::size_t ahead, Fetch fetch, Visit visit) const {
  for (auto run = Runs.rbegin(); run != Runs.rend(); ++run)
    for (std::size_t place = run->Records.size(); place-- > 0;) {
      if (place >= ahead) fetch(run->Records[place - ahead]);
      visit(*run->Records[place]);
    }
}

#include "grid_ops/rows/row_map.h"

#include <algorithm>

#include "platform/memory.h"

void RowMap::Clear() noexcept {
  Runs.clear();
  Count = 0;
}

bool RowMap::HasRoomBelow(std::int32_t key) const noexcept {
  for (const Run& run : Runs)
    if (run.LowestKey() - 1 == key) return run.Records.size() < run.Records.capacity();
  return false;
}

// A row extends the run that ends just above its key, replaces the row of that key, or begins a run.
void RowMap::MakeRoom(std::int32_t key, std::size_t rows) {
  const std::int64_t lowest = std::int64_t{key} + 1 - static_cast<std::int64_t>(rows);
  bool joins = false;
  for (Run& run : Runs) {
    if (run.LowestKey() - 1 > key || run.HighestKey < lowest) continue;
    ::MakeRoom(run.Records, rows);
    joins |= run.HighestKey >= key;
  }
  if (joins) return;
  ::MakeRoom(Runs, 1);
  ::MakeRoom(Spare, rows);
}

void RowMap::Store(std::int32_t key, TradeRecord* record) {
  auto run = Runs.begin();
  while (run != Runs.end() && key < run->LowestKey() - 1) ++run;
  // The key just below a run may be the highest of the next one.
  if (run != Runs.end() && key == run->LowestKey() - 1) {
    const auto next = run + 1;
    if (next == Runs.end() || next->HighestKey != key) {
      run->Records.push_back(record);
      ++Count;
      return;
    }
    run = next;
  }
  if (run != Runs.end() && key <= run->HighestKey) {
    run->Records[static_cast<std::size_t>(run->HighestKey - key)] = record;
    return;
  }
  const auto place = run - Runs.begin();
  ::MakeRoom(Runs, 1);
  Spare.assign(1, record);
  Runs.insert(Runs.begin() + place, Run{key, std::move(Spare)});
  ++Count;
}

template <typename Visit>
auto RowMap::VisitRow(std::size_t row, Visit visit) const noexcept {
  auto run = Runs.rbegin();
  for (; row >= run->Records.size(); ++run) row -= run->Records.size();
  return visit(*run, run->Records.size() - 1 - row);
}

TradeRecord* RowMap::RecordAt(std::size_t row) const noexcept {
  return VisitRow(row, [](const Run& run, std::size_t place) { return run.Records[place]; });
}

std::int32_t RowMap::KeyAt(std::size_t row) const noexcept {
  return VisitRow(row, [](const Run& run, std::size_t place) {
    return static_cast<std::int32_t>(run.HighestKey - static_cast<std::int64_t>(place));
  });
}

std::optional<std::size_t> RowMap::RowOf(std::int32_t key) const noexcept {
  std::size_t rows = 0;
  for (auto run = Runs.rbegin(); run != Runs.rend(); rows += run->Records.size(), ++run)
    if (key >= run->LowestKey() && key <= run->HighestKey)
      return rows + static_cast<std::size_t>(key - run->LowestKey());
  return std::nullopt;
}

bool RowMap::Holds(const TradeRecord* record) const noexcept {
  return std::any_of(Runs.begin(), Runs.end(), [record](const Run& run) {
    return std::find(run.Records.begin(), run.Records.end(), record) != run.Records.end();
  });
}

std::vector<TradeRecord*> RowMap::Records() const {
  std::vector<TradeRecord*> records;
  records.reserve(Count);
  for (auto run = Runs.rbegin(); run != Runs.rend(); ++run)
    records.insert(records.end(), run->Records.rbegin(), run->Records.rend());
  return records;
}

void RowMap::CopyRecords(std::size_t first, std::span<TradeRecord*> to) const noexcept {
  for (auto run = Runs.rbegin(); run != Runs.rend() && !to.empty(); ++run) {
    const std::size_t size = run->Records.size();
    if (first >= size) {
      first -= size;
      continue;
    }
    const std::size_t count = std::min(size - first, to.size());
    std::copy_n(run->Records.rbegin() + static_cast<std::ptrdiff_t>(first), count, to.begin());
    to = to.subspan(count);
    first = 0;
  }
}

void RowMap::BecomeRun(Run run) {
  ::MakeRoom(Runs, 1);
  Clear();
  Count = run.Records.size();
  if (Count != 0) Runs.push_back(std::move(run));
}

void RowMap::CopyNumbers(const TradeNumberMap& trades) {
  BecomeRun({trades.NumberAt(0), trades.All()});
}

void RowMap::NumberFromZero(const std::vector<TradeRecord*>& records) {
  BecomeRun({static_cast<std::int64_t>(records.size()) - 1, {records.rbegin(), records.rend()}});
}

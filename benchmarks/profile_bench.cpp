// Save and load of the column profile, compared with writing and reading the same bytes.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "benchmarks/bench_process.h"
#include "grid_base/settings/column_profile.h"
#include "grid_ops/columns/trade_columns.h"
#include "platform/locale.h"

namespace {

const std::filesystem::path& Folder() {
  static const BenchFolder folder("profile_");
  return folder.Path;
}

ColumnProfile NewProfile() {
  return {"Trade Book", L"ColumnProfile", Folder()};
}

void SaveProfile() {
  ColumnProfile profile = NewProfile();
  int place = 0;
  for (const TradeColumn& column : kTradeColumns)
    profile.SaveColumnState(std::string(column.Key), {CodePageToWide(column.Title), column.WidthPx, 1,
                                                      static_cast<int>(column.Align), 0, 0, place++, -1});
  profile.SaveMultipleSort(true);
  profile.SaveColumnProfileFile();
}

std::size_t LoadProfile() {
  ColumnProfile profile = NewProfile();
  profile.LoadColumnProfileFile();
  int index = 0;
  for (const TradeColumn& column : kTradeColumns)
    profile.InsertProfiledColumn({std::string(column.Key), L"default", 1, 0, 0}, index++);
  return profile.DisplayOrder(index).size();
}

void SaveAndLoadProfile(benchmark::State& state) {
  for (auto _ : state) {
    SaveProfile();
    if (LoadProfile() != std::size(kTradeColumns)) state.SkipWithError("not every column came back");
  }
  state.SetItemsProcessed(state.iterations());
}

void WriteAndReadSameBytes(benchmark::State& state) {
  SaveProfile();
  const std::string bytes = ReadFile(Folder() / "ColumnProfile" / "Trade Book" / "ColumnProfile.xml");
  const std::filesystem::path path = Folder() / "same_bytes.xml";
  for (auto _ : state) {
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (ReadFile(path) != bytes) state.SkipWithError("the bytes did not come back");
  }
  state.SetItemsProcessed(state.iterations());
}

BENCHMARK(SaveAndLoadProfile)->Unit(benchmark::kMicrosecond);
BENCHMARK(WriteAndReadSameBytes)->Unit(benchmark::kMicrosecond);

}  // namespace

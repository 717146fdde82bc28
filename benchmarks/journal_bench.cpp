// Appending reports to a journal beside one write call for each, and reading them back beside the bare reading of the
// file.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <memory>
#include <string>
#include <vector>

#include "benchmarks/bench_process.h"
#include "feeds/journal/journal.h"

namespace {

constexpr std::size_t kAppended = 100'000;
constexpr std::size_t kRead = 1'000'000;
constexpr std::size_t kReportSize = 400;

const std::filesystem::path& Folder() {
  static const BenchFolder folder("journal_");
  return folder.Path;
}

const std::string& Report() {
  static const std::string report(kReportSize, '8');
  return report;
}

void AppendReports(Journal& journal, std::size_t count, benchmark::State& state) {
  for (std::size_t i = 0; i < count; ++i)
    if (!journal.Append(JournalKind::Message, 1, journal.NextTarget() + 1, Report()))
      state.SkipWithError(journal.Failure().c_str());
}

// Of a million reports, made once.
const std::filesystem::path& LargeJournal(benchmark::State& state) {
  static Journal journal(Folder(), "large", "20260302");
  if (journal.NextTarget() == 1) AppendReports(journal, kRead, state);
  return journal.File();
}

void AppendToJournal(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    auto journal = std::make_unique<Journal>(Folder(), "appended", "20260302");
    state.ResumeTiming();
    AppendReports(*journal, kAppended, state);
    state.PauseTiming();
    const std::filesystem::path file = journal->File();
    journal.reset();
    std::filesystem::remove(file);
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kAppended));
}

void WriteSameReports(benchmark::State& state) {
  const std::string record(kRecordHeadSize + kReportSize, '8');
  const std::filesystem::path path = Folder() / "same";
  for (auto _ : state) {
    const int file = open(path.c_str(), O_CREAT | O_TRUNC | O_WRONLY, 0600);
    for (std::size_t i = 0; i < kAppended; ++i)
      if (write(file, record.data(), record.size()) < 0) state.SkipWithError("cannot write");
    close(file);
    state.PauseTiming();
    std::filesystem::remove(path);
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kAppended));
}

void ReadJournal(benchmark::State& state) {
  const std::filesystem::path& file = LargeJournal(state);
  for (auto _ : state) {
    JournalReader reader(file);
    std::size_t count = 0;
    for (JournalRecord record; reader.Next(record); ++count) benchmark::DoNotOptimize(record);
    if (count != kRead) state.SkipWithError("not every record was read");
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kRead));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(std::filesystem::file_size(file)));
}

void ReadSameBytes(benchmark::State& state) {
  const std::filesystem::path& path = LargeJournal(state);
  std::vector<char> block(256 * 1024);
  for (auto _ : state) {
    const int file = open(path.c_str(), O_RDONLY);
    while (read(file, block.data(), block.size()) > 0) benchmark::DoNotOptimize(block.data());
    close(file);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kRead));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(std::filesystem::file_size(path)));
}

BENCHMARK(AppendToJournal)->Unit(benchmark::kMillisecond);
BENCHMARK(WriteSameReports)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadJournal)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadSameBytes)->Unit(benchmark::kMillisecond);

}  // namespace

// Appending reports to a journal beside one write call for each, reading them back beside the bare reading of the file,
// and the day of trade messages that they are.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "benchmarks/bench_process.h"
#include "feeds/journal/journal.h"
#include "feeds/journal/journal_day.h"

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

struct NoAlarms : AlarmSink {
  void OnAlarm(const Alarm&) override { ++Count; }
  int Count = 0;
};

// With the fields that a drop copy has, about 400 bytes.
std::string TradeReport(std::size_t number) {
  const std::string id = std::to_string(number);
  std::string body = "35=8|49=VENUE|56=DESK|34=" + id + "|52=20260302-09:15:00.123|1=CLIENT-" +
                     std::to_string(number % 500) + "|6=1025.5|11=CL-" + std::to_string(number / 3) +
                     "|14=100|15=USD|17=EXEC-20260302-" + id + "|37=ORDER-20260302-" + std::to_string(number / 3) +
                     "|31=1025.5|32=100|38=300|39=1|40=2|44=1026|48=INE002A01018|54=1|55=ACME|58=drop copy|"
                     "59=0|60=20260302-09:15:00.123|77=O|150=F|151=200|167=CS|200=202603|207=XNSE|231=1|"
                     "453=3|448=FIRM|447=D|452=1|448=TRADER|447=D|452=12|448=DESK|447=D|452=36|"
                     "528=P|1003=T" +
                     id + "|";
  std::string text = "8=FIX.4.4|9=" + std::to_string(body.size()) + '|' + body + "10=000|";
  std::replace(text.begin(), text.end(), '|', '\x01');
  return text;
}

// Of 100,000 trades, made once.
const std::filesystem::path& TradeJournal(benchmark::State& state) {
  static Journal journal(Folder(), "trades", "20260302");
  while (journal.NextTarget() <= kAppended)
    if (!journal.Append(JournalKind::Message, 1, journal.NextTarget() + 1, TradeReport(journal.NextTarget())))
      state.SkipWithError(journal.Failure().c_str());
  return journal.File();
}

void MapJournal(benchmark::State& state) {
  constexpr std::size_t kBatch = 256 * 1024;
  const std::filesystem::path& file = TradeJournal(state);
  for (auto _ : state) {
    NoAlarms alarms;
    JournalDay day(file, {}, alarms);
    for (std::vector<std::uint8_t> messages; day.Take(messages, kBatch); messages.clear())
      benchmark::DoNotOptimize(messages.data());
    if (day.Counts().Trades != kAppended || alarms.Count > 0) state.SkipWithError("not every report is a trade");
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kAppended));
}

void ReadTradeJournal(benchmark::State& state) {
  const std::filesystem::path& file = TradeJournal(state);
  for (auto _ : state) {
    JournalReader reader(file);
    for (JournalRecord record; reader.Next(record);) benchmark::DoNotOptimize(record);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kAppended));
}

BENCHMARK(AppendToJournal)->Unit(benchmark::kMillisecond);
BENCHMARK(WriteSameReports)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadJournal)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadSameBytes)->Unit(benchmark::kMillisecond);
BENCHMARK(MapJournal)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadTradeJournal)->Unit(benchmark::kMillisecond);

}  // namespace

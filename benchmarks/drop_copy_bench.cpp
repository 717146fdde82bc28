// Reports from a socket to the journal, through the engine.
#include <benchmark/benchmark.h>

#include <condition_variable>
#include <mutex>

#include "benchmarks/bench_process.h"
#include "feeds/drop_copy/drop_copy.h"
#include "tests/feeds/engine/fix_peer.h"

namespace {

constexpr unsigned kReports = 100'000;
constexpr std::size_t kReportSize = 400;

class KeptCount : public DropCopyEvents {
 public:
  void OnState(bool, const std::string&) override {}
  void OnAlarm(const Alarm&) override { ++Alarms; }
  void OnNewDay(const std::filesystem::path&) override {}
  void OnKept() override {
    const std::lock_guard guard(Mutex);
    if (++Kept % 1000 <= 2) Changed.notify_all();
  }
  void WaitFor(unsigned count) {
    std::unique_lock lock(Mutex);
    Changed.wait(lock, [&] { return Kept >= count; });
  }
  unsigned Alarms = 0;

 private:
  std::mutex Mutex;
  std::condition_variable Changed;
  unsigned Kept = 0;
};

// An execution report with parties, padded by its text.
std::string ReportOf(const FixPeer& venue, unsigned number) {
  const std::string fields = "37=ORDER" + std::to_string(number / 3) + "|17=EXEC" + std::to_string(number) +
                             "|150=F|39=2|1=ACCOUNT|55=ACME|48=INE002A01018|22=4|207=XNSE|54=1|38=100|32=100|31=1025.5|"
                             "151=0|14=100|6=1025.5|60=20260302-09:15:00.123|453=2|448=FIRM|447=D|452=1|448=TRADER|"
                             "447=D|452=12|58=";
  const std::string bare = venue.Make("8", number, fields + "|", "VENUE");
  return venue.Make("8", number, fields + std::string(kReportSize - bare.size(), 'x') + "|", "VENUE");
}

FeedSettings SettingsOf(const FixPeer& venue, const std::filesystem::path& folder) {
  FeedSettings settings;
  settings.Session.BeginString = "FIX.4.4";
  settings.Session.SenderCompID = "DESK";
  settings.Session.TargetCompID = "VENUE";
  settings.Session.Host = "127.0.0.1";
  settings.Session.Port = venue.Port();
  settings.JournalFolder = folder;
  return settings;
}

void SocketToJournal(benchmark::State& state) {
  FixPeer venue;
  std::string reports;
  for (unsigned number = 2; number < kReports + 2; ++number) reports += ReportOf(venue, number);
  for (auto _ : state) {
    state.PauseTiming();
    const BenchFolder folder("drop_copy_");
    KeptCount kept;
    DropCopy copy(SettingsOf(venue, folder.Path), kept);
    copy.Start();
    venue.LogOn(1);
    kept.WaitFor(2);  // both logons
    state.ResumeTiming();
    venue.SendRaw(reports);
    kept.WaitFor(kReports + 2);
    state.PauseTiming();
    if (kept.Alarms > 0) state.SkipWithError("not every report was taken");
    venue.Close();
    copy.Stop();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kReports));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(reports.size()));
}

BENCHMARK(SocketToJournal)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

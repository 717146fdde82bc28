// Batches of trades into a day log and out of it, beside NATS alone with the same bytes, each on a server of its own;
// and what 1, 4 and 16 readers at once cost the server.
#include <benchmark/benchmark.h>
#include <nats/nats.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <fstream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "benchmarks/bench_process.h"
#include "benchmarks/sample_messages.h"
#include "feeds/common/feed_report.h"
#include "feeds/day_log/log_reader.h"
#include "feeds/day_log/log_writer.h"
#include "tests/feeds/day_log/log_server.h"

namespace {

constexpr std::size_t kRead = 200'000;
constexpr std::size_t kLargestBatch = LogWriter::kMostBytes / kSampleMessageSize;
constexpr std::chrono::seconds kPatience(30);

struct Batch {
  const std::uint8_t* Bytes;
  std::size_t Count;
  std::size_t Size() const { return Count * kSampleMessageSize; }
};

// Calls with the batches that the first `trades` of the sample messages make, and how many trades were before.
template <typename Call>
void EachBatch(std::size_t trades, std::size_t most, Call call) {
  const std::vector<std::uint8_t>& messages = SampleMessages(kRead, 9101);
  for (std::size_t before = 0; before < trades; before += most)
    call(before, Batch{&messages[before * kSampleMessageSize], std::min(most, trades - before)});
}

// A server for all that write, and one with a log that is only read.
LogServer& WritingServer() {
  static const BenchFolder folder("day_log_writing_");
  static LogServer server(folder.Path);
  return server;
}

LogDay NextDay() {
  static int number = 0;
  return {"bench-" + std::to_string(++number), "20260302"};
}

void WriteLog(benchmark::State& state) {
  const auto most = static_cast<std::size_t>(state.range(0));
  const std::size_t trades = most * 100;
  for (auto _ : state) {
    state.PauseTiming();
    LogWriter writer(WritingServer().Access(), NextDay(), 1);
    writer.Connect(kPatience);
    state.ResumeTiming();
    EachBatch(trades, most, [&](std::size_t before, const Batch& batch) {
      writer.Publish(before, static_cast<std::uint32_t>(batch.Count), {batch.Bytes, batch.Size()});
    });
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(trades));
}

// The client of NATS, connected to a server.
struct PlainClient {
  explicit PlainClient(const LogServer& server) {
    natsConnection_ConnectTo(&Connection, server.Access().Servers.c_str());
    natsConnection_JetStream(&Context, Connection, nullptr);
  }
  ~PlainClient() {
    jsCtx_Destroy(Context);
    natsConnection_Destroy(Connection);
  }
  natsConnection* Connection = nullptr;
  jsCtx* Context = nullptr;
};

void PublishSameBatches(benchmark::State& state) {
  const auto most = static_cast<std::size_t>(state.range(0));
  const std::size_t trades = most * 100;
  PlainClient client(WritingServer());
  for (auto _ : state) {
    state.PauseTiming();
    const LogDay day = NextDay();
    const std::string subject = day.Subject();
    LogWriter(WritingServer().Access(), day, 1).Connect(kPatience);
    state.ResumeTiming();
    EachBatch(trades, most, [&](std::size_t, const Batch& batch) {
      if (js_Publish(nullptr, client.Context, subject.c_str(), batch.Bytes, static_cast<int>(batch.Size()), nullptr,
                     nullptr) != NATS_OK)
        state.SkipWithError("the server did not take a message");
    });
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(trades));
}

const LogDay kReadDay{"read", "20260302"};

LogServer& ReadServer() {
  static const BenchFolder folder("day_log_reading_");
  static LogServer server(folder.Path);
  static bool written = false;
  if (written) return server;
  written = true;
  LogWriter writer(server.Access(), kReadDay, 1);
  writer.Connect(kPatience);
  EachBatch(kRead, kLargestBatch, [&](std::size_t before, const Batch& batch) {
    writer.Publish(before, static_cast<std::uint32_t>(batch.Count), {batch.Bytes, batch.Size()});
  });
  return server;
}

// Bytes that came before it gave up.
std::size_t ReadAll(const LogServer& server) {
  LogReader reader(server.Access(), kReadDay);
  std::vector<std::uint8_t> messages;
  std::size_t bytes = 0;
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (bytes < kRead * kSampleMessageSize && std::chrono::steady_clock::now() < end) {
    messages.clear();
    reader.Take(messages, std::chrono::milliseconds(200));
    bytes += messages.size();
  }
  return bytes;
}

void ReadLog(benchmark::State& state) {
  const LogServer& server = ReadServer();
  for (auto _ : state)
    if (ReadAll(server) != kRead * kSampleMessageSize) state.SkipWithError("not every trade came");
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kRead));
}

void ReceiveSameBatches(benchmark::State& state) {
  const PlainClient client(ReadServer());
  const std::string stream = kReadDay.Stream();
  for (auto _ : state) {
    jsSubOptions options;
    jsSubOptions_Init(&options);
    options.Stream = stream.c_str();
    options.Config.AckPolicy = js_AckNone;
    natsSubscription* subscription = nullptr;
    js_SubscribeSync(&subscription, client.Context, kReadDay.Subject().c_str(), nullptr, &options, nullptr);
    natsSubscription_SetPendingLimits(subscription, -1, -1);
    std::size_t bytes = 0;
    natsMsg* message = nullptr;
    while (bytes < kRead * kSampleMessageSize && natsSubscription_NextMsg(&message, subscription, 5000) == NATS_OK) {
      bytes += static_cast<std::size_t>(natsMsg_GetDataLength(message));
      natsMsg_Destroy(message);
    }
    natsSubscription_Destroy(subscription);
    if (bytes != kRead * kSampleMessageSize) state.SkipWithError("not every message came");
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kRead));
}

// Seconds of processor time that the process has taken.
double ProcessorSeconds(pid_t process) {
  std::ifstream stream("/proc/" + std::to_string(process) + "/stat");
  std::string field;
  double user = 0, system = 0;
  for (int i = 0; i < 13; ++i) stream >> field;
  stream >> user >> system;
  return (user + system) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

double ResidentMegabytes(pid_t process) {
  std::ifstream stream("/proc/" + std::to_string(process) + "/statm");
  double total = 0, resident = 0;
  stream >> total >> resident;
  return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

// Items are trades of all readers together.
void ReadersAtOnce(benchmark::State& state) {
  const LogServer& server = ReadServer();
  const double before = ProcessorSeconds(server.Process());
  double megabytes = 0;
  for (auto _ : state) {
    std::atomic<std::size_t> bytes = 0;
    std::vector<std::thread> readers;
    for (std::int64_t i = 0; i < state.range(0); ++i) readers.emplace_back([&] { bytes += ReadAll(server); });
    for (std::thread& reader : readers) reader.join();
    if (bytes != static_cast<std::size_t>(state.range(0)) * kRead * kSampleMessageSize)
      state.SkipWithError("not every trade came");
    megabytes = std::max(megabytes, ResidentMegabytes(server.Process()));
  }
  const std::int64_t trades = state.iterations() * state.range(0) * static_cast<std::int64_t>(kRead);
  state.SetItemsProcessed(trades);
  state.counters["serverNsPerTrade"] =
      1e9 * (ProcessorSeconds(server.Process()) - before) / static_cast<double>(trades);
  state.counters["serverMB"] = megabytes;
}

BENCHMARK(WriteLog)->Arg(kLargestBatch)->Arg(10)->UseRealTime()->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(PublishSameBatches)->Arg(kLargestBatch)->Arg(10)->UseRealTime()->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(ReadLog)->UseRealTime()->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(ReceiveSameBatches)->UseRealTime()->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(ReadersAtOnce)
    ->Arg(1)
    ->Arg(4)
    ->Arg(16)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->Repetitions(3);

}  // namespace

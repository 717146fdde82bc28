// From a log to the trade cache; and from a venue's send to the painted row: demo_venue, trade_gateway and a day log as
// processes of their own, and ten books on the screen that follow the log. Skipped without a display.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <thread>

#include "benchmarks/bench_process.h"
#include "benchmarks/child_process.h"
#include "benchmarks/day_of_books.h"
#include "benchmarks/sample_messages.h"
#include "benchmarks/window_loop.h"
#include "feeds/day_log/log_writer.h"
#include "feeds/journal/journal_reader.h"
#include "feeds/live/log_feed.h"
#include "host_link/messages/message_header.h"
#include "platform/modules.h"
#include "tests/feeds/day_log/log_server.h"
#include "trade_data/cache/trade_cache.h"

namespace {

using Clock = std::chrono::system_clock;
using std::chrono::milliseconds;

constexpr std::size_t kBooks = 10;
constexpr std::uint64_t kPerSecond = 5000;
constexpr std::uint64_t kTrades = 60'000;
constexpr milliseconds kBeat(250);
constexpr milliseconds kLongest(120'000);

void WriteSettings(const std::filesystem::path& file, const std::string& port, const std::string& servers) {
  std::ofstream(file) << "[session]\nversion = FIX.4.4\nsender_comp_id = DESK\ntarget_comp_id = VENUE\n"
                      << "host = 127.0.0.1\nport = " << port << "\n[journal]\nfolder = journal\n"
                      << "[log]\nservers = " << servers << "\nname = lag\n";
}

// 52 of a message, in microseconds UTC since 1970: yyyyMMdd-HH:mm:ss.sss.
std::int64_t SentUs(std::string_view text) {
  const std::size_t at = text.find(
      "\x01"
      "52=");
  if (at == std::string_view::npos) return 0;
  const std::string time(text.substr(at + 4, 21));
  int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0, milli = 0;
  std::sscanf(time.c_str(), "%4d%2d%2d-%2d:%2d:%2d.%3d", &year, &month, &day, &hour, &minute, &second, &milli);
  const std::chrono::sys_days date{std::chrono::year(year) / month / day};
  return std::chrono::duration_cast<std::chrono::microseconds>(date.time_since_epoch()).count() +
         (((hour * 60 + minute) * 60 + second) * 1000LL + milli) * 1000;
}

// When each trade of the journal was sent, in the order of their numbers.
std::vector<std::int64_t> SendTimes(const std::filesystem::path& folder) {
  std::vector<std::int64_t> times;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() != ".journal") continue;
    JournalReader reader(entry.path());
    for (JournalRecord record; reader.Next(record);)
      if (record.Text.find("\x01"
                           "35=8\x01") != std::string_view::npos)
        times.push_back(SentUs(record.Text));
  }
  return times;
}

// The whole messages of a feed, for Play.
DayOfBooks::Messages MessagesOf(std::span<const std::uint8_t> bytes) {
  DayOfBooks::Messages messages;
  while (bytes.size() >= kHeaderSize) {
    const std::size_t size = kHeaderSize + bytes[8] + 256U * bytes[9];
    messages.emplace_back(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size));
    bytes = bytes.subspan(size);
  }
  return messages;
}

// A beat: the trades up to then are painted in each book at its time.
struct PaintedUntil {
  std::uint64_t Trades;
  std::vector<Clock::time_point> Books;
};

double MsSince(std::int64_t sentUs, Clock::time_point time) {
  const auto us = std::chrono::duration_cast<std::chrono::microseconds>(time.time_since_epoch()).count();
  return static_cast<double>(us - sentUs) / 1000;
}

// Follows the feed as the terminal does: looks for trades between events, repaints on the beat.
std::vector<PaintedUntil> Follow(DayOfBooks& day, Feed& feed) {
  std::vector<PaintedUntil> paints;
  std::uint64_t taken = 0;
  const auto end = Clock::now() + kLongest;
  auto beat = Clock::now() + kBeat;
  while ((paints.empty() || paints.back().Trades < kTrades) && Clock::now() < end) {
    std::vector<std::uint8_t> bytes;
    if (feed.Take(bytes)) {
      const DayOfBooks::Messages messages = MessagesOf(bytes);
      day.Play(messages);
      taken += messages.size();
    }
    if (Clock::now() >= beat) {
      beat += kBeat;
      const std::uint64_t shown = taken;
      day.PaintBeat();
      paints.push_back({shown, day.PaintedAt()});
    }
    ServeWindows();
  }
  return paints;
}

double Percentile(std::vector<double>& sorted, double share) {
  return sorted[static_cast<std::size_t>(share * static_cast<double>(sorted.size() - 1))];
}

void TellLags(benchmark::State& state, const std::vector<PaintedUntil>& paints, const std::vector<std::int64_t>& sent) {
  if (paints.empty() || paints.back().Trades != kTrades || sent.size() != kTrades)
    return state.SkipWithError("trades are missing");
  std::vector<double> lags;
  std::size_t trade = 0;
  for (const PaintedUntil& paint : paints)
    for (; trade < paint.Trades; ++trade)
      for (const Clock::time_point time : paint.Books) lags.push_back(MsSince(sent[trade], time));
  if (lags.size() != kTrades * kBooks) return state.SkipWithError("a book was not painted");
  std::ranges::sort(lags);
  state.counters["p50ms"] = Percentile(lags, 0.5);
  state.counters["p99ms"] = Percentile(lags, 0.99);
  state.counters["mostMs"] = lags.back();
  state.counters["tradesPerSecond"] =
      static_cast<double>(kTrades - 1) * 1e6 / static_cast<double>(sent.back() - sent.front());
}

void VenueToPaintedRow(benchmark::State& state) {
  DayOfBooks* day = DayOf(state, 1);
  if (day == nullptr) return;
  const BenchFolder folder("feed_lag");
  const std::filesystem::path programs = ProgramFolder();
  const LogServer server(folder.Path / "log");
  ChildProcess venue({programs / "demo_venue", "--port-file", folder.Path / "port", "--generate",
                      std::to_string(kTrades), "--rate", std::to_string(kPerSecond), "--stay"});
  WriteSettings(folder.Path / "gateway.cfg", WaitForLine(folder.Path / "port"), server.Access().Servers);
  day->OpenBooks(kBooks);
  const std::time_t now = std::time(nullptr);
  char date[16];
  std::strftime(date, sizeof date, "%Y%m%d", std::gmtime(&now));
  for (auto _ : state) {
    LogFeed feed(server.Access(), {"lag", date});
    ChildProcess gateway({programs / "trade_gateway", folder.Path / "gateway.cfg"});
    const std::vector<PaintedUntil> paints = Follow(*day, feed);
    TellLags(state, paints, SendTimes(folder.Path / "journal"));
  }
  day->CloseBooks();
}
// A day log of trades, read by the terminal's feed, into the trade cache as a download; the floor is the download
// alone.
void LogToCache(benchmark::State& state) {
  constexpr std::size_t kRead = 200'000;
  const BenchFolder folder("feed_cache");
  const LogServer server(folder.Path);
  const LogDay logDay{"cache", "20260302"};
  const std::vector<std::uint8_t>& messages = SampleMessages(kRead, 9101);
  const std::size_t most = LogWriter::kMostBytes / kSampleMessageSize;
  LogWriter writer(server.Access(), logDay, 1);
  writer.Connect(kLongest);
  for (std::size_t before = 0; before < kRead; before += most) {
    const std::size_t count = std::min(most, kRead - before);
    writer.Publish(before, static_cast<std::uint32_t>(count),
                   {&messages[before * kSampleMessageSize], count * kSampleMessageSize});
  }
  CQORTradeImpl decoder;
  const TradeBooks none;
  for (auto _ : state) {
    TradeCache cache(decoder, none, folder.Path);
    cache.AutoTradeWriteCSV = false;
    LogFeed feed(server.Access(), logDay);
    std::size_t taken = 0;
    for (std::vector<std::uint8_t> bytes; taken < kRead; bytes.clear()) {
      if (!feed.Take(bytes)) std::this_thread::sleep_for(milliseconds(1));
      for (std::size_t at = 0; at < bytes.size(); at += kSampleMessageSize, ++taken) {
        CQORPacketReader reader(&bytes[at], kSampleMessageSize);
        OpenSample(reader, 9101);
        cache.OnTrade(reader);
      }
    }
    cache.OnDownloadEnd();
    if (cache.TradeNumbers.All().size() != kRead) state.SkipWithError("trades are missing");
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kRead));
}
BENCHMARK(LogToCache)->UseRealTime()->Unit(benchmark::kMillisecond);

BENCHMARK(VenueToPaintedRow)->Iterations(1)->Repetitions(1)->Unit(benchmark::kMillisecond);

}  // namespace

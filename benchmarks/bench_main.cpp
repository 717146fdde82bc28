// Runs the benchmarks and prints, for each figure that the project holds itself to, what was measured beside its floor
// or peer of the same run. A figure that is missed is marked; the program's exit code does not depend on it, as
// machines are noisy and this is no test.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace {

// Median processor time of one item, in nanoseconds, and the counter of bytes a trade, by benchmark name.
struct Measured {
  double NanosecondsPerItem = 0;
  double BytesPerTrade = 0;
};
using Results = std::map<std::string, Measured>;

// Collects the medians that the console reporter prints.
class MedianCollector : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (run.aggregate_name != "median" || run.error_occurred) continue;
      Measured& measured = Medians[run.run_name.str()];
      if (const auto rate = run.counters.find("items_per_second"); rate != run.counters.end())
        measured.NanosecondsPerItem = 1e9 / rate->second.value;
      if (const auto bytes = run.counters.find("bytesPerTrade"); bytes != run.counters.end())
        measured.BytesPerTrade = bytes->second.value;
    }
  }
  Results Medians;
};

// Name against Beside must be a ratio of at most Limit, or, where AtLeast is set, of at least that.
struct Figure {
  const char* What;
  const char* Name;
  const char* Beside;
  double Limit;
  bool AtLeast = false;
};

constexpr Figure kFigures[] = {
    {"decode one trade message / copy its bytes out of memory", "DecodeTrade", "CopyMessage", 5},
    {"QuickFIX parses the same fields / decode one trade message", "ParseFixReport", "DecodeTrade", 15, true},
    {"download of 1,000,000 trades, each / copy its bytes", "Download/1000000", "CopyMessage", 15},
    {"download of 1,000,000, each / download of 10,000, each", "Download/1000000", "Download/10000", 1.5},
    {"live trade with daily file / one write call of its line", "LiveWithDailyFile", "WriteSameLines", 3},
};
constexpr double kMostBytesPerTrade = 975;

void PrintFigures(const Results& results) {
  std::printf("\n%-60s %12s %12s %8s  must be\n", "figure", "measured ns", "beside ns", "ratio");
  for (const Figure& figure : kFigures) {
    const auto measured = results.find(figure.Name);
    const auto beside = results.find(figure.Beside);
    if (measured == results.end() || beside == results.end()) continue;
    const double ratio = measured->second.NanosecondsPerItem / beside->second.NanosecondsPerItem;
    const bool met = figure.AtLeast ? ratio >= figure.Limit : ratio <= figure.Limit;
    std::printf("%-60s %12.1f %12.1f %8.2f  %s %g%s\n", figure.What, measured->second.NanosecondsPerItem,
                beside->second.NanosecondsPerItem, ratio, figure.AtLeast ? "at least" : "at most", figure.Limit,
                met ? "" : "  MISSED");
  }
  if (const auto download = results.find("Download/1000000"); download != results.end()) {
    const double bytes = download->second.BytesPerTrade;
    std::printf("%-60s %12.1f %12s %8s  at most %g%s\n", "memory of one trade at 1,000,000, in bytes", bytes, "", "",
                kMostBytesPerTrade, bytes <= kMostBytesPerTrade ? "" : "  MISSED");
  }
}

}  // namespace

int main(int argc, char** argv) {
  std::string repetitions = "--benchmark_repetitions=7";
  std::string aggregates = "--benchmark_report_aggregates_only=true";
  std::vector<char*> arguments{argv[0], repetitions.data(), aggregates.data()};
  arguments.insert(arguments.end(), argv + 1, argv + argc);
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 2;
  MedianCollector collector;
  benchmark::RunSpecifiedBenchmarks(&collector);
  PrintFigures(collector.Medians);
}

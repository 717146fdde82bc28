// Runs the benchmarks and prints each figure with its limit, together with a lower bound or another program measured in
// the same run. Missed limits are marked but do not change the exit code, because machines are noisy.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace {

// The median processor time of one item and the bytes per trade, by benchmark name.
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

// The limit of the ratio of Name to Beside: an upper one, or with AtLeast a lower one.
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
    {"map one FIX report / QuickFIX parses it in a session", "MapReport", "SessionParsesReport", 0.1},
    {"download of 1,000,000 trades, each / copy its bytes", "Download/1000000", "CopyMessage", 15},
    {"download of 1,000,000, each / download of 10,000, each", "Download/1000000", "Download/10000", 1.5},
    {"live trade with daily file / one write call of its line", "LiveWithDailyFile", "WriteSameLines", 3},
    {"SQLite filters 1,000,000 by a text / the book", "AskSqlite/FilterOneText", "FilterBook/OneText", 3, true},
    {"SQLite filters by three columns / the book", "AskSqlite/FilterThreeTexts", "FilterBook/ThreeTexts", 3, true},
    {"SQLite finds in all columns / the book", "AskSqlite/FindLetters", "FindInBook/Letters", 5, true},
    {"find letters in 1,000,000 trades / in their bare bytes", "FindInBook/Letters", "FindBytes/Letters", 6},
    {"find digits in 1,000,000 trades / in their bare bytes", "FindInBook/Digits", "FindBytes/Digits", 4},
    {"SQLite sorts by price / the book", "AskSqlite/SortPrice", "SortBook/Price", 5, true},
    {"SQLite sorts by symbol / the book", "AskSqlite/SortSymbol", "SortBook/Symbol", 5, true},
    {"SQLite sorts by symbol and price / the book", "AskSqlite/SortSymbolAndPrice", "SortBook/SymbolAndPrice", 5, true},
    {"SQLite sums by side / the book", "AskSqlite/Totals", "RecountTotals", 1, true},
    {"live trade into ten books / with none open", "LiveTrades/TenBooks", "LiveTrades/NoBook", 3},
    {"copy of a middle row / of the first row", "CopyRecord/MiddleRow", "CopyRecord/FirstRow", 1.2},
    {"copy of the last row / of the first row", "CopyRecord/LastRow", "CopyRecord/FirstRow", 1.2},
    {"position of a trade, by client / search and add", "PositionOfATrade/byClient:1/firstOut:0",
     "SearchAndAdd/byClient:1", 8},
    {"the same, first in first out", "PositionOfATrade/byClient:1/firstOut:1", "SearchAndAdd/byClient:1", 12},
    {"repaint of a grid of 1,000,000 rows / of 1,000", "RepaintGrid/1000000", "RepaintGrid/1000", 1.2},
    {"repaint of a book of 1,000,000 rows / of 1,000", "RepaintBook/1000000/iterations:40",
     "RepaintBook/1000/iterations:40", 1.2},
    {"1,000 trades' beat of a book of 1,000,000 / of 10,000", "BeatOfBook/1000000/iterations:40",
     "BeatOfBook/10000/iterations:40", 1.5},
    {"SQLite shell writes the CSV / CSV of all columns", "SqliteShellCsv/iterations:1/repeats:3/real_time",
     "ExportCsv/real_time", 3, true},
    {"report of 400 bytes into the journal / one write call", "AppendToJournal", "WriteSameReports", 2},
    {"read one of 1,000,000 reports / read the bare bytes", "ReadJournal", "ReadSameBytes", 12},
    {"trade message of a report in the journal / read it", "MapJournal", "ReadTradeJournal", 10},
};
constexpr double kMostBytesPerTrade = 975;
constexpr double kBeatMs = 250;
constexpr const char* kBeatOfTenBooks = "TenBooksOnScreen/1250/iterations:40/repeats:3";

// The limit of the time of Name; Beside is only printed.
struct TimeLimit {
  const char* What;
  const char* Name;
  const char* Beside;
  double Milliseconds;
};

constexpr TimeLimit kTimeLimits[] = {
    {"filter 1,000,000 trades by a text / touch the field", "FilterBook/OneText", "WalkField/Symbol", 50},
    {"find letters in 1,000,000 trades / touch the records", "FindInBook/Letters", "WalkRecords", 150},
    {"find digits in 1,000,000 trades / touch the records", "FindInBook/Digits", "WalkRecords", 150},
    {"filter by three columns / touch one field", "FilterBook/ThreeTexts", "WalkField/Symbol", 80},
    {"sort by price / touch the field", "SortBook/Price", "WalkField/Price", 90},
    {"sort by symbol / touch the field", "SortBook/Symbol", "WalkField/Symbol", 110},
    {"sort by symbol and price / touch one field", "SortBook/SymbolAndPrice", "WalkField/Price", 150},
    {"sum 1,000,000 selected rows / recount totals", "SumSelected", "RecountTotals", 40},
    {"recount totals / touch one field", "RecountTotals", "WalkField/Price", 30},
    {"column profile of 37 columns: save and load", "SaveAndLoadProfile", "WriteAndReadSameBytes", 2},
    {"CSV of all columns of 1,000,000 trades", "ExportCsv/real_time", "WriteCsvBytes/real_time", 700},
    {"exchange files of 1,000,000 trades, 20 fields", "ExportExchange/real_time", "WriteExchangeBytes/real_time", 600},
    {"workbook of 100,000 rows x 11 columns / CSV of the same", "SaveWorkbook", "SaveCsv", 4000},
    {"repaint of 45 rows x 20 columns / draw their texts", "RepaintGrid/1000000", "DrawTexts", 30},
    {"repaint of a book's 45 rows x 20 columns / draw its texts", "RepaintBook/1000000/iterations:40",
     "DrawBookTexts/iterations:40", 30},
    {"chart of 1,000,000 trades / lowest and highest price", "DrawMillionTrades", "FindLowestAndHighest", 50},
    {"SVG chart of 1,000,000 trades / lowest and highest price", "WriteSvgOfMillionTrades", "FindLowestAndHighest", 50},
    {"copy and sort of 1,000,000 for a chart / one pass", "TakeMillionTrades", "FindLowestAndHighest", 100},
    {"open and paint a book of 1,000,000 / an empty window", "OpenBookWindow/iterations:10",
     "OpenEmptyWindow/iterations:10", 300},
    {"a letter in the filter bar of 1,000,000 / SQLite filters", "TypeFilterLetter/iterations:10",
     "AskSqlite/FilterOneText", 100},
    {"a header click at 1,000,000 until painted / SQLite sorts", "ClickHeader/iterations:10", "AskSqlite/SortPrice",
     200},
    {"copy of 10,001 rows x 37 columns / their texts alone", "CopyMostRows/iterations:5", "ShowMostRows/iterations:5",
     300},
    {"size to fit 1,000,000 rows / measure 1,000 of them", "SizeToFit/iterations:1", "MeasureThousandRows/iterations:1",
     5000},
    {"ten books at 5,000 trades a second: a beat / at rest", kBeatOfTenBooks,
     "TenBooksOnScreen/0/iterations:40/repeats:3", kBeatMs},
    {"a trade into the day log, in batches of 582 / NATS alone", "WriteLog/582/iterations:1/real_time",
     "PublishSameBatches/582/iterations:1/real_time", 1.0 / 30'000 * 1000},
    {"a trade into the day log, in batches of 10 / NATS alone", "WriteLog/10/iterations:1/real_time",
     "PublishSameBatches/10/iterations:1/real_time", 1.0 / 30'000 * 1000},
    {"a trade out of the day log / NATS alone", "ReadLog/iterations:1/real_time",
     "ReceiveSameBatches/iterations:1/real_time", 1.0 / 200'000 * 1000},
};

void PrintTimeLimits(const Results& results) {
  for (const TimeLimit& limit : kTimeLimits) {
    const auto measured = results.find(limit.Name);
    const auto beside = results.find(limit.Beside);
    if (measured == results.end() || beside == results.end()) continue;
    const double time = measured->second.NanosecondsPerItem;
    const double floor = beside->second.NanosecondsPerItem;
    std::printf("%-60s %12.1f %12.1f %8.2f  at most %g ms%s\n", limit.What, time, floor, time / floor,
                limit.Milliseconds, time <= limit.Milliseconds * 1e6 ? "" : "  MISSED");
  }
}

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
  PrintTimeLimits(results);
  if (const auto beat = results.find(kBeatOfTenBooks); beat != results.end())
    std::printf("%-60s %12.1f\n", "share of one core that the ten books take, in percent",
                100 * beat->second.NanosecondsPerItem / (kBeatMs * 1e6));
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

// DayInput opens a day: from its files, which are a CSV of executed trades with its desk, a file of wire messages or a
// journal; or from a feed. RunFiles are all files of a run.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "terminal/common/errors.h"
#include "terminal/day/csv_tables.h"
#include "terminal/day/day_spec.h"
#include "terminal/day/feed_opener.h"
#include "terminal/day/feed_source.h"
#include "terminal/day/numbered_day.h"

// Absolute paths.
struct RunFiles {
  // The day with the securities and desk beside it, else those of the sample. An empty path is the sample day.
  static RunFiles OfDay(const std::filesystem::path& day);
  // The same run with another day.
  RunFiles WithDay(const DaySpec& day) const;
  // It is the day that comes with the program.
  bool IsSampleDay() const;

  DaySpec Day;
  std::filesystem::path Securities;
  std::filesystem::path Desk;
  std::filesystem::path FeedSecurities;  // of the days that are feeds; empty for the sample's
  std::filesystem::path Plugin;
  std::filesystem::path Work;
  std::optional<DaySpec> Record;     // a file or a log
  std::filesystem::path Screenshot;  // empty for none, as are the next two
  std::filesystem::path Script;
  std::filesystem::path Report;
};

// True for a record file, by its name, and for a file that begins with wire messages; some kilobytes of garbage may
// stand before the first.
bool IsMessageFile(const std::filesystem::path& file);

// Each trade of the CSV becomes a message 9101. Desk and securities must outlive the source.
std::unique_ptr<MessageSource> OpenTradeDay(const std::filesystem::path& file, const OrderDesk& desk,
                                            const SecurityList& securities, BadLineReport& badLines);
// The messages of a wire file or record file, unchanged.
std::unique_ptr<MessageSource> OpenMessageDay(const std::filesystem::path& file, BadLineReport& badLines);
// The trades of a journal as messages 9101; reports the reports that are none.
std::unique_ptr<MessageSource> OpenJournalDay(const std::filesystem::path& file, BadLineReport& badLines);

// DayInput: securities and, for a CSV, desk of a day, which is opened as often as it is wanted.
class DayInput {
 public:
  // Reads securities and desk. Throws TerminalError.
  DayInput(const RunFiles& files, std::optional<LiveFrom> live, BadLineReport& badLines,
           const FeedOpener& openFeeds = OpenFeeds);
  // Waits for the end of its feeds.
  ~DayInput() { Close(); }

  // Opens the day from its begin; a day opened before ends. Throws TerminalError.
  NumberedDay& Open();
  // The same with that many trades as download; a feed tells that itself.
  NumberedDay& OpenWithDownload(std::uint64_t trades);
  // Opens a file, so that it fails now if it cannot be read. A feed tells later.
  void Check();
  // The day is not opened again; its feed ends on a thread of its own. The securities stay.
  void Close();

  bool IsFeed() const noexcept { return Day.IsFeed(); }
  // For the status bar; empty for a file.
  std::string FeedText() const;
  // Alarms and changes of the connection since the last call.
  std::vector<FeedNote> TakeNews();

  SecurityList Securities;

 private:
  NumberedDay& OpenFrom(LiveFrom live);
  NumberedDay& OpenFeed();
  std::unique_ptr<MessageSource> OpenFile();
  void EndFeed(FeedMaker maker);

  enum class Form : std::uint8_t { Csv, Messages, Journal, Feed };
  Form FormOf() const;

  DaySpec Day;
  Form Kind;
  std::optional<LiveFrom> Live;
  BadLineReport& BadLines;
  std::optional<OrderDesk> Desk;  // only a CSV needs one
  FeedMaker MakeFeed;
  std::unique_ptr<Feed> Trades;
  FeedNews News;
  std::optional<NumberedDay> Script;
  std::vector<std::jthread> Ends;  // of feeds, which may wait for the network
};

// DayInput opens a day from its files: a CSV of executed trades with its desk, or a file of wire messages. RunFiles are
// all files of a run.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>

#include "terminal/common/errors.h"
#include "terminal/day/csv_tables.h"
#include "terminal/day/numbered_day.h"

// Absolute paths.
struct RunFiles {
  // The day with the securities and desk beside it, else those of the sample. An empty path is the sample day.
  static RunFiles OfDay(const std::filesystem::path& day);
  // The same run with another day.
  RunFiles WithDay(const std::filesystem::path& day) const;
  // It is the day that comes with the program.
  bool IsSampleDay() const;

  std::filesystem::path Day;
  std::filesystem::path Securities;
  std::filesystem::path Desk;
  std::filesystem::path Plugin;
  std::filesystem::path Work;
  std::filesystem::path Record;  // empty for none, as are the next two
  std::filesystem::path Screenshot;
  std::filesystem::path Script;
};

// True for a record file, by its name, and for a file that begins with wire messages; some kilobytes of garbage may
// stand before the first.
bool IsMessageFile(const std::filesystem::path& file);

// Each trade of the CSV becomes a message 9101. Desk and securities must outlive the source.
std::unique_ptr<MessageSource> OpenTradeDay(const std::filesystem::path& file, const OrderDesk& desk,
                                            const SecurityList& securities, BadLineReport& badLines);
// The messages of a wire file or record file, unchanged.
std::unique_ptr<MessageSource> OpenMessageDay(const std::filesystem::path& file, BadLineReport& badLines);

// DayInput: the files of a day: securities, trades or messages and, for trades, the desk.
class DayInput {
 public:
  // Reads securities and desk. Throws TerminalError.
  DayInput(const RunFiles& files, std::optional<LiveFrom> live, BadLineReport& badLines);

  // Opens the day from its begin; a day opened before ends. Throws TerminalError.
  NumberedDay& Open();
  // The same with that many trades as download.
  NumberedDay& OpenWithDownload(std::uint64_t trades);

  SecurityList Securities;

 private:
  NumberedDay& OpenFrom(LiveFrom live);

  std::filesystem::path Day;
  std::optional<LiveFrom> Live;
  BadLineReport& BadLines;
  std::optional<OrderDesk> Desk;  // a file of messages needs none
  std::optional<NumberedDay> Script;
};

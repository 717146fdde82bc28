// DaySource: where the messages of a day come from, one at a time: a CSV of executed trades or a file of wire messages.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "terminal/common/errors.h"
#include "terminal/day/message_file.h"
#include "terminal/day/reference_data.h"

class DaySource {
 public:
  virtual ~DaySource() = default;
  // The next message, which lives until the next call and may be changed; false at the end of the day.
  virtual bool Next(WireFrame& frame) = 0;
  // Reports the message given last to the user.
  virtual void Report(const std::string& reason) = 0;
};

// Whether the file is one of wire messages: a record file by its name, any other by beginning with messages; garbage
// ahead of the first may take some kilobytes.
bool IsMessageDay(const std::filesystem::path& file);

// A CSV day: each trade becomes a message with the number 9101. Desk and securities must outlive the source.
std::unique_ptr<DaySource> OpenTradeDay(const std::filesystem::path& file, const OrderDesk& desk,
                                        const SecurityList& securities, BadLineReport& badLines);
// A wire file or a record file: its messages as they stand.
std::unique_ptr<DaySource> OpenMessageDay(const std::filesystem::path& file, BadLineReport& badLines);

// LiveFrom: where in a day the download ends and the live part begins, as the user says it.
struct LiveFrom {
  enum class Kind : std::uint8_t {
    AsNumbered,  // each message keeps its number: 8111 is download, 9101 is live
    Count,       // so many trades are download
    TimeOfDay,   // trades before that second of the first trade's date are download
    Instant,     // trades before that second are download
  };
  Kind By = Kind::AsNumbered;
  std::int64_t Value = 0;
};

// "5000", "12:00:00" or "20131007-12:00:00"; nothing for any other text.
std::optional<LiveFrom> ParseLiveFrom(std::string_view text);

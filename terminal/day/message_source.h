// MessageSource: where the messages of a day come from, one at a time: a CSV of executed trades or a file of wire
// messages.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "terminal/common/errors.h"
#include "terminal/day/csv_tables.h"
#include "terminal/day/message_file.h"

class MessageSource {
 public:
  virtual ~MessageSource() = default;
  // The next message, which lives until the next call and may be changed; false at the end of the day.
  virtual bool Next(WireFrame& frame) = 0;
  // Reports the message given last to the user.
  virtual void Report(const std::string& reason) = 0;
};

// Whether the file is one of wire messages: a record file by its name, any other by beginning with messages; garbage
// ahead of the first may take some kilobytes.
bool IsMessageFile(const std::filesystem::path& file);

// A CSV day: each trade becomes a message with the number 9101. Desk and securities must outlive the source.
std::unique_ptr<MessageSource> OpenTradeDay(const std::filesystem::path& file, const OrderDesk& desk,
                                            const SecurityList& securities, BadLineReport& badLines);
// A wire file or a record file: its messages as they stand.
std::unique_ptr<MessageSource> OpenMessageDay(const std::filesystem::path& file, BadLineReport& badLines);

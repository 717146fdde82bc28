// MessageSource: gives the messages of a day one at a time, from a CSV of executed trades or a file of wire messages.
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
  // The next message, valid until the next call; it may be changed. False at the end of the day.
  virtual bool Next(WireFrame& frame) = 0;
  // Reports the last message to the user.
  virtual void Report(const std::string& reason) = 0;
};

// True for a record file, by its name, and for a file that begins with wire messages; some kilobytes of garbage may
// stand before the first.
bool IsMessageFile(const std::filesystem::path& file);

// Each trade of the CSV becomes a message 9101. Desk and securities must outlive the source.
std::unique_ptr<MessageSource> OpenTradeDay(const std::filesystem::path& file, const OrderDesk& desk,
                                            const SecurityList& securities, BadLineReport& badLines);
// The messages of a wire file or record file, unchanged.
std::unique_ptr<MessageSource> OpenMessageDay(const std::filesystem::path& file, BadLineReport& badLines);

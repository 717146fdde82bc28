// DaySource: where the messages of a day come from, one at a time: a CSV of executed trades or a file of wire messages.
// Not the order and the numbers in which they are sent: that is day_script.h. One thread.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "terminal/bad_lines.h"
#include "terminal/desk.h"
#include "terminal/message_file.h"
#include "terminal/securities.h"

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
std::unique_ptr<DaySource> OpenTradeDay(const std::filesystem::path& file, const CDesk& desk,
                                        const CSecurities& securities, CBadLines& badLines);
// A wire file or a record file: its messages as they stand.
std::unique_ptr<DaySource> OpenMessageDay(const std::filesystem::path& file, CBadLines& badLines);

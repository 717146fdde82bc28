// The sink of the system's error reports, one text line each. Not a log file, and not for the message path, which is
// silent by rule: what comes here are failures of the machine itself. Any thread may call.
#pragma once

#include <string>
#include <string_view>

// "function <tab> line <tab> message", and behind it, if the number is not 0, "ErrorNo: number, text", where the text
// is the system's own for the number, empty if the system has none.
std::string FailureLine(std::string_view message, unsigned long errorNumber, std::string_view functionName,
                        unsigned line);

class CQORLog {
 public:
  // Writes the line to standard error, as no log object exists to take it: level and time, which that object would put
  // ahead, are left out. Never throws: a report that finds no memory is lost.
  static void ReportFailure(std::string_view message, unsigned long errorNumber, std::string_view functionName,
                            unsigned line) noexcept;
};

#include "foundations/error_report.h"

#include <cstdio>
#include <system_error>

namespace {

std::string SystemText(unsigned long errorNumber) {
  std::string text = std::system_category().message(static_cast<int>(errorNumber));
  // So begins what the library makes up for a number that the system does not know.
  if (text.starts_with("Unknown error")) return {};
  text.erase(text.find_last_not_of("\r\n") + 1);
  return text;
}

}  // namespace

std::string FailureLine(std::string_view message, unsigned long errorNumber, std::string_view functionName,
                        unsigned line) {
  std::string report(functionName);
  report.append("\t").append(std::to_string(line)).append("\t").append(message);
  if (errorNumber == 0) return report;
  return report.append("ErrorNo: ").append(std::to_string(errorNumber)).append(", ").append(SystemText(errorNumber));
}

void CQORLog::ReportFailure(std::string_view message, unsigned long errorNumber, std::string_view functionName,
                            unsigned line) noexcept {
  try {
    const std::string report = FailureLine(message, errorNumber, functionName, line) + '\n';
    std::fwrite(report.data(), 1, report.size(), stderr);
  } catch (...) {  // Out of memory: there is no second place to say so.
  }
}

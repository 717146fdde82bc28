#include "foundations/error_report.h"

#include <cstdio>

#include "platform/error_text.h"

std::string FailureLine(std::string_view message, unsigned long errorNumber, std::string_view functionName,
                        unsigned line) {
  std::string report(functionName);
  report.append("\t").append(std::to_string(line)).append("\t").append(message);
  if (errorNumber == 0) return report;
  return report.append("ErrorNo: ")
      .append(std::to_string(errorNumber))
      .append(", ")
      .append(SystemErrorText(errorNumber));
}

void CQORLog::ReportFailure(std::string_view message, unsigned long errorNumber, std::string_view functionName,
                            unsigned line) noexcept {
  try {
    const std::string report = FailureLine(message, errorNumber, functionName, line) + '\n';
    std::fwrite(report.data(), 1, report.size(), stderr);
  } catch (...) {  // Out of memory: there is no second place to say so.
  }
}

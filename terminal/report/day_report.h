// The closing page of a day: one HTML file with the positions, sums by client and by exchange, and the charts of the
// traded securities. It needs no windows to be made, and no other file and no network to be read.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>

#include "terminal/ledger/trade_ledger.h"
#include "terminal/positions/position.h"

struct DayReportHead {
  std::string Day;  // its name, UTF-8
  CostMethod Method = CostMethod::Average;
};

// Is told how many of the charts are drawn.
using ReportProgress = std::function<void(std::size_t done, std::size_t all)>;

// Securities with the most trades come first; busted trades do not count. The numbers have the marks of the user's
// region.
std::string DayReportHtml(const TradeLedger& ledger, const DayReportHead& head, const ReportProgress& progress = {});

// Replaces the file at once. Throws TerminalError with file and reason; an old file then stays.
void SaveDayReport(const TradeLedger& ledger, const DayReportHead& head, const std::filesystem::path& file,
                   const ReportProgress& progress = {});

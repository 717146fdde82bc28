// --replay: fills a day log from a journal.
#pragma once

#include <iosfwd>

#include "feeds/journal/journal_reader.h"
#include "gateway/day_pump.h"
#include "gateway/options.h"

// Connects, publishes what the log does not have, tells each refused message on errors and the counts on out. An outage
// of the log may last kLongestOutage. Throws GatewayError: the journal cannot be read, the log cannot be reached or
// holds other messages.
GatewayExit ReplayJournal(const std::filesystem::path& journal, const MappingChoices& mapping, const DayLogs& logs,
                          std::ostream& out, std::ostream& errors);

inline constexpr std::chrono::seconds kLongestOutage{60};

// The program's --replay: reads settings or access, and refuses a log of another day than the journal's.
GatewayExit RunReplay(const GatewayOptions& options, std::ostream& out, std::ostream& errors);

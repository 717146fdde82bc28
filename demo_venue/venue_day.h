// VenueDay: the trades that a venue has to report, and AddReport, which says one of them as FIX fields.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

#include "demo_venue/venue_text.h"
#include "terminal/common/errors.h"
#include "terminal/day/csv_tables.h"

class VenueDay {
 public:
  // The trades of a CSV. Reports bad lines. Throws TerminalError.
  VenueDay(const std::filesystem::path& trades, const std::filesystem::path& desk, BadLineReport& badLines);
  // That many made up trades, always the same, two hundred a second; they take no memory.
  VenueDay(std::uint64_t count, const std::filesystem::path& desk, BadLineReport& badLines);

  std::uint64_t Count() const { return MadeUp.value_or(Trades.size()); }
  // Requires: index < Count().
  DayTrade At(std::uint64_t index) const;
  const DeskLine& DeskOf(const DayTrade& trade) const { return Desk.LineOf(trade.ExchangeOrderNo); }
  // Of the day's clock, from the first trade to that one; a change of date takes no time.
  double SecondsUntil(std::uint64_t index) const;

 private:
  OrderDesk Desk;
  std::optional<std::uint64_t> MadeUp;
  std::vector<DayTrade> Trades;
  std::vector<double> Seconds;
};

enum class ReportForm : std::uint8_t {
  Trade,
  Correction,   // of the trade before: the quantity is one more, the price a half
  Bust,         // of the trade before
  EmptyField,   // a trade whose text, 58, is there and empty
  MoreParties,  // a trade with a second firm, which has an identification of its own
  Stray,        // a trade with an id that no trade of the day has
};

struct ReportStyle {
  bool Capture = false;   // AE instead of 8
  bool OldTypes = false;  // of FIX 4.2: 20 says what 150 cannot
};

// "8" or "AE".
const char* MessageTypeOf(ReportStyle style);
void AddReport(VenueText& text, ReportForm form, ReportStyle style, DayTrade trade, const DeskLine& desk);

// FixReportReader: reads the fields that matter from the text of an ExecutionReport or TradeCaptureReport.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "feeds/fix/fix_text.h"
#include "feeds/fix/fix_trade.h"
#include "feeds/fix/trade_mapper.h"

enum class FixReportType : std::uint8_t { Other, Execution, TradeCapture };

// What a report means for trades.
enum class FixReportKind : std::uint8_t { Trade, Correction, Bust, NoTrade, Refused };

struct FixReport {
  FixReportType Type = FixReportType::Other;
  FixValues Common;              // all of an ExecutionReport
  std::vector<FixValues> Sides;  // of a TradeCaptureReport: what stands in group 552, one for each 54
  bool IsPlain = false;          // no value has control characters
  std::uint32_t SidesTold = 0;   // 552
  std::uint32_t Twice = 0;       // a tag that stands there twice with different values; the first is taken; 0: none
};

class FixReportReader {
 public:
  // A text of sides alone would make many times its own size of trades.
  static constexpr std::size_t kMostSides = 16;

  explicit FixReportReader(const MappingChoices& choices);

  // Empty, or what is wrong with the text. Reads other messages no further than their 35. The values are views of the
  // text.
  std::string Read(std::string_view text, FixReport& report);
  // The values as an ExecutionReport from which Read reads them again.
  std::string TextOf(const FixValues& values) const;

 private:
  struct Choice {
    std::uint16_t Source;
    std::uint16_t Tag;  // 0: none
  };
  struct Party {
    std::uint16_t Source;
    std::uint16_t Role;  // 0: none
  };
  struct Walk;

  bool ReadBody(FixText& fields, FixReport& report) const;
  void TakeRare(Walk& walk, std::uint8_t mark, std::uint32_t tag, std::string_view value) const;
  void TakeChoices(Walk& walk, std::uint32_t tag, std::string_view value) const;
  void TakeParty(Walk& walk, std::string_view role) const;

  std::array<Choice, 3> Choices;
  std::array<Party, 4> Parties;
  FixTagOrder Tags;
};

// By 150 and 20, in a TradeCaptureReport by 487, 856, 939 and 150. The mistake is set if it is Refused.
FixReportKind KindOfReport(FixReportType type, const FixValues& values, std::string& mistake);

// TradeMapper: turns the FIX messages of a day, in the order of its journal, into trade messages.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// What differs between venues, as far as the table in fix_trade.h leaves it to them. A tag is that of a FIX field, a
// role is the PartyRole (452) of the party whose PartyID (448) is taken; 0 is the default.
struct MappingChoices {
  std::string Exchange;          // of reports with neither 207 nor 30
  std::uint16_t ClientTag = 0;   // ClientID; default 1
  std::uint16_t UserTag = 0;     // UserID; default the party of UserRole
  std::uint16_t CtclTag = 0;     // CTCLID; default the party of CtclRole
  std::string UserID;            // of reports without one
  double Multiplier = 1;         // of reports without 231
  std::uint16_t MemberRole = 0;  // MemberID; default 1, the executing firm
  std::uint16_t UserRole = 0;    // default 12, the executing trader, else 36, the entering trader
  std::uint16_t CtclRole = 0;    // default 38, the position account
};

enum class ReportOutcome : std::uint8_t {
  Trade,
  Correction,
  Bust,
  Repeat,   // an execution that has been mapped before
  NoTrade,  // the state of an order, a message of the session, anything else
  Refused,  // a trade that cannot be mapped
  Unknown,  // a correction or bust of a trade that never came
};

// A TradeCaptureReport has an outcome for each side; then the gravest stands here: Refused, Unknown, a trade, Repeat.
struct MappedReport {
  ReportOutcome Outcome = ReportOutcome::NoTrade;
  std::uint32_t Messages = 0;  // trade messages that were appended
  std::string Reason;          // why it was refused, what of a trade did not fit, what is unknown; else empty
};

// Deterministic: the same messages in the same order give the same bytes and the same numbers, wherever they are
// mapped. Trades are numbered from 1 (VELDTradeID), as are orders by 37 (VELDOrderID) and by 11 (OrderID).
//
// Costs one walk over the text and three searches in hash tables. Keeps about 100 bytes for each execution with its
// order ids, more for sides of TradeCaptureReports, the fields of a trade that was corrected, and no text.
class TradeMapper {
 public:
  // Gives the raw text that stood at a place again, for corrections and busts that do not repeat all fields.
  using TextAt = std::function<std::string(std::uint64_t place)>;

  TradeMapper(MappingChoices choices, TextAt textAt);
  ~TradeMapper();
  TradeMapper(const TradeMapper&) = delete;
  TradeMapper& operator=(const TradeMapper&) = delete;

  // Takes a raw FIX message, from 8= to the SOH behind 10=, and appends what it means as whole wire messages 9101.
  // Garbled texts are Refused; nothing throws but memory.
  MappedReport Map(std::string_view text, std::uint64_t place, std::vector<std::uint8_t>& messages);

 private:
  struct State;
  std::unique_ptr<State> Self;
};

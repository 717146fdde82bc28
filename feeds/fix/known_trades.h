// KnownTrades: the trades of the day with the ids that name them, and the numbers and ids under which they are shown.
//
// An execution is named by a key of its ids, joined by SOH, which no id holds. Keys are compared as they are, so two
// executions are never confused.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "feeds/fix/fix_report.h"
#include "feeds/fix/id_table.h"

struct KnownTrade {
  std::uint64_t Place;      // of its text
  std::uint32_t Order;      // VELDOrderID
  std::uint16_t SidePlace;  // in group 552 of the text
  std::uint8_t Side;        // 1 buy, 2 sell
};

// What a key names: a trade, and which of its executions.
struct KnownExecution {
  static constexpr std::uint32_t kNoTrade = 0x3FFFFFFF;

  std::uint32_t Trade = kNoTrade;  // ordinal, from 0; kNoTrade for a bust of a trade that never came
  FixReportKind Kind = FixReportKind::Trade;
};

class KnownTrades {
 public:
  // Longer ids are refused.
  static constexpr std::size_t kLongestId = 1000;

  // False if there is none.
  bool Find(std::string_view key, KnownExecution& execution) noexcept;
  // A known key stays what it is.
  void Name(std::string_view key, const KnownExecution& execution);
  // Requires: the key is the one that Find has looked for last and not found.
  void NameNew(std::string_view key, const KnownExecution& execution);

  // Says that both numbers will be asked for soon.
  void ExpectOrder(std::string_view orderId, std::string_view clientOrderId) const noexcept {
    Orders.Expect(orderId);
    ClientOrders.Expect(clientOrderId);
  }
  std::uint32_t Add(const KnownTrade& trade);
  const KnownTrade& At(std::uint32_t trade) const noexcept { return Trades[trade]; }
  std::uint32_t Size() const noexcept { return static_cast<std::uint32_t>(Trades.size()); }

  // The fields of a trade after its corrections, as a text; null for those of its own text.
  const std::string* CorrectedText(std::uint32_t trade) const noexcept;
  void KeepCorrected(std::uint32_t trade, std::string text) { Corrected[trade] = std::move(text); }

  std::uint32_t OrderNumber(std::string_view orderId) { return Orders.OrdinalOf(orderId); }
  // 0 for an empty id.
  std::uint32_t ClientOrderNumber(std::string_view id) { return id.empty() ? 0 : ClientOrders.OrdinalOf(id); }

  // The id of an order as a trade message shows it. One that does not fit ends with a tilde and the order's number.
  // Valid until the next call, as is the other.
  std::string_view ShownOrder(std::string_view orderId, std::uint32_t order, std::string& reason);
  // The id of an execution as a trade message shows it. Readers take a second pair of the same ids, joined without a
  // separator, as a repeat: one that does not fit, or whose pair was shown, ends with a tilde and a number of its own.
  std::string_view ShownTrade(std::string_view shownOrder, std::string_view id, std::string& reason);

 private:
  std::vector<KnownTrade> Trades;
  IdTable Executions;
  IdTable Orders;
  IdTable ClientOrders;
  IdHashes ShownPairs;
  std::string Pair, MadeOrder, MadeTrade;
  std::unordered_map<std::uint32_t, std::string> Corrected;
};

// KnownTrades: the trades of the day with the ids that name them, and the numbers and ids under which they are shown.
//
// An execution is named by its order id and its own, joined, with the joint in the key; a side of a TradeCaptureReport
// and what else names a trade by more parts with SOH, which no id holds. Keys are compared as they are, so two
// executions are never confused.
#pragma once

#include <cstdint>
#include <deque>
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
  bool SharesText = false;  // it was not found, but another order and execution are joined to the same text
};

class KnownTrades {
 public:
  // Longer ids are refused.
  static constexpr std::size_t kLongestId = 1000;

  // False if there is none.
  bool Find(const IdKey& key, KnownExecution& execution) const noexcept;
  // A known key stays what it is.
  void Name(const IdKey& key, const KnownExecution& execution);
  // Requires: the key is not known.
  void NameNew(const IdKey& key, const KnownExecution& execution);

  // Each says that the key will be looked for soon.
  void ExpectExecution(const IdKey& key) const noexcept { Executions.Expect(key); }
  void ExpectOrder(const IdKey& orderId) const noexcept { Orders.Expect(orderId); }
  void ExpectClientOrder(const IdKey& id) const noexcept { ClientOrders.Expect(id); }
  std::uint32_t Add(const KnownTrade& trade);
  const KnownTrade& At(std::uint32_t trade) const noexcept { return Trades[trade]; }
  std::uint32_t Size() const noexcept { return static_cast<std::uint32_t>(Trades.size()); }

  // The fields of a trade after its corrections, as a text; null for those of its own text.
  const std::string* CorrectedText(std::uint32_t trade) const noexcept;
  void KeepCorrected(std::uint32_t trade, std::string text) { Corrected[trade] = std::move(text); }

  std::uint32_t OrderNumber(const IdKey& orderId) { return Orders.OrdinalOf(orderId); }
  // 0 for an empty id.
  std::uint32_t ClientOrderNumber(const IdKey& id) { return id.Text.empty() ? 0 : ClientOrders.OrdinalOf(id); }

  // The id of an order as a trade message shows it. One that does not fit ends with a tilde and the order's number.
  // Valid until the next call, as is the other. isPlain: the id has no control characters.
  std::string_view ShownOrder(std::string_view orderId, std::uint32_t order, bool isPlain, std::string& reason);
  // The id of an execution as a trade message shows it. Readers take a second pair of the same ids, joined without a
  // separator, as a repeat: one that does not fit, or whose pair was shown, ends with a tilde and a number of its own.
  // newKey: of the execution if the pair is its key and Find has found neither it nor its text; else null.
  std::string_view ShownTrade(std::string_view shownOrder, std::string_view id, const IdKey* newKey, bool isPlain,
                              std::string& reason);

 private:
  bool AddPair(std::string_view shownOrder, std::string_view shown);

  std::deque<KnownTrade> Trades;
  IdStore Ids;
  IdTable Executions{Ids};
  IdTable Orders{Ids};
  IdTable ClientOrders{Ids};
  IdTable OtherPairs{Ids};  // that were shown and are not the key of their execution
  std::uint32_t Shown = 0;
  std::string Pair, MadeOrder, MadeTrade;
  std::unordered_map<std::uint32_t, std::string> Corrected;
};

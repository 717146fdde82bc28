// PositionTable: the positions of the day, for each security, or for each security and client.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "terminal/ledger/index_table.h"
#include "terminal/ledger/trade_ledger.h"
#include "terminal/positions/position.h"

struct PositionSettings {
  bool ByClient = false;
  CostMethod Method = CostMethod::Average;
  bool operator==(const PositionSettings&) const = default;
};

// What a beat has brought.
struct PositionChanges {
  bool All = false;                 // the rows are others than before
  std::vector<std::uint32_t> Rows;  // otherwise, the rows that have changed or are new, each once

  bool IsEmpty() const noexcept { return !All && Rows.empty(); }
};

struct PositionSums {
  std::uint64_t Bought = 0;
  std::uint64_t Sold = 0;
  double Realised = 0;
  double Open = 0;
  std::int64_t Net() const noexcept { return static_cast<std::int64_t>(Bought - Sold); }
  double Total() const noexcept { return Realised + Open; }
};

// Follows a ledger, which must outlive it. A new trade costs O(1). A security with a trade that was amended or busted
// is counted again from its list, once a beat. Rows are numbered by the arrival of their first trade and stay in place;
// a row whose trades are all busted is empty.
class PositionTable {
 public:
  explicit PositionTable(const TradeLedger& ledger) : Ledger(ledger) {}

  // Takes what the ledger has that is new; call it on the beat. O(new trades + rows of the securities that traded).
  PositionChanges TakeChanges();
  // The next TakeChanges counts all trades again.
  void Use(const PositionSettings& settings);
  const PositionSettings& Settings() const noexcept { return Used; }

  std::uint32_t Rows() const noexcept { return IsStale() ? 0 : static_cast<std::uint32_t>(All.size()); }
  const Position& At(std::uint32_t row) const { return All[row].Counted; }
  const LedgerSecurity& SecurityAt(std::uint32_t row) const { return Ledger.Securities()[All[row].Security]; }
  // Empty where a row holds all clients.
  const std::string& ClientAt(std::uint32_t row) const;
  // The price of the security's last trade that is not busted; nothing without one.
  std::optional<double> LastPrice(std::uint32_t row) const { return Securities[All[row].Security].Last; }
  double OpenProfit(std::uint32_t row) const;
  double TotalProfit(std::uint32_t row) const { return At(row).Realised() + OpenProfit(row); }
  PositionSums Sum(std::span<const std::uint32_t> rows) const;
  std::size_t MemoryBytes() const noexcept;

 private:
  struct Row {
    std::uint32_t Security;
    std::uint32_t Client;
    bool Changed = false;
    Position Counted{};
  };
  struct SecurityState {
    std::optional<double> Last;
    std::uint64_t Rewrites = 0;
    bool Changed = false;
    std::vector<std::uint32_t> Rows;
  };

  // The rows are those of other trades or settings.
  bool IsStale() const noexcept { return Stale || Epoch != Ledger.Epoch(); }
  void StartOver();
  void CountRewritten();
  void CountAgain(std::uint32_t security);
  void Take(const LedgerTrade& trade);
  std::uint32_t RowOf(const LedgerTrade& trade);
  void NoteSecurity(std::uint32_t security);
  void NoteRow(std::uint32_t row);
  void NoteOpenRows();

  const TradeLedger& Ledger;
  PositionSettings Used;
  bool Stale = true;
  std::uint64_t Epoch = 0;
  std::uint64_t Rewrites = 0;
  std::uint32_t Seen = 0;  // trades of the ledger
  std::vector<Row> All;
  std::vector<SecurityState> Securities;  // as those of the ledger
  IndexTable ByClient;                    // rows by security and client
  std::vector<std::uint32_t> ChangedRows;
  std::vector<std::uint32_t> ChangedSecurities;
};

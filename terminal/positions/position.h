// Position: what the buys and sells of one security come to: quantities, what is open and at what cost, and what is
// earned.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "terminal/ledger/trade_ledger.h"

enum class CostMethod : std::uint8_t {
  Average,          // what is closed costs the average of what is open
  FirstInFirstOut,  // what was opened first is closed first
};

// Amounts are price x quantity x multiplier of each trade, so that a position that is closed has earned what it was
// sold for, less what it was bought for; docs/positions.md has the formulas.
//
// A trade costs O(1), and with FirstInFirstOut O(1) over all: a lot enters and leaves once. Sums have 64 bits of
// mantissa: a day of a million trades and 10^13 of money stays exact to the cent.
class Position {
 public:
  // A trade that goes through zero closes all and opens the rest. Neither a bust nor a trade that is no buy and no sell
  // counts. Requires: all trades come with the same method.
  void Add(const LedgerTrade& trade, CostMethod method);

  std::uint64_t Bought() const noexcept { return BoughtQuantity; }
  std::uint64_t Sold() const noexcept { return SoldQuantity; }
  // Below 0 after more was sold.
  std::int64_t Net() const noexcept { return static_cast<std::int64_t>(BoughtQuantity - SoldQuantity); }
  // Of what is open; nothing if nothing is, or if it has no multiplier.
  std::optional<double> AveragePrice() const;
  double Realised() const noexcept { return static_cast<double>(RealisedAmount); }
  // Of what is open, at that price.
  double OpenProfit(double price) const noexcept;
  bool IsEmpty() const noexcept { return BoughtQuantity == 0 && SoldQuantity == 0; }
  std::size_t MemoryBytes() const noexcept { return Lots.capacity() * sizeof(Lot); }

 private:
  struct Lot {
    double Price;
    double Multiplier;
    std::uint32_t Quantity;
  };
  // Of a quantity that is open.
  struct Cost {
    long double Amount = 0;  // price x quantity x multiplier
    long double Units = 0;   // quantity x multiplier
  };

  static Cost CostOf(double price, double multiplier, std::uint64_t quantity) noexcept;
  void Open(const LedgerTrade& trade, std::uint32_t quantity, CostMethod method);
  Cost Close(std::uint64_t quantity, std::uint64_t open, CostMethod method);
  Cost CloseLots(std::uint64_t quantity);
  void DropClosedLots();

  std::uint64_t BoughtQuantity = 0;
  std::uint64_t SoldQuantity = 0;
  Cost OpenCost;
  long double RealisedAmount = 0;
  std::vector<Lot> Lots;  // the oldest first; those before FirstOpen are closed
  std::size_t FirstOpen = 0;
};

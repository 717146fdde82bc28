#include "terminal/positions/position.h"

#include <algorithm>
#include <utility>

namespace {
constexpr std::uint8_t kBuy = 1;
constexpr std::uint8_t kSell = 2;
constexpr std::size_t kMostClosedLots = 32;
}  // namespace

void Position::Add(const LedgerTrade& trade, CostMethod method) {
  if (trade.Side != kBuy && trade.Side != kSell) return;
  const std::int64_t before = Net();
  const bool closes = trade.Side == kBuy ? before < 0 : before > 0;
  const auto open = static_cast<std::uint64_t>(before < 0 ? -before : before);
  const auto closed = closes ? static_cast<std::uint32_t>(std::min<std::uint64_t>(open, trade.Quantity)) : 0;
  (trade.Side == kBuy ? BoughtQuantity : SoldQuantity) += trade.Quantity;
  if (closed != 0) {
    const long double earned =
        CostOf(trade.Price, trade.Multiplier, closed).Amount - Close(closed, open, method).Amount;
    RealisedAmount += before > 0 ? earned : -earned;
  }
  if (closed != trade.Quantity) Open(trade, trade.Quantity - closed, method);
}

Position::Cost Position::CostOf(double price, double multiplier, std::uint64_t quantity) noexcept {
  const long double units = static_cast<long double>(multiplier) * static_cast<long double>(quantity);
  return {units * price, units};
}

void Position::Open(const LedgerTrade& trade, std::uint32_t quantity, CostMethod method) {
  const Cost opened = CostOf(trade.Price, trade.Multiplier, quantity);
  OpenCost.Amount += opened.Amount;
  OpenCost.Units += opened.Units;
  if (method == CostMethod::FirstInFirstOut) Lots.push_back({trade.Price, trade.Multiplier, quantity});
}

// What the closed quantity, of all that is open, has cost.
Position::Cost Position::Close(std::uint64_t quantity, std::uint64_t open, CostMethod method) {
  const bool all = quantity == open;
  if (all) {
    Lots.clear();
    FirstOpen = 0;
    return std::exchange(OpenCost, {});
  }
  Cost closed;
  if (method == CostMethod::FirstInFirstOut) {
    closed = CloseLots(quantity);
  } else {
    const long double share = static_cast<long double>(quantity) / static_cast<long double>(open);
    closed = {OpenCost.Amount * share, OpenCost.Units * share};
  }
  OpenCost.Amount -= closed.Amount;
  OpenCost.Units -= closed.Units;
  return closed;
}

// Requires: more than the quantity is open.
Position::Cost Position::CloseLots(std::uint64_t quantity) {
  Cost closed;
  while (quantity != 0) {
    Lot& lot = Lots[FirstOpen];
    const auto part = static_cast<std::uint32_t>(std::min<std::uint64_t>(quantity, lot.Quantity));
    const Cost cost = CostOf(lot.Price, lot.Multiplier, part);
    closed.Amount += cost.Amount;
    closed.Units += cost.Units;
    quantity -= part;
    lot.Quantity -= part;
    if (lot.Quantity == 0) ++FirstOpen;
  }
  DropClosedLots();
  return closed;
}

// Not before half of them are closed, so that a lot moves once.
void Position::DropClosedLots() {
  if (FirstOpen < kMostClosedLots || FirstOpen * 2 < Lots.size()) return;
  Lots.erase(Lots.begin(), Lots.begin() + static_cast<std::ptrdiff_t>(FirstOpen));
  FirstOpen = 0;
}

std::optional<double> Position::AveragePrice() const {
  if (Net() == 0 || OpenCost.Units == 0) return std::nullopt;
  return static_cast<double>(OpenCost.Amount / OpenCost.Units);
}

double Position::OpenProfit(double price) const noexcept {
  const long double worth = price * OpenCost.Units;
  return static_cast<double>(Net() < 0 ? OpenCost.Amount - worth : worth - OpenCost.Amount);
}

#include "feeds/fix/known_trades.h"

#include <new>

namespace {

constexpr unsigned kKindBits = 2;
static_assert(static_cast<unsigned>(FixReportKind::Bust) < 1U << kKindBits);
static_assert(LongestText<55100>() == LongestText<55101>());
constexpr std::size_t kLongestShown = LongestText<55100>();

bool FitsAsId(std::string_view id) noexcept {
  return id.size() <= kLongestShown && IsPlainText(id);
}

std::string WithNumber(std::string_view id, std::uint32_t number) {
  const std::string end = "~" + std::to_string(number);
  return PlainText(id, kLongestShown - end.size()) + end;
}

}  // namespace

bool KnownTrades::Find(std::string_view key, KnownExecution& execution) noexcept {
  const std::uint32_t* found = Executions.Find(key);
  if (found == nullptr) return false;
  execution = {*found >> kKindBits, static_cast<FixReportKind>(*found & ((1U << kKindBits) - 1))};
  return true;
}

void KnownTrades::Name(std::string_view key, const KnownExecution& execution) {
  if (Executions.Find(key) == nullptr) NameNew(key, execution);
}

void KnownTrades::NameNew(std::string_view key, const KnownExecution& execution) {
  Executions.Insert(key, execution.Trade << kKindBits | static_cast<std::uint32_t>(execution.Kind));
}

std::uint32_t KnownTrades::Add(const KnownTrade& trade) {
  if (Trades.size() >= KnownExecution::kNoTrade) throw std::bad_alloc();
  Trades.push_back(trade);
  return Size() - 1;
}

const std::string* KnownTrades::CorrectedText(std::uint32_t trade) const noexcept {
  const auto found = Corrected.find(trade);
  return found == Corrected.end() ? nullptr : &found->second;
}

std::string_view KnownTrades::ShownOrder(std::string_view orderId, std::uint32_t order, std::string& reason) {
  if (FitsAsId(orderId)) return orderId;
  MadeOrder = WithNumber(orderId, order);
  TellReason(reason, Sentence("37", orderId, "is shown as " + MadeOrder));
  return MadeOrder;
}

// Only hashes of the pairs are kept: two pairs with one hash cost an id its last characters, never a trade.
std::string_view KnownTrades::ShownTrade(std::string_view shownOrder, std::string_view id, std::string& reason) {
  const auto isNew = [&](std::string_view shown) {
    Pair.assign(shownOrder).append(shown);
    return ShownPairs.Insert(HashOfId(Pair));
  };
  if (FitsAsId(id) && isNew(id)) return id;
  std::uint32_t number = ShownPairs.Size() + 1;
  MadeTrade = WithNumber(id, number);
  while (!isNew(MadeTrade)) MadeTrade = WithNumber(id, ++number);
  TellReason(reason, Sentence("17", id, "is shown as " + MadeTrade));
  return MadeTrade;
}

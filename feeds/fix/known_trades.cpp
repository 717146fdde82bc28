#include "feeds/fix/known_trades.h"

#include <new>

namespace {

constexpr unsigned kKindBits = 2;
static_assert(static_cast<unsigned>(FixReportKind::Bust) < 1U << kKindBits);
static_assert(LongestText<55100>() == LongestText<55101>());
constexpr std::size_t kLongestShown = LongestText<55100>();

bool FitsAsId(std::string_view id, bool isPlain) noexcept {
  return id.size() <= kLongestShown && (isPlain || IsPlainText(id));
}

std::string WithNumber(std::string_view id, std::uint32_t number) {
  const std::string end = "~" + std::to_string(number);
  return PlainText(id, kLongestShown - end.size()) + end;
}

}  // namespace

bool KnownTrades::Find(const IdKey& key, KnownExecution& execution) const noexcept {
  const IdTable::Found found = Executions.Find(key);
  if (found.Number == nullptr) {
    execution.SharesText = found.HasOtherJoint;
    return false;
  }
  execution = {*found.Number >> kKindBits, static_cast<FixReportKind>(*found.Number & ((1U << kKindBits) - 1))};
  return true;
}

void KnownTrades::Name(const IdKey& key, const KnownExecution& execution) {
  if (Executions.Find(key).Number == nullptr) NameNew(key, execution);
}

void KnownTrades::NameNew(const IdKey& key, const KnownExecution& execution) {
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

std::string_view KnownTrades::ShownOrder(std::string_view orderId, std::uint32_t order, bool isPlain,
                                         std::string& reason) {
  if (FitsAsId(orderId, isPlain)) return orderId;
  MadeOrder = WithNumber(orderId, order);
  TellReason(reason, Sentence("37", orderId, "is shown as " + MadeOrder));
  return MadeOrder;
}

// False if it has been shown, or could be.
bool KnownTrades::AddPair(std::string_view shownOrder, std::string_view shown) {
  Pair.assign(shownOrder).append(shown);
  const IdKey key(Pair);
  if (Executions.Find(key).HasOtherJoint || OtherPairs.Find(key).Number != nullptr) return false;
  OtherPairs.Insert(key, 0);
  return true;
}

std::string_view KnownTrades::ShownTrade(std::string_view shownOrder, std::string_view id, const IdKey* newKey,
                                         bool isPlain, std::string& reason) {
  std::uint32_t number = ++Shown;
  if (FitsAsId(id, isPlain) && (newKey != nullptr ? !OtherPairs.Find(*newKey).HasOtherJoint : AddPair(shownOrder, id)))
    return id;
  MadeTrade = WithNumber(id, number);
  while (!AddPair(shownOrder, MadeTrade)) MadeTrade = WithNumber(id, ++number);
  TellReason(reason, Sentence("17", id, "is shown as " + MadeTrade));
  return MadeTrade;
}

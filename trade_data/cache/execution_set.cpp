#include "trade_data/cache/execution_set.h"

#include <cstring>
#include <functional>
#include <utility>

ExecutionKey::ExecutionKey(const char* exchangeOrderNo, const char* exchangeTradeId) noexcept {
  Append(exchangeOrderNo);
  Append(exchangeTradeId);
  const std::uint64_t hash = std::hash<std::string_view>{}(Text());
  HashCode = static_cast<std::uint32_t>(hash ^ (hash >> 32));
}

void ExecutionKey::Append(const char* text) noexcept {
  const std::size_t length = strnlen(text, sizeof Characters / 2);
  std::memcpy(Characters + Length, text, length);
  Length = static_cast<std::uint8_t>(Length + length);
}

void ExecutionSet::Prefetch(const ExecutionKey& key) const noexcept {
  if (!Slots.empty()) __builtin_prefetch(&Slots[HomeOf(key.Hash())], 1);
}

// The slot of the key, or the free one for it. Requires a free slot.
std::size_t ExecutionSet::SlotFor(const ExecutionKey& key) const noexcept {
  std::size_t at = HomeOf(key.Hash());
  while (Slots[at].Place != 0 && !(Slots[at].Hash == key.Hash() && TextAt(Slots[at].Place) == key.Text()))
    at = (at + 1) & (Slots.size() - 1);
  return at;
}

bool ExecutionSet::Contains(const ExecutionKey& key) const noexcept {
  return !Slots.empty() && Slots[SlotFor(key)].Place != 0;
}

void ExecutionSet::MakeRoom() {
  if ((Count + 1) * 4 > Slots.size() * 3) Grow();
  if (UsedInLastBlock + ExecutionKey::kLongest + 1 <= kBlockSize) return;
  Blocks.push_back(std::make_unique_for_overwrite<char[]>(kBlockSize));
  UsedInLastBlock = 0;
}

bool ExecutionSet::Insert(const ExecutionKey& key) {
  MakeRoom();
  Slot& slot = Slots[SlotFor(key)];
  if (slot.Place != 0) return false;
  slot = {key.Hash(), KeepText(key.Text())};
  ++Count;
  return true;
}

std::string_view ExecutionSet::TextAt(std::uint32_t place) const noexcept {
  const char* text = Blocks[(place - 1) / kBlockSize].get() + (place - 1) % kBlockSize;
  return {text + 1, static_cast<std::uint8_t>(*text)};
}

// Appends a length byte and the characters; returns the place of the length byte.
std::uint32_t ExecutionSet::KeepText(std::string_view text) noexcept {
  char* end = Blocks.back().get() + UsedInLastBlock;
  *end = static_cast<char>(text.size());
  if (!text.empty()) std::memcpy(end + 1, text.data(), text.size());
  const std::size_t place = (Blocks.size() - 1) * kBlockSize + UsedInLastBlock + 1;
  UsedInLastBlock += 1 + text.size();
  return static_cast<std::uint32_t>(place);
}

void ExecutionSet::Grow() {
  const unsigned bits = Slots.empty() ? kFirstBits : Bits + 1;
  const std::vector<Slot> old = std::exchange(Slots, std::vector<Slot>(std::size_t{1} << bits));
  Bits = bits;
  for (const Slot& slot : old) {
    if (slot.Place == 0) continue;
    std::size_t at = HomeOf(slot.Hash);
    while (Slots[at].Place != 0) at = (at + 1) & (Slots.size() - 1);
    Slots[at] = slot;
  }
}

void ExecutionSet::Clear() noexcept {
  Slots = {};
  Bits = 0;
  Count = 0;
  Blocks.clear();
  UsedInLastBlock = kBlockSize;
}

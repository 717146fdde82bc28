#include "feeds/day_log/log_batch.h"

#include <charconv>
#include <functional>

#include "host_link/messages/message_header.h"

namespace {

constexpr std::uint16_t kNumberTag = 10002;
constexpr std::uint16_t kTradeMessage = 9101;
constexpr std::size_t kNumberFieldSize = 5;

// The size of the trade message at the begin of the bytes; 0 if none is there.
std::size_t TradeMessageSize(std::span<const std::uint8_t> bytes) noexcept {
  if (bytes.size() < kHeaderSize + kNumberFieldSize) return 0;
  const std::uint8_t* header = bytes.data();
  const bool isHeader = header[0] == kFieldMark && header[kSecondMarkOffset] == kFieldMark &&
                        LoadValue<std::uint16_t>(header + kProtocolOffset) == kProtocolWord &&
                        LoadValue<std::uint16_t>(header + kModeOffset) == kModePlain &&
                        LoadValue<std::uint16_t>(header + kLengthTagOffset) == kLengthTag;
  const std::size_t length = LoadValue<std::uint16_t>(header + kLengthOffset);
  if (!isHeader || length < kNumberFieldSize || length > bytes.size() - kHeaderSize) return 0;
  const std::uint8_t* number = header + kHeaderSize;
  const bool isTrade = number[0] == kFieldMark && LoadValue<std::uint16_t>(number + 1) == kNumberTag &&
                       LoadValue<std::uint16_t>(number + 3) == kTradeMessage;
  return isTrade ? kHeaderSize + length : 0;
}

std::size_t HashWith(std::size_t hash, std::span<const std::uint8_t> message) {
  const std::string_view text(reinterpret_cast<const char*>(message.data()), message.size());
  return hash * 31 + std::hash<std::string_view>()(text);
}

}  // namespace

std::optional<std::uint64_t> CountTradeMessages(std::span<const std::uint8_t> payload) noexcept {
  std::uint64_t count = 0;
  for (; !payload.empty(); ++count) {
    const std::size_t size = TradeMessageSize(payload);
    if (size == 0) return std::nullopt;
    payload = payload.subspan(size);
  }
  return count > 0 ? std::optional(count) : std::nullopt;
}

std::optional<std::uint64_t> ParseBatchId(std::string_view id) noexcept {
  std::uint64_t number = 0;
  const auto [end, error] = std::from_chars(id.data(), id.data() + id.size(), number);
  if (error != std::errc() || end != id.data() + id.size() || number == 0) return std::nullopt;
  return number;
}

LogOrder::Verdict LogOrder::Admit(std::string_view id, std::span<const std::uint8_t> payload,
                                  std::vector<std::uint8_t>& messages) {
  if (payload.size() > kMostPayload) return LeaveOut("it is larger than a megabyte");
  const std::optional<std::uint64_t> end = ParseBatchId(id);
  const std::optional<std::uint64_t> count = CountTradeMessages(payload);
  if (!end || !count) return LeaveOut(end ? "it holds other bytes than whole trade messages" : "it has no id");
  if (*end < *count) return LeaveOut("its id is lower than the number of its messages");
  const std::uint64_t begin = *end - *count;
  if (begin != Position && MayReadAgain()) return Verdict::Again;
  if (begin < Position) return LeaveOut("its messages were there before");
  if (begin > Position) {
    const Verdict verdict = SkipTo(begin);
    if (verdict != Verdict::Taken) return verdict;
  }
  LeftOut = false;
  return Append(payload, messages) ? Verdict::Taken : Verdict::Other;
}

bool LogOrder::MayReadAgain() noexcept {
  return !IsRepeating() && !LeftOut && ReadAgainAt != GivenCount && ReadingsLeft-- > 0;
}

void LogOrder::BeginAgain() noexcept {
  ReadAgainAt = GivenCount;
  Position = 0;
  RepeatHash = 0;
  LeftOut = false;
}

// What was told when it was read for the first time is not told again.
LogOrder::Verdict LogOrder::LeaveOut(const char* reason) {
  Why = reason;
  LeftOut = true;
  return IsRepeating() ? Verdict::Taken : Verdict::Damaged;
}

LogOrder::Verdict LogOrder::SkipTo(std::uint64_t begin) {
  const bool reachesNew = IsRepeating() && begin >= GivenCount;
  if (reachesNew && RepeatHash != GivenHash) return Verdict::Other;
  Position = begin;
  if (begin <= GivenCount) return Verdict::Taken;
  Why = "messages " + std::to_string(GivenCount + 1) + " to " + std::to_string(begin) + " of the day are missing";
  GivenCount = begin;
  LeftOut = false;
  return Verdict::Missing;
}

// False if a message that was given before is another one now.
bool LogOrder::Append(std::span<const std::uint8_t> payload, std::vector<std::uint8_t>& messages) {
  while (!payload.empty()) {
    const std::span<const std::uint8_t> message = payload.first(TradeMessageSize(payload));
    payload = payload.subspan(message.size());
    if (IsRepeating()) {
      RepeatHash = HashWith(RepeatHash, message);
      if (++Position == GivenCount && RepeatHash != GivenHash) return false;
      continue;
    }
    messages.insert(messages.end(), message.begin(), message.end());
    GivenHash = HashWith(GivenHash, message);
    GivenCount = ++Position;
  }
  return true;
}

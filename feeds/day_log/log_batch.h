// A batch as the day log stores it, and LogOrder, which makes the messages of a day out of the batches that a server
// gives. No network here.
//
//   stored := id payload
//   id      : header Trade-Count, the count of messages of the day up to the batch's end, in decimal digits
//   payload := message+, each a plain wire message of number 9101
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

inline constexpr char kBatchIdHeader[] = "Trade-Count";

// The number of trade messages that the bytes are made of; nothing if there are other bytes, or none.
std::optional<std::uint64_t> CountTradeMessages(std::span<const std::uint8_t> payload) noexcept;
// The id as a number above 0.
std::optional<std::uint64_t> ParseBatchId(std::string_view id) noexcept;

// Gives every message of the day once and in order. When the batches come again from the first one, as after the log
// was made anew, those that were given are compared by a hash and left out, also if they are batched in another way.
// Appending costs one walk over the frames, one hash and one copy.
class LogOrder {
 public:
  enum class Verdict : std::uint8_t {
    Taken,    // its new messages were appended, if it has any
    Damaged,  // it is left out, see Reason
    Missing,  // messages before it are missing, see Reason: admit it once more to go on behind them
    Again,    // it does not follow what was given: read from the first batch, after BeginAgain
    Other,    // the batches are those of another day
  };

  // The next batch, which is no longer than kMostPayload for a batch to be taken.
  Verdict Admit(std::string_view id, std::span<const std::uint8_t> payload, std::vector<std::uint8_t>& messages);
  void BeginAgain() noexcept;
  const std::string& Reason() const noexcept { return Why; }
  // Messages given so far, with those that were missing.
  std::uint64_t Given() const noexcept { return GivenCount; }

  static constexpr std::size_t kMostPayload = 1024 * 1024;
  // How often batches that do not follow make it read again; later ones are only told of.
  static constexpr int kMostReadings = 8;

 private:
  Verdict LeaveOut(const char* reason);
  Verdict SkipTo(std::uint64_t begin);
  bool MayReadAgain() noexcept;
  bool Append(std::span<const std::uint8_t> payload, std::vector<std::uint8_t>& messages);
  bool IsRepeating() const noexcept { return Position < GivenCount; }

  std::uint64_t Position = 0;                // messages of this reading
  std::uint64_t GivenCount = 0;              // the highest position of all readings
  std::size_t GivenHash = 0;                 // of the messages up to GivenCount
  std::size_t RepeatHash = 0;                // of those up to Position, while it is below GivenCount
  std::optional<std::uint64_t> ReadAgainAt;  // the count at which the last reading from the first batch began
  int ReadingsLeft = kMostReadings;
  bool LeftOut = false;  // the batch before was left out: its messages are known to be missing
  std::string Why;
};

// FixText: the fields of one raw FIX message, in one walk and without an allocation.
//
//   message := 8=text SOH 9=digits SOH field* 10=digit digit digit SOH
//   field   := tag=value SOH            tag: digits, the first not 0
//   data    := length-tag=n SOH data-tag=n bytes SOH      the bytes may hold SOH
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <string_view>

#include "foundations/byte_words.h"

inline constexpr char kSoh = '\x01';

// Length fields, and the data field that follows each.
struct FixDataField {
  std::uint16_t LengthTag;
  std::uint16_t DataTag;
};
inline constexpr FixDataField kFixDataFields[] = {
    {90, 91},   {93, 89},   {95, 96},   {212, 213}, {348, 349}, {350, 351}, {352, 353}, {354, 355},
    {356, 357}, {358, 359}, {360, 361}, {362, 363}, {364, 365}, {445, 446}, {618, 619}, {621, 622},
};

struct FixField {
  std::uint32_t Tag = 0;
  std::uint8_t Mark = 0;   // of the tag, see FixTagOrder
  std::string_view Value;  // of the text that is walked
};

// What is known of tags beside the text: a mark of the reader's own for each, and which tag came behind which. Senders
// keep their order, so one comparison of 8 bytes reads most tags. A guess counts only if the text says the same: it
// changes nothing but the time.
class FixTagOrder {
 public:
  struct Guess {
    std::uint64_t Mask = 0;  // of the bytes of "TAG="
    std::uint64_t Bytes = 1;
    const Guess* Next = nullptr;  // behind that tag; a pointer, as each field waits for it
    std::uint32_t Tag = 0;
    std::uint8_t Size = 0;  // of "TAG="
    std::uint8_t Mark = 0;
  };
  static constexpr std::uint32_t kTags = 1024;

  FixTagOrder() = default;
  FixTagOrder(const FixTagOrder&) = delete;
  FixTagOrder& operator=(const FixTagOrder&) = delete;

  // Tags from kTags on have one mark for all.
  std::uint8_t& MarkOf(std::uint32_t tag) noexcept { return Marks[tag < kTags ? tag : kTags]; }
  // Tags may share a guess.
  const Guess* Behind(std::uint32_t tag) const noexcept { return &Guesses[tag % kTags]; }
  // Where no guess is ever kept.
  const Guess* Nothing() const noexcept { return &Guesses[kTags]; }
  // The bytes of "8=...|9=" that the texts begin with; 0 if they are not known. Requires: the text has kMostHead bytes.
  std::ptrdiff_t HeadOf(const char* text) const noexcept {
    const bool isKnown = LoadValue<std::uint64_t>(text) == HeadWords[0] &&
                         (LoadValue<std::uint64_t>(text + 8) & HeadMask) == HeadWords[1];
    return isKnown ? HeadSize : 0;
  }
  void LearnHead(const char* text, std::ptrdiff_t size) noexcept;
  static constexpr std::ptrdiff_t kMostHead = 16;
  // Requires: the text has 8 bytes, of which the first ones are the tag and "=".
  void Learn(const Guess* guess, std::uint32_t tag, const char* text, std::size_t size) noexcept;

 private:
  std::array<std::uint8_t, kTags + 1> Marks{};
  std::array<Guess, kTags + 1> Guesses;
  std::uint64_t HeadWords[2] = {}, HeadMask = 0;
  std::ptrdiff_t HeadSize = 0;
};

// Never reads past the text, whatever it is. BodyLength and CheckSum are not compared with the text: the engine has
// done that.
//
// Looks for SOH in up to 1024 bytes at once, ahead of the fields: so the next field does not wait for the end of this
// one.
class FixText {
 public:
  FixText(std::string_view text, FixTagOrder& order) noexcept
      : Order(&order), Begin(text.data()), At(Begin), End(Begin + text.size()) {
    // A text comes from far memory: all its lines at once, not one behind the other.
    const auto size = std::min(End - Begin, kMostScanned);
    for (std::ptrdiff_t i = 0; i < size; i += kBlockSize) __builtin_prefetch(Begin + i);
  }

  // The next field, from the one behind 8 and 9 up to 10; false behind 10 and at the first mistake.
  bool Next(FixField& field) noexcept;
  // Gives the fields to take(field) until Next would be false, but those with the mark of the ones to skip.
  template <typename Take>
  [[gnu::always_inline]] void ForEach(std::uint8_t skipped, Take take) {
    FixField field;
    do {
      TakeGuessed(skipped, take);
      if (!Next(field)) return;
      if (field.Mark != skipped) take(field);
    } while (!Whole);
  }
  // True behind a well-formed 10 at the very end.
  bool IsWhole() const noexcept { return Whole; }
  // True without data fields and without control characters but SOH.
  bool IsPlain() noexcept {
    while (ScanEnd != End) Scan();
    return Plain;
  }
  // Bytes that were read without a mistake, or where it stands.
  std::size_t Place() const noexcept { return static_cast<std::size_t>(At - Begin); }

 private:
  static constexpr std::uint32_t kTrailerTag = 10;
  static constexpr std::ptrdiff_t kMostDigits = 9, kWord = 8;
  static constexpr std::ptrdiff_t kBlockSize = 64, kMostScanned = 1024;
  // The data tag of each length tag, and kIsData of each data tag.
  static constexpr std::uint16_t kIsData = 1;
  static constexpr auto kDataTags = [] {
    std::array<std::uint16_t, 623> tags{};
    for (const FixDataField& row : kFixDataFields) {
      tags[row.LengthTag] = row.DataTag;
      tags[row.DataTag] = kIsData;
    }
    return tags;
  }();
  static constexpr std::uint16_t DataTagOf(std::uint32_t tag) noexcept {
    return tag < kDataTags.size() ? kDataTags[tag] : std::uint16_t{0};
  }
  // What means something for the next fields, or for the end, is always read.
  static constexpr bool IsGuessed(std::uint32_t tag) noexcept { return tag != kTrailerTag && DataTagOf(tag) == 0; }

  static constexpr bool IsDigit(char byte) noexcept { return byte >= '0' && byte <= '9'; }

  // Up to a field that is not as guessed. Few variables, so that all stay in registers.
  template <typename Take>
  [[gnu::always_inline]] void TakeGuessed(std::uint8_t skipped, Take& take) {
    if (Expected == Order->Nothing() || !IsScanned()) return;
    const char* at = At;
    const std::ptrdiff_t first = (at - ScanBegin) / kBlockSize;
    const std::uint64_t *ends = Ends.data() + first, *const lastEnds = LastEnds;
    const char* block = ScanBegin + first * kBlockSize;
    const FixTagOrder::Guess* expected = Expected;
    for (std::uint64_t bits = *ends & ~std::uint64_t{0} << (at - block);; bits = *++ends, block += kBlockSize) {
      for (; bits != 0; bits &= bits - 1) {
        if ((LoadValue<std::uint64_t>(at) & expected->Mask) != expected->Bytes) return StopAt(at, expected);
        const char* const end = block + static_cast<unsigned>(std::countr_zero(bits));
        if (expected->Mark != skipped) {
          const char* const value = at + expected->Size;
          take({expected->Tag, expected->Mark, {value, static_cast<std::size_t>(end - value)}});
        }
        at = end + 1;
        expected = expected->Next;
      }
      if (ends == lastEnds) return StopAt(at, expected);
    }
  }
  void StopAt(const char* at, const FixTagOrder::Guess* expected) noexcept {
    At = at;
    Expected = expected;
  }
  // False at the end, and where IsPlain has looked at all that comes.
  bool IsScanned() noexcept {
    while (At >= ScanEnd && ScanEnd != End) Scan();
    return At >= ScanBegin && At < ScanEnd;
  }
  void Scan() noexcept;
  const char* EndOfValue() const noexcept;
  bool ReadTag(std::uint32_t& tag) noexcept;
  const char* EndOfData() noexcept;
  bool NoteField(const FixField& field) noexcept;
  bool ReadHead() noexcept;
  bool SkipHeadTag(char tag) noexcept;
  bool ReadTrailer(FixField& field) noexcept;
  // Of the data field behind it; kNoLength makes that an ordinary field.
  static std::size_t LengthOf(std::string_view value) noexcept;
  static constexpr std::size_t kNoLength = static_cast<std::size_t>(-1);

  FixTagOrder* Order;
  const char* Begin;
  const char* At;
  const char* End;
  const char* ScanBegin = Begin;
  const char* ScanEnd = Begin;
  // A bit for each byte from ScanBegin to ScanEnd: a SOH that is not one of the last 8 bytes of the text, so that 8
  // bytes can be read wherever a field ends at one.
  std::array<std::uint64_t, kMostScanned / kBlockSize> Ends;
  const std::uint64_t* LastEnds = Ends.data();
  const FixTagOrder::Guess* Expected = Order->Nothing();
  bool Whole = false;
  bool Plain = true;
  std::uint32_t DataTag = 0;  // 0, or the data field whose length is known
  std::size_t DataLength = 0;
};

// FixText: the fields of one raw FIX message, in one walk and without an allocation.
//
//   message := 8=text SOH 9=digits SOH field* 10=digit digit digit SOH
//   field   := tag=value SOH            tag: digits, the first not 0
//   data    := length-tag=n SOH data-tag=n bytes SOH      the bytes may hold SOH
#pragma once

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
  // Requires: the text has 8 bytes, of which the first ones are the tag and "=".
  void Learn(const Guess* guess, std::uint32_t tag, const char* text, std::size_t size) noexcept;

 private:
  std::array<std::uint8_t, kTags + 1> Marks{};
  std::array<Guess, kTags + 1> Guesses;
};

// Never reads past the text, whatever it is. BodyLength and CheckSum are not compared with the text: the engine has
// done that.
//
// Looks for SOH in 64 bytes at once, ahead of the fields: so the next field does not wait for the end of this one.
class FixText {
 public:
  FixText(std::string_view text, FixTagOrder& order) noexcept
      : Order(&order), Begin(text.data()), At(Begin), End(Begin + text.size()) {
    // A text comes from far memory: all its lines at once, not one behind the other.
    for (std::size_t i = 0; i < text.size() && i < kMostPrefetched; i += kBlockSize) __builtin_prefetch(Begin + i);
  }

  // The next field, from 8 to 10; false behind 10 and at the first mistake.
  bool Next(FixField& field) noexcept;
  // Gives the fields to take(field) until Next would be false.
  template <typename Take>
  [[gnu::always_inline]] void ForEach(Take take) {
    for (FixField field;;) {
      TakeGuessed(take);
      if (Sohs == 0 && FindSoh()) continue;
      if (!Next(field)) return;
      take(field);
    }
  }
  // True behind a well-formed 10 at the very end.
  bool IsWhole() const noexcept { return Whole; }
  // True without data fields and without control characters but SOH.
  bool IsPlain() const noexcept { return Plain; }
  // Bytes that were read without a mistake, or where it stands.
  std::size_t Place() const noexcept { return static_cast<std::size_t>(At - Begin); }

 private:
  static constexpr int kHeadFields = 2;
  static constexpr std::uint32_t kTrailerTag = 10;
  static constexpr std::ptrdiff_t kMostDigits = 9, kWord = 8;
  static constexpr std::size_t kMostPrefetched = 1024;
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

  // Up to a field that is not as guessed or ends in the next block. Few variables, so that all stay in registers.
  template <typename Take>
  [[gnu::always_inline]] void TakeGuessed(Take& take) {
    if (End - At < kWord) return;
    const char *at = At, *const block = Block, *const last = End - kWord;
    std::uint64_t sohs = Sohs;
    const FixTagOrder::Guess* expected = Expected;
    while (sohs != 0 && at <= last && (LoadValue<std::uint64_t>(at) & expected->Mask) == expected->Bytes) {
      const char* const end = block + static_cast<unsigned>(std::countr_zero(sohs));
      sohs &= sohs - 1;
      at += expected->Size;
      take({expected->Tag, expected->Mark, {at, static_cast<std::size_t>(end - at)}});
      at = end + 1;
      expected = expected->Next;
    }
    At = at;
    Sohs = sohs;
    Expected = expected;
  }
  // False if there is none up to the end.
  bool FindSoh() noexcept;
  void Scan() noexcept;
  void ScanBytes(const char* bytes) noexcept;
  bool ReadTag(std::uint32_t& tag) noexcept;
  const char* EndOfData() noexcept;
  bool NoteField(const FixField& field) noexcept;
  static bool IsHead(int count, std::uint32_t tag, std::string_view value) noexcept;
  static bool IsTrailer(std::string_view value) noexcept;
  // Of the data field behind it; kNoLength makes that an ordinary field.
  static std::size_t LengthOf(std::string_view value) noexcept;
  static constexpr std::size_t kNoLength = static_cast<std::size_t>(-1);

  FixTagOrder* Order;
  const char* Begin;
  const char* At;
  const char* End;
  static constexpr std::size_t kBlockSize = 64;
  const char* Scanned = Begin;  // where SOH has not been looked for
  const char* Block = Begin;    // where the bits of Sohs begin
  std::uint64_t Sohs = 0;       // what has been found and not been reached
  const FixTagOrder::Guess* Expected = Order->Nothing();
  int Count = 0;
  bool Whole = false;
  bool Plain = true;
  std::uint32_t DataTag = 0;  // 0, or the data field whose length is known
  std::size_t DataLength = 0;
};

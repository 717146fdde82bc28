// FixText: the fields of one raw FIX message, in one walk and without an allocation.
//
//   message := 8=text SOH 9=digits SOH field* 10=digit digit digit SOH
//   field   := tag=value SOH            tag: digits, the first not 0
//   data    := length-tag=n SOH data-tag=n bytes SOH      the bytes may hold SOH
#pragma once

#include <emmintrin.h>

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>

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
  std::string_view Value;  // of the text that is walked
};

// Never reads past the text, whatever it is. BodyLength and CheckSum are not compared with the text: the engine has
// done that.
//
// Looks for SOH in 64 bytes at once, ahead of the fields: so the next field does not wait for the end of this one.
class FixText {
 public:
  explicit FixText(std::string_view text) noexcept : Begin(text.data()), At(Begin), End(Begin + text.size()) {}

  // The next field, from 8 to 10; false behind 10 and at the first mistake.
  [[gnu::always_inline]] bool Next(FixField& field) noexcept {
    if (!ReadField(field)) return false;
    if (Count < kHeadFields) return IsHead(++Count, field.Tag, field.Value);
    if (field.Tag == kTrailerTag) {
      Whole = At == End && IsTrailer(field.Value);
      return Whole;
    }
    if (field.Tag < kDataTags.size() && kDataTags[field.Tag] != 0) {
      DataTag = kDataTags[field.Tag];
      DataLength = LengthOf(field.Value);
    }
    return true;
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
  static constexpr std::ptrdiff_t kMostDigits = 9;
  static constexpr auto kDataTags = [] {
    std::array<std::uint16_t, 622> tags{};
    for (const FixDataField& row : kFixDataFields) tags[row.LengthTag] = row.DataTag;
    return tags;
  }();

  static constexpr bool IsDigit(char byte) noexcept { return byte >= '0' && byte <= '9'; }

  // Every step ends at the SOH that was found before, which is no digit.
  bool ReadField(FixField& field) noexcept {
    const char* end = EndOfText();
    if (end == nullptr || *At == '0') return false;
    const char* at = At;
    std::uint32_t tag = 0;
    for (; IsDigit(*at); ++at) tag = tag * 10 + static_cast<std::uint32_t>(*at - '0');
    if (*at != '=' || tag == 0 || at - At > kMostDigits) return false;
    At = at + 1;
    if (tag == DataTag && DataLength != kNoLength) {
      end = EndOfData();
      if (end == nullptr) return false;
    }
    DataTag = 0;
    field.Tag = tag;
    field.Value = {At, static_cast<std::size_t>(end - At)};
    At = end + 1;
    return true;
  }
  // The next SOH; null if there is none.
  const char* EndOfText() noexcept {
    while (Sohs == 0) {
      if (Scanned == End) return nullptr;
      Scan();
    }
    const char* const end = Block + std::countr_zero(Sohs);
    Sohs &= Sohs - 1;
    return end;
  }
  void ScanBytes(const char* bytes) noexcept {
    const __m128i soh = _mm_set1_epi8(kSoh), lastControl = _mm_set1_epi8(0x1F), deleted = _mm_set1_epi8(0x7F);
    __m128i controls = _mm_setzero_si128();
    for (int i = 0; i < 4; ++i) {
      const __m128i part = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + 16 * i));
      const __m128i ends = _mm_cmpeq_epi8(part, soh);
      const __m128i others = _mm_andnot_si128(ends, _mm_cmpeq_epi8(_mm_min_epu8(part, lastControl), part));
      controls = _mm_or_si128(controls, _mm_or_si128(others, _mm_cmpeq_epi8(part, deleted)));
      Sohs |= std::uint64_t{static_cast<std::uint32_t>(_mm_movemask_epi8(ends))} << (16 * i);
    }
    Plain = Plain && _mm_movemask_epi8(controls) == 0;
  }
  void Scan() noexcept {
    Block = Scanned;
    const auto left = static_cast<std::size_t>(End - Scanned);
    if (left >= kBlockSize) {
      ScanBytes(Block);
      Scanned += kBlockSize;
      return;
    }
    char last[kBlockSize];
    std::memset(last, ' ', kBlockSize);
    std::memcpy(last, Block, left);
    ScanBytes(last);
    Scanned = End;
  }
  // The SOH behind the bytes that the length field has told; null if it is not there.
  const char* EndOfData() noexcept {
    if (DataLength >= static_cast<std::size_t>(End - At) || At[DataLength] != kSoh) return nullptr;
    Scanned = At + DataLength + 1;
    Sohs = 0;
    Plain = false;
    return At + DataLength;
  }
  // The rare steps get values and not the object: then the compiler keeps it in registers.
  static bool IsHead(int count, std::uint32_t tag, std::string_view value) noexcept;
  static bool IsTrailer(std::string_view value) noexcept;
  // Of the data field behind it; kNoLength makes that an ordinary field.
  static std::size_t LengthOf(std::string_view value) noexcept;
  static constexpr std::size_t kNoLength = static_cast<std::size_t>(-1);

  const char* Begin;
  const char* At;
  const char* End;
  static constexpr std::size_t kBlockSize = 64;
  const char* Scanned = Begin;  // where SOH has not been looked for
  const char* Block = Begin;    // where the bits of Sohs begin
  std::uint64_t Sohs = 0;       // what has been found and not been reached
  int Count = 0;
  bool Whole = false;
  bool Plain = true;
  std::uint32_t DataTag = 0;  // 0, or the data field whose length is known
  std::size_t DataLength = 0;
};

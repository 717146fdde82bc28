#include "feeds/fix/fix_text.h"

#include <emmintrin.h>

#include <algorithm>
#include <charconv>
#include <cstring>

void FixTagOrder::Learn(const Guess* guess, std::uint32_t tag, const char* text, std::size_t size) noexcept {
  const std::uint64_t mask = ~std::uint64_t{0} >> (64 - 8 * size);
  Guesses[static_cast<std::size_t>(guess - Guesses.data())] = {
      mask, LoadValue<std::uint64_t>(text) & mask, Behind(tag), tag, static_cast<std::uint8_t>(size), MarkOf(tag)};
}

void FixTagOrder::LearnHead(const char* text, std::ptrdiff_t size) noexcept {
  if (size <= 8 || size > kMostHead) return;
  HeadMask = ~std::uint64_t{0} >> (8 * (kMostHead - size));
  HeadWords[0] = LoadValue<std::uint64_t>(text);
  HeadWords[1] = LoadValue<std::uint64_t>(text + 8) & HeadMask;
  HeadSize = size;
}

bool FixText::Next(FixField& field) noexcept {
  if (At == Begin && !ReadHead()) return false;
  if (ReadTrailer(field)) return true;
  const char* const begin = At;
  const char* end = EndOfValue();
  if (end == nullptr || !ReadTag(field.Tag)) return false;
  const auto tagSize = static_cast<std::size_t>(At - begin);
  if (field.Tag == DataTag && DataLength != kNoLength) {
    end = EndOfData();
    if (end == nullptr) return false;
  }
  DataTag = 0;
  field.Mark = Order->MarkOf(field.Tag);
  field.Value = {At, static_cast<std::size_t>(end - At)};
  At = end + 1;
  if (Expected != Order->Nothing() && IsGuessed(field.Tag) && End - begin >= kWord && tagSize <= kWord)
    Order->Learn(Expected, field.Tag, begin, tagSize);
  return NoteField(field);
}

// The next SOH; null if there is none.
const char* FixText::EndOfValue() const noexcept {
  const char* at = At;
  for (; End - at >= kWord; at += kWord)
    if (const std::uint64_t sohs = ZeroBytes(LoadValue<std::uint64_t>(at) ^ kByteOnes * kSoh); sohs != 0)
      return at + std::countr_zero(sohs) / 8;
  at = std::find(at, End, kSoh);
  return at == End ? nullptr : at;
}

// Ends at the SOH that was found before, which is no digit.
bool FixText::ReadTag(std::uint32_t& tag) noexcept {
  const char* at = At;
  for (tag = 0; IsDigit(*at); ++at) tag = tag * 10 + static_cast<std::uint32_t>(*at - '0');
  if (*at != '=' || *At == '0' || at == At || at - At > kMostDigits) return false;
  At = at + 1;
  return true;
}

// What the field means for those behind it; false if it ends the walk.
bool FixText::NoteField(const FixField& field) noexcept {
  if (field.Tag == kTrailerTag) return false;
  Expected = IsGuessed(field.Tag) ? Order->Behind(field.Tag) : Order->Nothing();
  if (const std::uint16_t dataTag = DataTagOf(field.Tag); dataTag > kIsData) {
    DataTag = dataTag;
    DataLength = LengthOf(field.Value);
  }
  return true;
}

namespace {

// What has come of control characters, in blocks of 64 bytes.
struct ControlSearch {
  __m128i Least = _mm_set1_epi8(-1);  // with 255 for each SOH
  __m128i Deletes = _mm_setzero_si128();

  // Bit n: byte n is a SOH.
  std::uint64_t SohsOf(const char* block) noexcept {
    const __m128i soh = _mm_set1_epi8(kSoh), deleted = _mm_set1_epi8(0x7F);
    std::uint64_t sohs = 0;
    for (int i = 0; i < 4; ++i) {
      const __m128i part = _mm_loadu_si128(reinterpret_cast<const __m128i*>(block + 16 * i));
      const __m128i ends = _mm_cmpeq_epi8(part, soh);
      Least = _mm_min_epu8(Least, _mm_or_si128(part, ends));
      Deletes = _mm_or_si128(Deletes, _mm_cmpeq_epi8(part, deleted));
      sohs |= std::uint64_t{static_cast<std::uint32_t>(_mm_movemask_epi8(ends))} << (16 * i);
    }
    return sohs;
  }
  bool IsPlain() const noexcept {
    const __m128i controls = _mm_cmpeq_epi8(_mm_min_epu8(Least, _mm_set1_epi8(0x1F)), Least);
    return _mm_movemask_epi8(_mm_or_si128(controls, Deletes)) == 0;
  }
};

}  // namespace

void FixText::Scan() noexcept {
  ControlSearch controls;
  std::uint64_t* ends = Ends.data();
  ScanBegin = ScanEnd;
  for (; End - ScanEnd >= kBlockSize && ends != Ends.end(); ScanEnd += kBlockSize) *ends++ = controls.SohsOf(ScanEnd);
  if (ScanEnd != End && ends != Ends.end()) {
    const std::ptrdiff_t left = End - ScanEnd;
    if (End - Begin >= kBlockSize) {
      *ends++ = controls.SohsOf(End - kBlockSize) >> (kBlockSize - left);
    } else {
      char padded[kBlockSize];
      std::memset(padded, ' ', sizeof padded);
      std::memcpy(padded, ScanEnd, static_cast<std::size_t>(left));
      *ends++ = controls.SohsOf(padded);
    }
    ScanEnd = End;
  }
  LastEnds = ends - 1;
  Plain = Plain && controls.IsPlain();
  const std::ptrdiff_t kept = End - kWord - ScanBegin;
  for (std::ptrdiff_t place = (ends - Ends.data()) * kBlockSize; place > kept && ends != Ends.data();) {
    const std::ptrdiff_t late = place - kept;
    place -= kBlockSize;
    *--ends &= late < kBlockSize ? ~std::uint64_t{0} >> late : 0;
  }
}

// The SOH behind the bytes that the length field has told; null if it is not there.
const char* FixText::EndOfData() noexcept {
  if (DataLength >= static_cast<std::size_t>(End - At) || At[DataLength] != kSoh) return nullptr;
  Plain = false;
  return At + DataLength;
}

// 8 and 9.
bool FixText::ReadHead() noexcept {
  const bool isLong = End - At >= FixTagOrder::kMostHead;
  if (const std::ptrdiff_t known = isLong ? Order->HeadOf(At) : 0; known != 0) {
    At += known;
  } else {
    if (!SkipHeadTag('8')) return false;
    const char* const end = EndOfValue();
    if (end == nullptr || end == At) return false;
    At = end + 1;
    if (!SkipHeadTag('9')) return false;
    if (isLong) Order->LearnHead(Begin, At - Begin);
  }
  const char* const end = EndOfValue();
  if (end == nullptr || end == At || !std::all_of(At, end, IsDigit)) return false;
  At = end + 1;
  return true;
}

bool FixText::SkipHeadTag(char tag) noexcept {
  if (End - At < 2 || At[0] != tag || At[1] != '=') return false;
  At += 2;
  return true;
}

// "10=" and three digits at the very end.
bool FixText::ReadTrailer(FixField& field) noexcept {
  constexpr std::string_view kForm = "10=000\001";
  if (End - At != static_cast<std::ptrdiff_t>(kForm.size()) ||
      !std::string_view(At, End).starts_with(kForm.substr(0, 3)) || End[-1] != kSoh)
    return false;
  field = {kTrailerTag, Order->MarkOf(kTrailerTag), {At + 3, 3}};
  Whole = std::all_of(At + 3, At + 6, IsDigit);
  if (Whole) At = End;
  return Whole;
}

std::size_t FixText::LengthOf(std::string_view value) noexcept {
  std::size_t length = 0;
  const char* const end = value.data() + value.size();
  const auto [last, error] = std::from_chars(value.data(), end, length);
  return error == std::errc() && last == end ? std::min(length, kNoLength - 1) : kNoLength;
}

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

bool FixText::Next(FixField& field) noexcept {
  if (Sohs == 0 && !FindSoh()) return false;
  const char* const begin = At;
  const char* end = Block + std::countr_zero(Sohs);
  Sohs &= Sohs - 1;
  if (!ReadTag(field.Tag)) return false;
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
  if (Count < kHeadFields) return IsHead(++Count, field.Tag, field.Value);
  if (field.Tag == kTrailerTag) {
    Whole = At == End && IsTrailer(field.Value);
    return Whole;
  }
  Expected = IsGuessed(field.Tag) ? Order->Behind(field.Tag) : Order->Nothing();
  if (const std::uint16_t dataTag = DataTagOf(field.Tag); dataTag > kIsData) {
    DataTag = dataTag;
    DataLength = LengthOf(field.Value);
  }
  return true;
}

bool FixText::FindSoh() noexcept {
  while (Sohs == 0) {
    if (Scanned == End) return false;
    Scan();
  }
  return true;
}

void FixText::Scan() noexcept {
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

void FixText::ScanBytes(const char* bytes) noexcept {
  const __m128i soh = _mm_set1_epi8(kSoh), lastControl = _mm_set1_epi8(0x1F), deleted = _mm_set1_epi8(0x7F);
  __m128i least = _mm_set1_epi8(-1), deletes = _mm_setzero_si128();
  std::uint64_t sohs = 0;
  for (int i = 0; i < 4; ++i) {
    const __m128i part = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + 16 * i));
    const __m128i ends = _mm_cmpeq_epi8(part, soh);
    least = _mm_min_epu8(least, _mm_or_si128(part, ends));  // 255 for each SOH
    deletes = _mm_or_si128(deletes, _mm_cmpeq_epi8(part, deleted));
    sohs |= std::uint64_t{static_cast<std::uint32_t>(_mm_movemask_epi8(ends))} << (16 * i);
  }
  Sohs = sohs;
  const __m128i controls = _mm_cmpeq_epi8(_mm_min_epu8(least, lastControl), least);
  Plain = Plain && _mm_movemask_epi8(_mm_or_si128(controls, deletes)) == 0;
}

// The SOH behind the bytes that the length field has told; null if it is not there.
const char* FixText::EndOfData() noexcept {
  if (DataLength >= static_cast<std::size_t>(End - At) || At[DataLength] != kSoh) return nullptr;
  Scanned = At + DataLength + 1;
  Sohs = 0;
  Plain = false;
  return At + DataLength;
}

bool FixText::IsHead(int count, std::uint32_t tag, std::string_view value) noexcept {
  if (count == 1) return tag == 8 && !value.empty();
  return tag == 9 && !value.empty() && std::all_of(value.begin(), value.end(), IsDigit);
}

bool FixText::IsTrailer(std::string_view value) noexcept {
  return value.size() == 3 && std::all_of(value.begin(), value.end(), IsDigit);
}

std::size_t FixText::LengthOf(std::string_view value) noexcept {
  std::size_t length = 0;
  const char* const end = value.data() + value.size();
  const auto [last, error] = std::from_chars(value.data(), end, length);
  return error == std::errc() && last == end ? std::min(length, kNoLength - 1) : kNoLength;
}

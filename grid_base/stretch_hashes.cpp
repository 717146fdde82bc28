#include "grid_base/stretch_hashes.h"

namespace {

constexpr std::uint64_t kModulus = (std::uint64_t{1} << 61) - 1;
constexpr std::uint64_t kBase = 0x0F1E2D3C4B5A6979;

// The product modulo 2^61 - 1, put together from 32-bit halves.
std::uint64_t Times(std::uint64_t a, std::uint64_t b) noexcept {
  const std::uint64_t aHigh = a >> 31, aLow = a & 0x7FFFFFFF, bHigh = b >> 31, bLow = b & 0x7FFFFFFF;
  const std::uint64_t middle = aLow * bHigh + aHigh * bLow;
  const std::uint64_t sum = aHigh * bHigh * 2 + (middle >> 30) + ((middle & 0x3FFFFFFF) << 31) + aLow * bLow;
  const std::uint64_t folded = (sum & kModulus) + (sum >> 61);
  return folded >= kModulus ? folded - kModulus : folded;
}

std::uint64_t WithCharacterAhead(wchar_t character, std::uint64_t rest) noexcept {
  return (Times(rest, kBase) + static_cast<std::uint64_t>(character) + 1) % kModulus;
}

}  // namespace

StretchHashes::StretchHashes(std::size_t size) : Sums(size + 1), Powers(size + 1) {
  Powers[0] = 1;
  for (std::size_t i = 0; i < size; ++i) Powers[i + 1] = Times(Powers[i], kBase);
}

StretchHashes::StretchHashes(std::wstring_view text) : StretchHashes(text.size()) {
  for (std::size_t at = text.size(); at-- > 0;) Put(at, text[at]);
}

void StretchHashes::Put(std::size_t at, wchar_t character) noexcept {
  Sums[at] = WithCharacterAhead(character, Sums[at + 1]);
}

std::uint64_t StretchHashes::Of(std::size_t begin, std::size_t end) const noexcept {
  return (Sums[begin] + kModulus - Times(Sums[end], Powers[end - begin])) % kModulus;
}

std::uint64_t StretchHashes::OfWhole(std::wstring_view text) noexcept {
  std::uint64_t sum = 0;
  for (std::size_t at = text.size(); at-- > 0;) sum = WithCharacterAhead(text[at], sum);
  return sum;
}

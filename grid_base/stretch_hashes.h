// StretchHashes: hashes of every stretch of a text, each in constant time. Pure; any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

// Equal stretches have equal hashes; of different ones two in about 2^60 have. Polynomials modulo 2^61 - 1 over the
// characters, summed up from the end, so that a text may still be changed while it is walked from its end.
class StretchHashes {
 public:
  // Of a text of that length whose characters are then put, from the last to the first.
  explicit StretchHashes(std::size_t size);
  explicit StretchHashes(std::wstring_view text);

  void Put(std::size_t at, wchar_t character) noexcept;
  std::uint64_t Of(std::size_t begin, std::size_t end) const noexcept;
  static std::uint64_t OfWhole(std::wstring_view text) noexcept;

 private:
  std::vector<std::uint64_t> Sums;
  std::vector<std::uint64_t> Powers;
};

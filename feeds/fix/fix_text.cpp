#include "feeds/fix/fix_text.h"

#include <algorithm>
#include <charconv>

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

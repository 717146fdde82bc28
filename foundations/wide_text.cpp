#include "foundations/wide_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "platform/code_page.h"

namespace {

constexpr bool kWideHolds32Bits = sizeof(wchar_t) >= sizeof(char32_t);
constexpr char32_t kFirstPaired = 0x10000;
constexpr char32_t kLastCharacter = 0x10FFFF;

bool IsHighSurrogate(char16_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsLowSurrogate(char16_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

char32_t JoinPair(char16_t high, char16_t low) {
  return kFirstPaired + ((static_cast<char32_t>(high) - 0xD800) << 10) + (static_cast<char32_t>(low) - 0xDC00);
}

void AppendUtf16(std::u16string& units, char32_t character) {
  if (character > kLastCharacter) character = 0xFFFD;
  if (character < kFirstPaired) {
    units += static_cast<char16_t>(character);
    return;
  }
  units += static_cast<char16_t>(0xD800 + ((character - kFirstPaired) >> 10));
  units += static_cast<char16_t>(0xDC00 + ((character - kFirstPaired) & 0x3FF));
}

}  // namespace

std::string WideToNarrow(std::wstring text) {
  return WideToCodePage(text);
}

std::wstring NarrowToWide(std::string&& text) {
  std::wstring wide = CodePageToWide(text);
  text.clear();
  return wide;
}

std::wstring NumberToWide(std::uint32_t value) {
  return std::to_wstring(value);
}

std::wstring DoubleToWide(double value) {
  // The sign of a NaN tells nothing.
  if (std::isnan(value)) value = std::numeric_limits<double>::quiet_NaN();
  std::array<char, std::numeric_limits<double>::max_exponent10 + 8> digits{};  // sign, 309 digits, point, two decimals
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, 2).ptr;
  return {digits.data(), end};
}

std::u16string WideToUtf16(std::wstring_view text) {
  std::u16string units;
  units.reserve(text.size());
  for (const wchar_t character : text) AppendUtf16(units, static_cast<char32_t>(character));
  return units;
}

std::wstring Utf16ToWide(std::u16string_view text) {
  std::wstring wide;
  wide.reserve(text.size());
  for (std::size_t at = 0; at < text.size(); ++at) {
    const bool pair =
        kWideHolds32Bits && IsHighSurrogate(text[at]) && at + 1 < text.size() && IsLowSurrogate(text[at + 1]);
    wide += static_cast<wchar_t>(pair ? JoinPair(text[at], text[at + 1]) : text[at]);
    if (pair) ++at;
  }
  return wide;
}

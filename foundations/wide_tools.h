// Small helpers on wide text, the same on every machine: no locale changes what they do. Not conversions: those are in
// wide_text.h. Any thread may call.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

// White space: blank, tab, line ends and their like, next line and no-break space.
constexpr bool IsWideSpace(wchar_t character) {
  return character == L' ' || (character >= L'\t' && character <= L'\r') || character == 0x85 || character == 0xA0;
}

// The text without white space at both ends.
std::wstring_view TrimWide(std::wstring_view text);

// Latin, Greek and Cyrillic capitals of the single-byte code pages become small letters; all else stays.
std::wstring LowerWide(std::wstring text);
void LowerInPlace(std::span<wchar_t> text) noexcept;

// The number at the front: white space, a sign, digits, up to the first other character; 0 without one. What 32 bits
// do not hold is the nearest that they do.
std::int32_t WideToNumber(const std::wstring& text);

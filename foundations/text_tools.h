// Small helpers on single-byte text. Any thread may call.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The text without the blanks at its end; only code 32 is a blank here, tabs stay.
std::string TrimTrailingBlanks(std::string text);

// Prints the value by a format with exactly one floating-point conversion (e, f or g, large or small, with flags,
// width, precision of up to three digits each and an optional l); any other format gives empty text, as it would
// read what is not there. An empty format means "%.2lf". The result is cut at 127 characters. Infinities print as
// "inf", and a NaN as "nan" without a sign.
std::string DoubleToText(double value, std::string format);

std::string IntToText(std::int32_t value);

// a-z become A-Z, up to the first zero byte; what stands behind it stays.
std::string ToUpperText(std::string text);

// The text up to the delimiter, which is removed from the rest with it. A line ends with LF or CR LF.
std::string_view TakeUntil(std::string_view& rest, char delimiter) noexcept;
std::string_view TakeLine(std::string_view& rest) noexcept;

// The pieces between the delimiters, as reading lines from a stream gives them: a trailing delimiter adds no empty
// piece, an empty text has no piece.
std::vector<std::string> SplitText(std::string_view text, char delimiter);

// The text of a file without the byte order mark that some editors put ahead of UTF-8.
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view WithoutByteOrderMark(std::string_view text) noexcept {
  return text.starts_with(kByteOrderMark) ? text.substr(kByteOrderMark.size()) : text;
}

// Text conversions between the single-byte records and the wide windows and settings, and between wide text and the
// 16-bit text of stored blocks. Any thread may call.

// Through the system code page; see platform/text.h. The argument is used up, and NarrowToWide leaves it empty.
std::string WideToNarrow(std::wstring text);
std::wstring NarrowToWide(std::string&& text);

std::wstring NumberToWide(std::uint32_t value);

// As "%.2lf" prints it, with a point whatever the locale.
std::wstring DoubleToWide(double value);

// Characters above U+FFFF become a pair of surrogates and a pair one character again where a wide character has 32
// bits; a lone surrogate passes as it is, and what is no character at all becomes U+FFFD.
std::u16string WideToUtf16(std::wstring_view text);
std::wstring Utf16ToWide(std::u16string_view text);

// Small helpers on wide text, the same on every machine: no locale changes what they do. Any thread may call.

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

// Helpers for single-byte text, wide text and 16-bit text. Their results do not depend on the locale.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// Without blanks (code 32) at the end; tabs stay.
std::string TrimTrailingBlanks(std::string text);

// Prints the value by a format with exactly one floating-point conversion (e, f or g in either case, with flags, width,
// precision of up to three digits each and an optional l); any other format gives empty text. An empty format means
// "%.2lf". The result is cut at 127 characters. Infinities print as "inf" and NaN as "nan" without a sign.
std::string DoubleToText(double value, std::string format);

std::string IntToText(std::int32_t value);

// a-z become A-Z up to the first zero byte; the rest stays.
std::string ToUpperText(std::string text);

// Removes the text up to the delimiter, and the delimiter, from the rest. A line ends with LF or CR LF.
std::string_view TakeUntil(std::string_view& rest, char delimiter) noexcept;
std::string_view TakeLine(std::string_view& rest) noexcept;

// The pieces between the delimiters, as reading lines from a stream gives them: a trailing delimiter adds no empty
// piece, an empty text has no piece.
std::vector<std::string> SplitText(std::string_view text, char delimiter);

// The text of a file without the byte order mark that some editors write before UTF-8.
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view WithoutByteOrderMark(std::string_view text) noexcept {
  return text.starts_with(kByteOrderMark) ? text.substr(kByteOrderMark.size()) : text;
}

// Through the system code page. NarrowToWide empties its argument; CodePageToWide (platform/locale.h) takes a view.
std::string WideToNarrow(std::wstring text);
std::wstring NarrowToWide(std::string&& text);

std::wstring NumberToWide(std::uint32_t value);
// "1,234,567" in every locale. Requires: not below 0.
std::wstring GroupedDigits(int number);

// As "%.2lf" prints it, with a point.
std::wstring DoubleToWide(double value);

// Where a wide character has 32 bits, characters above U+FFFF become a pair of surrogates and a pair becomes one
// character. A lone surrogate stays; a value above U+10FFFF becomes U+FFFD.
std::u16string WideToUtf16(std::wstring_view text);
std::wstring Utf16ToWide(std::u16string_view text);

// Reads the character at that place and advances; with 16-bit characters it may be a pair of surrogates. A lone one and
// a value above U+10FFFF read as U+FFFD.
char32_t NextCharacter(std::wstring_view text, std::size_t& at) noexcept;
void AppendUtf8(std::string& bytes, char32_t code);
std::string WideToUtf8(std::wstring_view text);

// White space: blank, tab, line ends and their like, next line and no-break space.
constexpr bool IsWideSpace(wchar_t character) {
  return character == L' ' || (character >= L'\t' && character <= L'\r') || character == 0x85 || character == 0xA0;
}

// The text without white space at both ends.
std::wstring_view TrimWide(std::wstring_view text);

// Latin, Greek and Cyrillic capitals of the single-byte code pages become small letters; other characters stay.
std::wstring LowerWide(std::wstring text);
void LowerInPlace(std::span<wchar_t> text) noexcept;

// The number at the front: white space, a sign, digits, up to the first other character; 0 without digits. Clamped to
// 32 bits.
std::int32_t WideToNumber(const std::wstring& text);

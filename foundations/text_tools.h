// Small helpers on single-byte text. Not locale-aware: letters are ASCII, and the decimal point is a point whatever
// the host process has set. Any thread may call.
#pragma once

#include <cstdint>
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

#include "foundations/text_tools.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cwchar>
#include <limits>
#include <optional>

#include "platform/locale.h"

namespace {

constexpr std::size_t kNumberSize = 128;

// A printing format in its parts; doubled percent signs of the plain text are single.
struct NumberFormat {
  std::string Before;
  std::string Conversion;
  std::string After;
};

std::size_t SkipDigits(const std::string& format, std::size_t at) {
  const std::size_t end = format.find_first_not_of("0123456789", at);
  return end == std::string::npos ? format.size() : end;
}

// The length of the floating-point conversion at the percent sign; 0 without one, and for "%a", which the platforms
// print differently.
std::size_t ConversionLength(const std::string& format, std::size_t start) {
  constexpr std::size_t kMostDigits = 3;
  const std::size_t width = format.find_first_not_of("-+ #0", start + 1);
  if (width == std::string::npos) return 0;
  std::size_t at = SkipDigits(format, width);
  if (at - width > kMostDigits) return 0;
  if (at < format.size() && format[at] == '.') {
    const std::size_t precision = at + 1;
    at = SkipDigits(format, precision);
    if (at - precision > kMostDigits) return 0;
  }
  if (at < format.size() && format[at] == 'l') ++at;
  const bool known = at < format.size() && std::string_view("eEfFgG").find(format[at]) != std::string_view::npos;
  return known ? at + 1 - start : 0;
}

std::optional<NumberFormat> CutFormat(const std::string& format) {
  NumberFormat parts;
  for (std::size_t at = 0; at < format.size();) {
    std::string& plain = parts.Conversion.empty() ? parts.Before : parts.After;
    const bool doubled = format.compare(at, 2, "%%") == 0;
    if (doubled || format[at] != '%') {
      plain += format[at];
      at += doubled ? 2 : 1;
      continue;
    }
    const std::size_t length = ConversionLength(format, at);
    if (length == 0 || !parts.Conversion.empty()) return std::nullopt;
    parts.Conversion = format.substr(at, length);
    at += length;
  }
  return parts.Conversion.empty() ? std::nullopt : std::optional(std::move(parts));
}

// The locale of the host process may have another decimal point, of one or more bytes that no printed number has.
void RestorePoint(std::string& number) {
  constexpr std::string_view kNumberBytes = "0123456789+-. einfaEINFA";
  const std::size_t at = number.find_first_not_of(kNumberBytes);
  if (at == std::string::npos) return;
  const std::size_t end = number.find_first_of(kNumberBytes, at);
  number[at] = '.';
  number.erase(at + 1, std::min(end, number.size()) - at - 1);
}

std::string PrintNumber(const std::string& conversion, double value) {
  // Only one platform prints the sign of a NaN.
  if (std::isnan(value)) value = std::numeric_limits<double>::quiet_NaN();
  std::array<char, kNumberSize> buffer{};
  std::snprintf(buffer.data(), buffer.size(), conversion.c_str(), value);
  std::string number = buffer.data();
  RestorePoint(number);
  return number;
}

char UpperLetter(char letter) {
  return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

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

struct CapitalRange {
  wchar_t First;
  wchar_t Last;
  int ToSmall;
};
constexpr CapitalRange kCapitals[] = {
    {L'A', L'Z', 32},   {0xC0, 0xD6, 32},      {0xD8, 0xDE, 32},   {0x152, 0x152, 1},
    {0x160, 0x160, 1},  {0x178, 0x178, -0x79}, {0x17D, 0x17D, 1},  {0x391, 0x3A1, 32},
    {0x3A3, 0x3A9, 32}, {0x400, 0x40F, 80},    {0x410, 0x42F, 32},
};

wchar_t SmallLetter(wchar_t letter) {
  for (const CapitalRange& range : kCapitals)
    if (letter >= range.First && letter <= range.Last) return static_cast<wchar_t>(letter + range.ToSmall);
  return letter;
}

}  // namespace

std::string TrimTrailingBlanks(std::string text) {
  text.erase(text.find_last_not_of(' ') + 1);
  return text;
}

std::string DoubleToText(double value, std::string format) {
  if (format.empty()) format = "%.2lf";
  const std::optional<NumberFormat> parts = CutFormat(format.c_str());
  if (!parts) return {};
  std::string text = parts->Before + PrintNumber(parts->Conversion, value) + parts->After;
  if (text.size() >= kNumberSize) text.resize(kNumberSize - 1);
  return text;
}

std::string IntToText(std::int32_t value) {
  return std::to_string(value);
}

std::string ToUpperText(std::string text) {
  for (char& letter : text) {
    if (letter == '\0') break;
    letter = UpperLetter(letter);
  }
  return text;
}

std::string_view TakeUntil(std::string_view& rest, char delimiter) noexcept {
  const std::size_t end = std::min(rest.find(delimiter), rest.size());
  const std::string_view taken = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return taken;
}

std::string_view TakeLine(std::string_view& rest) noexcept {
  std::string_view line = TakeUntil(rest, '\n');
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

std::vector<std::string> SplitText(std::string_view text, char delimiter) {
  std::vector<std::string> pieces;
  while (!text.empty()) pieces.emplace_back(TakeUntil(text, delimiter));
  return pieces;
}

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

std::wstring GroupedDigits(int number) {
  std::wstring digits = std::to_wstring(number);
  for (std::size_t place = digits.size(); place > 3; place -= 3) digits.insert(place - 3, 1, L',');
  return digits;
}

std::wstring DoubleToWide(double value) {
  // Only one platform prints the sign of a NaN.
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

char32_t NextCharacter(std::wstring_view text, std::size_t& at) noexcept {
  constexpr char32_t kNoCharacter = 0xFFFD;
  const auto first = static_cast<char32_t>(text[at++]);
  if (first < 0xD800 || (first > 0xDFFF && first <= kLastCharacter)) return first;
  const auto second = at < text.size() ? static_cast<char32_t>(text[at]) : U'\0';
  if (kWideHolds32Bits || first > 0xDBFF || second < 0xDC00 || second > 0xDFFF) return kNoCharacter;
  ++at;
  return JoinPair(static_cast<char16_t>(first), static_cast<char16_t>(second));
}

void AppendUtf8(std::string& bytes, char32_t code) {
  const auto put = [&bytes](char32_t byte) { bytes.push_back(static_cast<char>(byte)); };
  const auto follow = [&](int shift) { put(0x80 | ((code >> shift) & 0x3F)); };
  if (code < 0x80) return put(code);
  if (code < 0x800) return put(0xC0 | (code >> 6)), follow(0);
  if (code < 0x10000) return put(0xE0 | (code >> 12)), follow(6), follow(0);
  put(0xF0 | (code >> 18)), follow(12), follow(6), follow(0);
}

std::string WideToUtf8(std::wstring_view text) {
  std::string bytes;
  for (std::size_t at = 0; at < text.size();) AppendUtf8(bytes, NextCharacter(text, at));
  return bytes;
}

std::wstring_view TrimWide(std::wstring_view text) {
  while (!text.empty() && IsWideSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsWideSpace(text.back())) text.remove_suffix(1);
  return text;
}

std::wstring LowerWide(std::wstring text) {
  LowerInPlace(text);
  return text;
}

void LowerInPlace(std::span<wchar_t> text) noexcept {
  std::transform(text.begin(), text.end(), text.begin(), SmallLetter);
}

std::int32_t WideToNumber(const std::wstring& text) {
  const long long number = std::wcstoll(text.c_str(), nullptr, 10);
  return static_cast<std::int32_t>(std::clamp<long long>(number, std::numeric_limits<std::int32_t>::min(),
                                                         std::numeric_limits<std::int32_t>::max()));
}

#include "foundations/text_tools.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <limits>
#include <optional>

namespace {

constexpr std::size_t kNumberSize = 128;

// A printing format cut into its parts; the percent signs of the plain text are single again.
struct NumberFormat {
  std::string Before;
  std::string Conversion;
  std::string After;
};

std::size_t SkipDigits(const std::string& format, std::size_t at) {
  const std::size_t end = format.find_first_not_of("0123456789", at);
  return end == std::string::npos ? format.size() : end;
}

// The length of the floating-point conversion that starts at the percent sign; 0 if it is none, or none that both
// platforms print alike ("%a" is not).
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

// The host process may have chosen a locale with another decimal point, of one or more bytes, none of which occurs in
// a printed number otherwise.
void RestorePoint(std::string& number) {
  constexpr std::string_view kNumberBytes = "0123456789+-. einfaEINFA";
  const std::size_t at = number.find_first_not_of(kNumberBytes);
  if (at == std::string::npos) return;
  const std::size_t end = number.find_first_of(kNumberBytes, at);
  number[at] = '.';
  number.erase(at + 1, std::min(end, number.size()) - at - 1);
}

std::string PrintNumber(const std::string& conversion, double value) {
  // The sign of a NaN prints on one platform only.
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

#include "trade_data/daily_file/line_buffer.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int kDigits = 6;
constexpr std::uint64_t kDigitsEnd = 1'000'000;
constexpr int kDecimals = 4;
constexpr double kScale = 10'000;

// Prices have few decimals. A value that is the double nearest to a decimal of at most six digits, four of them after
// the point, prints as that decimal: scaling finds it, dividing back proves it. Null for other values.
char* PrintShortDecimal(char* to, double value) noexcept {
  if (!(value > 0 && value < static_cast<double>(kDigitsEnd))) return nullptr;
  auto scaled = static_cast<std::uint64_t>(std::llrint(value * kScale));
  if (static_cast<double>(scaled) / kScale != value) return nullptr;
  int decimals = kDecimals;
  for (; decimals > 0 && scaled % 10 == 0; --decimals) scaled /= 10;
  if (scaled >= kDigitsEnd) return nullptr;
  std::uint64_t unit = 1;
  for (int i = 0; i < decimals; ++i) unit *= 10;
  to = std::to_chars(to, to + kDigits, scaled / unit).ptr;
  if (decimals == 0) return to;
  *to++ = '.';
  for (std::uint64_t left = scaled % unit; unit > 1; left %= unit) {
    unit /= 10;
    *to++ = static_cast<char>('0' + left / unit);
  }
  return to;
}

constexpr double kFixedScale = 1'000'000;
constexpr std::uint64_t kFixedUnit = 1'000'000;
constexpr double kFixedEnd = 1e9;
constexpr std::uint64_t kPerHundredth = 10'000;

char* PrintDigits(char* to, std::uint64_t value, int digits) noexcept {
  for (int i = digits; i-- > 0; value /= 10) to[i] = static_cast<char>('0' + value % 10);
  return to + digits;
}

// A value that is the double nearest to a decimal of six places rounds like that decimal, unless the decimal is half
// way between two hundredths. Null for other values.
char* PrintFixedDecimal(char* to, double value, Decimals decimals) noexcept {
  const double size = std::fabs(value);
  if (!(size < kFixedEnd)) return nullptr;
  auto scaled = static_cast<std::uint64_t>(std::llrint(size * kFixedScale));
  if (static_cast<double>(scaled) / kFixedScale != size) return nullptr;
  std::uint64_t unit = kFixedUnit;
  if (decimals == Decimals::Two) {
    if (scaled % kPerHundredth == kPerHundredth / 2) return nullptr;
    scaled = (scaled + kPerHundredth / 2) / kPerHundredth;
    unit = kFixedUnit / kPerHundredth;
  }
  if (std::signbit(value)) *to++ = '-';
  to = std::to_chars(to, to + 11, scaled / unit).ptr;
  *to++ = '.';
  return PrintDigits(to, scaled % unit, static_cast<int>(decimals));
}

}  // namespace

char* PrintFixed(char* to, double value, Decimals decimals) noexcept {
  if (char* end = PrintFixedDecimal(to, value, decimals); end != nullptr) return end;
  if (std::isnan(value)) value = std::fabs(value);
  char whole[std::numeric_limits<double>::max_exponent10 + 16];
  const char* end =
      std::to_chars(whole, whole + sizeof whole, value, std::chars_format::fixed, static_cast<int>(decimals)).ptr;
  const std::size_t length = std::min(static_cast<std::size_t>(end - whole), kLongestFixed);
  std::memcpy(to, whole, length);
  return to + length;
}

char* PrintDouble(char* to, double value) noexcept {
  if (char* end = PrintShortDecimal(to, value); end != nullptr) return end;
  return std::to_chars(to, to + kLongestDouble, value, std::chars_format::general, kDigits).ptr;
}

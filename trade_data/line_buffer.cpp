#include "trade_data/line_buffer.h"

#include <cmath>

namespace {

constexpr int kDigits = 6;
constexpr std::uint64_t kDigitsEnd = 1'000'000;
constexpr int kDecimals = 4;
constexpr double kScale = 10'000;

// Prices have few decimals. A value that is the double nearest to a decimal of at most six digits, four of them behind
// the point, prints as that decimal: found by scaling, and proved by dividing back. Null for any other value.
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

}  // namespace

char* PrintDouble(char* to, double value) noexcept {
  if (char* end = PrintShortDecimal(to, value); end != nullptr) return end;
  return std::to_chars(to, to + kLongestDouble, value, std::chars_format::general, kDigits).ptr;
}

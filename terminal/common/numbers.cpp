#include "terminal/common/numbers.h"

#include <cmath>
#include <cstdio>

const NumberMarks& ScreenMarks() {
  static const NumberMarks marks = UserNumberMarks();
  return marks;
}

namespace {

constexpr int kLeastPriceDecimals = 2;
constexpr int kMostPriceDecimals = 4;

// Of digits with a point or without.
std::wstring WithMarks(std::string_view digits, const NumberMarks& marks) {
  std::wstring text(digits.begin(), digits.end());
  std::size_t place = text.find(L'.');
  if (place == std::wstring::npos)
    place = text.size();
  else
    text[place] = marks.Decimal;
  for (; place > 3; place -= 3) text.insert(place - 3, 1, marks.Thousands);
  return text;
}

// Drops zeros at the end while more than the least decimals are left.
std::string_view WithoutZeros(std::string_view digits, int least) {
  const std::size_t point = digits.find('.');
  if (point == std::string_view::npos) return digits;
  const std::size_t shortest = point + 1 + static_cast<std::size_t>(least);
  while (digits.size() > shortest && digits.ends_with('0')) digits.remove_suffix(1);
  return digits;
}

std::wstring NumberText(double value, int least, int most, const NumberMarks& marks) {
  if (!std::isfinite(value)) return {};
  char text[400];
  std::snprintf(text, sizeof text, "%.*f", most, std::fabs(value));
  const std::string_view digits = WithoutZeros(text, least);
  const bool isNegative = value < 0 && digits.find_first_not_of("0.") != std::string_view::npos;
  return (isNegative ? L"-" : L"") + WithMarks(digits, marks);
}

}  // namespace

std::wstring CountText(std::uint64_t count, const NumberMarks& marks) {
  return WithMarks(std::to_string(count), marks);
}

std::wstring QuantityText(std::int64_t quantity, const NumberMarks& marks) {
  const auto bits = static_cast<std::uint64_t>(quantity);
  return quantity < 0 ? L"-" + CountText(0 - bits, marks) : CountText(bits, marks);
}

std::wstring PriceText(double price, const NumberMarks& marks) {
  return NumberText(price, kLeastPriceDecimals, kMostPriceDecimals, marks);
}

std::wstring DecimalText(double value, int decimals, const NumberMarks& marks) {
  return NumberText(value, decimals, decimals, marks);
}

std::wstring WithSign(double value, std::wstring text) {
  return value > 0 ? L"+" + text : text;
}

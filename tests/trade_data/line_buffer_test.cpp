#include "trade_data/daily_file/line_buffer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <memory>
#include <random>
#include <string>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::string Short(double value) {
  char text[kLongestDouble];
  return {text, PrintDouble(text, value)};
}

std::string Fixed(double value, Decimals decimals) {
  char text[kLongestFixed];
  return {text, PrintFixed(text, value, decimals)};
}

void CheckPrinted(double value) {
  char text[400];
  std::snprintf(text, sizeof text, "%.6g", value);
  ASSERT_EQ(Short(value), text);
  for (const auto& [decimals, format] : {std::pair(Decimals::Two, "%.2f"), {Decimals::Six, "%.6f"}}) {
    const int size = std::snprintf(text, sizeof text, format, value);
    ASSERT_EQ(Fixed(value, decimals), std::string(text, std::min<std::size_t>(static_cast<std::size_t>(size), 127)));
  }
}

TEST(LineBufferTest, PrintsNumbersAsTheStandardLibraryDoes) {
  for (const double value :
       {0.0,    1234.05, 12345.55,    99999.95, 999999.4, 999999.5, 0.00012, 0.00001,       10.00005,
        5e-324, 0.125,   2.675,       0.005,    0.015,    1.005,    0.995,   999999999.995, 1e9,
        5e-7,   4.5e-7,  123456.0005, 1e22,     1.0 / 3,  1234.565, 1.7e308, kInfinity})
    for (const double each : {value, -value}) ASSERT_NO_FATAL_FAILURE(CheckPrinted(each)) << value;
  for (int decimals = 0; decimals <= 6; ++decimals)
    for (int i = 0; i < 6000; ++i) {
      const double value = (i * 163) / std::pow(10.0, decimals);
      for (const double each : {value, -value, std::nextafter(value, kInfinity), std::nextafter(value, -kInfinity)})
        ASSERT_NO_FATAL_FAILURE(CheckPrinted(each));
    }
  std::mt19937_64 random(11);
  for (int i = 0; i < 20000; ++i) {
    const std::uint64_t bits = random();
    const double whole = static_cast<double>(static_cast<std::int64_t>(bits >> (8 + bits % 50)));
    for (const double each : {whole / 100, -whole / 1e6, whole / 200, whole / 3, std::sqrt(whole) / 1e5,
                              std::ldexp(whole, -static_cast<int>(bits % 64)), std::ldexp(whole, 700)})
      ASSERT_NO_FATAL_FAILURE(CheckPrinted(each));
  }
  EXPECT_EQ(Short(std::nan("")), "nan");
  EXPECT_EQ(Fixed(-std::nan(""), Decimals::Six), "nan");  // Intentional: without its sign.
}

// Exact heap blocks, so that a sanitizer sees an overread.
TEST(LineBufferTest, FieldEndsAtItsNulOrItsSize) {
  for (std::size_t size = 0; size <= 25; ++size)
    for (std::size_t length = 0; length <= size; ++length) {
      const auto field = std::make_unique<char[]>(size);
      std::fill_n(field.get(), size, '\x80');
      if (length < size) field[length] = '\0';
      char text[40];
      ASSERT_EQ(std::string(text, PrintField(text, field.get(), size)), std::string(length, '\x80')) << size;
    }
}

}  // namespace

#include "feeds/fix/fix_values.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace {

TEST(FixValuesTest, ReadsWholeQuantities) {
  const std::tuple<const char*, std::uint32_t, const char*> rows[] = {
      {"100", 100, ""},
      {"100.", 100, ""},
      {"100.0", 100, ""},
      {"100.00", 100, ""},
      {"007", 7, ""},
      {"0", 0, ""},
      {"4294967295.0", 4294967295, ""},
      {"4294967296", 1, "is above 4294967295"},
      {"99999999999999999999999999", 1, "is above 4294967295"},
      {"0.5", 1, "is a fraction"},
      {"100.0001", 1, "is a fraction"},
      {"-1", 1, "is below 0"},
      {"", 1, "is not a number"},
      {".0", 1, "is not a number"},
      {"+1", 1, "is not a number"},
      {"1e2", 1, "is not a number"},
      {"1,000", 1, "is not a number"},
      {" 1", 1, "is not a number"},
      {"1 ", 1, "is not a number"},
      {"1.0.0", 1, "is not a number"},
  };
  for (const auto& [text, number, mistake] : rows) {
    SCOPED_TRACE(text);
    std::uint32_t quantity = 1;
    const char* told = ReadQuantity(text, quantity);
    EXPECT_STREQ(told == nullptr ? "" : told, mistake);
    EXPECT_EQ(quantity, number);
  }
}

// The C library is the other way to the same number.
TEST(FixValuesTest, ReadsPricesToTheNearestDouble) {
  for (const char* text : {"1313.5", "-0.01", "0", "0.1", "123456789012345", "0.000000000000001", "1234567.12345678",
                           "12345678901234567890", "0.12345678901234567", "9007199254740993", ".5", "5.", "-00.50",
                           "999999999999999", "99999999999999.9", "0.00000000000000000000000000000000000001"}) {
    double price = -1;
    EXPECT_EQ(ReadPrice(text, price), nullptr) << text;
    EXPECT_EQ(price, std::strtod(text, nullptr)) << text;
  }
}

TEST(FixValuesTest, RefusesOtherPrices) {
  const std::string huge(400, '9');
  for (const char* text :
       {"", "-", ".", "-.", "+1", "1e5", "inf", "nan", "0x10", "1 ", " 1", "1,5", "--1", "1.2.3", "1-", huge.c_str()}) {
    double price = 7;
    EXPECT_STRNE(ReadPrice(text, price), nullptr) << text;
    EXPECT_EQ(price, 7) << text;
  }
}

TEST(FixValuesTest, TellsPricesWithMoreDigitsThanADoubleKeeps) {
  for (const char* text : {"1234567890123456", "-0.1234567890123456", "100000000.00000001"})
    EXPECT_TRUE(ExceedsDouble(text)) << text;
  for (const char* text : {"123456789012345", "0000123456789012345", "-1.230000000000000000000",
                           "0.00000000000000000001", "0.000000000000000000000", "12345678901234.5"})
    EXPECT_FALSE(ExceedsDouble(text)) << text;
}

TEST(FixValuesTest, KnowsTimes) {
  for (const char* text :
       {"20131007-09:30:01", "20131231-23:59:60", "20131007-00:00:00.1", "20131007-09:30:01.123456789"})
    EXPECT_TRUE(IsFixTime(text)) << text;
  for (const char* text :
       {"", "20131007", "20131007-09:30", "20131007-09:30:0", "20131007 09:30:01", "20131007-09.30:01",
        "20131007-09:30:01.", "20131007-09:30:01.1x", "20131007-09:30:01Z", "20131307-09:30:01", "20130007-09:30:01",
        "20131032-09:30:01", "20131000-09:30:01", "20131007-24:30:01", "20131007-09:60:01", "20131007-09:30:61"})
    EXPECT_FALSE(IsFixTime(text)) << text;
}

}  // namespace

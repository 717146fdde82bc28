#include "foundations/text_builder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <tuple>

#include "tests/support/failing_memory.h"

namespace {

using QOR::Base::CQORString;

template <typename... Values>
std::string Built(std::string_view format, const Values&... values) {
  CQORString text;
  return text.Format(format, values...) ? std::string(text.Text(), text.Length()) : "refused";
}

TEST(TextBuilderTest, GrowsToTheNextMultipleOf16AndNeverCutsTheContent) {
  const std::string kLong = "0123456789012345678901234567890123456789";
  const std::tuple<std::string, std::size_t, std::size_t> kRows[] = {
      {"abc", 0, 16},  {"abc", 15, 16},     {"abc", 16, 32}, {"abc", 31, 32},
      {"abc", 32, 48}, {"abc", 1000, 1008}, {kLong, 3, 48}};
  for (const auto& [content, size, capacity] : kRows) {
    SCOPED_TRACE(size);
    CQORString text;
    EXPECT_EQ(text.Capacity(), 16u);
    EXPECT_TRUE(text.Format(content) && text.Grow(size));
    EXPECT_EQ(text.Capacity(), capacity);
    EXPECT_EQ(text.Text(), content);
  }
}

TEST(TextBuilderTest, AppendsAcrossTheInlineBuffer) {
  CQORString text;
  std::string expected;
  for (int step = 0; step < 60; ++step) {
    expected += static_cast<char>('a' + step % 26);
    ASSERT_TRUE(text.Format("#c", expected.back()));
    ASSERT_EQ(text.Text(), expected);
    ASSERT_EQ(text.Length(), expected.size());
    ASSERT_EQ(text.Capacity(), (expected.size() / 16 + 1) * 16);
  }
}

TEST(TextBuilderTest, AFailedGrowthIsReportedAndChangesNothing) {
  for (const std::size_t size : {std::numeric_limits<std::size_t>::max(), std::size_t{100}}) {
    SCOPED_TRACE(size);
    CQORString text;
    ASSERT_TRUE(text.Format("abc"));
    testing::internal::CaptureStderr();
    FailAllocation(size == 100 ? 1 : 0);
    EXPECT_FALSE(text.Grow(size));
    const std::string report = testing::internal::GetCapturedStderr(), start = "Failed to initialize buffer: ";
    EXPECT_TRUE(report.starts_with("QOR::Base::CQORString::Grow\t84\t" + start + std::to_string(size) + ", "))
        << report;
    FailAllocation(1);
    EXPECT_FALSE(text.Format("kept ## but no byte of a text without room"));
    EXPECT_EQ(text.Capacity(), 16u);
    EXPECT_STREQ(text.Text(), "abckept #");
  }
}

TEST(TextBuilderTest, WritesEachDirective) {
  EXPECT_EQ(Built(""), "");
  EXPECT_EQ(Built("## and ##", 1), "# and #");
  EXPECT_EQ(Built("a #C b#C", "text", std::string("more")), "a text bmore");
  EXPECT_EQ(Built("[#C]", static_cast<const char*>(nullptr)), "[]");
  EXPECT_EQ(Built("#W", L"Gr\u00FC\u4E2D"), "Gr\xFC?");
  EXPECT_EQ(Built("#c#c", 'x', '#'), "x#");
  EXPECT_EQ(Built("#i #l #s #t", -7, std::numeric_limits<std::int64_t>::min(), std::int16_t{-32768}, std::int8_t{-128}),
            "-7 -9223372036854775808 -32768 -128");
  EXPECT_EQ(Built("#I #L #Z #S #T", 4294967295u, std::uint64_t{18446744073709551615u}, sizeof(char),
                  std::uint16_t{65535}, std::uint8_t{255}),
            "4294967295 18446744073709551615 1 65535 255");
  EXPECT_EQ(Built("#D|#d|#F|#f", 1.005, -2.5, 0.25f, -100.0f), "1.00|-2.50|0.25|-100.00");
  EXPECT_EQ(Built("#D3#D25#F0x", 1.0, 2.0, 3.0f), "1.0002.0053x");
}

TEST(TextBuilderTest, RejectsBadDirectivesAndArguments) {
  for (const char* format : {"abc#", "# i", "#\"", "#u", "#x", "#A", "#2D", "#i#i", "#I", "#l", "#C", "#D"})
    EXPECT_EQ(Built(format, 1), "refused") << format;
  EXPECT_EQ(Built("#i"), "refused");
  EXPECT_EQ(Built("#i", 1u), "refused");
  EXPECT_EQ(Built("#i", std::int64_t{1}), "refused");
  EXPECT_EQ(Built("#C", L"wide"), "refused");
  EXPECT_EQ(Built("#D", 1.0f), "refused");
  EXPECT_EQ(Built("#F", 1.0), "refused");
  CQORString text;
  EXPECT_FALSE(text.Format("kept #i then #q", 5));
  EXPECT_STREQ(text.Text(), "kept 5 then ");
}

TEST(TextBuilderTest, RoundsFixedPointHalfUp) {
  const std::tuple<double, const char*, const char*> kRows[] = {
      {0, "#D0", "0"},
      {0.5, "#D0", "1"},
      {2.5, "#D0", "3"},
      {-2.5, "#D0", "-3"},
      {0.125, "#D2", "0.13"},
      {0.124, "#D2", "0.12"},
      {0.995, "#D2", "1.00"},
      {9.99999, "#D4", "10.0000"},
      {-99.999, "#D", "-100.00"},
      {0.05, "#D3", "0.050"},
      {1.000000001, "#D8", "1.00000000"},
      {1.123456786, "#D8", "1.12345679"},
      {1.5, "[#D9]", "[]"},
      {4503599627370495.5, "#D0", "4503599627370496"},
      {18446744073709551616.0, "#D1", "18446744073709551616.0"},
      {-1e22, "#D", "-10000000000000000000000.00"},
      {std::numeric_limits<double>::infinity(), "#D", "inf"},
      {-std::numeric_limits<double>::infinity(), "#D0", "-inf"},
      {std::numeric_limits<double>::quiet_NaN(), "#D", "nan"},
      {std::numeric_limits<double>::denorm_min(), "#D8", "0.00000000"},
  };
  for (const auto& [value, format, text] : kRows) EXPECT_EQ(Built(format, value), text) << format;
  EXPECT_EQ(Built("#D", std::numeric_limits<double>::max()).size(), 312u);
}

}  // namespace

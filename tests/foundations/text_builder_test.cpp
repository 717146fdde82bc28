#include "foundations/text_builder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

namespace {

using QOR::Base::CQORString;

template <typename... Values>
std::string Built(std::string_view format, const Values&... values) {
  CQORString text;
  return text.Format(format, values...) ? std::string(text.Text(), text.Length()) : "refused";
}

TEST(TextBuilderTest, GrowsToTheNextMultipleOf16) {
  const std::size_t kRows[][2] = {{0, 16}, {15, 16}, {16, 32}, {31, 32}, {32, 48}, {1000, 1008}};
  for (const auto& [size, capacity] : kRows) {
    SCOPED_TRACE(size);
    CQORString text;
    EXPECT_EQ(text.Capacity(), 16u);
    EXPECT_TRUE(text.Format("abc") && text.Grow(size));
    EXPECT_EQ(text.Capacity(), capacity);
    EXPECT_STREQ(text.Text(), "abc");
  }
}

TEST(TextBuilderTest, GrowNeverCutsTheContent) {
  CQORString text;
  ASSERT_TRUE(text.Format("0123456789012345678901234567890123456789"));
  EXPECT_TRUE(text.Grow(3));
  EXPECT_EQ(text.Capacity(), 48u);
  EXPECT_STREQ(text.Text(), "0123456789012345678901234567890123456789");
}

TEST(TextBuilderTest, AppendsAcrossTheInlineBuffer) {
  CQORString text;
  std::string expected;
  for (int step = 0; step < 60; ++step) {
    ASSERT_TRUE(text.Format("#c", static_cast<char>('a' + step % 26)));
    expected += static_cast<char>('a' + step % 26);
    ASSERT_STREQ(text.Text(), expected.c_str());
    ASSERT_EQ(text.Length(), expected.size());
    ASSERT_EQ(text.Capacity(), (expected.size() / 16 + 1) * 16);
  }
}

TEST(TextBuilderTest, AFailedGrowthIsReportedAndChangesNothing) {
  CQORString text;
  ASSERT_TRUE(text.Format("abc"));
  testing::internal::CaptureStderr();
  EXPECT_FALSE(text.Grow(std::numeric_limits<std::size_t>::max()));
  const std::string report = testing::internal::GetCapturedStderr();
  EXPECT_TRUE(
      report.starts_with("QOR::Base::CQORString::Grow\t84\tFailed to initialize buffer: 18446744073709551615, "))
      << report;
  EXPECT_EQ(text.Capacity(), 16u);
  EXPECT_STREQ(text.Text(), "abc");
}

TEST(TextBuilderTest, WritesEachDirective) {
  const char* const missing = nullptr;
  const std::int64_t least = std::numeric_limits<std::int64_t>::min();
  EXPECT_EQ(Built(""), "");
  EXPECT_EQ(Built("## and ##", 1), "# and #");
  EXPECT_EQ(Built("a #C b#C", "text", std::string("more")), "a text bmore");
  EXPECT_EQ(Built("[#C]", missing), "[]");
  EXPECT_EQ(Built("#W", L"Gr\u00FC\u4E2D"), "Gr\xFC?");
  EXPECT_EQ(Built("#c#c", 'x', '#'), "x#");
  EXPECT_EQ(Built("#i #l #s #t", -7, least, std::int16_t{-32768}, std::int8_t{-128}),
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
  const struct {
    double Value;
    const char* Format;
    const char* Text;
  } kRows[] = {
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
  for (const auto& row : kRows) {
    SCOPED_TRACE(std::string(row.Format) + " of " + row.Text);
    EXPECT_EQ(Built(row.Format, row.Value), row.Text);
  }
  EXPECT_EQ(Built("#D", std::numeric_limits<double>::max()).size(), 312u);
}

}  // namespace

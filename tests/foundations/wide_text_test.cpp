#include "foundations/text_tools.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "platform/locale.h"

namespace {

TEST(WideTextTest, KeepsAllBytesThroughTheCodePage) {
  if (SystemCodePage() != 1252) GTEST_SKIP() << "The system has another code page";
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
  const std::wstring wide = CodePageToWide(bytes);
  ASSERT_EQ(wide.size(), 256u);
  EXPECT_EQ(wide.substr(0x80, 0x20),
            L"\u20AC\x0081\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\x008D\u017D\x008F"
            L"\x0090\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\x009D\u017E\u0178");
  for (const std::size_t same : {0x00u, 0x41u, 0x7Fu, 0xA0u, 0xFFu}) EXPECT_EQ(wide[same], static_cast<wchar_t>(same));
  EXPECT_EQ(WideToCodePage(wide), bytes);
}

TEST(WideTextTest, ReplacesCharactersOutsideTheCodePageByQuestionMarks) {
  if (SystemCodePage() != 1252) GTEST_SKIP() << "The system has another code page";
  // U+0080 is the byte 0x80 in no direction, and U+0101 is not an "a".
  EXPECT_EQ(WideToNarrow(L"a\x0080\u0101\u4E2D\u20ACz"), "a???\x80z");
}

TEST(WideTextTest, EmptiesTheArgumentOfNarrowToWide) {
  std::string text = "Trade Book with a text longer than a short one";
  EXPECT_EQ(NarrowToWide(std::move(text)), L"Trade Book with a text longer than a short one");
  EXPECT_TRUE(text.empty());
  EXPECT_EQ(NarrowToWide(std::string()), L"");
  EXPECT_EQ(WideToNarrow(std::wstring(L"a\0b", 3)), std::string("a\0b", 3));
  EXPECT_EQ(WideToNarrow(L""), "");
}

TEST(WideTextTest, PrintsNumbers) {
  EXPECT_EQ(NumberToWide(0), L"0");
  EXPECT_EQ(NumberToWide(4294967295u), L"4294967295");
  const struct {
    double Value;
    const wchar_t* Text;
  } kRows[] = {{0, L"0.00"},
               {-0.001, L"-0.00"},
               {0.125, L"0.12"},
               {0.375, L"0.38"},
               {1234567.891, L"1234567.89"},
               {1e22, L"10000000000000000000000.00"},
               {-std::numeric_limits<double>::infinity(), L"-inf"},
               {-std::numeric_limits<double>::quiet_NaN(), L"nan"}};
  for (const auto& row : kRows) EXPECT_EQ(DoubleToWide(row.Value), row.Text);
  EXPECT_EQ(DoubleToWide(std::numeric_limits<double>::lowest()).size(), 313u);
}

TEST(WideTextTest, JoinsPairsAndKeepsLoneSurrogates) {
  const struct {
    std::wstring Wide;
    std::u16string Units;
  } kRows[] = {
      {L"", u""},
      {L"Gr\u00FC\u4E2D", u"Gr\u00FC\u4E2D"},
      {L"\uFFFF", u"\uFFFF"},
      {L"\U00010000|\U0001F600|\U0010FFFF", u"\xD800\xDC00|\xD83D\xDE00|\xDBFF\xDFFF"},
      {std::wstring(1, static_cast<wchar_t>(0xD83D)), u"\xD83D"},
      {std::wstring(1, static_cast<wchar_t>(0xDE00)) + L"a",
       u"\xDE00"
       u"a"},
      {L"a" + std::wstring(1, static_cast<wchar_t>(0xDE00)), u"a\xDE00"},
      {std::wstring(1, static_cast<wchar_t>(0xD83D)) + L"\U0001F600", u"\xD83D\xD83D\xDE00"},
      {std::wstring(L"a\0b", 3), std::u16string(u"a\0b", 3)},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.Units.size());
    EXPECT_EQ(WideToUtf16(row.Wide), row.Units);
    // Without the zero byte after a string.
    const std::vector<char16_t> units(row.Units.begin(), row.Units.end());
    EXPECT_EQ(Utf16ToWide({units.data(), units.size()}), row.Wide);
  }
}

TEST(WideTextTest, ReplacesWhatIsNoCharacter) {
  if (sizeof(wchar_t) == 2) GTEST_SKIP() << "Every 16-bit value is a unit";
  const std::wstring outside = {std::numeric_limits<wchar_t>::max(), std::numeric_limits<wchar_t>::min()};
  EXPECT_EQ(WideToUtf16(outside), u"\uFFFD\uFFFD");
}

}  // namespace

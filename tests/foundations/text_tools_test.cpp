#include "foundations/text_tools.h"

#include <gtest/gtest.h>

#include <clocale>
#include <limits>
#include <tuple>

#include "foundations/date_time.h"
#include "foundations/paths.h"
#include "platform/locale.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(TextToolsTest, TrimsBlanksAtTheEndOnly) {
  const char* const kRows[][2] = {{"", ""},       {"   ", ""},       {"a", "a"},     {"a  ", "a"}, {"  a b  ", "  a b"},
                                  {"a\t", "a\t"}, {"a \t ", "a \t"}, {"a\n ", "a\n"}};
  for (const auto& row : kRows) EXPECT_EQ(TrimTrailingBlanks(row[0]), row[1]);
}

TEST(TextToolsTest, PrintsDoublesByFormat) {
  const std::tuple<double, const char*, const char*> kRows[] = {
      {2.5, "%.0f", "2"},      {1.5, "%f", "1.500000"},      {1.5, "[%8.1f]", "[     1.5]"},
      {2.0, "%#.0f", "2."},    {0.125, "%.2lf", "0.12"},     {1.0, "a, b %.1f", "a, b 1.0"},
      {-0.004, "", "-0.00"},   {50.0, "%%%.0f%%", "%50%"},   {1.5, "[%-8.1f]", "[1.5     ]"},
      {kNaN, "%.2f", "nan"},   {kInfinity, "%.2f", "inf"},   {12345.678, "%.3e", "1.235e+04"},
      {-kNaN, "%.2f", "nan"},  {12345.678, "%G", "12345.7"}, {-1.5, "%+010.3F|", "-00001.500|"},
      {1234.5, "", "1234.50"}, {-kInfinity, "%.2f", "-inf"}, {101.256789, "%.6lf", "101.256789"},
  };
  for (const auto& [value, format, text] : kRows) EXPECT_EQ(DoubleToText(value, format), text) << format;
}

TEST(TextToolsTest, RejectsFormatsThatAreNotOneDouble) {
  for (const char* format : {"abc",  "%",    "%.2", "%.2l", "%f%f", "%d",  "%s", "%n",  "%f %s",  "%s %f",  "%*f",
                             "%.*f", "%1$f", "%Lf", "%llf", "%hf",  "%'f", "%a", "%f%", "%1000f", "%.1000f"})
    EXPECT_EQ(DoubleToText(1.0, format), "") << format;
}

TEST(TextToolsTest, CutsALongTextAt127Characters) {
  EXPECT_EQ(DoubleToText(1e300, "%.2f"),
            "1000000000000000052504760255204420248704468581108159154915854115"
            "511802457988908195786371375080447864043704443832883878176942523");
  EXPECT_EQ(DoubleToText(1.0, "%200.0f"), std::string(127, ' '));
  EXPECT_EQ(DoubleToText(1.0, std::string(126, 'a') + "%.1f"), std::string(126, 'a') + "1");
  EXPECT_EQ(DoubleToText(1.0, "%.1f" + std::string(124, 'a')), "1.0" + std::string(124, 'a'));
  EXPECT_EQ(DoubleToText(1.0, "%.1f" + std::string(125, 'a')), "1.0" + std::string(124, 'a'));
}

TEST(TextToolsTest, IgnoresTheLocaleOfTheProcess) {
  const std::string former = std::setlocale(LC_ALL, nullptr);
  for (const char* locale : {"German_Germany.1252", "de_DE.UTF-8", "ps_AF.UTF-8"}) {
    std::setlocale(LC_ALL, locale);  // where the platform has it
    EXPECT_EQ(DoubleToText(-1234.5, "a, %.2f, b"), "a, -1234.50, b");
    EXPECT_EQ(DoubleToText(1e300, "%.2e"), "1.00e+300");
    EXPECT_EQ(FormatTimeText(1772356530, "dd MMMM yyyy", true), "01 March 2026");
  }
  std::setlocale(LC_ALL, former.c_str());
}

TEST(TextToolsTest, RaisesAsciiLettersUpToTheZeroByte) {
  EXPECT_EQ(ToUpperText("azAZ@[`{09"), "AZAZ@[`{09");
  EXPECT_EQ(ToUpperText("\xE4\xFC z"), "\xE4\xFC Z");
  EXPECT_EQ(ToUpperText(std::string("ab\0cd", 5)), std::string("AB\0cd", 5));
}

TEST(TextToolsTest, SplitsAsAStreamReadsLines) {
  using Pieces = std::vector<std::string>;
  const std::pair<const char*, Pieces> kRows[] = {{"", {}},
                                                  {",", {""}},
                                                  {"a,", {"a"}},
                                                  {"a,,", {"a", ""}},
                                                  {",a", {"", "a"}},
                                                  {"a,b", {"a", "b"}},
                                                  {"a,,b", {"a", "", "b"}},
                                                  {" a ,b;c ", {" a ", "b;c "}}};
  for (const auto& [text, pieces] : kRows) EXPECT_EQ(SplitText(text, ','), pieces) << text;
}

TEST(TextToolsTest, KeepsAllBytesThroughTheCodePage) {
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
  // U+0080 is the byte 0x80 in no direction, and U+0101 is not an "a".
  EXPECT_EQ(WideToNarrow(L"a\x0080\u0101\u4E2D\u20ACz"), "a???\x80z");
}

TEST(TextToolsTest, EmptiesTheArgumentOfNarrowToWide) {
  std::string text = "Trade Book with a text longer than a short one";
  EXPECT_EQ(NarrowToWide(std::move(text)), L"Trade Book with a text longer than a short one");
  EXPECT_TRUE(text.empty());
}

TEST(TextToolsTest, TrimsAndLowersWideText) {
  EXPECT_EQ(TrimWide(L" \t\n\v\f\r \x85\xA0\x08 a\x0E\xA0\x85 "), L"\x08 a\x0E");
  EXPECT_EQ(TrimWide(L" \t"), L"");
  // The first and last of each range of capitals, and their neighbours.
  EXPECT_EQ(LowerWide(L"@AZ[\xBF\xC0\xD6\xD7\xD8\xDE\xDF\x151\x152\x153\x160\x178\x179\x17D\x17E"),
            L"@az[\xBF\xE0\xF6\xD7\xF8\xFE\xDF\x151\x153\x153\x161\xFF\x179\x17E\x17E");
  EXPECT_EQ(LowerWide(L"\x390\x391\x3A1\x3A2\x3A3\x3A9\x3AA\x3FF\x400\x40F\x410\x42F\x430"),
            L"\x390\x3B1\x3C1\x3A2\x3C3\x3C9\x3AA\x3FF\x450\x45F\x430\x44F\x430");
}

TEST(TextToolsTest, ReadsAndPrintsWideNumbers) {
  const std::pair<const wchar_t*, std::int32_t> kTexts[] = {
      {L"", 0}, {L" -12x", -12}, {L"99999999999", 2147483647}, {L"-99999999999", -2147483647 - 1}};
  for (const auto& [text, number] : kTexts) EXPECT_EQ(WideToNumber(text), number) << number;
  EXPECT_EQ(NumberToWide(4294967295u), L"4294967295");
  EXPECT_EQ(IntToText(std::numeric_limits<std::int32_t>::min()), "-2147483648");
  const std::pair<double, const wchar_t*> kRows[] = {{0, L"0.00"},
                                                     {-0.001, L"-0.00"},
                                                     {0.125, L"0.12"},
                                                     {0.375, L"0.38"},
                                                     {1e22, L"10000000000000000000000.00"},
                                                     {-kInfinity, L"-inf"},
                                                     {-kNaN, L"nan"}};
  for (const auto& [value, text] : kRows) EXPECT_EQ(DoubleToWide(value), text);
  EXPECT_EQ(DoubleToWide(std::numeric_limits<double>::lowest()).size(), 313u);
}

TEST(TextToolsTest, JoinsPairsAndKeepsLoneSurrogates) {
  const std::wstring high(1, static_cast<wchar_t>(0xD83D)), low(1, static_cast<wchar_t>(0xDE00));
  const std::pair<std::wstring, std::u16string> kRows[] = {
      {L"Gr\u00FC\u4E2D\uFFFF", u"Gr\u00FC\u4E2D\uFFFF"},
      {L"\U00010000|\U0001F600|\U0010FFFF", u"\xD800\xDC00|\xD83D\xDE00|\xDBFF\xDFFF"},
      {high, u"\xD83D"},
      {low + L'|' + low, u"\xDE00|\xDE00"},
      {high + L'|' + high + L"\U0001F600", u"\xD83D|\xD83D\xD83D\xDE00"},
      {std::wstring(L"a\0b", 3), std::u16string(u"a\0b", 3)},
  };
  for (const auto& [wide, units] : kRows) {
    SCOPED_TRACE(units.size());
    EXPECT_EQ(WideToUtf16(wide), units);
    // Without the zero byte after a string.
    const std::vector<char16_t> exact(units.begin(), units.end());
    EXPECT_EQ(Utf16ToWide({exact.data(), exact.size()}), wide);
  }
}

TEST(TextToolsTest, ReplacesWhatIsNoCharacter) {
  if (sizeof(wchar_t) == 2) GTEST_SKIP() << "Every 16-bit value is a unit";
  const std::wstring outside = {std::numeric_limits<wchar_t>::max(), std::numeric_limits<wchar_t>::min(),
                                static_cast<wchar_t>(0x110000)};
  EXPECT_EQ(WideToUtf16(outside), u"\uFFFD\uFFFD\uFFFD");
}

TEST(PathsTest, KeepsEveryCharacterOfAName) {
  const std::wstring text = L"caf\u00e9 \u20ac \U0001F600.csv";
  const std::filesystem::path path = PathOfWide(text);
  EXPECT_TRUE(path.u8string() == u8"caf\u00e9 \u20ac \U0001F600.csv");
  EXPECT_TRUE(WideOfPath(path) == text);
  EXPECT_EQ(PathOfWide(L""), std::filesystem::path());
}

TEST(PathsTest, ShowsTheBytesOfNamesThatAreNotText) {
  const std::filesystem::path path(std::basic_string<std::filesystem::path::value_type>{
      'a', static_cast<std::filesystem::path::value_type>(0xFF), '.'});
  EXPECT_TRUE(WideOfPath(path) == L"a\u00ff.");
}

}  // namespace

#include "foundations/text_tools.h"

#include <gtest/gtest.h>

#include <clocale>
#include <limits>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(TextToolsTest, TrimsBlanksAtTheEndOnly) {
  const char* const kRows[][2] = {{"", ""},       {"   ", ""},       {"a", "a"},     {"a  ", "a"}, {"  a b  ", "  a b"},
                                  {"a\t", "a\t"}, {"a \t ", "a \t"}, {"a\n ", "a\n"}};
  for (const auto& row : kRows) EXPECT_EQ(TrimTrailingBlanks(row[0]), row[1]);
}

TEST(TextToolsTest, PrintsDoublesByFormat) {
  const struct {
    double Value;
    const char* Format;
    std::string Text;
  } kRows[] = {
      {1234.5, "", "1234.50"},
      {-0.004, "", "-0.00"},
      {0.125, "%.2lf", "0.12"},
      {2.5, "%.0f", "2"},
      {101.256789, "%.6lf", "101.256789"},
      {1.5, "%f", "1.500000"},
      {-1.5, "%+010.3F|", "-00001.500|"},
      {1.5, "[%-8.1f]", "[1.5     ]"},
      {1.5, "[%8.1f]", "[     1.5]"},
      {12345.678, "%.3e", "1.235e+04"},
      {12345.678, "%G", "12345.7"},
      {2.0, "%#.0f", "2."},
      {50.0, "%%%.0f%%", "%50%"},
      {1.0, "a, b %.1f", "a, b 1.0"},
      {kInfinity, "%.2f", "inf"},
      {-kInfinity, "%.2f", "-inf"},
      {kNaN, "%.2f", "nan"},
      {-kNaN, "%.2f", "nan"},
      {1e300, "%.2f",
       "1000000000000000052504760255204420248704468581108159154915854115"
       "511802457988908195786371375080447864043704443832883878176942523"},
      {1.0, "%200.0f", std::string(127, ' ')},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.Format);
    EXPECT_EQ(DoubleToText(row.Value, row.Format), row.Text);
  }
}

TEST(TextToolsTest, RejectsFormatsThatAreNotOneDouble) {
  for (const char* format : {"abc",  "%",    "%.2", "%.2l", "%f%f", "%d",  "%s", "%n",  "%f %s",  "%s %f",  "%*f",
                             "%.*f", "%1$f", "%Lf", "%llf", "%hf",  "%'f", "%a", "%f%", "%1000f", "%.1000f"})
    EXPECT_EQ(DoubleToText(1.0, format), "") << format;
}

TEST(TextToolsTest, CutsALongTextAt127Characters) {
  EXPECT_EQ(DoubleToText(1.0, std::string(200, 'a') + "%f"), std::string(127, 'a'));
  EXPECT_EQ(DoubleToText(1.0, std::string(126, 'a') + "%.1f"), std::string(126, 'a') + "1");
  EXPECT_EQ(DoubleToText(1.0, "%.1f" + std::string(124, 'a')), "1.0" + std::string(124, 'a'));
  EXPECT_EQ(DoubleToText(1.0, "%.1f" + std::string(125, 'a')), "1.0" + std::string(124, 'a'));
}

TEST(TextToolsTest, PrintsAPointInAnyLocale) {
  const std::string former = std::setlocale(LC_ALL, nullptr);
  for (const char* locale : {"German_Germany.1252", "de_DE.UTF-8", "ps_AF.UTF-8"}) {
    std::setlocale(LC_ALL, locale);  // where the platform has it
    EXPECT_EQ(DoubleToText(-1234.5, "a, %.2f, b"), "a, -1234.50, b");
    EXPECT_EQ(DoubleToText(1e300, "%.2e"), "1.00e+300");
  }
  std::setlocale(LC_ALL, former.c_str());
}

TEST(TextToolsTest, PrintsIntegers) {
  EXPECT_EQ(IntToText(0), "0");
  EXPECT_EQ(IntToText(-1), "-1");
  EXPECT_EQ(IntToText(2147483647), "2147483647");
  EXPECT_EQ(IntToText(std::numeric_limits<std::int32_t>::min()), "-2147483648");
}

TEST(TextToolsTest, RaisesAsciiLettersUpToTheZeroByte) {
  EXPECT_EQ(ToUpperText("azAZ@[`{09"), "AZAZ@[`{09");
  EXPECT_EQ(ToUpperText("\xE4\xFC z"), "\xE4\xFC Z");
  EXPECT_EQ(ToUpperText(std::string("ab\0cd", 5)), std::string("AB\0cd", 5));
}

TEST(TextToolsTest, SplitsAsAStreamReadsLines) {
  const std::pair<const char*, std::vector<std::string>> kRows[] = {{"", {}},
                                                                    {",", {""}},
                                                                    {"a", {"a"}},
                                                                    {"a,", {"a"}},
                                                                    {"a,,", {"a", ""}},
                                                                    {",a", {"", "a"}},
                                                                    {"a,b", {"a", "b"}},
                                                                    {" a ,b ", {" a ", "b "}},
                                                                    {"a,,b", {"a", "", "b"}},
                                                                    {"a;b", {"a;b"}}};
  for (const auto& [text, pieces] : kRows) EXPECT_EQ(SplitText(text, ','), pieces) << text;
}

}  // namespace

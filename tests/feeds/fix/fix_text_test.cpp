#include "feeds/fix/fix_text.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/feeds/fix/fix_samples.h"
#include "tests/support/wire_bytes.h"

namespace {

// "8 FIX.4.4;9 5;..." and, if the text is not whole, where its mistake stands.
std::string Walked(const std::string& text) {
  const ExactBytes bytes(text);
  constexpr std::uint8_t kNoMark = 1;
  static FixTagOrder order;  // what one text teaches must not change another
  FixText fields({reinterpret_cast<const char*>(bytes.Data()), bytes.Size()}, order);
  std::string walked;
  fields.ForEach(kNoMark, [&](const FixField& field) {
    walked += std::to_string(field.Tag) + " " + std::string(field.Value) + ";";
  });
  std::replace(walked.begin(), walked.end(), '\x01', '|');
  return fields.IsWhole() ? walked : walked + "!" + std::to_string(fields.Place());
}

TEST(FixTextTest, WalksFieldsAndRefusesOthers) {
  const std::pair<const char*, const char*> rows[] = {
      {"8=F|9=0|10=000|", "10 000;"},
      {"8=F|9=0|35=8|58=|10=000|", "35 8;58 ;10 000;"},
      {"8=F|9=0|58=a=b, eight or more|10=000|", "58 a=b, eight or more;10 000;"},
      {"8=F|9=0|4294967=1|10=000|", "4294967 1;10 000;"},
      // The head.
      {"", "!0"},
      {"9=0|8=F|10=000|", "!0"},
      {"8=|9=0|10=000|", "!2"},
      {"8=F|35=8|10=000|", "!4"},
      {"8=F|9=|10=000|", "!6"},
      {"8=F|9=1x|10=000|", "!6"},
      // A head like the one before.
      {"8=FIX.4.4|9=0|10=000|", "10 000;"},
      {"8=FIX.4.4x9=0|10=000|", "!14"},
      {"8=FIX.4.10|9=0|10=000|", "10 000;"},
      {"8=FIX.4.4 and longer|9=0|10=000|", "10 000;"},
      {"8=FIX.4.4 and longer than that|9=0|10=000|", "10 000;"},
      // Tags.
      {"8=F|9=0|=1|10=000|", "!8"},
      {"8=F|9=0|01=1|10=000|", "!8"},
      {"8=F|9=0|1x=1|10=000|", "!8"},
      {"8=F|9=0|-1=1|10=000|", "!8"},
      {"8=F|9=0|99999999999999999999=1|10=000|", "!8"},
      {"8=F|9=0||10=000|", "!8"},
      // The trailer.
      {"8=F|9=0|", "!8"},
      {"8=F|9=0|10=00|", "!14"},
      {"8=F|9=0|10=0000|", "!16"},
      {"8=F|9=0|10=00x|", "!15"},
      {"8=F|9=0|10=000", "!8"},
      {"8=F|9=0|10=0000", "!8"},
      {"8=F|9=0|10=000|1=1|", "!15"},
      // Data.
      {"8=F|9=0|95=5|96=a|b|c|1=x|10=000|", "95 5;96 a|b|c;1 x;10 000;"},
      {"8=F|9=0|621=1|622=||10=000|", "621 1;622 |;10 000;"},
      {"8=F|9=0|95=0|96=|10=000|", "95 0;96 ;10 000;"},
      {"8=F|9=0|95=4|96=abc|10=000|", "95 4;!16"},
      {"8=F|9=0|95=2|96=abc|10=000|", "95 2;!16"},
      {"8=F|9=0|95=99999|96=abc|10=000|", "95 99999;!20"},
      {"8=F|9=0|95=18446744073709551615|96=a|10=000|", "95 18446744073709551615;!35"},
      {"8=F|9=0|95=x|96=a|10=000|", "95 x;96 a;10 000;"},
      {"8=F|9=0|95=3|1=b|96=a|10=000|", "95 3;1 b;96 a;10 000;"},
      {"8=F|9=0|95=3|354=b|10=000|", "95 3;354 b;10 000;"},
  };
  for (const auto& [text, walked] : rows) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Walked(WithSoh(text)), walked);
  }
}

TEST(FixTextTest, KnowsTheDataFieldOfEachLength) {
  for (const auto& [length, data] : kFixDataFields) {
    const std::string pair = std::to_string(length) + "=3|" + std::to_string(data) + "=||||";
    EXPECT_NE(Walked(WithSoh("8=F|9=0|" + pair + "10=000|")).find(";10 000;"), std::string::npos) << pair;
  }
}

// Fields of texts of any length, in orders that change, some with control characters and data.
TEST(FixTextTest, AgreesWithASlowWalk) {
  std::mt19937 random(1);
  FixTagOrder order;
  constexpr std::uint32_t kSkipped = 53;
  order.MarkOf(kSkipped) = 1;
  for (int i = 0; i < 2'000; ++i) {
    std::string text = i % 3 == 0 ? "8=FIXT.1.1|9=12|" : "8=FIX.4.4|9=1|", slow;
    bool isPlain = true;
    std::uint32_t tag = 50;
    for (auto count = random() % (i % 50 == 0 ? 90 : 20); count > 0; --count, ++tag) {
      if (random() % 8 == 0) tag = 1U << (random() % 20 + 4);
      std::string value(random() % (random() % 4 == 0 ? 90 : 9), 'v');
      if (random() % 200 == 0 && !value.empty()) value[random() % value.size()] = random() % 2 == 0 ? '\x1F' : '\x7F';
      if (value.find_first_not_of('v') != std::string::npos) isPlain = false;
      text += std::to_string(tag) + "=" + value + "|";
      if (tag != kSkipped) slow += std::to_string(tag) + " " + value + ";";
      if (random() % 40 != 0) continue;
      isPlain = false;
      text += "95=3|96=|x||";
      slow += "95 3;96 |x|;";
    }
    const ExactBytes bytes(WithSoh(text + "10=123|"));
    FixText fields({reinterpret_cast<const char*>(bytes.Data()), bytes.Size()}, order);
    std::string walked;
    fields.ForEach(
        1, [&](const FixField& field) { walked += std::to_string(field.Tag) + " " + std::string(field.Value) + ";"; });
    std::replace(walked.begin(), walked.end(), '\x01', '|');
    ASSERT_EQ(walked, slow + "10 123;") << text;
    ASSERT_TRUE(fields.IsWhole()) << text;
    ASSERT_EQ(fields.IsPlain(), isPlain) << text;
  }
}

}  // namespace

#include "feeds/engine/incoming_messages.h"

#include <gtest/gtest.h>

namespace {

std::string Numbered(std::uint32_t number, const std::string& rest = {}) {
  return "8=FIX.4.4\0019=1\00135=8\00134=" + std::to_string(number) + '\001' + rest;
}

TEST(IncomingMessages, FindsTheLastAndThoseAhead) {
  IncomingMessages incoming;
  EXPECT_TRUE(incoming.Take(Numbered(7, "a"), 5));
  EXPECT_TRUE(incoming.Take(Numbered(9), 5));
  EXPECT_TRUE(incoming.Take(Numbered(5), 5));
  EXPECT_EQ(*incoming.TextOf(7), Numbered(7, "a"));
  EXPECT_EQ(*incoming.TextOf(5), Numbered(5));
  EXPECT_EQ(incoming.TextOf(6), nullptr);
  incoming.ForgetBelow(9);
  EXPECT_EQ(incoming.TextOf(7), nullptr);
  EXPECT_NE(incoming.TextOf(9), nullptr);
  incoming.Clear();
  EXPECT_EQ(incoming.TextOf(9), nullptr);
  EXPECT_EQ(incoming.TextOf(5), nullptr);
}

TEST(IncomingMessages, GivesUpGarbledOnes) {
  IncomingMessages incoming;
  incoming.Take(Numbered(7), 5);
  EXPECT_EQ(incoming.TakeGarbled(), Numbered(7));
  EXPECT_EQ(incoming.TextOf(7), nullptr);
}

TEST(IncomingMessages, BoundsWhatIsAhead) {
  const std::string large(IncomingMessages::kMostBytes / 4, 'x');
  IncomingMessages incoming;
  for (std::uint32_t number = 2; number < 5; ++number) EXPECT_TRUE(incoming.Take(Numbered(number, large), 1));
  EXPECT_FALSE(incoming.Take(Numbered(5, large), 1));
  EXPECT_TRUE(incoming.Take(Numbered(1, large), 1));
  incoming.ForgetBelow(3);
  EXPECT_TRUE(incoming.Take(Numbered(5, large), 1));

  incoming.Clear();
  const std::uint32_t most = IncomingMessages::kMostAside;
  for (std::uint32_t number = 0; number < most; ++number) EXPECT_TRUE(incoming.Take(Numbered(number + 2), 1));
  EXPECT_FALSE(incoming.Take(Numbered(most + 2), 1));
}

TEST(FixField, FindsWholeTags) {
  const std::string text = "8=FIX.4.4\001135=A\00135=AE\00158=\00110=0";
  EXPECT_EQ(FixField(text, 35), "AE");
  EXPECT_EQ(FixField(text, 58), "");
  EXPECT_EQ(FixField(text, 10), "0");
  EXPECT_EQ(FixField(text, 1), "");
}

TEST(IsSessionMessage, KnowsTheTypes) {
  for (const char* type : {"0", "1", "2", "4", "5", "A"})
    EXPECT_TRUE(IsSessionMessage("8=x\00135=" + std::string(type) + '\001')) << type;
  for (const char* type : {"3", "8", "AE", "", "j", "01"})
    EXPECT_FALSE(IsSessionMessage("8=x\00135=" + std::string(type) + '\001')) << type;
}

TEST(IsUnharmed, ComparesTheChecksum) {
  EXPECT_TRUE(IsUnharmed("A10=065\001"));
  EXPECT_TRUE(
      IsUnharmed("\xff\xff"
                 "10=254\001"));
  for (const char* text : {"A10=066\001", "A10=065", "A10=65\001", "10=000", ""})
    EXPECT_FALSE(IsUnharmed(text)) << text;
}

}  // namespace

#include "grid_base/settings/settings_text.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/grid_base/slow_settings_text.h"

namespace {

TEST(SettingsText, ParsesByItsOwnRules) {
  // The text, whether it is read to its end, and the tree.
  const std::tuple<std::wstring, bool, std::wstring> rows[] = {
      {L"<Root><A><B>\"12\"</B></A></Root>", true, L"Root(A(B=12))"},
      {L"<R>   </R>", true, L"R="},
      {L"<R> <A>\"1\"</A><B>\"2\"</B> </R>", true, L"R(A=1,B=2)"},
      {L"<R><A>\"a b <x> \"c\"\"</A></R>", true, L"R(A=a b <x> \"c\")"},
      {L"<R><A>\"\"\"</A></R>", true, L"R(A=\")"},
      {L"<R><A>\"</A></R>", true, L"R(A=)"},
      {L"<R><A><A>\"1\"</A></A></R>", true, L"R(A(A=1))"},
      {L"<R><A>\"1\"</A></R>behind", true, L"R(A=1)"},
      {L"<><>\"1\"</></>", true, L"(=1)"},
      {L"<R>1</R>", false, L"R="},
      {L"", false, L"Root="},
      {L" <R></R>", false, L"Root="},
      {L"<R><A>\"1\"</A>", false, L"R="},
      {L"<R><A>\"1\"</A> <B>\"2\"</B></R>", false, L"R(A=1)"},
      {L"<R><A>\"1\"</A><B>\"2\"</R>", false, L"R(A=1)"},
      {L"<R><A>\"1\"</A><B><C>\"2\"</C>x</B></R>", false, L"R(A=1)"},
      {L"<R><A>\"<A>\"</A></R>", false, L"R="},
      {L"<R><A>\"</R>\"</A></R>", false, L"R="},
      {L"<R a=\"1\"></R>", false, L"R a=\"1\"="},
  };
  for (const auto& [text, read, shape] : rows) {
    CVELDPXMLNode root(L"Root", nullptr);
    EXPECT_EQ(ParseNode(root, text), read) << std::string(text.begin(), text.end());
    EXPECT_EQ(ShapeOf(root), shape);
  }
}

TEST(SettingsText, WritesBranchesAndLeaves) {
  CVELDPXMLNode root(L"Root", nullptr);
  EXPECT_EQ(SerializeNode(root), L"<Root>\n</Root>\n");
  CVELDPXMLNode* branch = root.AppendChild(L"A");
  branch->Value = L"lost";
  branch->AppendChild(L"B")->Value = L"12";
  root.AppendChild(L"C");
  EXPECT_EQ(SerializeNode(root), L"<Root>\n<A>\n<B>\"12\"</B>\n</A>\n<C>\"\"</C>\n</Root>\n");
}

TEST(SettingsText, AgreesWithTheSlowWay) {
  const wchar_t* const pieces[] = {L"<A>", L"</A>", L"<B>", L"</B>", L"<A<B>", L"</A<B>", L"</", L"<",
                                   L">",   L"\"",   L"1",   L" ",    L"<>",    L"</>",    L"/",  L"<//A>"};
  std::mt19937 random(20260301);
  int read = 0;
  for (int round = 0; round < 60'000; ++round) {
    std::wstring text;
    for (auto left = random() % 10; left > 0; --left) text += pieces[random() % std::size(pieces)];
    text = L"<A>" + text + L"</A>";
    CVELDPXMLNode fast, slow;
    const bool slowRead = SlowParse(slow, text);
    ASSERT_EQ(ParseNode(fast, text), slowRead) << std::string(text.begin(), text.end());
    ASSERT_EQ(ShapeOf(fast), ShapeOf(slow)) << std::string(text.begin(), text.end());
    read += slowRead ? 1 : 0;
  }
  EXPECT_GT(read, 1'000);
}

// Depth takes no stack, and depth and nested tags take linear time: this test ends at once or never.
TEST(SettingsText, TakesDeepAndTangledTexts) {
  constexpr int kDepth = 50'000;
  std::wstring deep, tags, broken;
  for (int i = 0; i < kDepth; ++i) deep += L"<N" + std::to_wstring(i) + L">";
  for (int i = kDepth; i-- > 0;) {
    const std::wstring closing = L"/N" + std::to_wstring(i) + L">";
    deep += L"<" + closing;
    tags += i % 2 == 0 ? L"<" + closing : L"<x>";
    broken += i % 2 == 0 ? L"(" + closing : L"<x>";
  }
  CVELDPXMLNode root;
  ASSERT_TRUE(ParseNode(root, deep));
  EXPECT_GT(SerializeNode(root).size(), deep.size());
  CVELDPXMLNode* deepest = &root;
  while (!deepest->Children().empty()) deepest = deepest->Children().front().get();
  deepest->Value = tags;
  BreakTagsInValues(root);
  EXPECT_TRUE(deepest->Value == broken);
  EXPECT_FALSE(ParseNode(root, std::wstring(kDepth, L'<') + L">"));
  EXPECT_FALSE(ParseNode(root, L"<A>" + std::wstring(kDepth, L'<') + L"></A>"));
}

// A tag of a value may end in the tag after it; such names come only from files.
TEST(SettingsText, BreaksTagsThatReachPastTheValue) {
  CVELDPXMLNode root(L"k\"</k", nullptr);
  root.AppendChild(L"k")->Value = L"a<k";
  BreakTagsInValues(root);
  CVELDPXMLNode again;
  EXPECT_TRUE(ParseNode(again, L"<k\"</k><k>\"a(k\"</k></k\"</k>"));
  EXPECT_EQ(ShapeOf(root), ShapeOf(again));
}

}  // namespace

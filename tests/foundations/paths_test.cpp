#include "foundations/paths.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace {

TEST(PathsTest, KeepsEveryCharacterOfAName) {
  const std::wstring text = L"caf\u00e9 \u20ac \U0001F600.csv";
  const fs::path path = PathOfWide(text);
  EXPECT_TRUE(path.u8string() == u8"caf\u00e9 \u20ac \U0001F600.csv");
  EXPECT_TRUE(WideOfPath(path) == text);
  EXPECT_EQ(PathOfWide(L""), fs::path());
}

TEST(PathsTest, ShowsTheBytesOfNamesThatAreNotText) {
  const fs::path path(std::basic_string<fs::path::value_type>{'a', static_cast<fs::path::value_type>(0xFF), '.'});
  EXPECT_TRUE(WideOfPath(path) == L"a\u00ff.");
}

}  // namespace

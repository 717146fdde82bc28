#include "host_link/messages/body_coding.h"

#include <gtest/gtest.h>

#include "tests/support/wire_bytes.h"

namespace {

Bytes Apply(const Bytes& key, Bytes text) {
  EXPECT_TRUE(ApplyCipher({key.data(), static_cast<std::uint16_t>(key.size())}, text.data(),
                          static_cast<std::uint32_t>(text.size())));
  return text;
}

// The key streams of RFC 6229 at their start and from byte 4096.
TEST(CipherTest, MatchesPublishedVectors) {
  EXPECT_EQ(Apply(Hex("'Secret'"), Hex("'Attack at dawn'")), Hex("45A01F645FC35B383552544B9BF5"));
  const char* const kRows[][3] = {
      {"0102030405", "B2396305F03DC027CCC3524A0A1118A8", "FF25B58995996707E51FBDF08B34D875"},
      {"0102030405060708090A0B0C0D0E0F101112131415161718191A1B1C1D1E1F20", "EAA6BD25880BF93D3F5D1E4CA2611D91",
       "F3E4C0A2E02D1D01F7F0A74618AF2B48"},
  };
  for (const auto& [key, first, later] : kRows) {
    const Bytes stream = Apply(Hex(key), Bytes(4112));
    EXPECT_EQ(Part(stream, 0, 16), Hex(first));
    EXPECT_EQ(Part(stream, 4096, 4112), Hex(later));
  }
}

TEST(CipherTest, RefusesEmptyKeysAndBodies) {
  std::uint8_t body = 'b';
  for (const CipherKey& key : {CipherKey{nullptr, 3}, CipherKey{&body, 0}}) EXPECT_FALSE(ApplyCipher(key, &body, 1));
  EXPECT_FALSE(ApplyCipher({&body, 1}, &body, 0));
  EXPECT_EQ(body, 'b');
}

}  // namespace

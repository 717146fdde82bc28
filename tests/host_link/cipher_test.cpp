#include "host_link/messages/body_coding.h"

#include <gtest/gtest.h>

#include "tests/support/wire_bytes.h"

namespace {

Bytes Apply(const Bytes& key, Bytes text) {
  EXPECT_TRUE(ApplyCipher({key.data(), static_cast<std::uint16_t>(key.size())}, text.data(),
                          static_cast<std::uint32_t>(text.size())));
  return text;
}

TEST(CipherTest, MatchesPublishedVectors) {
  const char* const kRows[][3] = {
      {"'Key'", "'Plaintext'", "BBF316E8D940AF0AD3"},
      {"'Wiki'", "'pedia'", "1021BF0420"},
      {"'Secret'", "'Attack at dawn'", "45A01F645FC35B383552544B9BF5"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row[0]);
    EXPECT_EQ(Apply(Hex(row[0]), Hex(row[1])), Hex(row[2]));
    EXPECT_EQ(Apply(Hex(row[0]), Hex(row[2])), Hex(row[1]));
  }
}

// The key streams of RFC 6229 at their start and from byte 4096.
TEST(CipherTest, MatchesKeyStreamsOfLongBodies) {
  const char* const kRows[][3] = {
      {"0102030405", "B2396305F03DC027CCC3524A0A1118A8", "FF25B58995996707E51FBDF08B34D875"},
      {"0102030405060708090A0B0C0D0E0F101112131415161718191A1B1C1D1E1F20", "EAA6BD25880BF93D3F5D1E4CA2611D91",
       "F3E4C0A2E02D1D01F7F0A74618AF2B48"},
  };
  for (const auto& row : kRows) {
    const Bytes stream = Apply(Hex(row[0]), Bytes(4112));
    EXPECT_EQ(Part(stream, 0, 16), Hex(row[1]));
    EXPECT_EQ(Part(stream, 4096, 4112), Hex(row[2]));
  }
}

TEST(CipherTest, RefusesEmptyKeysAndBodies) {
  const Bytes key = Hex("'Key'");
  const Bytes text = Hex("'Plaintext'");
  Bytes body = text;
  EXPECT_FALSE(ApplyCipher({nullptr, 3}, body.data(), 9));
  EXPECT_FALSE(ApplyCipher({key.data(), 0}, body.data(), 9));
  EXPECT_FALSE(ApplyCipher({key.data(), 3}, body.data(), 0));
  EXPECT_EQ(body, text);
}

}  // namespace

#include "host_link/messages/packet_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "host_link/messages/wire_fields.h"
#include "tests/host_link/cipher_key.h"
#include "tests/host_link/failing_new.h"
#include "tests/support/wire_bytes.h"

namespace {

const Bytes kNumber = Hex("23 1227 AF1F");  // 10002 = 8111

// Whether a message was found, its number (77: unchanged), the bytes needed and those consumed.
using Outcome = std::tuple<bool, int, std::size_t, std::size_t>;

// A reader on a copy in a block of exactly the message's size, after ParseHeader.
struct Parsed {
  explicit Parsed(const Bytes& message)
      : Block(ExactBlock(message)), Reader(Block.get(), static_cast<std::uint16_t>(message.size())) {
    Reader.MessageNumber = 77;
    Found = Reader.ParseHeader(Needed, Consumed);
  }
  Outcome Result() const { return {Found, Reader.MessageNumber, Needed, Consumed}; }
  std::size_t Moved() const { return static_cast<std::size_t>(Reader.Data - Block.get()); }

  std::unique_ptr<std::uint8_t[]> Block;
  CQORPacketReader Reader;
  std::uint16_t Needed = 0;
  std::uint16_t Consumed = 0;
  bool Found;
};

// A reader on fields without a header, in a block of exactly their size.
struct OnFields {
  explicit OnFields(const Bytes& fields)
      : Block(ExactBlock(fields)), Reader(Block.get(), static_cast<std::uint16_t>(fields.size())) {}
  std::unique_ptr<std::uint8_t[]> Block;
  CQORPacketReader Reader;
};

TEST(PacketReaderTest, RejectsAHeaderWithAWrongByte) {
  for (const std::size_t at : {0, 1, 2, 5, 6, 7}) {
    SCOPED_TRACE(at);
    Bytes message = Framed(kNumber);
    message[at] ^= 1;
    const Parsed parsed(message);
    EXPECT_EQ(parsed.Result(), Outcome(false, 77, 10, 6));
    EXPECT_EQ(parsed.Moved(), 6U);
    EXPECT_EQ(parsed.Reader.End, 9);
  }
}

// The next reader gets the second message.
TEST(PacketReaderTest, SkipsGarbageBeforeAHeaderAndReadsInPlace) {
  for (const char* garbage : {"", "AA 00", "23", "23 23 23", "23 0100 0000 23 11", "23 0100 0000 23 1227 0500"}) {
    SCOPED_TRACE(garbage);
    const Bytes before = Hex(garbage);
    const Parsed parsed(before + Framed(kNumber) + Framed(Hex("23 1227 B01F")));
    EXPECT_EQ(parsed.Result(), Outcome(true, 8111, 10, before.size() + 15));
    EXPECT_EQ(parsed.Reader.Tag, 10002);
    EXPECT_EQ(parsed.Reader.Cursor, 15);
    EXPECT_EQ(parsed.Reader.End, 15);
    EXPECT_EQ(parsed.Reader.DecodedBuffer, nullptr);
    EXPECT_EQ(parsed.Moved(), before.size());
  }
}

TEST(PacketReaderTest, SaysWhatAnIncompleteMessageNeeds) {
  const Bytes message = Framed(kNumber);
  for (std::size_t size = 0; size < 15; ++size)
    EXPECT_EQ(Parsed(Part(message, 0, size)).Result(), Outcome(false, 77, size < 10 ? 10 : 15, 0)) << size;
  EXPECT_EQ(Parsed(Hex("AA 00") + Part(message, 0, 14)).Result(), Outcome(false, 77, 15, 2));
}

TEST(PacketReaderTest, TakesMessagesOfUpTo65535Bytes) {
  const std::pair<std::uint16_t, Outcome> kRows[] = {{65524, {true, 8111, 10, 65534}},
                                                     {65525, {true, 8111, 10, 65535}},
                                                     {65526, {false, 77, 65535, 0}},
                                                     {65535, {false, 77, 65535, 0}}};
  for (const auto& [lengthWord, outcome] : kRows) {
    const Bytes message = Hex("23 0100 0000 23 1127") + Word(lengthWord) + kNumber;
    EXPECT_EQ(Parsed(message + Bytes(65535 - message.size())).Result(), outcome) << lengthWord;
  }
}

TEST(PacketReaderTest, RejectsUnknownModes) {
  for (const std::uint16_t mode : Numbers{3, 99, 101, 256, 65535})
    EXPECT_EQ(Parsed(Hex("AA") + Framed(kNumber, mode)).Result(), Outcome(false, 77, 10, 16)) << mode;
}

TEST(PacketReaderTest, RejectsABodyThatDoesNotBeginWithItsNumber) {
  const struct {
    const char* Body;
    bool Found;
    int Number;
  } kRows[] = {
      {"", false, 77},
      {"23", false, 77},
      {"23 12", false, 77},
      {"23 1327 AF1F", false, 77},
      {"23 6500 02 23 1227 AF1F", false, 77},
      {"23 1227", true, 77},
      {"23 1227 AF", true, 77},
      {"AA BB 23 1227 AF1F", true, 8111},
  };
  for (const auto& row : kRows) {
    const Bytes message = Framed(Hex(row.Body));
    EXPECT_EQ(Parsed(message).Result(), Outcome(row.Found, row.Number, 10, message.size())) << row.Body;
  }
}

TEST(PacketReaderTest, InflatesABodyOfUpTo65535Bytes) {
  for (const std::size_t size : {5, 6, 25, 5000, 65534, 65535}) {
    SCOPED_TRACE(size);
    const Bytes body = kNumber + Bytes(size - 5);
    const Bytes message = Framed(Deflated(body), 1);
    const Parsed parsed(message + Hex("AA"));
    EXPECT_EQ(parsed.Result(), Outcome(true, 8111, 10, message.size()));
    EXPECT_EQ(parsed.Reader.Cursor, 5);
    ASSERT_EQ(parsed.Reader.End, size);
    EXPECT_EQ(parsed.Reader.DecodedLength, size);
    ASSERT_EQ(parsed.Reader.Data, parsed.Reader.DecodedBuffer);
    EXPECT_TRUE(std::equal(body.begin(), body.end(), parsed.Reader.Data));
  }
  // Larger ones are not taken, also where 16 bits of their size would look well.
  for (const std::size_t size : {65536, 65552, 16 * 1024 * 1024}) {
    const Parsed parsed(Framed(Deflated(kNumber + Bytes(size - 5)), 1));
    EXPECT_FALSE(parsed.Found);
    EXPECT_EQ(parsed.Reader.MessageNumber, 77);
    EXPECT_EQ(parsed.Reader.DecodedLength, 0);
  }
}

TEST(PacketReaderTest, RejectsACutOrDamagedStream) {
  const Bytes stream = Deflated(kNumber + Hex("23 6500 02 23 D9D6 0800 'Trade ab'"));
  for (std::size_t size = 0; size < stream.size(); ++size) {
    SCOPED_TRACE(size);
    const Parsed cut(Framed(Part(stream, 0, size), 1));
    EXPECT_FALSE(cut.Found);
    EXPECT_GE(cut.Reader.Cursor, 10);
    Bytes damaged = stream;
    damaged[size] ^= 0x55;
    EXPECT_FALSE(Parsed(Framed(damaged, 1)).Found);
    // What follows the message is no part of it, even where it would complete the stream.
    EXPECT_FALSE(Parsed(Framed(Part(stream, 0, size), 1) + Part(stream, size, stream.size())).Found);
  }
}

TEST(PacketReaderTest, SearchesWhatDoesNotInflateFromItsTenthByte) {
  const Parsed parsed(Framed(Bytes(10) + kNumber, 1));
  EXPECT_TRUE(parsed.Found);
  EXPECT_EQ(parsed.Reader.MessageNumber, 8111);
  EXPECT_FALSE(Parsed(Framed(Bytes(5) + kNumber, 1)).Found);
}

TEST(PacketReaderTest, DeciphersOnlyWithAKey) {
  const Bytes body = Hex("C88D 502E A8");  // message 8111 under the key "Key"
  for (const std::uint16_t mode : Numbers{2, 100}) {
    SCOPED_TRACE(mode);
    const Bytes message = Hex("AA BB") + Framed(body, mode);
    EXPECT_EQ(Parsed(Hex("AA BB") + Framed(kNumber, mode)).Result(), Outcome(false, 77, 10, 17));
    const CipherKeyForTest key(Hex("'Key'"));
    const Parsed parsed(message);
    EXPECT_EQ(parsed.Result(), Outcome(true, 8111, 10, 17));
    EXPECT_EQ(parsed.Reader.Data, parsed.Reader.DecodedBuffer);
    EXPECT_EQ(parsed.Reader.Cursor, 15);
    EXPECT_EQ(parsed.Reader.DecodedLength, 15);
    EXPECT_EQ(Bytes(parsed.Block.get(), parsed.Block.get() + 17), message) << "the message itself stays";
    EXPECT_FALSE(Parsed(Framed(kNumber, mode)).Found) << "a plain body is deciphered to noise";
  }
}

// The reader is then in its own buffer, which must last until the next one is filled, or for good.
TEST(PacketReaderTest, ParsesAgainWhatItHasDecoded) {
  const Bytes nested = kNumber + Framed(Deflated(kNumber), 1);
  const struct {
    const char* What;
    Bytes Message;
    int Refused;  // the allocation that finds no memory
    bool Found;
    Bytes Body;  // from Data to End, after the second parsing
  } kRows[] = {
      {"compressed", Framed(Deflated(nested), 1), 0, true, kNumber},
      {"compressed, without memory", Framed(Deflated(nested), 1), 1, false, Deflated(kNumber)},
      {"compressed, damaged", Framed(Deflated(kNumber + Framed(Bytes(10) + kNumber, 1)), 1), 0, true,
       Bytes(10) + kNumber},
      {"enciphered, and so again as it was", Framed(Hex("C88D 502E A8"), 2), 0, false, Framed(Hex("C88D 502E A8"), 2)},
      {"enciphered, without memory", Framed(Hex("C88D 502E A8"), 2), 1, false, Framed(kNumber, 2)},
  };
  const CipherKeyForTest key(Hex("'Key'"));
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.What);
    Parsed parsed(row.Message);
    EXPECT_TRUE(parsed.Found);
    {
      const FailingNew failing(row.Refused);
      EXPECT_EQ(parsed.Reader.ParseHeader(parsed.Needed, parsed.Consumed), row.Found);
    }
    EXPECT_EQ(Bytes(parsed.Reader.Data, parsed.Reader.Data + parsed.Reader.End), row.Body);
  }
}

TEST(PacketReaderTest, SkipsEveryValueByItsTag) {
  const struct {
    std::uint16_t FirstTag;
    std::uint16_t LastTag;
    std::uint16_t Width;
  } kRows[] = {{0, 0, 0},         {1, 10000, 1},     {10001, 20000, 2},  {20001, 30000, 4}, {30001, 35000, 8},
               {35001, 40000, 4}, {40001, 45000, 8}, {45001, 50000, 16}, {50001, 55000, 8}, {65001, 65535, 0}};
  for (const auto& row : kRows) {
    for (const std::uint16_t tag : Numbers{row.FirstTag, row.LastTag}) {
      SCOPED_TRACE(tag);
      OnFields whole(Bytes(row.Width + std::size_t{2}, 1));
      whole.Reader.Tag = tag;
      EXPECT_TRUE(whole.Reader.SkipValue());
      EXPECT_EQ(whole.Reader.Cursor, row.Width);
      if (row.Width == 0) continue;
      OnFields cut(Bytes(row.Width - std::size_t{1}, 1));
      cut.Reader.Tag = tag;
      EXPECT_FALSE(cut.Reader.SkipValue());
      EXPECT_EQ(cut.Reader.Cursor, 0);
    }
  }
}

TEST(PacketReaderTest, SkipsCountedValuesByTheirCount) {
  const struct {
    const char* Value;
    bool Skipped;
    std::uint16_t Cursor;
  } kRows[] = {{"0300 'abc'", true, 5}, {"0300 'abcd'", true, 5}, {"0000", true, 2}, {"0300 'ab'", false, 2},
               {"FFFF 'ab'", false, 2}, {"03", true, 0},          {"", true, 0}};
  for (const std::uint16_t tag : Numbers{55001, 60003, 65000}) {
    for (const auto& row : kRows) {
      SCOPED_TRACE(row.Value);
      OnFields value(Hex(row.Value));
      value.Reader.Tag = tag;
      EXPECT_EQ(value.Reader.SkipValue(), row.Skipped);
      EXPECT_EQ(value.Reader.Cursor, row.Cursor);
    }
  }
}

TEST(PacketReaderTest, ReadsTextUpToTheLimit) {
  const struct {
    const char* Value;
    std::uint16_t Limit;
    bool Read;
    std::uint16_t Cursor;
    const char* Destination;
  } kRows[] = {
      {"0300 'abc'", 0, true, 5, "'abc~~~'"},
      {"0300 'abc'", 5, true, 5, "'abc' 00 '~~'"},
      {"0300 'abc'", 4, true, 5, "'abc' 00 '~~'"},
      {"0300 'abc'", 3, true, 5, "'abc~~~'"},
      {"0300 'abc'", 2, true, 4, "'ab~~~~'"},
      {"0300 'a' 00 'c'", 5, true, 5, "'a' 00 'c' 00 '~~'"},
      {"0000", 0, true, 2, "'~~~~~~'"},
      {"0000", 4, true, 2, "00 '~~~~~'"},
      {"0400 'abc'", 3, true, 5, "'abc~~~'"},
      {"0400 'abc'", 4, false, 2, "'~~~~~~'"},
      {"FFFF 'abc'", 0, false, 2, "'~~~~~~'"},
      {"03", 4, false, 0, "'~~~~~~'"},
      {"", 0, false, 0, "'~~~~~~'"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(std::string(row.Value) + " limit " + std::to_string(row.Limit));
    OnFields value(Hex(row.Value));
    std::string destination(6, '~');
    EXPECT_EQ(value.Reader.ReadText(destination.data(), row.Limit), row.Read);
    EXPECT_EQ(value.Reader.Cursor, row.Cursor);
    EXPECT_EQ(Bytes(destination.begin(), destination.end()), Hex(row.Destination));
  }
}

TEST(PacketReaderTest, TakesAMarkInTheRestOfALongTextForAField) {
  OnFields fields(Hex("0600 'abc#12' 23 6500 02"));
  char destination[3] = {};
  EXPECT_TRUE(fields.Reader.ReadText(destination, 2) && fields.Reader.NextTag());
  EXPECT_EQ(fields.Reader.Tag, 0x3231);
}

TEST(PacketReaderTest, FindsTheNextFieldAfterGarbage) {
  const struct {
    const char* Data;
    bool Found;
    std::uint16_t Tag;
    std::uint16_t Cursor;
  } kRows[] = {{"23 6500", true, 101, 3},
               {"AABB 23 6500 02", true, 101, 5},
               {"23 23 6500", true, 0x6523, 3},
               {"AABB", false, 9, 2},
               {"", false, 9, 0},
               {"AA 23", false, 9, 2},
               {"AA 23 65", false, 9, 2}};
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.Data);
    OnFields fields(Hex(row.Data));
    fields.Reader.Tag = 9;
    EXPECT_EQ(fields.Reader.NextTag(), row.Found);
    EXPECT_EQ(fields.Reader.Tag, row.Tag);
    EXPECT_EQ(fields.Reader.Cursor, row.Cursor);
  }
}

TEST(PacketReaderTest, ReadsNothingPastTheEnd) {
  CQORPacketReader reader(nullptr, 3);
  reader.Cursor = 4;
  std::uint8_t value = 0;
  char text = '~';
  EXPECT_FALSE(reader.NextTag() || reader.SkipValue() || reader.ReadU8(value) || reader.ReadText(&text, 0));
  EXPECT_EQ(reader.Cursor, 4);
}

// One field of every fixed width and a text, and the offsets in the body at which they end.
const Bytes kFullBody = kNumber + Hex("23 6500 02"
                                      "23 732B 3412"
                                      "23 2E4E 04030201"
                                      "23 3175 0807060504030201"
                                      "23 429C 0000000000A046C0"
                                      "23 D9D6 0300 'abc'"
                                      "23 FFFF");
constexpr std::size_t kFieldEnds[] = {5, 9, 14, 21, 32, 43, 51, 54};

struct OneOfEach {
  std::uint8_t Byte;
  std::uint16_t Word;
  std::uint32_t Long;
  std::uint64_t Longest;
  double Real;
  char Text[5];
};
constexpr WireField kOneOfEach[] = {
    {101, Field::U8, offsetof(OneOfEach, Byte)},       {11123, Field::U16, offsetof(OneOfEach, Word)},
    {20014, Field::U32, offsetof(OneOfEach, Long)},    {30001, Field::U64, offsetof(OneOfEach, Longest)},
    {40002, Field::Double, offsetof(OneOfEach, Real)}, {55001, Field::Text, offsetof(OneOfEach, Text), 4},
};
static_assert(FieldsFit(kOneOfEach, sizeof(OneOfEach)));
constexpr FieldIndex kOneOfEachIndex{kOneOfEach};

// Reads the fields after the number; returns how many were whole.
std::size_t CountWholeFields(CQORPacketReader& reader) {
  OneOfEach each{};
  const bool terminated = ReadFields<SectionRules{true, true}>(reader, kOneOfEach, kOneOfEachIndex, &each);
  EXPECT_TRUE(!terminated || reader.Tag == 65535);
  const bool whole[] = {reader.MessageNumber == 8111,
                        each.Byte == 2,
                        each.Word == 0x1234,
                        each.Long == 0x01020304,
                        each.Longest == 0x0102030405060708,
                        each.Real == -45.25,
                        std::string_view(each.Text) == "abc",
                        terminated};
  return static_cast<std::size_t>(std::count(std::begin(whole), std::end(whole), true));
}

TEST(PacketReaderTest, LosesOnlyTheFieldThatIsCut) {
  ASSERT_EQ(kFullBody.size(), 54U);
  for (std::size_t size = 0; size <= kFullBody.size(); ++size) {
    SCOPED_TRACE(size);
    const auto whole = static_cast<std::size_t>(
        std::count_if(std::begin(kFieldEnds), std::end(kFieldEnds), [size](std::size_t end) { return end <= size; }));
    const Bytes body = Part(kFullBody, 0, size);
    Parsed plain(Framed(body));
    EXPECT_EQ(plain.Found, size >= 3);
    EXPECT_EQ(CountWholeFields(plain.Reader), whole);
    Parsed compressed(Framed(Deflated(body), 1));
    EXPECT_EQ(compressed.Found, size >= 3);
    EXPECT_EQ(CountWholeFields(compressed.Reader), whole);
    EXPECT_EQ(Parsed(Part(Framed(kFullBody), 0, 10 + size)).Needed, size < 54 ? 64 : 10);
  }
}

}  // namespace

#include "host_link/messages/packet_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "tests/host_link/link_fixtures.h"
#include "tests/support/failing_memory.h"
#include "tests/support/wire_bytes.h"

namespace {

const Bytes kNumber = Hex("23 1227 AF1F");  // 10002 = 8111

// Whether a message was found, its number (77: unchanged), the bytes needed and those consumed.
using Outcome = std::tuple<bool, int, std::size_t, std::size_t>;

// A reader on a copy in a block of exactly that size.
struct OnBytes {
  explicit OnBytes(const Bytes& bytes, std::uint16_t tag = 0)
      : Block(ExactBlock(bytes)), Reader(Block.get(), static_cast<std::uint16_t>(bytes.size())) {
    Reader.Tag = tag;
    Reader.MessageNumber = 77;
  }
  std::unique_ptr<std::uint8_t[]> Block;
  CQORPacketReader Reader;
};

// The same after ParseHeader.
struct Parsed : OnBytes {
  explicit Parsed(const Bytes& message) : OnBytes(message), Found(Reader.ParseHeader(Needed, Consumed)) {}
  Outcome Result() const { return {Found, Reader.MessageNumber, Needed, Consumed}; }
  std::size_t Moved() const { return static_cast<std::size_t>(Reader.Data - Block.get()); }

  std::uint16_t Needed = 0;
  std::uint16_t Consumed = 0;
  bool Found;
};

TEST(PacketReaderTest, RejectsWrongBytesInAHeaderAndUnknownModes) {
  for (const std::size_t at : {0, 1, 2, 5, 6, 7}) {
    SCOPED_TRACE(at);
    Bytes message = Framed(kNumber);
    message[at] ^= 1;
    const Parsed parsed(message);
    EXPECT_EQ(parsed.Result(), Outcome(false, 77, 10, 6));
    EXPECT_EQ(parsed.Moved(), 6U);
    EXPECT_EQ(parsed.Reader.End, 9);
  }
  for (const std::uint16_t mode : Numbers{3, 99, 101, 256, 65535})
    EXPECT_EQ(Parsed(Hex("AA") + Framed(kNumber, mode)).Result(), Outcome(false, 77, 10, 16)) << mode;
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
  const std::pair<std::uint16_t, Outcome> kLengthWords[] = {{65524, {true, 8111, 10, 65534}},
                                                            {65525, {true, 8111, 10, 65535}},
                                                            {65526, {false, 77, 65535, 0}},
                                                            {65535, {false, 77, 65535, 0}}};
  for (const auto& [length, outcome] : kLengthWords)
    EXPECT_EQ(Parsed(Hex("23 0100 0000 23 1127") + Word(length) + kNumber + Bytes(65520)).Result(), outcome) << length;
}

TEST(PacketReaderTest, RejectsABodyThatDoesNotBeginWithItsNumber) {
  const std::tuple<const char*, bool, int> kRows[] = {
      {"", false, 77},          {"23", false, 77},
      {"23 12", false, 77},     {"23 1327 AF1F", false, 77},
      {"23 1227", true, 77},    {"23 6500 02 23 1227 AF1F", false, 77},
      {"23 1227 AF", true, 77}, {"AA BB 23 1227 AF1F", true, 8111},
  };
  for (const auto& [body, found, number] : kRows) {
    const Bytes message = Framed(Hex(body));
    EXPECT_EQ(Parsed(message).Result(), Outcome(found, number, 10, message.size())) << body;
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
  // A body that does not inflate is searched from its tenth byte.
  EXPECT_EQ(Parsed(Framed(Bytes(10) + kNumber, 1)).Result(), Outcome(true, 8111, 10, 25));
  EXPECT_FALSE(Parsed(Framed(Bytes(5) + kNumber, 1)).Found);
}

TEST(PacketReaderTest, DeciphersOnlyWithAKey) {
  for (const std::uint16_t mode : Numbers{2, 100}) {
    SCOPED_TRACE(mode);
    const Bytes message = Hex("AA BB") + Framed(kEncipheredNumber, mode);
    EXPECT_EQ(Parsed(Hex("AA BB") + Framed(kNumber, mode)).Result(), Outcome(false, 77, 10, 17));
    const CipherKeyForTest key;
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
  const Bytes compressed = Framed(Deflated(kNumber + Framed(Deflated(kNumber), 1)), 1);
  const Bytes damaged = Framed(Deflated(kNumber + Framed(Bytes(10) + kNumber, 1)), 1);
  const Bytes enciphered = Framed(kEncipheredNumber, 2);
  // The message, the allocation that finds no memory, and what follows the second parsing: whether it found a message,
  // and the bytes from Data to End.
  const std::tuple<Bytes, int, bool, Bytes> kRows[] = {
      {compressed, 0, true, kNumber},
      {compressed, 1, false, Deflated(kNumber)},
      {damaged, 0, true, Bytes(10) + kNumber},
      {enciphered, 0, false, enciphered},  // deciphered twice it is as it was
      {enciphered, 1, false, Framed(kNumber, 2)},
  };
  const CipherKeyForTest key;
  for (const auto& [message, refused, found, body] : kRows) {
    SCOPED_TRACE(testing::PrintToString(body));
    Parsed parsed(message);
    EXPECT_TRUE(parsed.Found);
    FailAllocation(refused);
    EXPECT_EQ(parsed.Reader.ParseHeader(parsed.Needed, parsed.Consumed), found);
    EXPECT_EQ(Bytes(parsed.Reader.Data, parsed.Reader.Data + parsed.Reader.End), body);
  }
}

TEST(PacketReaderTest, SkipsEveryValueByItsTag) {
  // First and last tag, and width.
  const std::uint16_t kRows[][3] = {{0, 0, 0},         {1, 10000, 1},     {10001, 20000, 2}, {20001, 30000, 4},
                                    {30001, 35000, 8}, {35001, 40000, 4}, {40001, 45000, 8}, {45001, 50000, 16},
                                    {50001, 55000, 8}, {65001, 65535, 0}};
  for (const auto& [first, last, width] : kRows) {
    for (const std::uint16_t tag : Numbers{first, last}) {
      SCOPED_TRACE(tag);
      OnBytes whole(Bytes(width + std::size_t{2}, 1), tag);
      EXPECT_TRUE(whole.Reader.SkipValue());
      EXPECT_EQ(whole.Reader.Cursor, width);
      if (width == 0) continue;
      OnBytes cut(Bytes(width - std::size_t{1}, 1), tag);
      EXPECT_FALSE(cut.Reader.SkipValue());
      EXPECT_EQ(cut.Reader.Cursor, 0);
    }
  }
  const std::tuple<const char*, bool, int> kCounted[] = {
      {"0300 'abc'", true, 5}, {"0300 'abcd'", true, 5}, {"0000", true, 2}, {"0300 'ab'", false, 2},
      {"FFFF 'ab'", false, 2}, {"03", true, 0},          {"", true, 0}};
  for (const std::uint16_t tag : Numbers{55001, 60003, 65000}) {
    for (const auto& [value, skipped, cursor] : kCounted) {
      OnBytes counted(Hex(value), tag);
      EXPECT_EQ(counted.Reader.SkipValue(), skipped) << value;
      EXPECT_EQ(counted.Reader.Cursor, cursor) << value;
    }
  }
}

TEST(PacketReaderTest, ReadsTextUpToTheLimit) {
  const std::tuple<const char*, std::uint16_t, bool, int, const char*> kRows[] = {
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
      {"", 0, false, 0, "'~~~~~~'"}};
  for (const auto& [value, limit, read, cursor, expected] : kRows) {
    SCOPED_TRACE(std::string(value) + " limit " + std::to_string(limit));
    OnBytes text(Hex(value));
    std::string destination(6, '~');
    EXPECT_EQ(text.Reader.ReadText(destination.data(), limit), read);
    EXPECT_EQ(text.Reader.Cursor, cursor);
    EXPECT_EQ(Bytes(destination.begin(), destination.end()), Hex(expected));
  }
}

TEST(PacketReaderTest, FindsTheNextFieldAfterGarbage) {
  const std::tuple<const char*, bool, int, int> kRows[] = {{"23 6500", true, 101, 3},
                                                           {"AABB 23 6500 02", true, 101, 5},
                                                           {"23 23 6500", true, 0x6523, 3},
                                                           {"AABB", false, 9, 2},
                                                           {"", false, 9, 0},
                                                           {"AA 23", false, 9, 2},
                                                           {"AA 23 65", false, 9, 2}};
  for (const auto& [bytes, found, tag, cursor] : kRows) {
    SCOPED_TRACE(bytes);
    OnBytes fields(Hex(bytes), 9);
    EXPECT_EQ(fields.Reader.NextTag(), found);
    EXPECT_EQ(fields.Reader.Tag, tag);
    EXPECT_EQ(fields.Reader.Cursor, cursor);
  }
  // A mark in the rest of a text that was cut opens a field.
  OnBytes fields(Hex("0600 'abc#12' 23 6500 02"));
  char destination[3] = {};
  EXPECT_TRUE(fields.Reader.ReadText(destination, 2) && fields.Reader.NextTag());
  EXPECT_EQ(fields.Reader.Tag, 0x3231);
}

template <typename Value>
void ExpectWholeOrNothing(bool (CQORPacketReader::*read)(Value&) noexcept, Value expected) {
  for (std::size_t size = 0; size <= 8; ++size) {
    SCOPED_TRACE(std::to_string(size) + " bytes for " + std::to_string(sizeof expected));
    const bool isWhole = size >= sizeof expected;
    OnBytes bytes(Part(Hex("0000000000A046C0"), 8 - size, 8));
    Value value = 7;
    EXPECT_EQ((bytes.Reader.*read)(value), isWhole);
    EXPECT_TRUE(isWhole || value == 7);
    EXPECT_TRUE(size != sizeof expected || value == expected) << value;
    EXPECT_EQ(bytes.Reader.Cursor, isWhole ? sizeof expected : 0);
  }
}

TEST(PacketReaderTest, ReadsAValueWholeOrNotAtAll) {
  ExpectWholeOrNothing(&CQORPacketReader::ReadU8, std::uint8_t{0xC0});
  ExpectWholeOrNothing(&CQORPacketReader::ReadU16, std::uint16_t{0xC046});
  ExpectWholeOrNothing(&CQORPacketReader::ReadU32, 0xC046A000U);
  ExpectWholeOrNothing(&CQORPacketReader::ReadU64, std::uint64_t{0xC046A00000000000});
  ExpectWholeOrNothing(&CQORPacketReader::ReadDouble, -45.25);
  // The cursor of a damaged reader may lie beyond its end.
  CQORPacketReader reader(nullptr, 3);
  reader.Cursor = 4;
  std::uint8_t value = 0;
  char text = '~';
  EXPECT_FALSE(reader.NextTag() || reader.SkipValue() || reader.ReadU8(value) || reader.ReadText(&text, 0));
  EXPECT_EQ(reader.Cursor, 4);
}

}  // namespace

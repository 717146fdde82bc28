#include "host_link/messages/packet_writer.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <random>
#include <tuple>

#include "tests/host_link/link_fixtures.h"
#include "tests/support/failing_memory.h"
#include "tests/support/wire_bytes.h"

namespace {

// The body in the writer, without the header.
Bytes BodyOf(const CQORPacketWriter& writer) {
  return Bytes(writer.Buffer + 10, writer.Buffer + writer.Cursor);
}

Bytes NoiseBytes(std::size_t size) {
  std::mt19937 generator(20260105);
  Bytes noise(size);
  for (std::uint8_t& byte : noise) byte = static_cast<std::uint8_t>(generator());
  return noise;
}

bool AddNoise(CQORPacketWriter& writer, std::uint16_t count) {
  return writer.AddBytes(55001, NoiseBytes(count).data(), count);
}

TEST(PacketWriterTest, WritesTheBytesOfEveryField) {
  CQORPacketWriter writer(0);
  EXPECT_TRUE(writer.AddU16(10002, 8111));
  EXPECT_TRUE(writer.AddU8(101, 2));
  EXPECT_TRUE(writer.AddU32(20014, 0x01020304));
  EXPECT_TRUE(writer.AddU64(30001, 0x0102030405060708));
  EXPECT_TRUE(writer.AddDouble(40002, -45.25));
  EXPECT_TRUE(writer.AddBytes(55001, "a\0b", 3));
  EXPECT_TRUE(writer.AddBytes(55001, nullptr, 0));
  EXPECT_TRUE(writer.AddStdString(55010, std::string("N\0E", 3)));
  EXPECT_TRUE(writer.AddStdString(55010, ""));
  EXPECT_TRUE(writer.AddTerminator());
  writer.Finish();
  EXPECT_EQ(BytesOf(writer), Hex("23 0100 0000 23 1127 4500"
                                 "23 1227 AF1F"
                                 "23 6500 02"
                                 "23 2E4E 04030201"
                                 "23 3175 0807060504030201"
                                 "23 429C 0000000000A046C0"
                                 "23 D9D6 0300 'a' 00 'b'"
                                 "23 D9D6 0000"
                                 "23 E2D6 0400 'N' 00 'E' 00"
                                 "23 E2D6 0100 00"
                                 "23 FFFF"));
  EXPECT_EQ(writer.OutputBuffer, nullptr);
}

TEST(PacketWriterTest, WritesATextByItsLengthOrItsLimit) {
  const char kText[] = "ASX\0tail";
  const std::tuple<const char*, std::uint16_t, bool, const char*> kRows[] = {
      {kText, 48, false, "0300 'ASX'"},  {kText, 4, false, "0300 'ASX'"},
      {kText, 3, false, "0300 'ASX'"},   {kText, 2, false, "0200 'AS'"},
      {kText, 0, false, "0000"},         {"", 8, false, "0000"},
      {kText, 4, true, "0400 'ASX' 00"}, {kText, 8, true, "0800 'ASX' 00 'tail'"},
      {kText, 2, true, "0200 'AS'"},     {kText, 0, true, "0000"}};
  for (const auto& [text, limit, fixed, value] : kRows) {
    CQORPacketWriter writer(0);
    EXPECT_TRUE(writer.AddText(55010, text, limit, fixed));
    EXPECT_EQ(BodyOf(writer), Hex("23 E2D6") + Hex(value)) << limit << (fixed ? " fixed" : "");
  }
}

// Header and one field need 15 bytes more than the value.
TEST(PacketWriterTest, GrowsToTheNextStepAboveTheNeed) {
  const std::pair<std::uint16_t, std::uint32_t> kRows[] = {
      {4081, 4096}, {4082, 8192}, {8176, 8192}, {8177, 12288}, {61424, 61440}};
  for (const auto& [count, capacity] : kRows) {
    SCOPED_TRACE(count);
    CQORPacketWriter writer(7);
    EXPECT_TRUE(AddNoise(writer, count));
    EXPECT_EQ(writer.Capacity, capacity);
    EXPECT_EQ(BytesOf(writer), Hex("23 0100 0700 23 1127 0000 23 D9D6") + Word(count) + NoiseBytes(count));
    EXPECT_EQ(Bytes(writer.Buffer + writer.Cursor, writer.Buffer + capacity), Bytes(capacity - count - 15U));
  }
  for (const std::uint16_t tooMany : Numbers{61425, 65535}) {
    CQORPacketWriter writer(0);
    EXPECT_FALSE(AddNoise(writer, tooMany));
    EXPECT_EQ(writer.Capacity, 4096U);
    EXPECT_EQ(writer.Cursor, 10);
  }
}

TEST(PacketWriterTest, RejectsAFieldAcross61440AndTakesShorterOnes) {
  CQORPacketWriter writer(0);
  EXPECT_TRUE(AddNoise(writer, 61415));
  const Bytes before = BytesOf(writer);
  EXPECT_EQ(writer.Cursor, 61430);
  EXPECT_FALSE(writer.AddU64(30001, 1) || writer.AddDouble(40002, 1) || writer.AddText(55010, "abcdef", 6, false));
  for (const std::size_t size : {5, 65535, 65536 + 2})
    EXPECT_FALSE(writer.AddStdString(55010, std::string(size, 'x'))) << size;
  EXPECT_EQ(BytesOf(writer), before);
  EXPECT_TRUE(writer.AddU32(20014, 1));
  EXPECT_FALSE(writer.AddU8(101, 1));
  EXPECT_TRUE(writer.AddTerminator());
  EXPECT_FALSE(writer.AddTerminator());
  writer.Finish();
  EXPECT_EQ(Part(BytesOf(writer), 8, 10), Hex("F6EF"));
  EXPECT_EQ(Part(BytesOf(writer), 61430, 61440), Hex("23 2E4E 01000000 23 FFFF"));
}

TEST(PacketWriterTest, CompressesTheBodyIntoASecondBlock) {
  // Noise does not shrink: the second block has to grow, for the largest body as well.
  for (const std::uint16_t noise : Numbers{0, 1, 5000, 61424}) {
    SCOPED_TRACE(noise);
    CQORPacketWriter writer(1);
    AddNoise(writer, noise);
    writer.Finish();
    ASSERT_NE(writer.OutputBuffer, nullptr);
    EXPECT_EQ(writer.GetData(), writer.OutputBuffer);
    const Bytes message = BytesOf(writer);
    ASSERT_GT(message.size(), 10U);
    EXPECT_EQ(Part(message, 0, 10), Hex("23 0100 0100 23 1127") + Word(message.size() - 10));
    Bytes body(writer.Cursor);
    uLongf size = static_cast<uLongf>(body.size());
    ASSERT_EQ(uncompress(body.data(), &size, message.data() + 10, static_cast<uLong>(message.size() - 10)), Z_OK);
    EXPECT_EQ(Part(body, 0, size), BodyOf(writer));
    writer.Finish();
    EXPECT_EQ(BytesOf(writer), message);
  }
}

TEST(PacketWriterTest, CompressesAnEmptyBody) {
  CQORPacketWriter writer(1);
  writer.Finish();
  EXPECT_EQ(BytesOf(writer), Hex("23 0100 0100 23 1127 0800 789C 0300 00000001"));
}

TEST(PacketWriterTest, EnciphersACopyAndOnlyWithAKey) {
  const auto finished = [](std::uint16_t mode, bool hasField) {
    CQORPacketWriter writer(mode);
    if (hasField) writer.AddU16(10002, 8111);
    writer.Finish();
    writer.Finish();
    EXPECT_EQ(writer.OutputBuffer != nullptr, mode == 2 && hasField);
    EXPECT_EQ(BodyOf(writer), hasField ? Hex("23 1227 AF1F") : Bytes()) << "the plain body stays";
    return BytesOf(writer);
  };
  EXPECT_EQ(finished(2, true), Hex("23 0100 0200 23 1127 0500 23 1227 AF1F"));
  const CipherKeyForTest key;
  EXPECT_EQ(finished(2, true), Hex("23 0100 0200 23 1127 0500") + kEncipheredNumber);
  EXPECT_EQ(finished(2, false), Hex("23 0100 0200 23 1127 0000"));
  EXPECT_EQ(finished(100, true), Hex("23 0100 6400 23 1127 0500 23 1227 AF1F")) << "only readers take this mode";
}

TEST(PacketWriterTest, HasNoHeaderWithoutItsFirstBlock) {
  FailAllocation(1);
  CQORPacketWriter writer(2);
  EXPECT_EQ(writer.Buffer, nullptr);
  EXPECT_EQ(writer.Capacity + writer.Cursor + writer.HeaderSize + writer.Mode + writer.LengthFieldOffset, 0U);
  writer.Finish();
  EXPECT_EQ(writer.GetSize(), 0);
  EXPECT_TRUE(writer.AddU8(101, 2));
  writer.Finish();
  EXPECT_EQ(writer.Capacity, 4096U);
  EXPECT_EQ(BytesOf(writer), Hex("23 6500 02"));
}

TEST(PacketWriterTest, KeepsTheMessageWithoutMemory) {
  for (const std::uint16_t mode : Numbers{1, 2}) {
    SCOPED_TRACE(mode);
    CQORPacketWriter writer(mode);
    writer.AddU16(10002, 8111);
    const Bytes noise(5000);
    FailAllocation(1);
    EXPECT_FALSE(writer.AddBytes(55001, noise.data(), 5000));
    EXPECT_EQ(writer.Capacity, 4096U);
    FailAllocation(1);
    writer.Finish();
    EXPECT_EQ(writer.OutputBuffer, nullptr);
    EXPECT_EQ(BytesOf(writer), Hex("23 0100") + Word(mode) + Hex("23 1127 0500 23 1227 AF1F"));
    EXPECT_TRUE(writer.AddBytes(55001, noise.data(), 5000));
  }
  // The second block is there and cannot grow: the message is empty, and stays so.
  CQORPacketWriter writer(1);
  AddNoise(writer, 5000);
  FailAllocation(2);
  writer.Finish();
  writer.Finish();
  EXPECT_NE(writer.OutputBuffer, nullptr);
  EXPECT_EQ(writer.GetSize(), 0);
}

}  // namespace

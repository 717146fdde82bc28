#include "terminal/link/message_log.h"

#include <gtest/gtest.h>

#include <sstream>

#include "host_link/messages/message_header.h"
#include "host_link/messages/packet_writer.h"

namespace {

std::vector<std::uint8_t> FieldsOf(const CQORPacketWriter& writer) {
  return {writer.GetData() + kHeaderSize, writer.GetData() + writer.GetSize()};
}

std::vector<std::uint8_t> Sample() {
  CQORPacketWriter writer(0);
  writer.AddU8(101, 2);
  writer.AddU16(10002, 9101);
  writer.AddU32(20014, 4000000000);
  writer.AddU64(30001, 18446744073709551615U);
  writer.AddDouble(40002, 99.25);
  writer.AddText(55010, "CO\"\x80", 48, false);
  return FieldsOf(writer);
}

constexpr const char* kSampleText =
    "101=2 10002=9101 20014=4000000000 30001=18446744073709551615 40002=99.25 55010='CO\"\\x80'";

TEST(MessageLog, ReadsFieldsByTheirTags) {
  EXPECT_EQ(FieldsText(Sample()), kSampleText);
  EXPECT_EQ(FieldsText({}), "");
  // Each cut reads what is whole, as a block of exactly that size.
  const std::vector<std::uint8_t> whole = Sample();
  for (std::size_t size = 0; size < whole.size(); ++size) {
    const std::vector<std::uint8_t> cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
    EXPECT_TRUE(std::string(kSampleText).starts_with(FieldsText(cut))) << size;
  }
}

// The registration of the beat has a value without the count that its range has otherwise.
TEST(MessageLog, ReadsThePeriodOfTheBeat) {
  CQORPacketWriter writer(0);
  writer.AddU64(30002, 8);
  writer.AddU32(60003, 250);
  EXPECT_EQ(FieldsText(FieldsOf(writer)), "30002=8 60003=250");
}

TEST(MessageLog, KeepsTheLatest) {
  MessageLog log;
  for (std::size_t i = 0; i < MessageLog::kMost + 5; ++i) log.Add(i % 2 == 0, static_cast<std::uint16_t>(i), {});
  EXPECT_EQ(log.Size(), MessageLog::kMost);
  EXPECT_EQ(log.CountOfAll(), MessageLog::kMost + 5);
  EXPECT_EQ(log.At(0).Count, MessageLog::kMost + 5);
  EXPECT_EQ(log.At(MessageLog::kMost - 1).Count, 6u);
  EXPECT_EQ(LogText(log.At(0), LogColumn::Direction), "to plug-in");
}

TEST(MessageLog, WritesRowsAsCsv) {
  MessageLog log;
  log.Add(true, 9101, Sample());
  log.Add(false, 32003, {});
  std::ostringstream file;
  const std::size_t rows[] = {1, 0};
  WriteLog(file, log, rows);
  const std::string text = file.str();
  EXPECT_EQ(text.substr(0, text.find("\r\n")), "No.,Time,Direction,Message,Meaning,Bytes,Fields");
  EXPECT_NE(text.find(",to plug-in,9101,live trade," + std::to_string(Sample().size()) +
                      ",\"101=2 10002=9101 20014=4000000000 30001=18446744073709551615 40002=99.25 "
                      "55010='CO\"\"\\x80'\"\r\n2,"),
            std::string::npos)
      << text;
  EXPECT_TRUE(text.ends_with(",from plug-in,32003,show properties,0,\"\"")) << text;
}

}  // namespace

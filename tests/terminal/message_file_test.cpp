#include "terminal/day/message_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "terminal/common/errors.h"
#include "tests/terminal/test_files.h"

namespace {

struct WireRead {
  std::string Offsets;  // of the messages given
  std::string Reports;
};

WireRead ReadMessages(const std::string& bytes) {
  const auto file = WriteTestFile("day.bin", bytes);
  std::ostringstream reports;
  BadLineReport badLines(reports);
  MessageFile messages(file, badLines);
  WireRead read;
  for (WireFrame frame; messages.Next(frame);) {
    read.Offsets += std::to_string(frame.Offset) + " ";
    EXPECT_EQ(std::string(reinterpret_cast<char*>(frame.Data), frame.Size), bytes.substr(frame.Offset, frame.Size));
  }
  read.Reports = Without(reports.str(), PathText(file) + ": byte ");
  return read;
}

// A header of mode 0 alone, with that length word.
std::string Header(unsigned length) {
  return {'#', 1, 0, 0, 0, '#', 0x11, 0x27, static_cast<char>(length & 0xFF), static_cast<char>(length >> 8)};
}

TEST(MessageFile, GivesWholeMessagesAndReportsTheRest) {
  const std::string good = WireMessage(8111);  // 15 bytes
  const std::string trade = WireMessage(9101, "20131007-00:00:01");
  ASSERT_EQ(good.size(), 15U);
  ASSERT_EQ(trade.size(), 37U);
  const struct {
    const char* Name;
    std::string Bytes;
    WireRead Expected;
  } cases[] = {
      {"nothing", "", {"", ""}},
      {"all known modes", WireMessage(1, "", 1) + WireMessage(1, "", 2) + WireMessage(1, "", 100), {"0 15 30 ", ""}},
      {"garbage ahead", "ab#" + good, {"3 ", "0: 3 bytes that belong to no message\n"}},
      {"garbage between", good + "#\x01" + good, {"0 17 ", "15: 2 bytes that belong to no message\n"}},
      {"garbage behind", good + "xyz", {"0 ", "15: 3 bytes that belong to no message\n"}},
      {"garbage over many windows",
       std::string(3000000, '#') + good,
       {"3000000 ", "0: 3,000,000 bytes that belong to no message\n"}},
      {"header over the end of the first block",
       std::string((1 << 20) - 5, 'x') + good,
       {"1048571 ", "0: 1,048,571 bytes that belong to no message\n"}},
      {"unknown mode and garbage",
       WireMessage(1, "", 3) + "xy" + good,
       {"17 ", "0: the message has the unknown mode 3\n15: 2 bytes that belong to no message\n"}},
      {"unknown mode", good + WireMessage(1, "", 3) + good, {"0 30 ", "15: the message has the unknown mode 3\n"}},
      {"cut in its body", trade.substr(0, 30) + good, {"30 ", "0: the message is cut after 30 of 37 bytes\n"}},
      {"cut in its body, two behind",
       trade.substr(0, 20) + good + good + good,
       {"20 35 50 ", "0: the message is cut after 20 of 37 bytes\n"}},
      {"cut at the end of the file",
       good + trade.substr(0, 36),
       {"0 ", "15: the message is cut after 36 of 37 bytes\n"}},
      {"cut in its header", good + trade.substr(0, 9), {"0 ", "15: 9 bytes that belong to no message\n"}},
      {"damaged length, more than there is",
       Header(5000) + good.substr(10) + good,
       {"15 ", "0: the message is cut after 30 of 5,010 bytes\n"}},
      {"length that no message can have",
       Header(0xFFFF) + good.substr(10) + good,
       {"15 ", "0: the header asks for 65,545 bytes, more than a message can have\n"}},
      {"the longest message", Header(65525) + std::string(65525, 'x') + good, {"0 65535 ", ""}},
      {"one byte more",
       Header(65526) + std::string(65526, 'x') + good,
       {"65536 ", "0: the header asks for 65,536 bytes, more than a message can have\n"}},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.Name);
    const WireRead read = ReadMessages(row.Bytes);
    EXPECT_EQ(read.Offsets, row.Expected.Offsets);
    EXPECT_EQ(read.Reports, row.Expected.Reports);
  }
}

TEST(MessageFile, GivesMessagesAcrossBlocks) {
  const std::string trade = WireMessage(9101, "20131007-00:00:01");
  std::string bytes, offsets;
  for (; bytes.size() < (std::size_t{2} << 20); bytes += trade) offsets += std::to_string(bytes.size()) + " ";
  const WireRead read = ReadMessages(bytes);
  EXPECT_TRUE(read.Offsets == offsets);
  EXPECT_EQ(read.Reports, "");
}

// The first message is cut at every length; the second comes through each time.
TEST(MessageFile, LosesOneMessagePerCut) {
  const std::string trade = WireMessage(9101, "20131007-00:00:01");
  for (std::size_t length = 1; length < trade.size(); ++length) {
    SCOPED_TRACE(length);
    const WireRead read = ReadMessages(trade.substr(0, length) + trade + trade);
    EXPECT_EQ(read.Offsets, std::to_string(length) + " " + std::to_string(length + 37) + " ");
    EXPECT_EQ(std::count(read.Reports.begin(), read.Reports.end(), '\n'), 1);
  }
}

}  // namespace

#include "terminal/day/numbered_day.h"

#include <gtest/gtest.h>

#include <sstream>
#include <vector>

#include "host_link/messages/message_header.h"
#include "terminal/common/errors.h"
#include "terminal/day/day_input.h"
#include "tests/terminal/test_files.h"

namespace {

using Kind = LiveFrom::Kind;

// The numbers that a script gives for a wire file, each as its reader says it and as its bytes do.
std::string Played(const std::string& bytes, LiveFrom liveFrom, std::string* reports = nullptr) {
  std::ostringstream told;
  BadLineReport badLines(told);
  NumberedDay script(OpenMessageDay(WriteTestFile("day.bin", bytes), badLines), liveFrom);
  std::string numbers;
  while (script.Next()) {
    const CQORPacketReader& message = script.Message();
    numbers += std::to_string(message.MessageNumber) + " ";
    EXPECT_EQ(LoadValue<std::uint16_t>(message.Data + message.Cursor - 2), message.MessageNumber);
  }
  if (reports != nullptr) *reports = told.str();
  return numbers;
}

std::string Wire(std::initializer_list<unsigned> numbers) {
  std::string bytes;
  for (const unsigned number : numbers) bytes += WireMessage(number);
  return bytes;
}

TEST(NumberedDay, EndsEachDownloadOnce) {
  const LiveFrom asNumbered;
  const LiveFrom third{Kind::Count, 2};
  const LiveFrom all{Kind::Count, 0};
  const struct {
    std::initializer_list<unsigned> File;
    LiveFrom From;
    const char* Expected;
  } cases[] = {
      {{}, asNumbered, "8112 "},
      {{8111, 8112, 9101}, asNumbered, "8111 8112 9101 "},
      {{8111, 8111}, asNumbered, "8111 8111 8112 "},
      {{8111, 9101, 9101}, asNumbered, "8111 8112 9101 9101 "},
      {{8111, 8112, 9101, 30022, 8111}, asNumbered, "8111 8112 9101 30022 8111 8112 "},
      {{9101, 30022, 9101}, asNumbered, "8112 9101 30022 8112 9101 "},
      {{8111, 9112, 8112, 12345}, asNumbered, "8111 9112 8112 12345 "},
      {{8111, 8112, 9101, 9101}, third, "8111 8111 8112 9101 "},
      {{9101, 9101, 9101}, third, "8111 8111 8112 9101 "},
      {{9101, 9112, 8112, 9101}, third, "8111 9112 8111 8112 "},
      {{8111, 8111, 8112}, all, "8112 9101 9101 "},
      {{8111, 30022, 8111}, all, "8112 9101 30022 8112 9101 "},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.Expected);
    EXPECT_EQ(Played(Wire(row.File), row.From), row.Expected);
  }
}

TEST(NumberedDay, BeginsLiveTradesAtTheirTime) {
  std::string bytes;
  for (const char* time :
       {"20131007-09:00:00", "20131007-11:59:59", "20131007-12:00:00", "20131007-11:00:00", "20140609-09:00:00"})
    bytes += WireMessage(8111, time);
  const struct {
    const char* From;
    const char* Expected;
  } cases[] = {
      {"12:00:00", "8111 8111 8112 9101 9101 9101 "},
      {"12:00:01", "8111 8111 8111 8111 8112 9101 "},  // the next date lies behind every time of the first
      {"20131007-11:59:59", "8111 8112 9101 9101 9101 9101 "},
      {"20140609-09:00:00", "8111 8111 8111 8111 8112 9101 "},
      {"20140609-09:00:01", "8111 8111 8111 8111 8111 8112 "},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.From);
    EXPECT_EQ(Played(bytes, *ParseLiveFrom(row.From)), row.Expected);
  }
}

TEST(NumberedDay, ReportsUnreadableMessages) {
  std::string number = WireMessage(8111);
  number[8] = 4;  // the number is cut to one byte
  number.pop_back();
  std::string reports;
  EXPECT_EQ(Played(WireMessage(8111) + number + WireMessage(8111, "", 2) + WireMessage(9101), {}, &reports),
            "8111 8112 9101 ");
  const std::string name = PathText(TestFolder() / "day.bin");
  EXPECT_EQ(reports, name + ": byte 15: the message cannot be read\n" + name +
                         ": byte 29: the message is enciphered and there is no key\n");
}

// Records the day in the mode and returns the file.
std::filesystem::path Record(const std::filesystem::path& day, std::uint16_t mode, const char* name, LiveFrom from) {
  std::ostringstream reports;
  BadLineReport badLines(reports);
  NumberedDay script(OpenMessageDay(day, badLines), from);
  MessageRecorder record(TestFolder() / name, mode);
  while (script.Next()) EXPECT_TRUE(record.Write(script.Message()));
  record.Close();
  EXPECT_EQ(reports.str(), "");
  return TestFolder() / name;
}

TEST(MessageRecorder, WritesTheSameMessagesInBothModes) {
  const std::string time = "20131007-09:00:00";
  const std::string wished = WireMessage(8111, time) + WireMessage(8112) + WireMessage(9101, time);
  const auto day = WriteTestFile("day.bin", WireMessage(8111, time) + WireMessage(8111, time));
  const LiveFrom half{Kind::Count, 1};
  EXPECT_EQ(ReadTestFile(Record(day, 0, "plain.bin", half)), wished);
  const auto compressed = Record(day, 1, "compressed.bin", half);
  EXPECT_EQ(ReadTestFile(compressed).substr(0, 8), std::string("#\x01\0\x01\0#\x11\x27", 8));
  EXPECT_EQ(ReadTestFile(Record(compressed, 0, "again.bin", {})), wished);
  // A compressed message that was live in its file waits behind the 8112 with its new number.
  EXPECT_EQ(ReadTestFile(Record(Record(day, 1, "all.bin", {Kind::Count, 9}), 0, "live.bin", {Kind::Count, 0})),
            WireMessage(8112) + WireMessage(9101, time) + WireMessage(9101, time));
}

}  // namespace

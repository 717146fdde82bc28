#include <gtest/gtest.h>

#include "terminal/common/errors.h"
#include "terminal/common/png_file.h"
#include "terminal/common/run_files.h"
#include "tests/terminal/test_files.h"

namespace {

TEST(WithThousands, SeparatesThreeDigits) {
  const std::pair<std::uint64_t, const char*> cases[] = {{0, "0"},
                                                         {999, "999"},
                                                         {1000, "1,000"},
                                                         {123456, "123,456"},
                                                         {18446744073709551615U, "18,446,744,073,709,551,615"}};
  for (const auto& [number, text] : cases) EXPECT_EQ(WithThousands(number), text);
}

TEST(RunFiles, TakesSideFilesBesideTheDayElseTheSamples) {
  const auto sample = ProgramFolder() / "sample_day";
  const RunFiles first = RunFiles::OfDay({});
  EXPECT_TRUE(first.IsSampleDay());
  EXPECT_EQ(first.Desk, sample / "desk.csv");
  const auto day = WriteTestFile("day.csv", "");
  EXPECT_EQ(first.WithDay(day).Securities, sample / "securities.csv");
  const auto desk = WriteDesk();
  EXPECT_EQ(first.WithDay(day).Desk, desk);
  EXPECT_FALSE(first.WithDay(day).IsSampleDay());
}

TEST(PngFile, WritesTheFormatsBytes) {
  // Two pixels side by side over two: red, green; red, blue.
  const std::uint8_t pixels[] = {255, 0, 0, 0, 255, 0, 255, 0, 0, 0, 0, 255};
  const std::string png = PngBytes(2, 2, pixels);
  const std::string head("\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR\0\0\0\2\0\0\0\2\x08\2\0\0\0\xFD\xD4\x9A\x73", 33);
  EXPECT_EQ(png.substr(0, 33), head);
  EXPECT_EQ(png.substr(37, 4), "IDAT");
  EXPECT_EQ(png.substr(png.size() - 12), std::string("\0\0\0\0IEND\xAE\x42\x60\x82", 12));
  EXPECT_EQ(PngBytes(2, 3, pixels), "");
  EXPECT_EQ(PngBytes(0, 2, {}), "");
  EXPECT_THROW(WritePngFile(TestFolder() / "no" / "x.png", 2, 2, pixels), TerminalError);
  WritePngFile(TestFolder() / "x.png", 2, 2, pixels);
  EXPECT_EQ(ReadTestFile(TestFolder() / "x.png"), png);
}

}  // namespace

#include <gtest/gtest.h>

#include "terminal/common/errors.h"
#include "terminal/day/day_input.h"
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

}  // namespace

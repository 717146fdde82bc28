#include "terminal/program/program.h"

#include <gtest/gtest.h>

#include "terminal/common/errors.h"
#include "tests/terminal/test_files.h"

namespace {

TEST(WorkingFolder, IsMadeFilledAndEnteredAndNothingIsOverwritten) {
  const auto before = std::filesystem::current_path();
  WriteTestFile("samples/one.txt", "sample one");
  WriteTestFile("samples/deep/two.txt", "sample two");
  const auto work = TestFolder() / "new" / "work";
  EnterWorkingFolder(work, TestFolder() / "samples");
  EXPECT_TRUE(std::filesystem::equivalent(std::filesystem::current_path(), work));
  EXPECT_EQ(ReadTestFile("one.txt"), "sample one");
  EXPECT_EQ(ReadTestFile("deep/two.txt"), "sample two");
  std::ofstream("one.txt", std::ios::binary) << "the user's";
  std::filesystem::remove("deep/two.txt");
  EnterWorkingFolder(work, TestFolder() / "samples");
  EXPECT_EQ(ReadTestFile("one.txt"), "the user's");
  EXPECT_EQ(ReadTestFile("deep/two.txt"), "sample two");
  std::filesystem::current_path(before);

  EXPECT_THROW(EnterWorkingFolder(WriteTestFile("file", ""), TestFolder() / "samples"), TerminalError);
  EXPECT_THROW(EnterWorkingFolder(work, TestFolder() / "missing"), TerminalError);
  EXPECT_TRUE(std::filesystem::equivalent(std::filesystem::current_path(), before));
}

}  // namespace

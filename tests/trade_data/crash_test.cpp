// What becomes of a process when the writer thread of a record file dies, and when another thread does.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/faults.h"
#include "tests/support/programs.h"

namespace {

namespace fs = std::filesystem;

struct ChildEnd {
  int Code;
  std::string Out;
  int Dumps = 0;  // of the system, beside the program
};

void TakeDumps(ChildEnd& end) {
  const fs::directory_iterator folder(ProgramFolder());
  for (const fs::path& file : std::vector<fs::path>(begin(folder), fs::directory_iterator())) {
    if (file.extension() != ".dmp") continue;
    EXPECT_TRUE(ReadFile(file).starts_with("MDMP"));
    EXPECT_TRUE(file.filename().string().starts_with("crash_child_") && file.filename().string().size() == 20);
    fs::remove(file);
    ++end.Dumps;
  }
}

// The command before it runs in a POSIX shell only.
ChildEnd RunChild(const std::string& arguments, const std::string& before = "") {
  const fs::path out = ProgramFolder() / "crash_child.out";
  const int status = RunCommand(before + BuiltProgram("crash_child") + ' ' + arguments + " > " + Quoted(out) + " 2>&1");
  const bool killed = !kWindows && (status & 0x7F) != 0;
  ChildEnd end{kWindows ? status : killed ? 128 + (status & 0x7F) : status >> 8, ReadFile(out)};
  TakeDumps(end);
  return end;
}

TEST(CrashTest, DumpsOnlyIfTheWriterThreadDies) {
  for (const std::string of : {"writer segment", "writer signal8", "writer signal4", "writer exception",
                               "writer overflow", "main signal11", "main exception"}) {
    // There a thread without stack left has none for a handler either.
    if (kWindows && of == "writer overflow") continue;
    SCOPED_TRACE(of);
    const bool isWriter = of.starts_with("writer");
    const ChildEnd end = RunChild(of);
    EXPECT_TRUE(isWriter ? end.Code == 1 : end.Code != 0) << end.Code;
    EXPECT_TRUE(isWriter ? end.Out == "dump" : end.Out.find("dump") == std::string::npos) << end.Out;
    EXPECT_EQ(end.Dumps, kWindows && isWriter ? 1 : 0);
  }
}

// A thread whose stack would be larger than the memory is refused.
TEST(CrashTest, ReportsARefusedThreadAndWritesWithoutIt) {
  if (kWindows) GTEST_SKIP() << "no shell here that limits a stack";
  const ChildEnd end = RunChild("main lives", "ulimit -s 200000000000 || exit 77; ");
  if (end.Code == 77) GTEST_SKIP() << "the limit of stacks cannot be raised here";
  EXPECT_EQ(end.Code, 0);
  EXPECT_NE(end.Out.find("Faild to start thread: ErrorNo: 11, "), std::string::npos) << end.Out;
}

TEST(CrashTest, RestoresTheHandlersWithTheThread) {
  EXPECT_EQ(RunChild("").Code, 0);
}

TEST(CrashTest, NamesTheDumpAfterProgramAndTime) {
  const auto dump = [](std::wstring program, int hour, int minute) {
    program.resize(program.size() + kDumpNameRoom);
    DumpNameOver(program.data(), hour, minute);
    return std::wstring(program.c_str());
  };
  EXPECT_EQ(dump(L"C:\\Some folder\\x.exe", 23, 59), L"C:\\Some folder\\x_2359.dmp");
  EXPECT_EQ(dump(L".exe", 9, 5), L"_0905.dmp");
  EXPECT_EQ(dump(L"abc", 10, 10), L"_1010.dmp");
}

}  // namespace

// What becomes of a process when the writer thread of a record file dies, and when another thread does.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "platform/faults.h"
#include "platform/modules.h"
#include "tests/support/files.h"

namespace {

namespace fs = std::filesystem;

constexpr bool kWindows = fs::path::preferred_separator == '\\';

struct ChildEnd {
  int Code;
  std::string Out;
};

// The line of the shell before it is none that Windows has.
ChildEnd RunChild(const std::string& arguments, const std::string& before = "") {
  const fs::path program = (ProgramFolder() / (kWindows ? "crash_child.exe" : "crash_child")).make_preferred();
  const fs::path out = (ProgramFolder() / "crash_child.out").make_preferred();
  std::string command = before + "\"" + program.string() + "\" " + arguments + " > \"" + out.string() + "\" 2>&1";
  if (kWindows) command = "\"" + command + "\"";  // the shell takes one pair of quotes off
  const int status = std::system(command.c_str());
  const std::string text = ReadFile(out);
  if (kWindows) return {status, text};
  return {(status & 0x7F) != 0 ? 128 + (status & 0x7F) : status >> 8, text};
}

// The dumps that lie beside the program, which are removed.
std::vector<std::string> TakeDumps() {
  std::vector<fs::path> files;
  for (const auto& entry : fs::directory_iterator(ProgramFolder()))
    if (entry.path().extension() == ".dmp") files.push_back(entry.path());
  std::vector<std::string> dumps;
  for (const fs::path& file : files) {
    dumps.push_back(ReadFile(file));
    EXPECT_EQ(file.filename().string().substr(0, 12), "crash_child_");
    EXPECT_EQ(file.filename().string().size(), 20u);
    fs::remove(file);
  }
  return dumps;
}

TEST(CrashTest, EndsTheProcessWithADumpWhenTheWriterThreadDies) {
  TakeDumps();
  for (const char* of : {"segment", "signal8", "signal4", "exception", "overflow"}) {
    // There a thread without stack left has none for a handler either.
    if (kWindows && std::string(of) == "overflow") continue;
    SCOPED_TRACE(of);
    const ChildEnd end = RunChild(std::string("writer ") + of);
    EXPECT_EQ(end.Code, 1);
    EXPECT_EQ(end.Out, "dump");
    const std::vector<std::string> dumps = TakeDumps();
    EXPECT_EQ(dumps.size(), kWindows ? 1u : 0u);
    for (const std::string& dump : dumps) EXPECT_TRUE(dump.starts_with("MDMP"));
  }
}

TEST(CrashTest, LeavesCrashesOfOtherThreadsAlone) {
  for (const char* of : {"signal11", "exception"}) {
    SCOPED_TRACE(of);
    const ChildEnd end = RunChild(std::string("main ") + of);
    EXPECT_NE(end.Code, 0);
    EXPECT_EQ(end.Out.find("dump"), std::string::npos) << end.Out;
    EXPECT_TRUE(TakeDumps().empty());
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
  const struct {
    const wchar_t* Program;
    int Hour;
    int Minute;
    const wchar_t* Dump;
  } cases[] = {
      {L"x.exe", 9, 5, L"x_0905.dmp"},
      {L"C:\\Some folder\\x.exe", 23, 59, L"C:\\Some folder\\x_2359.dmp"},
      {L".exe", 0, 0, L"_0000.dmp"},
      {L"abc", 10, 10, L"_1010.dmp"},
  };
  for (const auto& row : cases) {
    std::wstring name = row.Program;
    name.resize(name.size() + kDumpNameRoom);
    DumpNameOver(name.data(), row.Hour, row.Minute);
    EXPECT_STREQ(name.c_str(), row.Dump);
  }
}

}  // namespace

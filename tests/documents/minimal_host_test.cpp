// The example of the host guide does what the guide says.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "foundations/text_tools.h"
#include "platform/modules.h"
#include "tests/documents/page.h"
#include "tests/support/files.h"

namespace {

namespace fs = std::filesystem;

constexpr bool kWindows = fs::path::preferred_separator == '\\';

std::string WithoutReturns(std::string text) {
  std::erase(text, '\r');
  return text;
}

// Runs the program in the current folder; its exit code is 0 or not.
int RunProgram(const fs::path& program, const std::string& arguments) {
  std::string command = "\"" + fs::path(program).make_preferred().string() + "\" " + arguments + " > out 2>&1";
  if (kWindows) command = "\"" + command + "\"";  // the shell takes one pair of quotes off
  return std::system(command.c_str());
}

class MinimalHost : public testing::Test {
 protected:
  // One folder per test: the former test's shell may still hold its own.
  MinimalHost()
      : FormerFolder(fs::current_path()),
        Folder(ProgramFolder() / "minimal host test" / testing::UnitTest::GetInstance()->current_test_info()->name()) {
    fs::remove_all(Folder);
    fs::create_directories(Folder);
    fs::current_path(Folder);
  }
  ~MinimalHost() override {
    fs::current_path(FormerFolder);
    std::error_code ignored;
    fs::remove_all(Folder, ignored);
  }

  fs::path FormerFolder;
  fs::path Folder;
  fs::path Program = ProgramFolder() / ".." / "bin" / (kWindows ? "minimal_host.exe" : "minimal_host");
};

TEST_F(MinimalHost, PrintsWhatTheGuideShowsAndWritesADailyFile) {
  ASSERT_EQ(RunProgram(Program, ""), 0) << ReadFile("out");
  std::string expected;
  for (const std::string& line : FencedBlock("host_guide.md", "The example prints", "text")) expected += line + "\n";
  EXPECT_EQ(WithoutReturns(ReadFile("out")), expected);
  std::string daily;
  for (const auto& entry : fs::directory_iterator("minimal_host"))
    if (entry.path().extension() == ".CSV") daily += ReadFile(entry.path());
  EXPECT_EQ(daily,
            "VELDTradeID,SecurityID,Side,Quantity,Price,\r\n1,GC201312,Buy,2,1313.25,\r\n2,GC201312,Buy,2,1313.4,");
}

TEST_F(MinimalHost, ReportsAModuleThatCannotBeUsed) {
  EXPECT_NE(RunProgram(Program, "no_such_module"), 0);
  EXPECT_TRUE(ReadFile("out").starts_with("the module cannot be used: ")) << ReadFile("out");
  EXPECT_GT(ReadFile("out").size(), 35U);
}

}  // namespace

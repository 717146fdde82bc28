// Files that are replaced by several processes, by processes that die, and through links.
#include "platform/files.h"

#include <future>
#include <vector>

#include "tests/support/own_folder.h"
#include "tests/support/programs.h"

namespace {

namespace fs = std::filesystem;

class ReplaceFile : public OwnFolder {
 protected:
  fs::path File() const { return Folder / "s.xml"; }
  // What a shell gives for the child, with a line of the shell before it.
  int RunChild(const std::string& before, int id, int rounds) const {
    return RunCommand(before + BuiltProgram("replace_child") + ' ' + Quoted(File()) + ' ' + std::to_string(id) + ' ' +
                      std::to_string(rounds));
  }
  bool Replace(const fs::path& file, const std::string& bytes) { return ReplaceFileContent(file, bytes, Error); }
  std::ptrdiff_t FilesInFolder() const { return std::distance(fs::directory_iterator(Folder), {}); }
  void ExpectFile(const std::string& bytes, std::ptrdiff_t files) const {
    EXPECT_EQ(ReadFile(File()), bytes);
    EXPECT_EQ(FilesInFolder(), files);
  }

  unsigned long Error = 0;
};

TEST_F(ReplaceFile, KeepsFilesWholeWithSeveralWriters) {
  std::vector<std::future<int>> writers;
  for (int id = 1; id <= 4; ++id)
    writers.push_back(std::async(std::launch::async, [this, id] { return RunChild("", id, 60); }));
  for (std::future<int>& writer : writers) EXPECT_EQ(writer.get(), 0);
  EXPECT_EQ(FilesInFolder(), 1);
}

// A process whose files may not grow dies in the middle of its write, or is refused it.
TEST_F(ReplaceFile, KeepsTheOldFileWhenAWriteDiesOrFails) {
  if (kWindows) GTEST_SKIP() << "no shell here that limits what a process writes";
  WriteFile(File(), "old");
  EXPECT_NE(RunChild("trap '' XFSZ; ulimit -f 0; exec 2>/dev/null; ", 1, 1), 0);
  ExpectFile("old", 1);
  for (int i = 0; i < 3; ++i) EXPECT_NE(RunChild("ulimit -c 0; ulimit -f 0; exec ", 1, 1), 0);
  ExpectFile("old", 2);  // what dead writers leave does not pile up
  EXPECT_TRUE(Replace(File(), "new"));
  ExpectFile("new", 1);
}

TEST_F(ReplaceFile, TakesAFreeNameAndFailsWithoutOne) {
  fs::create_directory(File().string() + ".new");
  EXPECT_TRUE(Replace(File(), "new"));
  for (int i = 2; i <= 64; ++i) fs::create_directory(File().string() + ".new" + std::to_string(i));
  EXPECT_FALSE(Replace(File(), "newer"));
  ExpectFile("new", 65);
  Error = 0;
  EXPECT_FALSE(Replace(Folder, "x"));
  EXPECT_NE(Error, 0UL);
  EXPECT_FALSE(fs::exists(Folder.string() + ".new"));
}

TEST_F(ReplaceFile, KeepsOwnerModeAndLinks) {
  if (kWindows) GTEST_SKIP() << "links and modes are made otherwise here";
  const fs::path target = Folder / "kept" / "real.xml";
  fs::create_directory(target.parent_path());
  fs::create_symlink("kept/link.xml", File());
  fs::create_symlink("real.xml", target.parent_path() / "link.xml");
  EXPECT_TRUE(Replace(File(), "made"));
  EXPECT_EQ(ReadFile(target), "made");
  const std::string quoted = "'" + target.string() + "'";
  const bool root = std::system(("chown 1234:1235 " + quoted + " 2>/dev/null").c_str()) == 0;
  EXPECT_EQ(std::system(("chmod 640 " + quoted).c_str()), 0);
  EXPECT_TRUE(Replace(File(), "replaced"));
  EXPECT_EQ(ReadFile(target), "replaced");
  EXPECT_TRUE(fs::is_symlink(File()) && fs::is_symlink(target.parent_path() / "link.xml"));
  const std::string expected = root ? "1234:1235:640" : "$(id -u):$(id -g):640";
  EXPECT_EQ(std::system(("test \"$(stat -c %u:%g:%a " + quoted + ")\" = " + expected).c_str()), 0);
  EXPECT_EQ(FilesInFolder(), 2);
  fs::create_directory_symlink("loop.xml", Folder / "loop.xml");
  EXPECT_FALSE(Replace(Folder / "loop.xml", "x"));
  ASSERT_EQ(std::system(("mkfifo '" + (Folder / "pipe").string() + "'").c_str()), 0);
  EXPECT_FALSE(Replace(Folder / "pipe", "x")) << "only files are replaced";
}

}  // namespace

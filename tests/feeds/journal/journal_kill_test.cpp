// The journal where Linux kills its writer, has no room or is asked who may read.
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <random>

#include "feeds/journal/journal.h"
#include "tests/feeds/journal/small_journal.h"
#include "tests/support/own_folder.h"

namespace {

class JournalKillTest : public OwnFolder {
 protected:
  const std::filesystem::path File = JournalPath(Folder, kSmallSession, kSmallDate);
};

// No file of this process grows beyond that size meanwhile.
struct SizeLimit {
  explicit SizeLimit(rlim_t size) {
    getrlimit(RLIMIT_FSIZE, &Before);
    const rlimit limit{size, Before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~SizeLimit() { setrlimit(RLIMIT_FSIZE, &Before); }
  rlimit Before{};
};

TEST_F(JournalKillTest, KeepsTheFileWholeWithoutRoom) {
  Journal journal(Folder, kSmallSession, kSmallDate);
  ASSERT_TRUE(journal.Append(JournalKind::Message, 1, 2, "first"));
  const std::string before = ReadFile(File);
  for (std::size_t room = 0; room < 33 + 6; ++room) {
    bool written = true;
    {
      const SizeLimit limit(before.size() + room);
      written = journal.Append(JournalKind::Message, 1, 3, "second");
    }
    ASSERT_FALSE(written) << room;
    EXPECT_EQ(ReadFile(File), before);
    EXPECT_EQ(journal.NextTarget(), 2u);
    EXPECT_EQ(journal.Failure(), "cannot write to " + File.string() + ": File too large");
  }
  ASSERT_TRUE(journal.Append(JournalKind::Message, 1, 3, "second"));
  EXPECT_EQ(TextsOf(File), (std::vector<std::string>{"first", "second"}));
}

TEST_F(JournalKillTest, OnlyTheOwnerMayRead) {
  const mode_t mask = umask(0);
  { const Journal journal(Folder, kSmallSession, kSmallDate); }
  std::ofstream(File, std::ios::app) << "torn";
  { const Journal journal(Folder, kSmallSession, kSmallDate); }
  umask(mask);
  for (const std::filesystem::path& file : {File, std::filesystem::path(File) += ".torn"})
    EXPECT_EQ(std::filesystem::status(file).permissions(), std::filesystem::perms(0600)) << file;
}

// Appends texts of their own number and tells the pipe of each, until it is killed.
[[noreturn]] void WriteUntilKilled(const std::filesystem::path& folder, int pipe) {
  Journal journal(folder, kSmallSession, kSmallDate);
  for (;;) {
    const std::uint32_t number = journal.NextTarget();
    const std::string text = std::string(number % 1000 * 30, '.') + std::to_string(number);
    if (!journal.Append(JournalKind::Message, 1, number + 1, text) || write(pipe, &number, sizeof number) < 0) _exit(1);
  }
}

// Kills it at any moment behind that many acknowledgements; the last number that it acknowledged.
std::uint32_t KillAWriter(const std::filesystem::path& folder, std::uint64_t acknowledged) {
  int ends[2];
  EXPECT_EQ(pipe(ends), 0);
  const pid_t child = fork();
  if (child == 0) WriteUntilKilled(folder, ends[1]);
  close(ends[1]);
  std::uint32_t number = 0, last = 0;
  while (acknowledged-- > 0 && read(ends[0], &number, sizeof number) == sizeof number) last = number;
  kill(child, SIGKILL);
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_TRUE(WIFSIGNALED(status));
  while (read(ends[0], &number, sizeof number) == sizeof number) last = number;
  close(ends[0]);
  return last;
}

TEST_F(JournalKillTest, KeepsWhatWasAcknowledged) {
  std::mt19937 random(14);
  for (int kills = 0; kills < 8; ++kills) {
    const std::uint32_t last = KillAWriter(Folder, 1 + random() % 2000);
    JournalReader reader(File);
    std::uint32_t count = 0;
    for (JournalRecord record; reader.Next(record);) {
      ASSERT_EQ(record.NextTarget, ++count + 1);
      ASSERT_EQ(record.Text.substr(record.Text.find_last_of('.') + 1), std::to_string(count));
    }
    EXPECT_GE(count, last);
    EXPECT_LE(count, last + 1) << "written, but not acknowledged";
    EXPECT_EQ(reader.DamagedBytes(), 0u);
  }
}

}  // namespace

// The gateway killed while it takes 20,000 trades, and started again.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <random>

#include "platform/modules.h"
#include "tests/feeds/venue/session_times.h"
#include "tests/feeds/venue/venue_run.h"
#include "tests/support/own_folder.h"

namespace {

// A gateway as a process of its own, whose output goes to a file.
class GatewayProcess {
 public:
  GatewayProcess(const std::filesystem::path& config, const std::filesystem::path& output) {
    const std::string program = (ProgramFolder().parent_path() / "bin" / "trade_gateway").string();
    std::string name = program;
    std::string argument = config.string();
    char* arguments[] = {name.data(), argument.data(), nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, output.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
    posix_spawn_file_actions_adddup2(&actions, 1, 2);
    if (posix_spawn(&Process, program.c_str(), &actions, nullptr, arguments, environ) != 0) Process = -1;
    posix_spawn_file_actions_destroy(&actions);
  }
  ~GatewayProcess() { End(SIGKILL); }
  GatewayProcess(const GatewayProcess&) = delete;
  GatewayProcess& operator=(const GatewayProcess&) = delete;

  bool IsThere() const { return Process > 0; }
  // The state of its end.
  int End(int signal) {
    int state = -1;
    if (Process > 0 && kill(Process, signal) == 0) waitpid(Process, &state, 0);
    Process = -1;
    return state;
  }

 private:
  pid_t Process = -1;
};

std::uintmax_t JournalBytes(const std::filesystem::path& folder) {
  std::error_code error;
  std::uintmax_t bytes = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder, error))
    if (entry.path().extension() == ".journal") bytes += entry.file_size(error);
  return bytes;
}

class GatewayKills : public OwnFolder {
 protected:
  std::filesystem::path Config(int port) {
    const std::filesystem::path file = Folder / "gateway.conf";
    WriteFile(file, "[session]\nsender_comp_id = DESK\ntarget_comp_id = VENUE\nhost = 127.0.0.1\nport = " +
                        std::to_string(port) + "\nreconnect_seconds = 1\nstart_time = " + FarFromNow() +
                        "\nend_time = " + FarFromNow() + "\n[journal]\nfolder = journal\n");
    return file;
  }
};

TEST_F(GatewayKills, LoseAndDoubleNoTrade) {
  constexpr std::uint64_t kTrades = 20000;
  constexpr std::size_t kKills = 8;
  VenueRun venue(Folder, {kTrades, "", {}, {}});
  const std::filesystem::path config = Config(venue.Port());
  const std::filesystem::path output = Folder / "gateway.log";
  const std::filesystem::path journals = Folder / "journal";

  // Every report has more than 300 bytes, so that no kill comes behind the last one.
  std::mt19937 random(20260301);
  std::vector<std::uintmax_t> kills(kKills);
  for (std::uintmax_t& bytes : kills) bytes = 1000 + random() % (kTrades * 300);
  std::sort(kills.begin(), kills.end());
  for (const std::uintmax_t bytes : kills) {
    SCOPED_TRACE("killed at " + std::to_string(bytes) + " bytes");
    GatewayProcess gateway(config, output);
    ASSERT_TRUE(gateway.IsThere());
    ASSERT_TRUE(WaitFor([&] { return JournalBytes(journals) >= bytes; })) << venue.Notices() << ReadFile(output);
    ASSERT_TRUE(WIFSIGNALED(gateway.End(SIGKILL))) << "it had ended by itself: " << ReadFile(output);
  }
  GatewayProcess gateway(config, output);
  ASSERT_TRUE(venue.WaitForEnd()) << venue.Notices() << ReadFile(output);
  EXPECT_EQ(gateway.End(SIGTERM), 0) << ReadFile(output);

  const JournalTrades kept = ReadJournals(journals);
  EXPECT_EQ(kept.Messages, kTrades);
  EXPECT_EQ(FirstDifference(kept.Last, venue.ExpectedTrades()), "");
}

}  // namespace

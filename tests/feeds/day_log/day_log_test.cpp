// Writer and reader of day logs against a server of each test's own.

#include <gtest/gtest.h>

#include "tests/feeds/day_log/day_log_players.h"
#include "tests/support/own_folder.h"

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using Step = LogReader::Step;

class DayLogTest : public OwnFolder {
 protected:
  LogServer Server{Folder / "log"};
  LogWriter Writer{Server.Access(), kDay, 1};
  LogReader Reader{Server.Access(), kDay};
  std::vector<std::uint8_t> Messages;
};

TEST_F(DayLogTest, GivesEveryMessageOnceWhileTheServerIsKilled) {
  constexpr std::uint32_t kLast = 20000;
  std::atomic<std::uint32_t> written = 0;
  std::vector<std::uint32_t> read;
  std::thread writing([&] { WriteDay(Writer, kLast, 10, written); });
  std::thread reading([&] { read = ReadDay(Reader, kLast); });
  const auto bound = Bound();
  for (const std::uint32_t at : {5000u, 12000u}) {
    while (written < at && !IsOver(bound)) std::this_thread::yield();
    Server.Kill();
    Server.Start();
  }
  writing.join();
  reading.join();
  EXPECT_EQ(read, IdsUpTo(kLast));
  EXPECT_TRUE(Reader.IsCaughtUp());
  EXPECT_EQ(Reader.Behind(), 0u);
}

TEST_F(DayLogTest, TakesEachMessageOfTwoWritersOnce) {
  constexpr std::uint32_t kLast = 3000;
  LogWriter other(Server.Access(), kDay, 1);
  std::atomic<std::uint32_t> written = 0, writtenByOther = 0;
  std::thread writing([&] { WriteDay(Writer, kLast, 7, written); });
  std::thread otherWriting([&] { WriteDay(other, kLast, 11, writtenByOther); });
  writing.join();
  otherWriting.join();
  EXPECT_EQ(ReadDay(Reader, kLast), IdsUpTo(kLast));
  EXPECT_EQ(Reader.Take(Messages, milliseconds(50)), Step::Nothing);
}

TEST_F(DayLogTest, TellsWhatIsThereBeforeTheFirstMessage) {
  EXPECT_EQ(Reader.Take(Messages, milliseconds(1)), Step::Missing);
  EXPECT_EQ(Reader.Reason(), "there is no log trades.20260301 yet");
  EXPECT_FALSE(Reader.IsCaughtUp());
  EXPECT_EQ(Writer.Connect(seconds(30)), 0u);
  EXPECT_EQ(Reader.Take(Messages, milliseconds(1)), Step::Nothing);
  EXPECT_TRUE(Reader.IsCaughtUp()) << "an empty log is read to its end";
  Writer.Publish(0, 2, TradeMessages(1, 2));
  EXPECT_EQ(ReadDay(Reader, 2), IdsUpTo(2));
}

}  // namespace

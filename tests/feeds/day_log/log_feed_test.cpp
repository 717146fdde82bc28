#include "feeds/live/log_feed.h"

#include <gtest/gtest.h>

#include "tests/feeds/day_log/day_log_players.h"
#include "tests/support/own_folder.h"

namespace {

class LogFeedTest : public OwnFolder {
 protected:
  // False if it does not become true in time.
  template <typename Condition>
  static bool Reaches(Condition condition) {
    const auto bound = Bound();
    while (!condition()) {
      if (IsOver(bound)) return false;
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
  }

  LogServer Server{Folder / "log"};
  LogWriter Writer{Server.Access(), kDay, 1};
  std::vector<std::uint8_t> Messages;
};

TEST_F(LogFeedTest, GoesFromDownloadToLive) {
  LogFeed feed(Server.Access(), kDay);
  EXPECT_TRUE(Reaches([&] { return feed.State().Text == "there is no log trades.20260301 yet"; })) << feed.State().Text;
  EXPECT_EQ(feed.State().Phase, FeedPhase::Connecting);
  // More than the queue takes, so that the reading waits for the terminal.
  constexpr std::uint32_t kSize = 50'000, kFirst = 200;
  Writer.Connect(std::chrono::seconds(30));
  for (std::uint32_t i = 0; i < kFirst; i += 5) Writer.Publish(i, 5, TradeMessages(i + 1, 5, kSize));
  LogFeed later(Server.Access(), kDay);
  EXPECT_TRUE(Reaches([&] { return later.State().Behind > 0; }));
  EXPECT_FALSE(later.IsCaughtUp()) << "what has come has not been taken";
  EXPECT_NE(later.State().Phase, FeedPhase::Live);
  std::size_t largest = 0;
  EXPECT_TRUE(Reaches([&] {
    const std::size_t before = Messages.size();
    later.Take(Messages);
    largest = std::max(largest, Messages.size() - before);
    return later.IsCaughtUp();
  }));
  EXPECT_EQ(TradeIds(Messages), IdsUpTo(kFirst));
  EXPECT_LE(largest, 2'000'000u);
  EXPECT_EQ(later.State().Phase, FeedPhase::Live);
  EXPECT_EQ(later.State().Text, "reading trades.20260301 from 127.0.0.1:" + std::to_string(Server.Port()));
  Writer.Publish(kFirst, 1, TradeMessages(kFirst + 1, 1));
  EXPECT_TRUE(Reaches([&] { return later.Take(Messages); }));
  EXPECT_EQ(TradeIds(Messages), IdsUpTo(kFirst + 1));
}

TEST_F(LogFeedTest, TellsOfALostServerAndGoesOn) {
  Writer.Connect(std::chrono::seconds(30));
  Writer.Publish(0, 1, TradeMessages(1, 1));
  LogFeed feed(Server.Access(), kDay);
  EXPECT_TRUE(Reaches([&] { return feed.Take(Messages); }));
  Server.Kill();
  EXPECT_TRUE(Reaches([&] { return feed.State().Phase == FeedPhase::Lost; }));
  EXPECT_TRUE(feed.IsCaughtUp());
  const std::vector<Alarm> alarms = feed.TakeAlarms();
  ASSERT_EQ(alarms.size(), 1u);
  EXPECT_EQ(alarms[0].Kind, AlarmKind::Disconnected);
  EXPECT_TRUE(feed.TakeAlarms().empty());
  Server.Start();
  Writer.Connect(std::chrono::seconds(30));
  Writer.Publish(1, 1, TradeMessages(2, 1));
  EXPECT_TRUE(Reaches([&] { return feed.Take(Messages); }));
  EXPECT_EQ(TradeIds(Messages), IdsUpTo(2));
  EXPECT_EQ(feed.State().Phase, FeedPhase::Live);
}

}  // namespace

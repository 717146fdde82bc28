#include "terminal/play/player.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "terminal/play/play_report.h"
#include "tests/terminal/test_files.h"

namespace {

using std::chrono::milliseconds;

class TestClock : public PlayClock {
 public:
  Time Now() override { return Current; }
  void SleepUntil(Time time) override { Current = std::max(Current, time); }
  Time Current{std::chrono::hours(1)};
};

// Notes what is sent, and takes a millisecond for each.
class DayRunTest : public testing::Test, protected MessageTarget, protected TradeListener {
 protected:
  bool Deliver(CQORPacketReader& message, const WireFrame& /*raw*/) override {
    Notes += std::to_string(message.MessageNumber) + " ";
    Clock.Current += milliseconds(1);
    return true;
  }
  void OnTradeSent(const TradePrint& print) override { Notes += print.SecurityID + ":"; }

  std::string Play(milliseconds time = milliseconds(1000)) {
    Notes.clear();
    const auto next = Run.PlayFor(time);
    Wait = next ? std::chrono::duration_cast<milliseconds>(*next - Clock.Current).count() : -1;
    return Notes;
  }

  TestClock Clock;
  std::string Notes;
  std::int64_t Wait = 0;  // ms until there is more to send; -1 for nothing
  std::ostringstream Reports;
  BadLineReport BadLines{Reports};
  DayRun Run{*this, *this, Clock, 10};
  std::optional<DayInput> Input;

  // Four trades at seconds 1, 2, 4 and 14 with a bad line, the first two of them download.
  void Begin() {
    WriteTestFile("securities.csv", std::string(kSecurityHeader) + "ARCA,IBM,IBM,BIG BLUE,EQ,,XX,0,2.5\n");
    WriteTestFile("desk.csv", std::string(kDeskHeader) + kDeskLine);
    const auto day = WriteTestFile(
        "day.csv", kTradeHeader + TradeLine("20131007-00:00:01", "1") + "bad\n" + TradeLine("20131007-00:00:02", "2") +
                       TradeLine("20131007-00:00:04", "3") + TradeLine("20131007-00:00:14", "4"));
    Input.emplace(RunFiles::OfDay(day), ParseLiveFrom("2"), BadLines);
    Run.Begin(*Input);
  }
};

TEST_F(DayRunTest, PlaysInSlicesAtItsPace) {
  Begin();
  EXPECT_FALSE(Run.IsLive());
  EXPECT_EQ(Play(), "IBM:8111 IBM:8111 8112 30020 IBM:9101 ");
  EXPECT_TRUE(Run.IsLive());
  EXPECT_EQ(Wait, 999);  // ten seconds of the day, but for the millisecond that the last one took
  EXPECT_EQ(DayClockText(Run.DaySeconds()), "2013-10-07 00:00:04");
  EXPECT_EQ(Play(), "");
  Clock.Current += milliseconds(499);
  EXPECT_EQ(DayClockText(Run.DaySeconds()), "2013-10-07 00:00:09");
  Run.SetSpeed(1);
  EXPECT_EQ(Play(), "");
  EXPECT_EQ(Wait, 5000);
  Clock.Current += milliseconds(5000);
  EXPECT_EQ(Play(), "IBM:9101 ");
  EXPECT_EQ(Wait, -1);
  EXPECT_TRUE(Run.HasEnded());
  EXPECT_EQ(Run.Counts().Messages, 6U);
  EXPECT_EQ(Run.Counts().Live, 2U);
}

TEST_F(DayRunTest, APauseHoldsLiveTradesAlone) {
  Begin();
  Run.Pause();
  EXPECT_EQ(Play(), "IBM:8111 IBM:8111 8112 30020 ");
  EXPECT_EQ(Wait, -1);
  Run.Resume();
  EXPECT_EQ(Play(), "IBM:9101 ");
  Run.Pause();
  Clock.Current += milliseconds(5000);
  EXPECT_EQ(Play(), "");
  Run.Resume();
  Play();
  EXPECT_EQ(Wait, 999);
  Run.SetSpeed(std::nullopt);
  EXPECT_EQ(Play(), "IBM:9101 ");
}

TEST_F(DayRunTest, ASliceEndsWithItsTime) {
  std::string day;
  for (int i = 0; i < 100; ++i) day += WireMessage(8111);
  WriteTestFile("securities.csv", kSecurityHeader);
  Input.emplace(RunFiles::OfDay(WriteTestFile("day.bin", day)), std::nullopt, BadLines);
  Run.Begin(*Input);
  Play(milliseconds(8));
  EXPECT_EQ(Wait, 0);
  EXPECT_LT(Run.DayTrades(), 40U);
  EXPECT_GT(Run.DayTrades(), 0U);
}

TEST_F(DayRunTest, ANewLoginBringsTheDaySoFarAsADownload) {
  Begin();
  Play();
  Notes.clear();
  Run.LoginAgain();
  EXPECT_EQ(Notes, "30022 ");
  EXPECT_EQ(Run.DayTrades(), 0U);
  Run.LoginAgain();  // before anything of it was played
  EXPECT_EQ(Play(), "IBM:8111 IBM:8111 IBM:8111 8112 30020 ");
  Clock.Current += milliseconds(1000);
  EXPECT_EQ(Play(), "IBM:9101 ");
  Run.LoginAgain();
  EXPECT_EQ(Play(), "IBM:8111 IBM:8111 IBM:8111 IBM:8111 8112 30020 ");
  EXPECT_TRUE(Run.HasEnded());
  EXPECT_EQ(Run.DayTrades(), 4U);
  EXPECT_EQ(BadLines.Count(), 1U);  // however often the file was read
}

TEST(PlayStatus, TellsClockSpeedAndRate) {
  EXPECT_EQ(DayClockText(1381147199), "2013-10-07 11:59:59");
  EXPECT_EQ(DayClockText(-1), "1969-12-31 23:59:59");
  EXPECT_EQ(DayClockText(std::nullopt), "");
  EXPECT_EQ(SpeedText(60), "60x");
  EXPECT_EQ(SpeedText(0.5), "0.5x");
  EXPECT_EQ(SpeedText(std::nullopt), "full speed");
  TradeRate rate;
  PlayClock::Time now;
  for (std::uint64_t trades : {0, 100, 200, 300, 400, 500, 600, 700, 800, 900}) {
    rate.Tell(trades, now);
    now += milliseconds(250);
  }
  EXPECT_EQ(rate.PerSecond(), 400U);
  rate.Tell(5, now);  // another day
  EXPECT_EQ(rate.PerSecond(), 0U);
}

}  // namespace

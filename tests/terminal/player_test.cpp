#include "terminal/play/player.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "tests/terminal/test_files.h"

namespace {

using std::chrono::milliseconds;

// Notes what is sent, each with its time where that is asked for, and takes its time over it.
class PlayerTest : public testing::Test, protected MessageTarget, protected TradeListener {
 protected:
  bool Deliver(CQORPacketReader& message, const WireFrame& /*raw*/) override {
    if (message.MessageNumber == 9112) return false;
    Notes += std::to_string(message.MessageNumber) + (NotesTimes ? "@" + std::to_string(Clock.Ms()) : "") + " ";
    Clock.Current += Taken;
    return true;
  }
  void OnTradeSent(const TradePrint& print) override { Notes += print.SecurityID + std::string(":"); }

  std::string PlayFor(milliseconds time = milliseconds(1000)) {
    Notes.clear();
    const auto next = Run.PlayFor(time);
    WaitMs = next ? std::chrono::duration_cast<milliseconds>(*next - Clock.Current).count() : -1;
    return Notes;
  }
  // Four trades at seconds 1, 2, 4 and 14 with a bad line; the first two of them are download.
  void Begin() {
    const auto day = WriteDay({"00:00:01", "00:00:02", "25:00:00", "00:00:04", "00:00:14"});
    Input.emplace(RunFiles::OfDay(day), ParseLiveFrom("2"), BadLines);
    Run.Begin(*Input);
  }
  PlayCounts PlayWhole(const std::string& day, std::optional<double> speed) {
    NumberedDay messages(OpenMessageDay(WriteTestFile("day.bin", day), BadLines), {});
    NotesTimes = true;
    PlayProgress progress(Screen, Clock);
    const PlayCounts counts = DayPlayer(*this, Beat, Clock, progress, speed).Play(messages);
    progress.Finish();
    return counts;
  }

  TestClock Clock;
  RefreshBeat Beat{Clock};
  milliseconds Taken{1};
  bool NotesTimes = false;
  std::string Notes;
  std::int64_t WaitMs = 0;  // until there is more to send; -1 for nothing
  std::ostringstream Reports, Screen;
  BadLineReport BadLines{Reports};
  DayRun Run{*this, *this, Clock, 10};
  std::optional<DayInput> Input;
};

TEST_F(PlayerTest, SendsSlicesAtTheDaysPace) {
  Begin();
  EXPECT_EQ(StateText(Run, 0), "Download");
  EXPECT_EQ(PlayFor(), "IBM:8111 IBM:8111 8112 30020 IBM:9101 ");
  EXPECT_EQ(StateText(Run, 0), "Live, 10x");
  EXPECT_EQ(WaitMs, 999);  // ten seconds of the day, but for the millisecond that the last one took
  EXPECT_EQ(DayClockText(Run.DaySeconds()), "2013-10-07 00:00:04");
  EXPECT_EQ(PlayFor(), "");
  Clock.Current += milliseconds(499);
  EXPECT_EQ(DayClockText(Run.DaySeconds()), "2013-10-07 00:00:09");
  Run.SetSpeed(1);
  EXPECT_EQ(PlayFor(), "");
  EXPECT_EQ(WaitMs, 5000);
  Clock.Current += milliseconds(5000);
  EXPECT_EQ(PlayFor(), "IBM:9101 ");
  EXPECT_EQ(WaitMs, -1);
  EXPECT_EQ(StateText(Run, 1234), "Day played, 1,234 bad lines");
  EXPECT_EQ(Run.Counts().Messages, 6U);
  EXPECT_EQ(Run.Counts().Live, 2U);
}

TEST_F(PlayerTest, PauseHoldsLiveTradesOnly) {
  Begin();
  Run.Pause();
  EXPECT_EQ(PlayFor(), "IBM:8111 IBM:8111 8112 30020 ");
  EXPECT_EQ(StateText(Run, 0), "Paused");
  EXPECT_EQ(WaitMs, -1);
  Run.Resume();
  EXPECT_EQ(PlayFor(), "IBM:9101 ");
  Run.Pause();
  Clock.Current += milliseconds(5000);
  EXPECT_EQ(PlayFor(), "");
  Run.Resume();
  PlayFor();
  EXPECT_EQ(WaitMs, 999);
  Run.SetSpeed(std::nullopt);
  EXPECT_EQ(PlayFor(), "IBM:9101 ");
}

TEST_F(PlayerTest, EndsASliceAfterItsTime) {
  Begin();
  Taken = milliseconds(8);
  std::string day;
  for (int i = 0; i < 100; ++i) day += WireMessage(8111);
  Input.emplace(RunFiles::OfDay(WriteTestFile("day.bin", day)), std::nullopt, BadLines);
  Run.Begin(*Input);
  PlayFor(milliseconds(8));
  EXPECT_EQ(WaitMs, 0);
  EXPECT_EQ(Run.DayTrades(), 15U);  // the clock is read every 16 messages
}

TEST_F(PlayerTest, LoginBringsTheDaySoFarAsADownload) {
  Begin();
  PlayFor();
  Notes.clear();
  Run.LoginAgain();
  EXPECT_EQ(Notes, "30022 ");
  EXPECT_EQ(Run.DayTrades(), 0U);
  Run.LoginAgain();  // before anything of it was played
  EXPECT_EQ(PlayFor(), "IBM:8111 IBM:8111 IBM:8111 8112 30020 ");
  Clock.Current += milliseconds(1000);
  EXPECT_EQ(PlayFor(), "IBM:9101 ");
  Run.LoginAgain();
  EXPECT_EQ(PlayFor(), "IBM:8111 IBM:8111 IBM:8111 IBM:8111 8112 30020 ");
  EXPECT_TRUE(Run.HasEnded());
  EXPECT_EQ(Run.DayTrades(), 4U);
  EXPECT_EQ(BadLines.Count(), 1U);  // however often the file was read
  Run.Begin(*Input);                // a new begin forgets the login
  EXPECT_EQ(PlayFor(), "IBM:8111 IBM:8111 8112 30020 IBM:9101 ");
}

std::string PacedDay() {
  return WireMessage(8111, "20131007-08:00:00") + WireMessage(8111, "20131007-09:00:00") + WireMessage(8112) +
         WireMessage(9101, "20131007-10:00:00") + WireMessage(9101, "20131007-10:00:01") +
         WireMessage(9101, "20131007-10:00:03") + WireMessage(9101, "20131007-10:00:02") + WireMessage(9112) +
         WireMessage(9101, "20131007-10:00:03") + WireMessage(9101, "20131008-09:00:00") +
         WireMessage(9101, "20131008-09:00:01");
}

TEST_F(PlayerTest, WaitsForLiveTradesWithinADate) {
  const struct {
    std::optional<double> Speed;
    int TakenMs;  // by the plug-in, for each message
    const char* Sent;
  } cases[] = {
      {2, 0, "8111@0 8111@0 8112@0 30020@0 9101@0 9101@500 9101@1500 9101@1500 9101@2000 9101@2000 9101@2500 "},
      {std::nullopt, 0, "8111@0 8111@0 8112@0 30020@0 9101@0 9101@0 9101@0 9101@0 9101@0 9101@0 9101@0 "},
      // A slow plug-in does not stretch the gaps.
      {1, 400,
       "8111@0 8111@400 8112@800 30020@1200 9101@1600 9101@2600 9101@4600 9101@5000 9101@6000 9101@6400 9101@7400 "},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.Sent);
    Clock.Current = {};
    Notes.clear();
    Taken = milliseconds(row.TakenMs);
    const PlayCounts counts = PlayWhole(PacedDay(), row.Speed);
    EXPECT_EQ(Notes, row.Sent);
    EXPECT_EQ(counts.Messages, 11U);
    EXPECT_EQ(counts.Download, 2U);
    EXPECT_EQ(counts.Live, 7U);
    EXPECT_EQ(counts.NotAsked, 1U);
  }
}

TestClock* RefreshClock = nullptr;
std::string RefreshTimes;
void NoteRefresh() {
  RefreshTimes += std::to_string(RefreshClock->Ms()) + " ";
}

TEST_F(PlayerTest, CallsTheRefreshAtItsPeriod) {
  RefreshClock = &Clock;
  RefreshTimes.clear();
  Taken = milliseconds(100);
  Beat.Register({&NoteRefresh, milliseconds(250)});
  PlayWhole(PacedDay(), 1);
  EXPECT_EQ(RefreshTimes.substr(0, 30),
            "400 650 900 1150 1400 1650 190");  // 400: between messages, then while it waits
  EXPECT_EQ(Beat.Calls(), static_cast<std::uint64_t>(std::count(RefreshTimes.begin(), RefreshTimes.end(), ' ')));
  const std::string before = RefreshTimes;
  Beat.Register({});
  PlayWhole(PacedDay(), 1);
  EXPECT_EQ(RefreshTimes, before);
}

TEST_F(PlayerTest, TellsProgressTwiceASecondAfterTheFirst) {
  Taken = milliseconds(100);
  std::string day;
  for (int i = 0; i < 21; ++i) day += WireMessage(8111);
  PlayWhole(day, std::nullopt);
  EXPECT_EQ(Without(Screen.str(), " "), "10trades\r15trades\r20trades\r\r");
}

TEST(PlayReport, TellsClockSpeedAndRate) {
  EXPECT_EQ(DayClockText(1381147199), "2013-10-07 11:59:59");
  EXPECT_EQ(DayClockText(-1), "1969-12-31 23:59:59");
  EXPECT_EQ(DayClockText(std::nullopt), "");
  EXPECT_EQ(SpeedText(60), "60x");
  EXPECT_EQ(SpeedText(0.5), "0.5x");
  EXPECT_EQ(SpeedText(std::nullopt), "full speed");
  TradeRate rate;
  PlayClock::Time now;
  for (std::uint64_t trades = 0; trades <= 900; trades += 100) {
    rate.Tell(trades, now);
    now += milliseconds(250);
  }
  EXPECT_EQ(rate.PerSecond(), 400U);
  rate.Tell(5, now);  // another day
  EXPECT_EQ(rate.PerSecond(), 0U);
}

}  // namespace

#include "terminal/play/player.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "tests/terminal/test_files.h"

namespace {

using std::chrono::milliseconds;

// Stands still but for sleeps and for what a test adds.
class TestClock : public PlayClock {
 public:
  Time Now() override { return Current; }
  void SleepUntil(Time time) override { Current = std::max(Current, time); }
  std::string Elapsed() const {
    return std::to_string(std::chrono::duration_cast<milliseconds>(Current.time_since_epoch()).count());
  }
  Time Current;
};

TestClock* RefreshClock = nullptr;
std::string* RefreshTimes = nullptr;
void NoteRefresh() {
  *RefreshTimes += RefreshClock->Elapsed() + " ";
}

// Notes each number with the time at which it came, and takes its time over it.
class TestTarget : public MessageTarget {
 public:
  TestTarget(TestClock& clock, milliseconds taken) : Clock(clock), Taken(taken) {}
  bool Deliver(CQORPacketReader& message, const WireFrame& /*raw*/) override {
    if (message.MessageNumber == 9112) return false;
    Notes += std::to_string(message.MessageNumber) + "@" + Clock.Elapsed() + " ";
    Clock.Current += Taken;
    return true;
  }
  TestClock& Clock;
  milliseconds Taken;
  std::string Notes;
};

class DayPlayerTest : public testing::Test {
 protected:
  PlayCounts Play(const std::string& day, std::optional<double> speed, milliseconds taken = {}) {
    BadLineReport badLines(Screen);
    NumberedDay script(OpenMessageDay(WriteTestFile("day.bin", day), badLines), {});
    TestTarget target(Clock, taken);
    PlayProgress progress(Screen, Clock);
    const PlayCounts counts = DayPlayer(target, Beat, Clock, progress, speed).Play(script);
    progress.Finish();
    Notes = target.Notes;
    return counts;
  }
  void SetUp() override {
    RefreshClock = &Clock;
    RefreshTimes = &Refreshes;
  }

  TestClock Clock;
  RefreshBeat Beat{Clock};
  std::ostringstream Screen;
  std::string Notes;
  std::string Refreshes;
};

std::string PacedDay() {
  return WireMessage(8111, "20131007-08:00:00") + WireMessage(8111, "20131007-09:00:00") + WireMessage(8112) +
         WireMessage(9101, "20131007-10:00:00") + WireMessage(9101, "20131007-10:00:01") +
         WireMessage(9101, "20131007-10:00:03") + WireMessage(9101, "20131007-10:00:02") + WireMessage(9112) +
         WireMessage(9101, "20131007-10:00:03") + WireMessage(9101, "20131008-09:00:00") +
         WireMessage(9101, "20131008-09:00:01");
}

TEST_F(DayPlayerTest, WaitsForLiveTradesButNotOverADate) {
  const PlayCounts counts = Play(PacedDay(), 2);
  EXPECT_EQ(Notes, "8111@0 8111@0 8112@0 30020@0 9101@0 9101@500 9101@1500 9101@1500 9101@2000 9101@2000 9101@2500 ");
  EXPECT_EQ(counts.Messages, 11U);
  EXPECT_EQ(counts.Download, 2U);
  EXPECT_EQ(counts.Live, 7U);
  EXPECT_EQ(counts.NotAsked, 1U);
}

TEST_F(DayPlayerTest, NeverWaitsAtFullSpeed) {
  Play(PacedDay(), std::nullopt);
  EXPECT_EQ(Clock.Elapsed(), "0");
}

TEST_F(DayPlayerTest, ASlowPluginDoesNotStretchTheGaps) {
  Play(PacedDay(), 1, milliseconds(400));
  EXPECT_EQ(
      Notes,
      "8111@0 8111@400 8112@800 30020@1200 9101@1600 9101@2600 9101@4600 9101@5000 9101@6000 9101@6400 9101@7400 ");
}

TEST_F(DayPlayerTest, CallsTheRefreshAtItsPeriod) {
  Beat.Register(&NoteRefresh, milliseconds(250));
  Play(PacedDay(), 1, milliseconds(100));
  EXPECT_EQ(Refreshes.substr(0, 30), "400 650 900 1150 1400 1650 190");  // 400: between messages, then while it waits
  EXPECT_EQ(Beat.Calls(), static_cast<std::uint64_t>(std::count(Refreshes.begin(), Refreshes.end(), ' ')));
  const std::string before = Refreshes;
  Beat.Register(nullptr, milliseconds(0));
  Play(PacedDay(), 1);
  EXPECT_EQ(Refreshes, before);
}

TEST_F(DayPlayerTest, TellsProgressTwiceASecondAfterTheFirst) {
  std::string day;
  for (int i = 0; i < 21; ++i) day += WireMessage(8111);
  Play(day, std::nullopt, milliseconds(100));
  std::string lines = Screen.str();
  std::erase(lines, ' ');
  EXPECT_EQ(lines, "10trades\r15trades\r20trades\r\r");
}

}  // namespace

#include "terminal/play/player.h"

#include "tests/terminal/test_files.h"

namespace {

using std::chrono::milliseconds;

// Notes what is sent, each with its time where that is asked for, and takes its time over it.
class PlayerTest : public testing::Test, protected MessageTarget, protected TradeListener {
 protected:
  bool Deliver(CQORPacketReader& message, const RawMessage& /*raw*/) override {
    if (message.MessageNumber == 9112) return false;
    Notes += std::to_string(message.MessageNumber) + (NotesTimes ? "@" + std::to_string(Clock.Ms()) : "") + " ";
    Clock.Current += Taken;
    return true;
  }
  void OnTradeSent(const TradePrint& print) override { Notes += print.SecurityID + std::string(":"); }

  // What is sent after that time, and the milliseconds until there is more to send, if there will be.
  std::string PlayAfter(int ms = 0) {
    Notes.clear();
    Clock.Current += milliseconds(ms);
    if (const auto next = Run.PlayFor(milliseconds(1000)))
      Notes += std::to_string(std::chrono::duration_cast<milliseconds>(*next - Clock.Current).count());
    return Notes;
  }
  // Four trades at seconds 1, 2, 4 and 14 with a bad line; the first two of them are download.
  void Begin() {
    const auto day = WriteDay({"00:00:01", "00:00:02", "25:00:00", "00:00:04", "00:00:14"});
    Input.emplace(RunFiles::OfDay(day), ParseLiveFrom("2"), BadLines);
    Run.Begin(*Input);
  }
  static std::string Trades(int count) { return count == 0 ? "" : DayMessage(8111) + Trades(count - 1); }
  void PlayWhole(const std::string& day, std::optional<double> speed, int takenMs) {
    Clock.Current = {};
    Notes.clear();
    Taken = milliseconds(takenMs);
    NumberedDay messages(OpenMessageDay(WriteTestFile("day.bin", day), BadLines), {});
    NotesTimes = true;
    PlayProgress progress(Screen, Clock);
    DayPlayer(*this, Beat, Clock, progress, speed).Play(messages);
    progress.Finish();
  }

  TestClock Clock;
  RefreshBeat Beat{Clock};
  milliseconds Taken{1};
  bool NotesTimes = false;
  std::string Notes;
  std::ostringstream Screen;
  TestReport BadLines;
  DayRun Run{*this, *this, Clock, 10};
  std::optional<DayInput> Input;
};

TEST_F(PlayerTest, PlaysAtTheDaysPaceAndHoldsLiveTradesInAPause) {
  Begin();
  EXPECT_EQ(StateText(Run, 0), "Download");
  Run.Pause();
  EXPECT_EQ(PlayAfter(), "IBM:8111 IBM:8111 8112 30020 ");
  EXPECT_EQ(StateText(Run, 0), "Paused");
  Run.Resume();
  // Ten seconds of the day, but for the millisecond that the last one took.
  EXPECT_EQ(PlayAfter(), "IBM:9101 999");
  EXPECT_EQ(StateText(Run, 0) + DayClockText(Run.DaySeconds()), "Live, 10x2013-10-07 00:00:04");
  EXPECT_EQ(PlayAfter(499), "500");
  EXPECT_EQ(DayClockText(Run.DaySeconds()), "2013-10-07 00:00:09");
  Run.Pause();
  EXPECT_EQ(PlayAfter(5000), "");
  Run.Resume();
  EXPECT_EQ(PlayAfter(), "500");
  Run.SetSpeed(1);
  EXPECT_EQ(PlayAfter(), "5000");
  Run.SetSpeed(std::nullopt);
  EXPECT_EQ(PlayAfter(), "IBM:9101 ");
  EXPECT_EQ(StateText(Run, 1234), "Day played, 1,234 bad lines");
}

TEST_F(PlayerTest, EndsASliceAfterItsTime) {
  Begin();
  Taken = milliseconds(8);
  Input.emplace(RunFiles::OfDay(WriteTestFile("day.bin", Trades(100))), std::nullopt, BadLines);
  Run.Begin(*Input);
  EXPECT_EQ(Run.PlayFor(milliseconds(8)), Clock.Current);
  EXPECT_EQ(Run.DayTrades(), 15U);  // the clock is read every 16 messages
}

TEST_F(PlayerTest, LoginBringsTheDaySoFarAsADownload) {
  Begin();
  PlayAfter();
  Run.LoginAgain();
  EXPECT_TRUE(Notes.ends_with(" 99930022 "));
  EXPECT_EQ(Run.DayTrades(), 0U);
  Run.LoginAgain();  // before anything of it was played
  EXPECT_EQ(PlayAfter(), "IBM:8111 IBM:8111 IBM:8111 8112 30020 992");
  EXPECT_EQ(PlayAfter(1000), "IBM:9101 ");
  Run.LoginAgain();
  EXPECT_EQ(PlayAfter(), "IBM:8111 IBM:8111 IBM:8111 IBM:8111 8112 30020 ");
  EXPECT_TRUE(Run.HasEnded());
  EXPECT_EQ(BadLines.Count(), 1U);  // however often the file was read
  EXPECT_EQ(std::pair(Run.DayTrades(), Run.Counts().Messages), std::pair(std::uint64_t{4}, std::uint64_t{20}));
  Run.Begin(*Input);  // a new begin forgets the login
  EXPECT_EQ(PlayAfter(), "IBM:8111 IBM:8111 8112 30020 IBM:9101 999");
  if (kWindows) return;  // an open file stays there
  std::filesystem::remove(TestFolder() / "day.csv");
  EXPECT_THROW(Run.LoginAgain(), TerminalError);
  EXPECT_EQ(PlayAfter(), "");
}

std::string PacedDay() {
  std::string day = DayMessage(8111, "20131007-08:00:00") + DayMessage(8111, "20131007-09:00:00") + DayMessage(8112);
  for (const char* time :
       {"07-10:00:00", "07-10:00:01", "07-10:00:03", "07-10:00:02", "", "07-10:00:03", "08-09:00:00", "08-09:00:01"})
    day += *time == '\0' ? DayMessage(9112) : DayMessage(9101, std::string("201310") + time);
  return day;
}

TEST_F(PlayerTest, WaitsForLiveTradesWithinADate) {
  // Speed, milliseconds that the plug-in takes for each message, what is sent.
  const std::tuple<std::optional<double>, int, const char*> cases[] = {
      {2, 0, "8111@0 8111@0 8112@0 30020@0 9101@0 9101@500 9101@1500 9101@1500 9101@2000 9101@2000 9101@2500 "},
      {std::nullopt, 0, "8111@0 8111@0 8112@0 30020@0 9101@0 9101@0 9101@0 9101@0 9101@0 9101@0 9101@0 "},
      // A slow plug-in does not stretch the gaps.
      {1, 400,
       "8111@0 8111@400 8112@800 30020@1200 9101@1600 9101@2600 9101@4600 9101@5000 9101@6000 9101@6400 9101@7400 "},
  };
  for (const auto& [speed, takenMs, sent] : cases) {
    PlayWhole(PacedDay(), speed, takenMs);
    EXPECT_EQ(Notes, sent);
  }
}

// Notes all calls.
class TestListener : public TradeListener {
 public:
  explicit TestListener(std::string& notes) : Notes(notes) {}
  void OnTradeSent(const TradePrint& print) override { Notes += print.ExchangeTradeID + std::string(" "); }
  void OnAmendmentSent(CQORPacketReader& message) override {
    TradeAmendment amendment;
    ReadTradeAmendment(message, amendment);
    Notes += "amended " + std::to_string(amendment.NewQuantity) + " ";
  }
  void OnDownloadEndSent() override { Notes += "end "; }
  void OnStartOver() override { Notes += "over "; }

 private:
  std::string& Notes;
};

TEST_F(PlayerTest, TellsAllListenersOfTradesAmendmentsAndLogins) {
  const std::string day = WireMessage(8111, WireText(55101, "A")) + DayMessage(8112) +
                          WireMessage(9101, WireText(55101, "B")) + WireMessage(9112, WireU32(20103, 7)) +
                          DayMessage(30022) + WireMessage(8111, WireText(55101, "C"));
  WriteDay({});  // securities and desk
  std::string first, second;
  TestListener one(first), two(second);
  TradeListeners both;
  both.Add(one);
  both.Add(two);
  DayRun run(*this, both, Clock, std::nullopt);
  Input.emplace(RunFiles::OfDay(WriteTestFile("day.bin", day)), std::nullopt, BadLines);
  run.Begin(*Input);
  run.PlayFor(milliseconds(1000));
  run.LoginAgain();
  EXPECT_EQ(first, "over A end B amended 7 over C end over ");
  EXPECT_EQ(second, first);
  first.clear();
  NumberedDay messages(OpenMessageDay(TestFolder() / "day.bin", BadLines), {});
  PlayProgress progress(Screen, Clock);
  DayPlayer(*this, Beat, Clock, progress, std::nullopt, &one).Play(messages);
  EXPECT_EQ(first, "A end B amended 7 over C end ");
}

TestClock* RefreshClock = nullptr;
std::string RefreshTimes;
void NoteRefresh() {
  RefreshTimes += std::to_string(RefreshClock->Ms()) + " ";
}

TEST_F(PlayerTest, CallsTheRefreshAtItsPeriod) {
  RefreshClock = &Clock;
  RefreshTimes.clear();
  Beat.Register({&NoteRefresh, milliseconds(250)});
  PlayWhole(PacedDay(), 1, 100);
  // At 400 between messages, then while it waits.
  EXPECT_EQ(RefreshTimes.substr(0, 30), "400 650 900 1150 1400 1650 190");
  EXPECT_EQ(Beat.Calls(), static_cast<std::uint64_t>(std::count(RefreshTimes.begin(), RefreshTimes.end(), ' ')));
  RefreshTimes.clear();
  Beat.Register({});
  PlayWhole(PacedDay(), 1, 100);
  EXPECT_EQ(RefreshTimes, "");
}

TEST_F(PlayerTest, TellsProgressTwiceASecondAfterTheFirst) {
  PlayWhole(Trades(21), std::nullopt, 100);
  const std::string blanks(31, ' ');
  EXPECT_EQ(Screen.str(),
            "10 trades" + blanks + "\r15 trades" + blanks + "\r20 trades" + blanks + "\r" + blanks + "         \r");
}

TEST(PlayReport, TellsClockSpeedAndRate) {
  EXPECT_EQ(DayClockText(1381147199) + DayClockText(std::nullopt), "2013-10-07 11:59:59");
  EXPECT_EQ(DayClockText(-1), "1969-12-31 23:59:59");
  EXPECT_EQ(SpeedText(60) + SpeedText(0.5) + SpeedText(std::nullopt), "60x0.5xfull speed");
  TradeRate rate;
  PlayClock::Time now;
  for (std::uint64_t trades = 0; trades <= 900; trades += 100) rate.Tell(trades, now += milliseconds(250));
  EXPECT_EQ(rate.PerSecond(), 400U);
  rate.Tell(5, now + milliseconds(250));  // another day
  EXPECT_EQ(rate.PerSecond(), 0U);
}

}  // namespace

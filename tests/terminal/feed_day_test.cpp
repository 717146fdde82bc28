// Trades of a feed as a day: download, live trades, corrections, what the feed tells.
#include "platform/locale.h"
#include "terminal/play/player.h"
#include "terminal/program/log_recording.h"
#include "terminal/watch/market_watch.h"
#include "tests/terminal/fake_feed.h"

namespace {

using std::chrono::milliseconds;

// Notes what is sent: number and trade.
class FeedDayTest : public testing::Test, protected MessageTarget {
 protected:
  bool Deliver(CQORPacketReader& message, const RawMessage& /*raw*/) override {
    const std::uint32_t trade = ReadTradeNumber(message);
    Notes += std::to_string(message.MessageNumber) + (trade == 0 ? "" : "/" + std::to_string(trade)) + " ";
    Clock.Current += Taken;
    return true;
  }
  // What is sent after that time, and in how many milliseconds there is more to do.
  std::string PlayAfter(int ms = 0) {
    Notes.clear();
    Clock.Current += milliseconds(ms);
    if (const auto next = Run.PlayFor(milliseconds(5000)))
      Notes += std::to_string(std::chrono::duration_cast<milliseconds>(*next - Clock.Current).count());
    return Notes;
  }
  void Begin() { Run.Begin(Input); }

  FeedPlan Plan;
  TestClock Clock;
  milliseconds Taken{0};
  std::string Notes;
  TestReport BadLines;
  RunFiles Files() const {
    RunFiles files = RunFiles::OfDay("nats://desk/trades.20131007");
    files.Securities = WriteSecurities();
    return files;
  }
  DayInput Input{Files(), std::nullopt, BadLines, OpenFake(Plan)};
  MarketWatch Watch{Input.Securities};
  DayRun Run{*this, Watch, Clock, 10};
};

TEST_F(FeedDayTest, DownloadsUntilCaughtUpAndSendsLiveTradesAtOnce) {
  Plan.Parts = {FeedTrade(1) + FeedTrade(2), FeedTrade(3)};
  Plan.CaughtUpAfter = 3;
  Begin();
  EXPECT_EQ(PlayAfter(), "8111/1 8111/2 8111/3 10");
  EXPECT_FALSE(Run.IsLive());
  Run.Pause();
  EXPECT_EQ(PlayAfter(), "10") << "a download goes on in a pause";
  Plan.Parts.push_back(FeedTrade(4));
  EXPECT_EQ(PlayAfter(), "8111/4 8112 30020 ") << "live, and held by the pause";
  Run.Resume();
  EXPECT_EQ(PlayAfter(), "10");
  Plan.State.Phase = FeedPhase::Lost;
  EXPECT_EQ(PlayAfter(), "10");
  Plan.State.Phase = FeedPhase::Downloading;
  Plan.Parts.push_back(FeedTrade(5) + FeedTrade(9));
  EXPECT_EQ(PlayAfter(), "9101/5 9101/9 10") << "no second 8112, and no pace of the day";
  Plan.State.Phase = FeedPhase::Ended;
  EXPECT_EQ(PlayAfter(), "");
  EXPECT_TRUE(Run.HasEnded());
}

TEST_F(FeedDayTest, EmptyLogIsLiveAtOnceAndALoginReadsItAgain) {
  Begin();
  EXPECT_EQ(PlayAfter(), "8112 30020 10");
  Plan.Parts = {FeedTrade(1), FeedTrade(2)};
  EXPECT_EQ(PlayAfter(), "9101/1 9101/2 10");
  Plan.CaughtUpAfter = 2;
  Run.LoginAgain();
  EXPECT_EQ(PlayAfter(), "8111/1 8111/2 8112 30020 10");
  EXPECT_EQ(Run.DayTrades(), 2U);
  Input.Close();
  EXPECT_EQ(Plan.Made, 2);
}

TEST_F(FeedDayTest, SendsOneRefreshForManyCorrections) {
  Plan.Parts = {FeedTrade(1) + FeedTrade(2), FeedTrade(3) + FeedTrade(1, 10, 6) + FeedTrade(4) + FeedTrade(2, 0, 7)};
  Plan.CaughtUpAfter = 1;
  Begin();
  EXPECT_EQ(PlayAfter(), "8111/1 8111/2 8112 30020 9101/3 9101/1 9101/4 9101/2 30020 10");
  EXPECT_EQ(PlayAfter(), "10") << "told already";
  Taken = milliseconds(400);
  Plan.Parts.push_back(FeedTrade(3) + FeedTrade(5) + FeedTrade(6) + FeedTrade(7) + FeedTrade(8));
  EXPECT_EQ(PlayAfter(), "9101/3 9101/5 9101/6 9101/7 30020 9101/8 10") << "a second after the correction";
}

TEST_F(FeedDayTest, MarketWatchCountsEachTradeOnce) {
  Plan.Parts = {FeedTrade(1, 10, 5) + FeedTrade(2, 20, 6)};
  Begin();
  const auto row = [this] {
    PlayAfter();
    constexpr std::size_t kLastPrice = 5;
    const WatchRow& ibm = Watch.At(*Watch.Find("IBM"));
    return std::to_string(ibm.Trades) + " " + std::to_string(ibm.Quantity) + " " +
           WideToCodePage(Watch.Text(*Watch.Find("IBM"), kLastPrice));
  };
  EXPECT_EQ(row(), "2 30 6.00");
  const std::tuple<std::uint32_t, std::uint32_t, double, const char*> replaced[] = {
      {1, 15, 9, "2 35 6.00"},  // of an earlier trade: the price stays
      {2, 20, 6.5, "2 35 6.50"},
      {2, 0, 7, "1 15 6.50"},
      {2, 0, 7, "1 15 6.50"},
      {2, 4, 8, "2 19 8.00"}};
  for (const auto& [number, quantity, price, told] : replaced) {
    Plan.Parts.push_back(FeedTrade(number, quantity, price));
    EXPECT_EQ(row(), told);
  }
}

TEST_F(FeedDayTest, LeavesOutWhatIsNoTrade) {
  std::string wild = FeedTrade(1);
  wild[8] = '\xFF';  // longer than what came
  Plan.Parts = {FeedTrade(1) + WireMessage(30021, "") + WireMessage(32003, "") + FeedTrade(2), wild, "x", FeedTrade(3)};
  Begin();
  EXPECT_EQ(PlayAfter(), "8112 30020 9101/1 9101/2 9101/3 10");
  std::string told;
  for (const FeedNote& note : Input.TakeNews()) told += (note.IsAlarm ? "! " : "") + note.Text + "|";
  EXPECT_EQ(told, "! damage: message 30021 is no trade|! damage: message 32003 is no trade|! damage: " +
                      std::to_string(wild.size()) +
                      " bytes that are no whole message|! damage: 1 bytes that are no whole message|Live, reading|");
  Plan.Alarms = {{AlarmKind::Gap, "5 to 7"}};
  Plan.State = {FeedPhase::Lost, "no answer", 0};
  EXPECT_EQ(Input.TakeNews().size(), 2U);
  EXPECT_EQ(Input.TakeNews().size(), 0U) << "each once";
  EXPECT_EQ(Input.FeedText(), "Lost, 5 alarms: no answer; connecting again");
  EXPECT_EQ(FeedStateText({FeedPhase::Connecting, "no such log", 0}, "x", 0), "Not connected yet: no such log");
  Plan.State = {FeedPhase::Downloading, "reading", 1200};
  EXPECT_EQ(FeedStateText(Plan.State, "trades.20131007", 0), "Downloading, 1,200 behind");
  EXPECT_EQ(FeedStateText({FeedPhase::Live, "reading", 0}, "trades.20131007", 1), "Live, 1 alarm, trades.20131007");
}

TEST(FeedNews, TellsAFloodByItsCount) {
  FeedPlan plan;
  FakeFeed feed(plan);
  FeedNews news;
  for (std::size_t i = 0; i < FeedNews::kMostNotes + 1500; ++i) news.Add({AlarmKind::Damage, "x"});
  const std::vector<FeedNote> notes = news.Take(feed);
  ASSERT_EQ(notes.size(), FeedNews::kMostNotes + 2);
  EXPECT_EQ(notes[FeedNews::kMostNotes].Text, "1,500 more alarms");
  EXPECT_EQ(news.Take(feed).size(), 0U);
}

TEST(NumberRanges, KnowWhatCame) {
  NumberRanges ranges;
  std::string added;
  for (const std::uint32_t number : {5U, 6U, 4U, 8U, 5U, 7U, 4U, 8U, 1U, 4294967295U, 4294967295U, 2U, 3U, 3U, 9U})
    added += ranges.Add(number) ? '1' : '0';
  EXPECT_EQ(added, "111101001101101");
}

TEST(DaySpec, ReadsWhatAUserWrites) {
  const auto here = std::filesystem::current_path();
  using enum DaySpec::Kind;
  const std::tuple<const char*, DaySpec::Kind, std::filesystem::path, std::string> cases[] = {
      {"nats://a:1,b/trades.20260301", Log, {}, "trades.20260301"},
      {"tls://a/x.20260301", Log, {}, "x.20260301"},
      {"fix:desk.cfg", Fix, here / "desk.cfg", "desk.cfg"},
      {"day.csv", File, here / "day.csv", "day.csv"},
      {"nats:/a", File, here / "nats:/a", "a"}};
  for (const auto& [given, kind, file, name] : cases) {
    SCOPED_TRACE(given);
    const DaySpec day(given, "access");
    EXPECT_TRUE(day.What == kind && day.File == file && day.Name() == name);
    EXPECT_EQ(day.Access, kind == Log ? here / "access" : std::filesystem::path());
    EXPECT_EQ(DaySpec(day.Given(), "access"), day);
  }
}

// A log that fails once, before or behind what it takes.
struct FakeLog : BatchTarget {
  std::uint64_t Connect() override { return Count; }
  void Publish(std::uint64_t before, std::uint32_t count, std::span<const std::uint8_t> messages) override {
    const int turn = ++Calls;
    if (turn == FailsBefore) throw FeedError("no answer");
    EXPECT_EQ(before, Count);
    Count += count;
    Bytes.append(messages.begin(), messages.end());
    if (turn == FailsBehind) throw FeedError("no answer");
  }
  std::uint64_t Count = 0;
  int Calls = 0, FailsBefore = 0, FailsBehind = 0;
  std::string Bytes;
};

TEST(LogRecording, PublishesEachTradeOnceAndGoesOn) {
  TestReport badLines;
  CQORPacketWriter small(kModeCompressed);
  small.AddU16(10002, 9101);
  small.AddU32(20008, 8);
  small.Finish();
  const std::string compressed(reinterpret_cast<const char*>(small.GetData()), small.GetSize());
  const auto file =
      WriteTestFile("day.bin", WireMessage(8111, WireU32(20008, 7)) + DayMessage(9112) + compressed + FeedTrade(7));
  const std::string all = WireMessage(9101, WireU32(20008, 7)) + WireMessage(9101, WireU32(20008, 8)) + FeedTrade(7);
  const auto record = [&](FakeLog& log) {
    NumberedDay script(OpenMessageDay(file, badLines), {LiveFrom::Kind::Count, 0});
    return RecordedText(RecordTradesInBatches(script, log));
  };
  for (const auto& [before, behind] : {std::pair(0, 0), {1, 0}, {0, 1}}) {
    FakeLog log;
    log.FailsBefore = before;
    log.FailsBehind = behind;
    EXPECT_EQ(record(log), "3 trades; other messages left out: 1");
    EXPECT_EQ(log.Bytes, all);
    EXPECT_EQ(record(log), "3 trades, 3 of them were there; other messages left out: 1");
  }
  FakeLog interrupted;
  interrupted.Count = 2;
  EXPECT_EQ(record(interrupted), "3 trades, 2 of them were there; other messages left out: 1");
  EXPECT_EQ(interrupted.Bytes, FeedTrade(7));
}

}  // namespace

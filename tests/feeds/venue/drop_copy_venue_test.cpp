// A drop copy against a venue with faults: whatever happens on the way, every trade comes out once.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <mutex>

#include "feeds/drop_copy/drop_copy.h"
#include "tests/feeds/venue/session_times.h"
#include "tests/feeds/venue/venue_run.h"
#include "tests/support/own_folder.h"

namespace {

class Recorder : public DropCopyEvents {
 public:
  void OnState(bool /*loggedOn*/, const std::string& /*text*/) override {}
  void OnKept() override {}
  void OnNewDay(const std::filesystem::path& /*journal*/) override {}
  void OnAlarm(const Alarm& alarm) override {
    const std::lock_guard guard(Lock);
    ++Alarms[alarm.Kind];
    Texts += std::string(NameOf(alarm.Kind)) + ": " + alarm.Text + "\n";
  }
  bool Has(AlarmKind kind) {
    const std::lock_guard guard(Lock);
    return Alarms.count(kind) > 0;
  }
  std::string AllTexts() {
    const std::lock_guard guard(Lock);
    return Texts;
  }

 private:
  std::mutex Lock;
  std::map<AlarmKind, int> Alarms;
  std::string Texts;
};

constexpr AlarmKind kCut = AlarmKind::Disconnected;
constexpr AlarmKind kGap = AlarmKind::Gap;
constexpr AlarmKind kRefused = AlarmKind::RefusedMessage;

struct FaultCase {
  const char* Name;
  const char* Faults;
  std::vector<AlarmKind> Alarms;  // that must come
  std::uint64_t Changes = 0;      // corrections and busts
  int HeartbeatSeconds = 30;
  const char* Version = "FIX.4.4";
  bool Capture = false;
};

FeedSettings SettingsOf(const FaultCase& given, int port, const std::filesystem::path& folder) {
  FeedSettings settings;
  settings.Session.BeginString = given.Version;
  settings.Session.SenderCompID = "DESK";
  settings.Session.TargetCompID = "VENUE";
  settings.Session.Host = "127.0.0.1";
  settings.Session.Port = port;
  settings.Session.HeartbeatSeconds = given.HeartbeatSeconds;
  settings.Session.ReconnectSeconds = 1;
  settings.Session.StartTime = settings.Session.EndTime = FarFromNow();
  settings.JournalFolder = folder;
  return settings;
}

// A venue with its faults, and the drop copy that takes its trades.
class Session {
 public:
  Session(const FaultCase& given, const std::filesystem::path& folder)
      : Given(given),
        Journals(folder / "journal"),
        Venue(folder, {kTrades, given.Faults, {.Capture = given.Capture}, {}}),
        Copy(std::make_unique<DropCopy>(SettingsOf(given, Venue.Port(), Journals), Events)) {
    Copy->Start();
  }
  void Check() {
    const bool ended = Venue.WaitForEnd();
    Copy.reset();
    ASSERT_TRUE(ended) << Venue.Notices() << Events.AllTexts();
    const JournalTrades kept = ReadJournals(Journals);
    EXPECT_EQ(FirstDifference(kept.Last, Venue.ExpectedTrades()), "") << Events.AllTexts() << kept.AlarmTexts;
    EXPECT_EQ(kept.Messages, kTrades + Given.Changes);
    EXPECT_EQ(kept.Reports, kTrades + Given.Changes);
    CheckAlarms(kept);
  }

 private:
  static constexpr std::uint64_t kTrades = 300;

  bool Wants(AlarmKind kind) const {
    return std::find(Given.Alarms.begin(), Given.Alarms.end(), kind) != Given.Alarms.end();
  }
  void CheckAlarms(const JournalTrades& kept) {
    // A wrong CompID is told as such by the engine, and as refused by the journal.
    for (const AlarmKind kind : Given.Alarms)
      EXPECT_TRUE(Events.Has(kind) || (kind == kRefused && Wants(AlarmKind::WrongCompId))) << NameOf(kind) << "\n"
                                                                                           << Events.AllTexts();
    EXPECT_EQ(kept.Alarms.count(kRefused), Wants(kRefused) ? 1U : 0U);
    EXPECT_EQ(kept.Alarms.size(), kept.Alarms.count(kRefused)) << kept.AlarmTexts;
  }

  const FaultCase& Given;
  const std::filesystem::path Journals;
  VenueRun Venue;
  Recorder Events;
  std::unique_ptr<DropCopy> Copy;
};

constexpr const char* kSomeFaults = "after 100 garble\nafter 150 correct\nafter 160 bust";

const FaultCase kCases[] = {
    {"None", "", {}},
    {"Disconnect", "after 100 disconnect\nafter 110 disconnect\nafter 111 disconnect", {kCut}},
    {"Logout", "after 100 logout", {kCut}},
    {"Silence", "after 100 silence", {kCut}, 0, 1},
    {"Garble", "after 100 garble\nafter 250 garble", {kGap, kRefused}},
    {"GarbledLast", "after 299 garble", {kGap, kRefused}},
    {"BadLength", "after 100 bad-length\nafter 200 bad-length 100000", {kGap, kRefused}, 0, 1},
    {"Endless", "after 100 endless 8", {kCut}},
    {"WrongNumber", "after 100 wrong-number +5\nafter 290 wrong-number 20", {kGap}},
    {"NumberTooLow", "after 100 number-too-low", {kCut}},
    {"ResetUp", "after 100 reset-up 1000", {AlarmKind::NumberReset}},
    {"WrongCompId", "after 100 wrong-comp-id", {AlarmKind::WrongCompId, kRefused}},
    {"Duplicate", "after 100 duplicate 50", {}},
    {"Reset", "after 100 reset", {AlarmKind::NumberReset}},
    {"Split", "after 100 split 1\nafter 101 split 7", {}},
    {"Join", "after 100 join 50", {}},
    {"Changes", "after 100 correct\nafter 150 bust\nafter 200 correct\nafter 200 disconnect", {}, 3},
    {"EmptyField", "after 100 empty-field", {}},
    {"TwoParties", "after 100 two-parties", {}},
    {"Version42", kSomeFaults, {kGap, kRefused}, 2, 30, "FIX.4.2"},
    {"VersionT11", kSomeFaults, {kGap, kRefused}, 2, 30, "FIXT.1.1"},
    {"Capture", "after 100 two-parties\nafter 150 correct\nafter 160 bust", {}, 2, 30, "FIX.4.4", true},
};

class DropCopyVenue : public OwnFolder {};

// All at once, as each waits for its connections most of the time.
TEST_F(DropCopyVenue, EveryTradeIsKeptOnce) {
  std::vector<std::unique_ptr<Session>> sessions;
  for (const FaultCase& given : kCases) {
    const std::filesystem::path folder = Folder / given.Name;
    std::filesystem::create_directories(folder / "journal");
    sessions.push_back(std::make_unique<Session>(given, folder));
  }
  for (std::size_t i = 0; i < sessions.size(); ++i) {
    SCOPED_TRACE(kCases[i].Name);
    sessions[i]->Check();
  }
}

}  // namespace

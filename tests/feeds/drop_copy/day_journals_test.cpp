#include "feeds/drop_copy/day_journals.h"

#include <sys/resource.h>

#include "feeds/journal/journal_reader.h"
#include "tests/support/own_folder.h"

namespace {

class Listener : public DropCopyEvents {
 public:
  void OnState(bool, const std::string&) override {}
  void OnKept() override { ++Kept; }
  void OnNewDay(const std::filesystem::path& journal) override { Days.push_back(journal.filename().string()); }
  void OnAlarm(const Alarm& alarm) override { Alarms.push_back(alarm.Kind); }
  int Kept = 0;
  std::vector<std::string> Days;
  std::vector<AlarmKind> Alarms;
};

class DayJournalsTest : public OwnFolder {
 protected:
  DayJournalsTest() {
    Settings.Session.BeginString = "FIX.4.4";
    Settings.Session.SenderCompID = "ME";
    Settings.Session.TargetCompID = "YOU";
    Settings.JournalFolder = Folder / "journal";
  }
  // A week that begins with today.
  void MakeWeekly() {
    const char* const days[] = {"thursday", "friday", "saturday", "sunday", "monday", "tuesday", "wednesday"};
    Settings.Session.StartDay = Settings.Session.EndDay = days[Now / kSecondsOfDay % 7];
  }
  std::unique_ptr<DayJournals> Open() {
    return std::make_unique<DayJournals>(Settings, Events, [this] { return Now; });
  }
  // Each record as its kind and text.
  static std::string Records(const std::filesystem::path& file) {
    JournalReader reader(file);
    JournalRecord record;
    std::string all;
    while (reader.Next(record)) all += std::to_string(static_cast<int>(record.Kind)) + std::string(record.Text) + ' ';
    return all;
  }

  // The journal has the machine's time as the creation of its numbers.
  std::int64_t Now = std::time(nullptr);
  FeedSettings Settings;
  Listener Events;
};

const std::string kTrade = "trade";

TEST_F(DayJournalsTest, KeepsNumbersWithTexts) {
  auto days = Open();
  EXPECT_TRUE(days->Keep(2, 1, nullptr, false));
  EXPECT_TRUE(days->Keep(2, 2, &kTrade, false));
  EXPECT_TRUE(days->Keep(2, 3, &kTrade, true));
  EXPECT_EQ(Events.Kept, 3);
  const auto file = days->File();
  days.reset();
  EXPECT_EQ(Records(file), "3 1trade 2trade ");
  days = Open();
  EXPECT_EQ(days->File(), file);
  EXPECT_EQ(days->NextSender(), 2u);
  EXPECT_EQ(days->NextTarget(), 3u);
  EXPECT_EQ(Events.Alarms, std::vector<AlarmKind>());
}

TEST_F(DayJournalsTest, ResetsBeginADayOrStayInIt) {
  auto days = Open();
  EXPECT_TRUE(days->Keep(3, 5, &kTrade, false));
  const auto first = days->File();
  EXPECT_TRUE(days->Reset());
  EXPECT_EQ(days->File(), first);
  EXPECT_EQ(Events.Alarms, std::vector{AlarmKind::NumberReset});
  EXPECT_TRUE(days->Reset());  // nothing had come
  EXPECT_EQ(Events.Alarms.size(), 1u);
  EXPECT_EQ(Records(first), "1trade 4 4 ");

  EXPECT_TRUE(days->Keep(4, 9, nullptr, false));
  Now += kSecondsOfDay;
  EXPECT_TRUE(days->Keep(5, 9, nullptr, false));  // the logout
  EXPECT_EQ(days->File(), first);
  EXPECT_TRUE(days->Reset());
  EXPECT_NE(days->File(), first);
  EXPECT_EQ(Events.Days, std::vector{days->File().filename().string()});
  EXPECT_EQ(days->NextSender() + days->NextTarget(), 2u);
  EXPECT_EQ(Events.Alarms.size(), 1u);
}

TEST_F(DayJournalsTest, CarriesNumbersOverTheDaysOfAWeek) {
  MakeWeekly();
  auto days = Open();
  EXPECT_TRUE(days->Keep(3, 5, &kTrade, false));
  const auto first = days->File();
  Now += kSecondsOfDay;
  EXPECT_TRUE(days->Keep(3, 6, &kTrade, false));
  EXPECT_NE(days->File(), first);
  EXPECT_EQ(Records(days->File()), "3 1trade ");
  const auto second = days->File();
  days.reset();
  Now += 2 * kSecondsOfDay;  // was off for a day
  days = Open();
  EXPECT_NE(days->File(), second);
  EXPECT_EQ(days->NextSender(), 3u);
  EXPECT_EQ(days->NextTarget(), 6u);
  EXPECT_EQ(Records(days->File()), "3 ");
}

TEST_F(DayJournalsTest, WaitsForRoom) {
  auto days = Open();
  EXPECT_TRUE(days->Keep(2, 2, &kTrade, false));
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  const rlimit full{std::filesystem::file_size(days->File()), before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &full);
  for (int i = 0; i < 2; ++i) EXPECT_FALSE(days->Keep(2, 3, &kTrade, false));
  EXPECT_FALSE(days->Reset());
  Now += kSecondsOfDay;
  const rlimit none{0, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &none);
  EXPECT_FALSE(days->Reset());
  setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_EQ(Events.Alarms, std::vector{AlarmKind::Disk});
  EXPECT_EQ(days->NextTarget(), 2u);
  EXPECT_TRUE(days->Reset());
  EXPECT_TRUE(days->Keep(2, 2, &kTrade, false));
  EXPECT_EQ(Records(days->File()), "1trade ");
}

TEST_F(DayJournalsTest, KeepsTheBeginOfWhatIsTooLong) {
  auto days = Open();
  const std::string endless(kLargestJournalText + 1, 'x');
  EXPECT_TRUE(days->Keep(1, 2, &endless, false));
  EXPECT_EQ(Records(days->File()), "2" + endless.substr(1) + " ");
  EXPECT_EQ(Events.Alarms, std::vector{AlarmKind::RefusedMessage});
}

TEST_F(DayJournalsTest, IsHeldByOneProcess) {
  const auto days = Open();
  EXPECT_THROW(Open(), FeedError);
}

}  // namespace

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "feeds/drop_copy/drop_copy.h"
#include "feeds/journal/journal_day.h"
#include "feeds/live/fix_feed.h"
#include "feeds/settings/feed_settings.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kUntilNextTry{1};
constexpr std::chrono::seconds kLongestLogon{3};  // what comes later is live
constexpr std::size_t kMostAlarms = 200;
// A call maps so much: a millisecond or two.
constexpr std::size_t kMostBytes = 64 * 1024;

// Runs the session on a thread of its own, as its begin and end wait: the begin for the journal, which another session
// may still have, the end for the logout.
class FixSession : private DropCopyEvents {
 public:
  struct Condition {
    std::filesystem::path Journal;  // empty until there is one
    bool LoggedOn = false;
    bool WasLoggedOn = false;
    std::string Text;
    Clock::time_point Begun;
  };

  explicit FixSession(FeedSettings settings) : Settings(std::move(settings)), Thread([this] { Run(); }) {}
  ~FixSession() override {
    {
      const std::lock_guard lock(Lock);
      Stopping = true;
    }
    Wake.notify_all();
    Thread.join();
  }
  FixSession(const FixSession&) = delete;
  FixSession& operator=(const FixSession&) = delete;

  const MappingChoices& Mapping() const noexcept { return Settings.Mapping; }
  Condition Now() const {
    const std::lock_guard lock(Lock);
    return Told;
  }
  std::vector<Alarm> TakeAlarms() {
    const std::lock_guard lock(Lock);
    return std::exchange(Alarms, {});
  }

 private:
  void Run();
  bool RunOnce();
  bool StopsWithin(std::chrono::seconds time);

  void OnState(bool loggedOn, const std::string& text) override;
  void OnKept() override {}
  void OnNewDay(const std::filesystem::path& journal) override;
  void OnAlarm(const Alarm& alarm) override;

  const FeedSettings Settings;
  mutable std::mutex Lock;
  std::condition_variable Wake;
  bool Stopping = false;
  Condition Told;
  std::vector<Alarm> Alarms;
  std::thread Thread;  // begins last
};

void FixSession::Run() {
  while (!RunOnce()) {
  }
}

// False to try again.
bool FixSession::RunOnce() {
  try {
    DropCopy session(Settings, *this);
    {
      const std::lock_guard lock(Lock);
      Told.Journal = session.JournalFile();
      Told.Text.clear();
      Told.Begun = Clock::now();
    }
    session.Start();
    {
      std::unique_lock lock(Lock);
      Wake.wait(lock, [this] { return Stopping; });
    }
    session.Stop();
    return true;
  } catch (const std::exception& failure) {
    const std::lock_guard lock(Lock);
    Told.Text = failure.what();
  }
  return StopsWithin(kUntilNextTry);
}

bool FixSession::StopsWithin(std::chrono::seconds time) {
  std::unique_lock lock(Lock);
  return Wake.wait_for(lock, time, [this] { return Stopping; });
}

void FixSession::OnState(bool loggedOn, const std::string& text) {
  const std::lock_guard lock(Lock);
  Told.LoggedOn = loggedOn;
  Told.WasLoggedOn = Told.WasLoggedOn || loggedOn;
  Told.Text = text;
}

void FixSession::OnNewDay(const std::filesystem::path& journal) {
  const std::lock_guard lock(Lock);
  Told.Journal = journal;
}

void FixSession::OnAlarm(const Alarm& alarm) {
  const std::lock_guard lock(Lock);
  if (Alarms.size() < kMostAlarms) Alarms.push_back(alarm);
}

class FixFeed : public Feed, private AlarmSink {
 public:
  explicit FixFeed(std::shared_ptr<FixSession> session) : Session(std::move(session)) {}

  bool Take(std::vector<std::uint8_t>& messages) override;
  bool IsCaughtUp() const override { return CaughtUp; }
  FeedState State() const override;
  std::vector<Alarm> TakeAlarms() override;

 private:
  void OnAlarm(const Alarm& alarm) override { Alarms.push_back(alarm); }
  bool TakeOf(const FixSession::Condition& now, std::vector<std::uint8_t>& messages);

  std::shared_ptr<FixSession> Session;
  std::filesystem::path File;
  std::optional<JournalDay> Day;
  std::vector<Alarm> Alarms;  // of the mapping
  std::string Failure;        // the journal cannot be read
  bool CaughtUp = false;
  bool DayOver = false;
};

bool FixFeed::Take(std::vector<std::uint8_t>& messages) {
  const FixSession::Condition now = Session->Now();
  if (now.Journal.empty() || DayOver || !Failure.empty()) return false;
  try {
    return TakeOf(now, messages);
  } catch (const FeedError& failure) {
    Failure = failure.what();
    return false;
  }
}

// The condition is older than what is read, so that all of a former day has been read when there is nothing more.
bool FixFeed::TakeOf(const FixSession::Condition& now, std::vector<std::uint8_t>& messages) {
  if (!Day) Day.emplace(File = now.Journal, Session->Mapping(), static_cast<AlarmSink&>(*this));
  const std::size_t before = messages.size();
  if (Day->Take(messages, kMostBytes)) return messages.size() > before;
  CaughtUp = CaughtUp || now.WasLoggedOn || Clock::now() - now.Begun >= kLongestLogon;
  DayOver = now.Journal != File;
  return messages.size() > before;
}

FeedState FixFeed::State() const {
  const FixSession::Condition now = Session->Now();
  if (!Failure.empty()) return {FeedPhase::Ended, Failure};
  if (DayOver) return {FeedPhase::Ended, "the day of the session is over; Start Again reads the next one"};
  if (now.LoggedOn) return {CaughtUp ? FeedPhase::Live : FeedPhase::Downloading, now.Text};
  return {now.WasLoggedOn ? FeedPhase::Lost : FeedPhase::Connecting, now.Text};
}

std::vector<Alarm> FixFeed::TakeAlarms() {
  std::vector<Alarm> alarms = std::exchange(Alarms, {});
  for (Alarm& alarm : Session->TakeAlarms()) alarms.push_back(std::move(alarm));
  return alarms;
}

FeedSettings SettingsOf(const std::filesystem::path& file, const std::filesystem::path& journalFolder) {
  std::vector<SettingsMistake> mistakes;
  FeedSettings settings = ReadFeedSettings(file, mistakes);
  if (!mistakes.empty()) {
    const SettingsMistake& first = mistakes.front();
    throw FeedError(file.string() + ":" + std::to_string(first.Line) + ": " + first.Text);
  }
  std::filesystem::create_directories(journalFolder);
  settings.JournalFolder = journalFolder;
  return settings;
}

}  // namespace

std::function<std::unique_ptr<Feed>()> OpenFixFeeds(const std::filesystem::path& settings,
                                                    const std::filesystem::path& journalFolder) {
  return [own = SettingsOf(settings, journalFolder), session = std::shared_ptr<FixSession>()]() mutable {
    if (session == nullptr) session = std::make_shared<FixSession>(own);
    return std::make_unique<FixFeed>(session);
  };
}

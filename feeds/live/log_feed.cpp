#include "feeds/live/log_feed.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

#include "feeds/day_log/log_reader.h"

namespace {

constexpr std::chrono::milliseconds kReadTime(200);
constexpr std::size_t kMostQueued = 4 * 1024 * 1024;
constexpr std::size_t kMostTaken = 1024 * 1024;
constexpr std::size_t kMostAlarms = 200;

}  // namespace

// What the thread fills and the owner of the feed empties, under one lock that is never held while anything waits for
// the network.
struct LogFeed::Reading {
  Reading(LogAccess access, LogDay day) : Reader(std::move(access), day), Subject(day.Subject()) {
    Told.Text = "connecting to " + Subject;
  }

  void Run();
  void Tell(LogReader::Step step, std::vector<std::uint8_t>& messages);
  void TellState(LogReader::Step step);
  void AddAlarm(AlarmKind kind, const std::string& text);
  bool IsCaughtUp() const;

  LogReader Reader;  // the thread's alone, but for its Cancel
  std::thread Thread;
  const std::string Subject;

  mutable std::mutex Lock;
  std::condition_variable Room;
  bool Ended = false;
  std::deque<std::vector<std::uint8_t>> Queue;
  std::size_t QueuedBytes = 0;
  bool ReaderCaughtUp = false;
  std::size_t QueuedBeforeCaughtUp = 0;  // parts of the queue that were read until then and have not been taken
  bool Reached = false;                  // the log was there once
  FeedState Told;
  std::vector<Alarm> Alarms;
  std::uint64_t AlarmsLeftOut = 0;
};

void LogFeed::Reading::Run() {
  for (;;) {
    {
      std::unique_lock lock(Lock);
      Room.wait(lock, [this] { return Ended || QueuedBytes < kMostQueued; });
      if (Ended) return;
    }
    std::vector<std::uint8_t> messages;
    const LogReader::Step step = Reader.Take(messages, kReadTime);
    const std::lock_guard lock(Lock);
    Tell(step, messages);
  }
}

void LogFeed::Reading::Tell(LogReader::Step step, std::vector<std::uint8_t>& messages) {
  if (!messages.empty()) {
    QueuedBytes += messages.size();
    Queue.push_back(std::move(messages));
  }
  if (Reader.IsCaughtUp() && !ReaderCaughtUp) {
    ReaderCaughtUp = true;
    QueuedBeforeCaughtUp = Queue.size();
  }
  if (step == LogReader::Step::Damaged) AddAlarm(AlarmKind::Damage, Reader.Reason());
  TellState(step);
}

void LogFeed::Reading::TellState(LogReader::Step step) {
  const bool isThere = step != LogReader::Step::Lost && step != LogReader::Step::Missing;
  Told.Behind = Reader.Behind();
  if (isThere) {
    Reached = true;
    Told.Phase = IsCaughtUp() ? FeedPhase::Live : FeedPhase::Downloading;
    Told.Text = "reading " + Subject + " from " + Reader.Server();
    return;
  }
  if (Reached && Told.Phase != FeedPhase::Lost) AddAlarm(AlarmKind::Disconnected, Reader.Reason());
  Told.Phase = Reached ? FeedPhase::Lost : FeedPhase::Connecting;
  Told.Text = Reader.Reason();
}

// A log that is damaged throughout must not fill the memory with words about it.
void LogFeed::Reading::AddAlarm(AlarmKind kind, const std::string& text) {
  if (Alarms.size() < kMostAlarms)
    Alarms.push_back({kind, text});
  else
    ++AlarmsLeftOut;
}

bool LogFeed::Reading::IsCaughtUp() const {
  return ReaderCaughtUp && QueuedBeforeCaughtUp == 0;
}

LogFeed::LogFeed(LogAccess access, LogDay day) : Self(std::make_unique<Reading>(std::move(access), std::move(day))) {
  Self->Thread = std::thread([reading = Self.get()] { reading->Run(); });
}

LogFeed::~LogFeed() {
  {
    const std::lock_guard lock(Self->Lock);
    Self->Ended = true;
  }
  Self->Room.notify_all();
  Self->Reader.Cancel();
  Self->Thread.join();
}

bool LogFeed::Take(std::vector<std::uint8_t>& messages) {
  Reading& self = *Self;
  const std::lock_guard lock(self.Lock);
  std::size_t taken = 0;
  for (; !self.Queue.empty() && taken < kMostTaken; self.Queue.pop_front()) {
    const std::vector<std::uint8_t>& part = self.Queue.front();
    messages.insert(messages.end(), part.begin(), part.end());
    taken += part.size();
    if (self.QueuedBeforeCaughtUp > 0) --self.QueuedBeforeCaughtUp;
  }
  self.QueuedBytes -= taken;
  self.Room.notify_all();
  if (self.Told.Phase == FeedPhase::Downloading && self.IsCaughtUp()) self.Told.Phase = FeedPhase::Live;
  return taken > 0;
}

bool LogFeed::IsCaughtUp() const {
  const std::lock_guard lock(Self->Lock);
  return Self->IsCaughtUp();
}

FeedState LogFeed::State() const {
  const std::lock_guard lock(Self->Lock);
  FeedState state = Self->Told;
  state.Behind += Self->Queue.size();
  return state;
}

std::vector<Alarm> LogFeed::TakeAlarms() {
  const std::lock_guard lock(Self->Lock);
  std::vector<Alarm> alarms = std::exchange(Self->Alarms, {});
  const std::uint64_t more = std::exchange(Self->AlarmsLeftOut, 0);
  if (more > 0) alarms.push_back({AlarmKind::Damage, "and " + std::to_string(more) + " more alarms of this kind"});
  return alarms;
}

#include "gateway/log_publisher.h"

#include <utility>

namespace {

constexpr std::chrono::milliseconds kLookAgain{50};
// Days whose log cannot be reached: each holds its mapping in memory.
constexpr std::size_t kMostDays = 8;

DayPump::Time Now() {
  return std::chrono::steady_clock::now();
}

std::string UnpublishedText(const DayPump& pump) {
  return std::to_string(pump.Behind()) + " messages of " + pump.Journal().string() +
         " are not in the log. The next start on the same day publishes them; for a day before use --replay";
}

}  // namespace

LogPublisher::LogPublisher(MappingChoices mapping, DayLogs logs, PumpEvents& events)
    : Mapping(std::move(mapping)), Logs(std::move(logs)), Events(events) {
  Noted.HasLog = static_cast<bool>(Logs.Open);
  Thread = std::thread([this] { Run(); });
}

LogPublisher::~LogPublisher() {
  Stop({});
}

void LogPublisher::Follow(const std::filesystem::path& journal) {
  std::error_code unknown;
  const std::uint64_t size = std::filesystem::file_size(journal, unknown);
  {
    const std::lock_guard lock(Lock);
    if (journal == Newest) return;
    Newest = journal;
    New.push_back({journal, unknown ? 0 : size});
  }
  Wake();
}

void LogPublisher::Wake() {
  {
    const std::lock_guard lock(Lock);
    if (std::exchange(Woken, true)) return;
  }
  Changed.notify_one();
}

PublisherCounts LogPublisher::Counts() const {
  const std::lock_guard lock(Lock);
  return Noted;
}

std::vector<std::string> LogPublisher::Stop(std::chrono::milliseconds atMost) {
  {
    const std::lock_guard lock(Lock);
    Stopping = true;
    Deadline = Now() + atMost;
  }
  Changed.notify_one();
  if (Thread.joinable()) Thread.join();
  return std::exchange(Unpublished, {});
}

void LogPublisher::Run() {
  while (MayGoOn()) {
    const bool moved = Step();
    Note();
    if (!moved) WaitForMore();
  }
  // A lost log gets a last try.
  for (const auto& pump : Pumps) pump->TryNow();
  while (Step() && Now() < Deadline) Note();
  Note();
  for (const auto& pump : Pumps)
    if (!pump->IsDone() && Logs.Open) Unpublished.push_back(UnpublishedText(*pump));
}

bool LogPublisher::MayGoOn() const {
  const std::lock_guard lock(Lock);
  return !Stopping;
}

void LogPublisher::WaitForMore() {
  std::unique_lock lock(Lock);
  Changed.wait_for(lock, kLookAgain, [this] { return Woken || Stopping; });
  Woken = false;
}

bool LogPublisher::Step() {
  OpenNew();
  bool moved = false;
  for (std::size_t i = Pumps.size(); i-- > 0;) {
    try {
      moved |= StepOf(*Pumps[i]);
    } catch (const FeedError& error) {
      GiveUp(Pumps[i]->Journal(), error.what());
      Pumps.erase(Pumps.begin() + static_cast<std::ptrdiff_t>(i));
    }
  }
  Retire();
  return moved;
}

bool LogPublisher::StepOf(DayPump& pump) {
  const bool read = pump.Read();
  const bool sent = pump.Send(Now());
  return read || sent;
}

void LogPublisher::OpenNew() {
  std::deque<Journal> journals;
  {
    const std::lock_guard lock(Lock);
    journals.swap(New);
  }
  for (const Journal& journal : journals) {
    try {
      Pumps.push_back(std::make_unique<DayPump>(journal.File, Mapping, journal.Before, Events, Logs));
    } catch (const FeedError& error) {
      GiveUp(journal.File, error.what());
    }
  }
}

// Ends the days before that are done. They are whole, as they were read after the newest was opened.
void LogPublisher::Retire() {
  while (Pumps.size() > 1 && Pumps.front()->IsDone()) Pumps.pop_front();
  if (Pumps.size() <= kMostDays) return;
  Events.OnAlarm({AlarmKind::Disconnected, UnpublishedText(*Pumps.front())});
  Pumps.pop_front();
}

void LogPublisher::GiveUp(const std::filesystem::path& journal, const char* reason) {
  const std::string text = journal.string() + ": " + reason + "; it is not published any more until the next start";
  Events.OnAlarm({AlarmKind::Damage, text});
  Unpublished.push_back(text);
}

void LogPublisher::Note() {
  PublisherCounts counts;
  counts.HasLog = static_cast<bool>(Logs.Open);
  for (const auto& pump : Pumps) {
    counts.Behind += pump->Behind();
    counts.IsLogLost |= pump->IsLost();
    counts.Date = pump->Date();
    counts.Journal = pump->Counts();
    counts.InLog = pump->MessagesInLog();
  }
  const std::lock_guard lock(Lock);
  Noted = std::move(counts);
}

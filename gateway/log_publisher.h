// LogPublisher: a thread that follows the journals of the days and fills their logs.
#pragma once

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "gateway/day_pump.h"

// Of the newest journal; what days before still wait for counts in Behind.
struct PublisherCounts {
  std::string Date;
  JournalCounts Journal;
  std::uint64_t InLog = 0;
  std::uint64_t Behind = 0;
  bool HasLog = false;
  bool IsLogLost = false;
};

// A day before goes on until its log has all of it. Reads on when it is woken, else looks 20 times a second.
class LogPublisher {
 public:
  LogPublisher(MappingChoices mapping, DayLogs logs, PumpEvents& events);
  // Ends as Stop({}) does.
  ~LogPublisher();
  LogPublisher(const LogPublisher&) = delete;
  LogPublisher& operator=(const LogPublisher&) = delete;

  // From now on that journal grows; those before are whole. Any thread.
  void Follow(const std::filesystem::path& journal);
  // The journal has grown. Any thread.
  void Wake();
  PublisherCounts Counts() const;

  // Publishes what the journals hold and ends the thread: after that time at the latest, but for a call that waits for
  // the log. Returns a sentence for each journal that is not all in its log.
  std::vector<std::string> Stop(std::chrono::milliseconds atMost);

 private:
  struct Journal {
    std::filesystem::path File;
    std::uint64_t Before;  // bytes that it had then
  };

  void Run();
  bool Step();
  bool StepOf(DayPump& pump);
  void OpenNew();
  void Retire();
  void GiveUp(const std::filesystem::path& journal, const char* reason);
  void Note();
  void WaitForMore();
  bool MayGoOn() const;

  const MappingChoices Mapping;
  const DayLogs Logs;
  PumpEvents& Events;
  std::deque<std::unique_ptr<DayPump>> Pumps;  // of the thread, the newest last
  std::vector<std::string> Unpublished;        // of the thread until it has ended

  mutable std::mutex Lock;
  std::condition_variable Changed;
  std::deque<Journal> New;
  std::filesystem::path Newest;
  PublisherCounts Noted;
  bool Woken = false;
  bool Stopping = false;
  DayPump::Time Deadline{};
  std::thread Thread;
};

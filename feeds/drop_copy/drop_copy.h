// DropCopy: a FIX session that keeps journals: the engine, with the journal of the day as its store.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "feeds/common/feed_report.h"
#include "feeds/settings/feed_settings.h"

// The engine refuses the settings of the session, however often they are tried.
class SessionRefused : public FeedError {
 public:
  using FeedError::FeedError;
};

// Called on the engine's thread, and on the one that makes the DropCopy; OnAlarm on any.
class DropCopyEvents : public AlarmSink {
 public:
  virtual void OnState(bool loggedOn, const std::string& text) = 0;
  // Something was appended to the journal.
  virtual void OnKept() = 0;
  // From now on that journal is appended to; the one before is whole.
  virtual void OnNewDay(const std::filesystem::path& journal) = 0;
};

// The journal is named after the session and the day, which is the UTC date on which the session ends (session_days.h).
// A new day begins when the engine resets its numbers at the begin of a session; in a session of a week, where numbers
// go on over days, with the first message behind the end time of each day.
//
// A full disk costs the connection, not the message: the alarm comes once, and the session goes on when there is room.
class DropCopy {
 public:
  // Opens the journal of the day that is now: of the next session if there is none. Throws FeedError, SessionRefused if
  // it is the settings.
  DropCopy(const FeedSettings& settings, DropCopyEvents& events);
  ~DropCopy();
  DropCopy(const DropCopy&) = delete;
  DropCopy& operator=(const DropCopy&) = delete;

  std::filesystem::path JournalFile() const;  // that is appended to; on any thread
  void Start();                               // throws SessionRefused
  void Stop();

 private:
  struct State;
  std::unique_ptr<State> Self;
};

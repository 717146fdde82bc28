// LogFeed: a day log as the terminal's feed.
#pragma once

#include "feeds/day_log/log_address.h"
#include "feeds/live/feed.h"

// A thread reads the log into a queue of about four megabytes at most and waits when it is full. The feed ends at once,
// but while it connects to a server that is silent: then within two seconds.
class LogFeed : public Feed {
 public:
  LogFeed(LogAccess access, LogDay day);
  ~LogFeed() override;
  LogFeed(const LogFeed&) = delete;
  LogFeed& operator=(const LogFeed&) = delete;

  bool Take(std::vector<std::uint8_t>& messages) override;
  bool IsCaughtUp() const override;
  FeedState State() const override;
  std::vector<Alarm> TakeAlarms() override;

 private:
  struct Reading;
  std::unique_ptr<Reading> Self;
};

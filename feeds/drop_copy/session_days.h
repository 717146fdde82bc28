// SessionDays: which day an instant belongs to, by the times of a session.
#pragma once

#include <cstdint>
#include <string>

#include "feeds/engine/fix_engine.h"

inline constexpr std::int64_t kSecondsOfDay = 86400;

// Instants are in seconds UTC since 1970. An end time of midnight ends the day before it.
class SessionDays {
 public:
  // Requires times and days that the settings allow.
  explicit SessionDays(const FixEngineSettings& settings);

  // The UTC date, yyyyMMdd, on which the end time comes next: on which the session that the instant is in ends. Around
  // the clock it is the date of the instant.
  std::string DateOf(std::int64_t instant) const;
  // The session lasts a week and has both instants: the numbers go on from the one to the other.
  bool AreInOneWeek(std::int64_t instant, std::int64_t later) const;
  bool IsWeekly() const noexcept { return StartDay >= 0; }

 private:
  std::int64_t StartSecond;  // of the day
  std::int64_t EndSecond;
  int StartDay;  // Sunday is 0; -1 for a session of a day
};

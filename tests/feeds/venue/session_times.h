// Session times for tests, which may run at any time of the day.
#pragma once

#include <chrono>
#include <cstdio>
#include <string>

// A full hour of the UTC day about twelve hours away: a session from there to there has no end during a test.
inline std::string FarFromNow() {
  using namespace std::chrono;
  const auto sinceMidnight = system_clock::now().time_since_epoch() % days(1);
  const auto hour = (duration_cast<hours>(sinceMidnight).count() + 12) % 24;
  char text[16];
  std::snprintf(text, sizeof text, "%02d:00:00", static_cast<int>(hour));
  return text;
}

// The times of a day file, "yyyyMMdd-HH:mm:ss", and times of day, "HH:mm:ss". They have no zone: what counts is their
// order and the seconds between them. Pure; any thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

inline constexpr std::int64_t kSecondsPerDay = 86400;

// A time as its text, which goes over the wire as it stands, and as a count of seconds since 1970-01-01 00:00:00.
struct DayTime {
  std::string Text;
  std::int64_t Seconds = 0;
};

// Both are strict: digits in every place, a date of the calendar, hours to 23, minutes and seconds to 59. False, and
// the result untouched, for anything else.
bool ParseDayTime(std::string_view text, DayTime& time);
bool ParseTimeOfDay(std::string_view text, std::int64_t& seconds);

// The date of a count of seconds, as days since 1970-01-01.
constexpr std::int64_t DateOf(std::int64_t seconds) {
  const std::int64_t days = seconds / kSecondsPerDay;
  return seconds % kSecondsPerDay < 0 ? days - 1 : days;
}

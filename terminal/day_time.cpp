#include "terminal/day_time.h"

#include <chrono>

namespace {

constexpr std::size_t kDateSize = 8;       // yyyyMMdd
constexpr std::size_t kTimeOfDaySize = 8;  // HH:mm:ss

bool ParseDigits(std::string_view text, unsigned& value) {
  value = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') return false;
    value = value * 10 + static_cast<unsigned>(c - '0');
  }
  return true;
}

bool ParseDate(std::string_view text, std::int64_t& days) {
  unsigned year = 0;
  unsigned month = 0;
  unsigned day = 0;
  if (!ParseDigits(text.substr(0, 4), year) || !ParseDigits(text.substr(4, 2), month) ||
      !ParseDigits(text.substr(6, 2), day))
    return false;
  const std::chrono::year_month_day date{std::chrono::year(static_cast<int>(year)), std::chrono::month(month),
                                         std::chrono::day(day)};
  if (!date.ok()) return false;
  days = std::chrono::sys_days(date).time_since_epoch().count();
  return true;
}

}  // namespace

bool ParseTimeOfDay(std::string_view text, std::int64_t& seconds) {
  unsigned hour = 0;
  unsigned minute = 0;
  unsigned second = 0;
  if (text.size() != kTimeOfDaySize || text[2] != ':' || text[5] != ':' || !ParseDigits(text.substr(0, 2), hour) ||
      !ParseDigits(text.substr(3, 2), minute) || !ParseDigits(text.substr(6, 2), second))
    return false;
  if (hour > 23 || minute > 59 || second > 59) return false;
  seconds = std::int64_t{hour} * 3600 + minute * 60 + second;
  return true;
}

bool ParseDayTime(std::string_view text, DayTime& time) {
  std::int64_t days = 0;
  std::int64_t seconds = 0;
  if (text.size() != kDateSize + 1 + kTimeOfDaySize || text[kDateSize] != '-' ||
      !ParseDate(text.substr(0, kDateSize), days) || !ParseTimeOfDay(text.substr(kDateSize + 1), seconds))
    return false;
  time.Text.assign(text);
  time.Seconds = days * kSecondsPerDay + seconds;
  return true;
}

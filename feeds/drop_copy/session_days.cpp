#include "feeds/drop_copy/session_days.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>

namespace {

constexpr std::array<std::string_view, 7> kDays = {"sunday",   "monday", "tuesday", "wednesday",
                                                   "thursday", "friday", "saturday"};
constexpr int kDayOfEpoch = 4;  // 1970-01-01 was a Thursday

// "HH:MM:SS"
std::int64_t SecondOfDay(const std::string& time) {
  return std::stoi(time.substr(0, 2)) * 3600 + std::stoi(time.substr(3, 2)) * 60 + std::stoi(time.substr(6, 2));
}

int DayOfWeek(const std::string& name) {
  const auto found = std::ranges::find(kDays, name);
  return found == kDays.end() ? -1 : static_cast<int>(found - kDays.begin());
}

std::string DateText(std::int64_t day) {
  const std::chrono::year_month_day date{std::chrono::sys_days{std::chrono::days{day}}};
  char text[16];
  std::snprintf(text, sizeof text, "%04d%02u%02u", static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                static_cast<unsigned>(date.day()));
  return text;
}

}  // namespace

SessionDays::SessionDays(const FixEngineSettings& settings)
    : StartSecond(SecondOfDay(settings.StartTime)),
      EndSecond(SecondOfDay(settings.EndTime)),
      StartDay(DayOfWeek(settings.StartDay)) {
  const bool aroundTheClock = StartSecond == EndSecond && !IsWeekly();
  if (EndSecond == 0 || aroundTheClock) EndSecond = kSecondsOfDay;
}

std::string SessionDays::DateOf(std::int64_t instant) const {
  return DateText(instant / kSecondsOfDay + (instant % kSecondsOfDay > EndSecond ? 1 : 0));
}

bool SessionDays::AreInOneWeek(std::int64_t instant, std::int64_t later) const {
  if (!IsWeekly()) return false;
  const std::int64_t day = later / kSecondsOfDay;
  const std::int64_t startDay = day - (day + kDayOfEpoch - StartDay) % 7;
  const std::int64_t start = startDay * kSecondsOfDay + StartSecond;
  return instant >= (start > later ? start - 7 * kSecondsOfDay : start);
}

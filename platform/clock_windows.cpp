#include "platform/clock.h"

#include <windows.h>

bool UtcFields(std::int64_t instant, std::tm& fields) noexcept {
  return IsClockInstant(instant) && _gmtime64_s(&fields, &instant) == 0;
}

bool LocalFields(std::int64_t instant, std::tm& fields) noexcept {
  return IsClockInstant(instant) && _localtime64_s(&fields, &instant) == 0;
}

LocalMoment LocalNow() noexcept {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  LocalMoment moment{};
  moment.Fields.tm_year = now.wYear - 1900;
  moment.Fields.tm_mon = now.wMonth - 1;
  moment.Fields.tm_mday = now.wDay;
  moment.Fields.tm_wday = now.wDayOfWeek;
  moment.Fields.tm_hour = now.wHour;
  moment.Fields.tm_min = now.wMinute;
  moment.Fields.tm_sec = now.wSecond;
  moment.Millisecond = now.wMilliseconds;
  return moment;
}

std::int64_t CurrentInstant() noexcept {
  return _time64(nullptr);
}

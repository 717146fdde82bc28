#include "platform/clock.h"

bool UtcFields(std::int64_t instant, std::tm& fields) noexcept {
  return IsClockInstant(instant) && gmtime_r(&instant, &fields) != nullptr;
}

bool LocalFields(std::int64_t instant, std::tm& fields) noexcept {
  return IsClockInstant(instant) && localtime_r(&instant, &fields) != nullptr;
}

LocalMoment LocalNow() noexcept {
  std::timespec now{};
  std::timespec_get(&now, TIME_UTC);
  LocalMoment moment{};
  LocalFields(now.tv_sec, moment.Fields);
  moment.Millisecond = static_cast<int>(now.tv_nsec / 1'000'000);
  return moment;
}

std::int64_t CurrentInstant() noexcept {
  return std::time(nullptr);
}

// The clock and the time zone of the machine. An instant is a count of seconds since 1970-01-01 00:00:00 UTC.
#pragma once

#include <cstdint>
#include <ctime>

// 3000-12-31 23:59:59 UTC, the last instant of the Windows library: both platforms end there.
inline constexpr std::int64_t kLastInstant = 32535215999;

inline constexpr bool IsClockInstant(std::int64_t instant) {
  return instant >= 0 && instant <= kLastInstant;
}

// The calendar fields of an instant, in UTC or in the machine's zone. False, with the fields unchanged, for an instant
// before 1970 or after kLastInstant.
bool UtcFields(std::int64_t instant, std::tm& fields) noexcept;
bool LocalFields(std::int64_t instant, std::tm& fields) noexcept;

struct LocalMoment {
  std::tm Fields;
  int Millisecond;
};

// The time now in the machine's zone. Date and clock are set, day of year and zone are not.
LocalMoment LocalNow() noexcept;

std::int64_t CurrentInstant() noexcept;

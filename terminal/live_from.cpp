#include "terminal/live_from.h"

#include <charconv>

#include "terminal/day_time.h"

std::optional<LiveFrom> ParseLiveFrom(std::string_view text) {
  DayTime time;
  if (ParseDayTime(text, time)) return LiveFrom{LiveFrom::Kind::Instant, time.Seconds};
  std::int64_t value = 0;
  if (ParseTimeOfDay(text, value)) return LiveFrom{LiveFrom::Kind::TimeOfDay, value};
  const char* end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || rest != end || value < 0 || text.starts_with('-')) return std::nullopt;
  return LiveFrom{LiveFrom::Kind::Count, value};
}

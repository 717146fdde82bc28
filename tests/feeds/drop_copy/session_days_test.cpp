#include "feeds/drop_copy/session_days.h"

#include <gtest/gtest.h>

namespace {

constexpr std::int64_t kSunday = 1772323200;  // 2026-03-01 00:00:00
constexpr std::int64_t kHour = 3600;
SessionDays DaysOf(const char* start, const char* end, const char* startDay = "", const char* endDay = "") {
  FixEngineSettings settings;
  settings.StartTime = start;
  settings.EndTime = end;
  settings.StartDay = startDay;
  settings.EndDay = endDay;
  return SessionDays(settings);
}

TEST(SessionDays, NamesTheDayOnWhichTheSessionEnds) {
  const struct {
    const char* Start;
    const char* End;
    std::int64_t Second;
    const char* Date;
  } cases[] = {
      {"00:00:00", "00:00:00", 0, "20260301"},
      {"00:00:00", "00:00:00", kSecondsOfDay - 1, "20260301"},
      {"00:00:00", "00:00:00", -1, "20260228"},
      {"17:00:00", "17:00:00", 23 * kHour, "20260301"},
      {"08:30:00", "17:00:00", 9 * kHour, "20260301"},
      {"08:30:00", "17:00:00", 17 * kHour, "20260301"},
      {"08:30:00", "17:00:00", 17 * kHour + 1, "20260302"},
      {"08:30:00", "17:00:00", 0, "20260301"},
      {"22:00:00", "21:00:00", 23 * kHour, "20260302"},
      {"22:00:00", "21:00:00", 20 * kHour, "20260301"},
      {"08:00:00", "00:00:00", 23 * kHour, "20260301"},
      {"08:00:00", "00:00:00", kSecondsOfDay, "20260302"},
  };
  for (const auto& [start, end, second, date] : cases) {
    SCOPED_TRACE(std::string(start) + " " + end + " " + std::to_string(second));
    EXPECT_EQ(DaysOf(start, end).DateOf(kSunday + second), date);
  }
}

TEST(SessionDays, KnowsTheWeek) {
  const SessionDays week = DaysOf("17:00:00", "16:00:00", "sunday", "friday");
  const std::int64_t start = kSunday + 17 * kHour;
  EXPECT_EQ(week.DateOf(start), "20260302");
  EXPECT_EQ(week.DateOf(start + kSecondsOfDay), "20260303");
  EXPECT_TRUE(week.AreInOneWeek(start, start));
  EXPECT_TRUE(week.AreInOneWeek(start, start + 5 * kSecondsOfDay));
  EXPECT_FALSE(week.AreInOneWeek(start - 1, start));
  EXPECT_TRUE(week.AreInOneWeek(start - 1, start - 1));
  EXPECT_FALSE(week.AreInOneWeek(start, start + 7 * kSecondsOfDay));
  EXPECT_FALSE(DaysOf("17:00:00", "16:00:00").AreInOneWeek(start, start));
}

}  // namespace

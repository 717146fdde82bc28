#include "foundations/date_time.h"

#include <gtest/gtest.h>

#include <array>
#include <cctype>
#include <limits>
#include <tuple>

#include "platform/locale.h"
#include "tests/foundations/time_zone.h"

namespace {

constexpr std::int64_t kMorning = 1772356530;  // 2026-03-01 09:15:30 UTC
constexpr std::int64_t kEvening = 1765832645;  // 2025-12-15 21:04:05 UTC

TEST(DateTimeTest, PrintsEveryPattern) {
  const char* const kRows[][3] = {
      {"ddMMMyyyy", "01Mar2026", "15Dec2025"},
      {"dd MMM yyyy", "01 Mar 2026", "15 Dec 2025"},
      {"dd-MMM-yy", "01-Mar-26", "15-Dec-25"},
      {"dd MMMM yyyy", "01 March 2026", "15 December 2025"},
      {"dd/MM/yyyy", "01/03/2026", "15/12/2025"},
      {"ddMMyy", "010326", "151225"},
      {"MMddyy", "030126", "121525"},
      {"dd-MM-yyyy", "01-03-2026", "15-12-2025"},
      {"yyyy/MM/dd", "2026/03/01", "2025/12/15"},
      {"yyyy-MM-dd", "2026-03-01", "2025-12-15"},
      {"MM/dd/yyyy", "03/01/2026", "12/15/2025"},
      {"MM-dd-yyyy", "03-01-2026", "12-15-2025"},
      {"yyyyMMdd", "20260301", "20251215"},
      {"dd/MM/yyyy HH:mm:ss", "01/03/2026 09:15:30", "15/12/2025 21:04:05"},
      {"MM/dd/yyyy hh:mm:ss tt", "03/01/2026 09:15:30 AM", "12/15/2025 09:04:05 PM"},
      {"yyyyMMdd-HH:mm:ss", "20260301-09:15:30", "20251215-21:04:05"},
      {"HH:mm:ss", "09:15:30", "21:04:05"},
      {"yyyyMMdd_HHmm", "20260301_0915", "20251215_2104"},
      {"yyyyMM", "202603", "202512"},
      {"dd", "01", "15"},
      {"MMMyy", "Mar26", "Dec25"},
  };
  for (const auto& [pattern, morning, evening] : kRows) {
    EXPECT_EQ(FormatTimeText(kMorning, pattern, true), morning) << pattern;
    EXPECT_EQ(FormatTimeText(kEvening, pattern, true), evening) << pattern;
  }
  for (const char* unknown : {"", "dd-MMM-yyyy", "yyyymmdd", "yyyyMMdd "})
    EXPECT_EQ(FormatTimeText(kMorning, unknown, true), "01/03/2026") << "the default";
}

TEST(DateTimeTest, TurnsTheTwelveHourClockAtNoonAndMidnight) {
  const std::pair<std::int64_t, const char*> kRows[] = {
      {0, "12:00:00 AM"}, {43199, "11:59:59 AM"}, {43200, "12:00:00 PM"}, {46800, "01:00:00 PM"}};
  for (const auto& [instant, text] : kRows)
    EXPECT_EQ(FormatTimeText(instant, "MM/dd/yyyy hh:mm:ss tt", true), std::string("01/01/1970 ") + text);
}

TEST(DateTimeTest, PrintsLocalTimeOfTheZone) {
  const std::tuple<const char*, std::int64_t, const char*> kRows[] = {{"EST5EDT", 0, "31/12/1969 19:00:00"},
                                                                      {"EST5EDT", 1772953199, "08/03/2026 01:59:59"},
                                                                      {"EST5EDT", 1772953200, "08/03/2026 03:00:00"},
                                                                      {"IST-5:30", 1772356530, "01/03/2026 14:45:30"},
                                                                      {"IST-5:30", 32535215999, "01/01/3001 05:29:59"}};
  for (const auto& [name, instant, local] : kRows) {
    const ZoneForTest zone(name);
    EXPECT_EQ(FormatTimeText(instant, "dd/MM/yyyy HH:mm:ss", false), local) << name;
  }
}

TEST(DateTimeTest, RejectsInstantsOutsideTheClock) {
  EXPECT_EQ(FormatTimeText(32535215999, "dd/MM/yyyy HH:mm:ss", true), "31/12/3000 23:59:59");
  constexpr std::int64_t kOutside[] = {-1, 32535216000, std::numeric_limits<std::int64_t>::min(),
                                       std::numeric_limits<std::int64_t>::max()};
  for (const std::int64_t instant : kOutside) {
    SCOPED_TRACE(instant);
    EXPECT_EQ(FormatTimeText(instant, "yyyy-MM-dd", false), "");
    char buffer[] = "as it was";
    FormatTimeInto(buffer, sizeof(buffer), instant, "dd", true);
    EXPECT_STREQ(buffer, "as it was");
  }
}

TEST(DateTimeTest, WritesNothingWithoutRoomForTheZeroByte) {
  for (std::size_t size = 0; size <= 12; ++size) {
    SCOPED_TRACE(size);
    std::string buffer(12, '#');
    FormatTimeInto(buffer.data(), size, kMorning, "yyyy-MM-dd", true);
    const std::string written = size > 10 ? std::string("2026-03-01\0", 11) : std::string(size > 0 ? 1 : 0, '\0');
    EXPECT_EQ(buffer, written + std::string(12 - written.size(), '#'));
  }
}

TEST(DateTimeTest, ParsesByPlace) {
  // The name of a month in four letters reads as month 0. A number may stand where a name is due.
  const std::tuple<const char*, const char*, std::int64_t> kRows[] = {
      {"01-Mar-2026", "dd-MMM-yyyy", 1772323200},   {"01 March 2026", "dd MMMM yyyy", 1764547200},
      {"0190003 2026", "dd MMMM yyyy", 1772323200}, {"01-FOO-2026", "dd-MMM-yyyy", 1764547200},
      {"01-03 -2026", "dd-MMM-yyyy", 1772323200},   {" 1/ 3/2026", "dd/MM/yyyy", 1772323200},
      {"+1/+3/2026", "dd/MM/yyyy", 1772323200},     {"-1/03/2026", "dd/MM/yyyy", 1772150400},
      {"ab/cd/efgh", "dd/MM/yyyy", 943920000},
  };
  for (const auto& [value, pattern, instant] : kRows)
    EXPECT_EQ(ParseTimeText(value, pattern), instant) << value << " by " << pattern;
  EXPECT_EQ(ParseTimeText("", ""), 943920000);
  EXPECT_EQ(ParseTimeText("2026-03", "yyyy-MM-dd"), 0) << "too short";
  EXPECT_EQ(ParseTimeText("01/03/2026", "dd/mm/yyyy"), 0) << "not a pattern that parses";
  for (const char* pattern :
       {"ddMMyy", "MMddyy", "MM/dd/yyyy hh:mm:ss tt", "HH:mm:ss", "yyyyMMdd_HHmm", "yyyyMM", "dd", "MMMyy"})
    EXPECT_EQ(ParseTimeText(FormatTimeText(kMorning, pattern, true), pattern), 0) << pattern << " only prints";
}

TEST(DateTimeTest, IgnoresSeparatorsAndWhatFollowsWhenItParses) {
  for (const std::string pattern :
       {"ddMMMyyyy", "dd MMM yyyy", "dd-MMM-yy", "dd/MM/yyyy", "dd-MM-yyyy", "yyyy/MM/dd", "yyyy-MM-dd", "MM/dd/yyyy",
        "MM-dd-yyyy", "yyyyMMdd", "dd/MM/yyyy HH:mm:ss", "yyyyMMdd-HH:mm:ss"}) {
    std::string text = FormatTimeText(kEvening, pattern, true) + '|';
    for (char& character : text) character = std::isalnum(character) != 0 ? character : '9';
    EXPECT_EQ(ParseTimeText(text, pattern), pattern.ends_with("ss") ? kEvening : 1765756800) << text;
  }
}

TEST(DateTimeTest, MakesInstantsOfFieldsOutOfRange) {
  constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
  constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
  // 2100 is no leap year: 1 March. The days of -4001 count from the year -2001, those of -4000 from the first day of a
  // year that begins in March, in a leap year.
  const std::pair<std::array<std::int32_t, 6>, std::int64_t> kRows[] = {
      {{2100, 2, 29, 0, 0, 0}, 4107542400},  {{2026, 0, 1, 0, 0, 0}, 1764547200},
      {{2026, 1, 0, 0, 0, 0}, 1767139200},   {{2026, 15, 1, 0, 0, 0}, 1803859200},
      {{2026, -11, 1, 0, 0, 0}, 1735689600}, {{2026, 3, 1, 25, -1, 61}, 1772413201},
      {{99, 12, 31, 0, 0, 0}, 4102358400},   {{100, 1, 1, 0, 0, 0}, -1},
      {{-1, 1, 1, 0, 0, 0}, 915148800},      {{-4001, 6, 1450228, 0, 0, 0}, 0},
      {{-4000, 3, 1449954, 0, 0, 0}, 0},     {{1969, 12, 31, 23, 59, 59}, -1},
      {{1969, 12, 31, 23, 59, 60}, 0},       {{3000, 12, 31, 23, 59, 59}, 32535215999},
      {{3001, 1, 1, 0, 0, 0}, -1},           {{2000, 1, 1, 0, 0, kMost}, 3094168447},
  };
  for (const auto& [f, instant] : kRows)
    EXPECT_EQ(MakeUtcTime(f[0], f[1], f[2], f[3], f[4], f[5]), instant) << f[0] << ' ' << f[1] << ' ' << f[2];
  for (const std::int32_t end : {kLeast, kMost}) EXPECT_EQ(MakeUtcTime(end, end, end, end, end, end), -1) << end;
}

// The library's own calendar against ours, every day with its own reading of the clock.
TEST(DateTimeTest, AgreesWithTheCalendarOfTheLibrary) {
  for (std::int64_t instant = 0; instant <= kLastInstant; instant += 86400 + 3599) {
    std::tm fields{};
    ASSERT_TRUE(UtcFields(instant, fields));
    ASSERT_EQ(MakeUtcTime(fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday, fields.tm_hour, fields.tm_min,
                          fields.tm_sec),
              instant);
  }
}

TEST(DateTimeTest, ReplacesMonthNamesByNumbers) {
  const auto numberOf = [](std::string name) {
    MonthNameToNumber(name);
    return name;
  };
  int number = 0;
  for (const char* name : {"JAN", "feb", "Mar", "aPR", "MAY", "JUN", "JUL", "AUG", "SEP", "OCT", "NOV", "dec"})
    EXPECT_EQ(numberOf(name), std::to_string(++number));
  for (const char* other : {"", "June", "JA", " JAN", "03"}) EXPECT_EQ(numberOf(other), other);
}

TEST(DateTimeTest, StampsTheTimeOfSomeZoneNow) {
  TimeStamp stamp;
  const std::int64_t before = CurrentInstant();
  NowStamp(stamp);
  // One more: the clock of whole seconds is some milliseconds late.
  const std::int64_t taken = CurrentInstant() - before + 1;
  const std::string text(stamp, sizeof stamp - 1);
  ASSERT_EQ(text.size(), 21u);
  ASSERT_EQ(stamp[21], '\0');
  EXPECT_EQ(text[17], '.');
  EXPECT_EQ(text.find_first_not_of("0123456789", 18), std::string::npos);
  // Zones lie whole quarters of an hour from UTC. The stamp is not compared with the C library's local time, which
  // on Windows looks at TZ first.
  const std::int64_t ahead = ParseTimeText(text, "yyyyMMdd-HH:mm:ss") - before + 12 * 3600;
  EXPECT_GE(ahead, 0);
  EXPECT_LE(ahead, 26 * 3600 + taken);
  EXPECT_LE(ahead % 900, taken);
}

}  // namespace

// Dates and times between text and instants, by the letter patterns of the terminal's date settings, such as "dd MMM
// yyyy". An instant is a signed count of seconds since 1970-01-01 00:00:00 UTC; there is no other epoch. Nothing here
// reports a failure. Any thread may call.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

// Writes the instant in UTC or in local time. A pattern that is not known, and the empty one, print as "dd/MM/yyyy".
// An instant before 1970 or after the year 3000 leaves the buffer as it is; a text that has no room with its zero
// byte leaves empty text.
void FormatTimeInto(char* buffer, const std::size_t& size, const std::int64_t& instant, const std::string& pattern,
                    bool utc);

// The same as text, empty where FormatTimeInto leaves the buffer as it is.
std::string FormatTimeText(const std::int64_t& instant, const std::string& pattern, bool utc);

// Reads the value by the fixed places of the pattern, as UTC. 0 for a pattern that does not parse and for a value
// shorter than the pattern. The patterns that parse are not quite those that print: "dd-MMM-yyyy" only parses, and
// several only print.
std::int64_t ParseTimeText(std::string value, std::string pattern);

// Fields out of range carry over: month 0 is December of the year before, day 0 the last day of the month before. A
// year below 100 counts from 2000. -1 for an instant before 1970 or after the year 3000.
std::int64_t MakeUtcTime(std::int32_t year, std::int32_t month, std::int32_t day, std::int32_t hour,
                         std::int32_t minute, std::int32_t second);

// Replaces "JAN" to "DEC", in any case, by "1" to "12"; any other text stays.
void MonthNameToNumber(std::string& name);

// The local time now as "yyyyMMdd-HH:mm:ss.mmm" with its zero byte.
using TimeStamp = char[22];
void NowStamp(TimeStamp& stamp);

// Dates and times as text and as instants, by the patterns of the terminal's date settings, such as "dd MMM yyyy". An
// instant is a signed count of seconds since 1970-01-01 00:00:00 UTC. Nothing here reports a failure.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

// Writes the instant in UTC or in local time. An unknown or empty pattern prints as "dd/MM/yyyy". An instant before
// 1970 or after the year 3000 leaves the buffer unchanged; without room for the text and its zero byte the text is
// empty.
void FormatTimeInto(char* buffer, const std::size_t& size, const std::int64_t& instant, const std::string& pattern,
                    bool utc);

// The same as text, empty if FormatTimeInto leaves the buffer unchanged.
std::string FormatTimeText(const std::int64_t& instant, const std::string& pattern, bool utc);

// Reads the value at the fixed places of the pattern, as UTC. 0 for a pattern that cannot be parsed and for a value
// shorter than the pattern. Several patterns only print, and "dd-MMM-yyyy" only parses.
std::int64_t ParseTimeText(std::string value, std::string pattern);

// Fields out of range carry over: month 0 is December of the previous year, day 0 the last day of the previous month. A
// year below 100 counts from 2000. -1 for an instant before 1970 or after the year 3000.
std::int64_t MakeUtcTime(std::int32_t year, std::int32_t month, std::int32_t day, std::int32_t hour,
                         std::int32_t minute, std::int32_t second);

// Replaces "JAN" to "DEC", in any case, by "1" to "12"; other text stays.
void MonthNameToNumber(std::string& name);

// The local time now as "yyyyMMdd-HH:mm:ss.mmm" with its zero byte.
using TimeStamp = char[22];
void NowStamp(TimeStamp& stamp);

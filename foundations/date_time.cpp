#include "foundations/date_time.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <string_view>

#include "foundations/text_tools.h"
#include "platform/locale.h"

namespace {

constexpr std::string_view kMonthNames[] = {"January", "February", "March",     "April",   "May",      "June",
                                            "July",    "August",   "September", "October", "November", "December"};
constexpr std::size_t kShortName = 3;
constexpr std::string_view kMonthMarks[] = {"JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                                            "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};

struct PrintPattern {
  std::string_view Pattern;
  std::string_view Format;  // in the directives of strftime
};

constexpr PrintPattern kPrintPatterns[] = {
    {"ddMMMyyyy", "%d%b%Y"},
    {"dd MMM yyyy", "%d %b %Y"},
    {"dd-MMM-yy", "%d-%b-%y"},
    {"dd MMMM yyyy", "%d %B %Y"},
    {"dd/MM/yyyy", "%d/%m/%Y"},
    {"ddMMyy", "%d%m%y"},
    {"MMddyy", "%m%d%y"},
    {"dd-MM-yyyy", "%d-%m-%Y"},
    {"yyyy/MM/dd", "%Y/%m/%d"},
    {"yyyy-MM-dd", "%Y-%m-%d"},
    {"MM/dd/yyyy", "%m/%d/%Y"},
    {"MM-dd-yyyy", "%m-%d-%Y"},
    {"yyyyMMdd", "%Y%m%d"},
    {"dd/MM/yyyy HH:mm:ss", "%d/%m/%Y %H:%M:%S"},
    {"MM/dd/yyyy hh:mm:ss tt", "%m/%d/%Y %I:%M:%S %p"},
    {"yyyyMMdd-HH:mm:ss", "%Y%m%d-%H:%M:%S"},
    {"HH:mm:ss", "%H:%M:%S"},
    {"yyyyMMdd_HHmm", "%Y%m%d_%H%M"},
    {"yyyyMM", "%Y%m"},
    {"dd", "%d"},
    {"MMMyy", "%b%y"},
};
constexpr std::string_view kDefaultFormat = "%d/%m/%Y";

struct FieldPlace {
  std::size_t Offset;
  std::size_t Length;
};

struct ParsePattern {
  std::string_view Pattern;
  FieldPlace Day, Month, Year;
  FieldPlace Hour{}, Minute{}, Second{};
};

constexpr ParsePattern kParsePatterns[] = {
    {"", {}, {}, {}},  // every field is empty
    {"ddMMMyyyy", {0, 2}, {2, 3}, {5, 4}},
    {"dd MMM yyyy", {0, 2}, {3, 3}, {7, 4}},
    {"dd-MMM-yyyy", {0, 2}, {3, 3}, {7, 4}},
    {"dd-MMM-yy", {0, 2}, {3, 3}, {7, 2}},
    // Intentional: four letters are never a month name, so the month reads as 0. The year has a fifth place because a
    // month of five letters shifts it by one.
    {"dd MMMM yyyy", {0, 2}, {3, 4}, {8, 5}},
    {"dd/MM/yyyy", {0, 2}, {3, 2}, {6, 4}},
    {"dd-MM-yyyy", {0, 2}, {3, 2}, {6, 4}},
    {"yyyy/MM/dd", {8, 2}, {5, 2}, {0, 4}},
    {"yyyy-MM-dd", {8, 2}, {5, 2}, {0, 4}},
    {"MM/dd/yyyy", {3, 2}, {0, 2}, {6, 4}},
    {"MM-dd-yyyy", {3, 2}, {0, 2}, {6, 4}},
    {"yyyyMMdd", {6, 2}, {4, 2}, {0, 4}},
    {"dd/MM/yyyy HH:mm:ss", {0, 2}, {3, 2}, {6, 4}, {11, 2}, {14, 2}, {17, 2}},
    {"yyyyMMdd-HH:mm:ss", {6, 2}, {4, 2}, {0, 4}, {9, 2}, {12, 2}, {15, 2}},
};

constexpr bool Inside(const FieldPlace& place, const ParsePattern& row) {
  return place.Length <= 5 && place.Offset <= row.Pattern.size();
}
// Every field begins inside a value that is as long as its pattern, and no field's number can overflow.
static_assert(std::all_of(std::begin(kParsePatterns), std::end(kParsePatterns), [](const ParsePattern& row) {
  return Inside(row.Day, row) && Inside(row.Month, row) && Inside(row.Year, row) && Inside(row.Hour, row) &&
         Inside(row.Minute, row) && Inside(row.Second, row);
}));

std::string_view FormatOf(const std::string& pattern) {
  const auto* row = std::find_if(std::begin(kPrintPatterns), std::end(kPrintPatterns),
                                 [&pattern](const PrintPattern& each) { return each.Pattern == pattern; });
  return row == std::end(kPrintPatterns) ? kDefaultFormat : row->Format;
}

std::string Digits(int number, std::size_t width) {
  const std::string digits = std::to_string(number);
  return digits.size() < width ? std::string(width - digits.size(), '0') + digits : digits;
}

std::string PrintField(char directive, const std::tm& fields) {
  const std::string_view month = kMonthNames[fields.tm_mon];
  switch (directive) {
    case 'd':
      return Digits(fields.tm_mday, 2);
    case 'm':
      return Digits(fields.tm_mon + 1, 2);
    case 'b':
      return std::string(month.substr(0, kShortName));
    case 'B':
      return std::string(month);
    case 'Y':
      return Digits(fields.tm_year + 1900, 4);
    case 'y':
      return Digits(fields.tm_year % 100, 2);
    case 'H':
      return Digits(fields.tm_hour, 2);
    case 'I':
      return Digits((fields.tm_hour + 11) % 12 + 1, 2);
    case 'M':
      return Digits(fields.tm_min, 2);
    case 'S':
      return Digits(fields.tm_sec, 2);
    case 'p':
      return fields.tm_hour < 12 ? "AM" : "PM";
  }
  return {};
}

// Prints like strftime in the "C" locale. strftime itself uses the locale of the host process, and the import library
// of mingw-w64 lacks the variant that takes a locale.
std::string PrintFields(std::string_view format, const std::tm& fields) {
  std::string text;
  for (std::size_t at = 0; at < format.size(); ++at) {
    if (format[at] == '%') {
      text += PrintField(format[++at], fields);
    } else {
      text += format[at];
    }
  }
  return text;
}

// As a stream extracts an int: leading blanks, one sign, digits up to the first other character.
std::int32_t ReadNumber(std::string_view field) {
  field.remove_prefix(std::min(field.find_first_not_of(" \t\n\v\f\r"), field.size()));
  const bool negative = field.starts_with('-');
  if (negative || field.starts_with('+')) field.remove_prefix(1);
  std::int32_t number = 0;
  for (const char digit : field) {
    if (digit < '0' || digit > '9') break;
    number = number * 10 + (digit - '0');
  }
  return negative ? -number : number;
}

std::int64_t FloorDivide(std::int64_t number, std::int64_t divisor) {
  return number / divisor - (number % divisor < 0 ? 1 : 0);
}

// Days from 1970-01-01 to the first day of the month, which counts from 0 and may be in any year. The year used here
// begins in March, so that the leap day is its last.
std::int64_t DaysToMonth(std::int64_t year, std::int64_t month) {
  constexpr std::int64_t kMarch = 2;
  constexpr std::int64_t kDaysToEpoch = 719468;  // from 0000-03-01 to 1970-01-01
  const std::int64_t months = year * 12 + month - kMarch;
  const std::int64_t marchYear = FloorDivide(months, 12);
  const std::int64_t marchMonth = months - marchYear * 12;
  const std::int64_t leapDays = FloorDivide(marchYear, 4) - FloorDivide(marchYear, 100) + FloorDivide(marchYear, 400);
  return marchYear * 365 + leapDays + (marchMonth * 153 + 2) / 5 - kDaysToEpoch;
}

}  // namespace

void FormatTimeInto(char* buffer, const std::size_t& size, const std::int64_t& instant, const std::string& pattern,
                    bool utc) {
  std::tm fields{};
  if (!(utc ? UtcFields(instant, fields) : LocalFields(instant, fields)) || size == 0) return;
  const std::string text = PrintFields(FormatOf(pattern), fields);
  const std::size_t length = text.size() < size ? text.size() : 0;
  std::memcpy(buffer, text.data(), length);
  buffer[length] = '\0';
}

std::string FormatTimeText(const std::int64_t& instant, const std::string& pattern, bool utc) {
  std::array<char, 80> buffer{};
  FormatTimeInto(buffer.data(), buffer.size(), instant, pattern, utc);
  return buffer.data();
}

std::int64_t ParseTimeText(std::string value, std::string pattern) {
  if (value.size() < pattern.size()) return 0;
  const auto* row = std::find_if(std::begin(kParsePatterns), std::end(kParsePatterns),
                                 [&pattern](const ParsePattern& each) { return each.Pattern == pattern; });
  if (row == std::end(kParsePatterns)) return 0;
  const auto field = [&value](const FieldPlace& place) { return value.substr(place.Offset, place.Length); };
  std::string month = field(row->Month);
  MonthNameToNumber(month);  // only a field of three letters can be a name
  return MakeUtcTime(ReadNumber(field(row->Year)), ReadNumber(month), ReadNumber(field(row->Day)),
                     ReadNumber(field(row->Hour)), ReadNumber(field(row->Minute)), ReadNumber(field(row->Second)));
}

std::int64_t MakeUtcTime(std::int32_t year, std::int32_t month, std::int32_t day, std::int32_t hour,
                         std::int32_t minute, std::int32_t second) {
  const std::int64_t fullYear = std::int64_t{year} + (year < 100 ? 2000 : 0);
  const std::int64_t days = DaysToMonth(fullYear, std::int64_t{month} - 1) + day - 1;
  const std::int64_t instant = ((days * 24 + hour) * 60 + minute) * 60 + second;
  return IsClockInstant(instant) ? instant : -1;
}

void MonthNameToNumber(std::string& name) {
  const std::string upper = ToUpperText(name);
  const auto* month = std::find(std::begin(kMonthMarks), std::end(kMonthMarks), upper);
  if (month != std::end(kMonthMarks)) name = std::to_string(month - kMonthMarks + 1);
}

void NowStamp(TimeStamp& stamp) {
  const LocalMoment now = LocalNow();
  const std::string text = PrintFields("%Y%m%d-%H:%M:%S.", now.Fields) + Digits(now.Millisecond, 3);
  stamp[text.copy(stamp, sizeof(stamp) - 1)] = '\0';
}

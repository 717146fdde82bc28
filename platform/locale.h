// What the machine's regional settings decide: the code page of 8-bit text (the ANSI code page on Windows, Windows-1252
// on Linux), the system's error texts, the marks in numbers, and the clock with its time zone.
#pragma once

#include <cstdint>
#include <ctime>
#include <memory>
#include <string>
#include <string_view>

// The number of the code page in use.
unsigned SystemCodePage() noexcept;

// Each byte becomes its character in the code page. In Windows-1252 the five bytes without a character become U+0081,
// U+008D, U+008F, U+0090 and U+009D, so that no byte is lost there and back.
std::wstring CodePageToWide(std::string_view text);
// Into a place with room for one character per byte; returns their count. Does not allocate.
std::size_t CodePageToWide(std::string_view text, wchar_t* to) noexcept;

// A character outside the code page becomes '?'.
std::string WideToCodePage(std::wstring_view text);

// The system's text for an error number, in one line; empty if the system has none.
std::string SystemErrorText(unsigned long errorNumber);

// While it lives, printf and its like write numbers with a point on this thread, for libraries that print so.
class PointInNumbers {
 public:
  PointInNumbers();
  ~PointInNumbers();
  PointInNumbers(const PointInNumbers&) = delete;
  PointInNumbers& operator=(const PointInNumbers&) = delete;

 private:
  struct Former;
  std::unique_ptr<Former> Before;
};

// The marks of the user's region in numbers: before each three digits, and before the decimals.
struct NumberMarks {
  wchar_t Thousands = L',';
  wchar_t Decimal = L'.';
};
// A region without a mark for thousands gets the comma, or the point if its decimals have the comma.
NumberMarks UserNumberMarks();

// An instant is a count of seconds since 1970-01-01 00:00:00 UTC.

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

#include "platform/locale.h"

#include <langinfo.h>
#include <locale.h>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <cwchar>
#include <iterator>
#include <system_error>

namespace {

constexpr unsigned kFirstRow = 0x80;

// Windows-1252, bytes 0x80 to 0x9F; every other byte is the character of its own number.
constexpr wchar_t kRows[] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  // 80
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,  // 88
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 90
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,  // 98
};
static_assert(std::size(kRows) == 0xA0 - kFirstRow);

bool InRows(unsigned code) {
  return code >= kFirstRow && code < kFirstRow + std::size(kRows);
}

wchar_t WideOf(char byte) {
  const unsigned code = static_cast<unsigned char>(byte);
  return InRows(code) ? kRows[code - kFirstRow] : static_cast<wchar_t>(code);
}

char ByteOf(wchar_t character) {
  const auto code = static_cast<unsigned>(character);
  if (code <= 0xFF && !InRows(code)) return static_cast<char>(code);
  const auto* row = std::find(std::begin(kRows), std::end(kRows), character);
  return row == std::end(kRows) ? '?' : static_cast<char>(kFirstRow + static_cast<unsigned>(row - kRows));
}

}  // namespace

unsigned SystemCodePage() noexcept {
  return 1252;
}

std::wstring CodePageToWide(std::string_view text) {
  std::wstring wide(text.size(), L'\0');
  CodePageToWide(text, wide.data());
  return wide;
}

std::size_t CodePageToWide(std::string_view text, wchar_t* to) noexcept {
  std::transform(text.begin(), text.end(), to, WideOf);
  return text.size();
}

std::string WideToCodePage(std::wstring_view text) {
  std::string narrow(text.size(), '\0');
  std::transform(text.begin(), text.end(), narrow.begin(), ByteOf);
  return narrow;
}

std::string SystemErrorText(unsigned long errorNumber) {
  std::string text = std::system_category().message(static_cast<int>(errorNumber));
  // The library's text for an unknown number.
  return text.starts_with("Unknown error") ? std::string() : text;
}

namespace {

// The first character of a text of that locale; 0 for an empty one.
wchar_t FirstCharacter(const char* text, locale_t locale) {
  const locale_t former = uselocale(locale);
  wchar_t first = 0;
  std::mbstate_t state{};
  const std::size_t taken = std::mbrtowc(&first, text, MB_CUR_MAX, &state);
  uselocale(former);
  return taken == 0 || taken > MB_CUR_MAX ? L'\0' : first;
}

}  // namespace

NumberMarks UserNumberMarks() {
  NumberMarks marks;
  const locale_t locale = newlocale(LC_NUMERIC_MASK | LC_CTYPE_MASK, "", nullptr);
  if (locale == nullptr) return marks;
  const wchar_t decimal = FirstCharacter(nl_langinfo_l(RADIXCHAR, locale), locale);
  const wchar_t thousands = FirstCharacter(nl_langinfo_l(THOUSEP, locale), locale);
  freelocale(locale);
  if (decimal != 0) marks.Decimal = decimal;
  marks.Thousands = thousands != 0 ? thousands : (marks.Decimal == L',' ? L'.' : L',');
  return marks;
}

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

struct PointInNumbers::Former {
  locale_t Mine;
  locale_t Used;
};

PointInNumbers::PointInNumbers() : Before(std::make_unique<Former>()) {
  Before->Mine = newlocale(LC_NUMERIC_MASK, "C", duplocale(LC_GLOBAL_LOCALE));
  Before->Used = uselocale(Before->Mine);
}
PointInNumbers::~PointInNumbers() {
  uselocale(Before->Used);
  freelocale(Before->Mine);
}

#include "platform/locale.h"

#include <windows.h>

#include <algorithm>
#include <clocale>

namespace {

// Without this flag a letter outside the code page becomes a similar one. UTF-8 has no such letters and refuses the
// flag.
DWORD ToNarrowFlags() {
  return GetACP() == CP_UTF8 ? 0 : WC_NO_BEST_FIT_CHARS;
}

}  // namespace

unsigned SystemCodePage() noexcept {
  return GetACP();
}

std::wstring CodePageToWide(std::string_view text) {
  std::wstring wide(text.size(), L'\0');
  wide.resize(CodePageToWide(text, wide.data()));
  return wide;
}

std::size_t CodePageToWide(std::string_view text, wchar_t* to) noexcept {
  const int size = static_cast<int>(text.size());
  return static_cast<std::size_t>(std::max(0, MultiByteToWideChar(CP_ACP, 0, text.data(), size, to, size)));
}

std::string WideToCodePage(std::wstring_view text) {
  const DWORD flags = ToNarrowFlags();
  const int size = static_cast<int>(text.size());
  const int count = WideCharToMultiByte(CP_ACP, flags, text.data(), size, nullptr, 0, nullptr, nullptr);
  std::string narrow(count > 0 ? static_cast<std::size_t>(count) : 0, '\0');
  WideCharToMultiByte(CP_ACP, flags, text.data(), size, narrow.data(), count, nullptr, nullptr);
  return narrow;
}

namespace {
// Places for inserts stay, line breaks become blanks.
constexpr DWORD kFlags = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK;
static_assert(kFlags == 0x12FF);
}  // namespace

std::string SystemErrorText(unsigned long errorNumber) {
  char text[512];
  return {text, FormatMessageA(kFlags, nullptr, errorNumber, 0, text, sizeof text, nullptr)};
}

namespace {

// The first character; the second place is for the end of the text, the others for longer marks.
wchar_t RegionalMark(LCTYPE kind, wchar_t otherwise) {
  wchar_t text[8] = {};
  return GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, kind, text, 8) > 1 ? text[0] : otherwise;
}

}  // namespace

NumberMarks UserNumberMarks() {
  NumberMarks marks;
  marks.Decimal = RegionalMark(LOCALE_SDECIMAL, marks.Decimal);
  marks.Thousands = RegionalMark(LOCALE_STHOUSAND, marks.Decimal == L',' ? L'.' : L',');
  return marks;
}

bool UtcFields(std::int64_t instant, std::tm& fields) noexcept {
  return IsClockInstant(instant) && _gmtime64_s(&fields, &instant) == 0;
}

bool LocalFields(std::int64_t instant, std::tm& fields) noexcept {
  return IsClockInstant(instant) && _localtime64_s(&fields, &instant) == 0;
}

LocalMoment LocalNow() noexcept {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  LocalMoment moment{};
  moment.Fields.tm_year = now.wYear - 1900;
  moment.Fields.tm_mon = now.wMonth - 1;
  moment.Fields.tm_mday = now.wDay;
  moment.Fields.tm_wday = now.wDayOfWeek;
  moment.Fields.tm_hour = now.wHour;
  moment.Fields.tm_min = now.wMinute;
  moment.Fields.tm_sec = now.wSecond;
  moment.Millisecond = now.wMilliseconds;
  return moment;
}

std::int64_t CurrentInstant() noexcept {
  return _time64(nullptr);
}

struct PointInNumbers::Former {
  int IsOfThread;
  std::string Numbers;
};

PointInNumbers::PointInNumbers()
    : Before(std::make_unique<Former>(
          Former{_configthreadlocale(_ENABLE_PER_THREAD_LOCALE), std::setlocale(LC_NUMERIC, nullptr)})) {
  std::setlocale(LC_NUMERIC, "C");
}
PointInNumbers::~PointInNumbers() {
  std::setlocale(LC_NUMERIC, Before->Numbers.c_str());
  _configthreadlocale(Before->IsOfThread);
}

#include "terminal/sheets/sheet_cell.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <ctime>
#include <optional>

#include "foundations/text_tools.h"
#include "platform/locale.h"

namespace {

constexpr std::int64_t kSecondsOfDay = 86'400;
constexpr double kDaysTo1970 = 25'569;  // from 1899-12-30
constexpr int kExactDigits = 15;        // of a number in a spreadsheet
constexpr std::int64_t kLargestExact = 999'999'999'999'999;
constexpr int kMostDecimals = 15;
constexpr int kHiddenDecimals = 6;  // kept behind those of the column
constexpr int kMostSecondDecimals = 3;
constexpr std::int64_t kPowersOfTen[kMostSecondDecimals + 1] = {1, 10, 100, 1000};

// What times have in common: the number of seconds that they end before, and their parts.
struct TimeKind {
  SheetKind Kind;
  std::int64_t End;
  double DaysBefore;
  bool HasDate;
  bool HasClock;
};
constexpr TimeKind kTimeKinds[] = {
    {SheetKind::TimeOfDay, kSecondsOfDay, 0, false, true},
    {SheetKind::DateTime, kLastInstant + 1, kDaysTo1970, true, true},
    {SheetKind::Date, kLastInstant + 1, kDaysTo1970, true, false},
};

const TimeKind* FindTimeKind(SheetKind kind) {
  const auto* found = std::ranges::find(kTimeKinds, kind, &TimeKind::Kind);
  return found == std::end(kTimeKinds) ? nullptr : found;
}

template <typename... Format>
void AppendNumber(std::string& text, Format... format) {
  char digits[400];  // the largest double has 309 digits before the point
  text.append(digits, std::to_chars(digits, std::end(digits), format...).ptr);
}

void AppendPadded(std::string& text, std::int64_t number, std::size_t width) {
  const std::size_t from = text.size();
  AppendNumber(text, number);
  const std::size_t size = text.size() - from;
  if (size < width) text.insert(from, width - size, '0');
}

double ValueOf(std::string_view digits) {
  double value = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return value;
}

// What calculations leave in the last digits goes: with 4 decimals, 8.29999999999995 is 8.3.
double Rounded(double value, int decimals) {
  std::string digits;
  AppendNumber(digits, value, std::chars_format::general, kExactDigits);
  const double exact = ValueOf(digits);
  digits.clear();
  AppendNumber(digits, exact, std::chars_format::fixed, std::clamp(decimals, 0, kMostDecimals) + kHiddenDecimals);
  return ValueOf(digits);
}

// With the decimals of the column if they tell the rounded value, otherwise with as many as it takes.
void AssignDecimal(std::string& text, double rounded, int decimals) {
  text.clear();
  AppendNumber(text, rounded, std::chars_format::fixed, std::clamp(decimals, 0, kMostDecimals));
  if (ValueOf(text) == rounded) return;
  text.clear();
  AppendNumber(text, rounded, std::chars_format::fixed);
}

void AppendClock(std::string& text, std::int64_t secondsOfDay) {
  AppendPadded(text, secondsOfDay / 3600, 2);
  AppendPadded(text += ':', secondsOfDay / 60 % 60, 2);
  AppendPadded(text += ':', secondsOfDay % 60, 2);
}

void AppendDate(std::string& text, std::int64_t instant) {
  std::tm fields{};
  UtcFields(instant, fields);
  AppendPadded(text, fields.tm_year + 1900, 4);
  AppendPadded(text += '-', fields.tm_mon + 1, 2);
  AppendPadded(text += '-', fields.tm_mday, 2);
}

// False for seconds that the kind cannot show.
bool MakeTime(const TimeKind& kind, int decimals, double seconds, SheetCell& cell) {
  const int places = kind.HasClock ? std::clamp(decimals, 0, kMostSecondDecimals) : 0;
  const std::int64_t scale = kPowersOfTen[places];
  if (!(seconds >= 0 && seconds < static_cast<double>(kind.End))) return false;
  const std::int64_t ticks = std::llround(seconds * static_cast<double>(scale));
  const std::int64_t whole = ticks / scale;
  if (whole >= kind.End) return false;
  cell.Text.clear();
  if (kind.HasDate) AppendDate(cell.Text, whole);
  if (kind.HasDate && kind.HasClock) cell.Text += ' ';
  if (kind.HasClock) AppendClock(cell.Text, whole % kSecondsOfDay);
  if (places > 0) AppendPadded(cell.Text += '.', ticks % scale, static_cast<std::size_t>(places));
  const double shown = static_cast<double>(ticks) / static_cast<double>(scale * kSecondsOfDay);
  cell.Number = kind.DaysBefore + (kind.HasClock ? shown : std::floor(shown));
  cell.Type = SheetCell::Is::Number;
  return true;
}

void MakeNumber(const SheetColumn& column, double value, SheetCell& cell) {
  cell.Type = std::isfinite(value) && column.Kind != SheetKind::Text ? SheetCell::Is::Number : SheetCell::Is::Text;
  cell.Number = Rounded(value, column.Decimals) + 0.0;  // no negative zero
  if (std::isfinite(value)) return AssignDecimal(cell.Text, cell.Number, column.Decimals);
  cell.Text = std::isnan(value) ? "nan" : value < 0 ? "-inf" : "inf";
}

void MakeWhole(const SheetColumn& column, std::int64_t value, SheetCell& cell) {
  const bool isExact = value >= -kLargestExact && value <= kLargestExact;
  if (isExact && column.Kind == SheetKind::Decimal) return MakeNumber(column, static_cast<double>(value), cell);
  cell.Type = isExact && column.Kind != SheetKind::Text ? SheetCell::Is::Number : SheetCell::Is::Text;
  cell.Number = static_cast<double>(value);
  cell.Text.clear();
  AppendNumber(cell.Text, value);
}

}  // namespace

void AssignUtf8(std::string& to, std::wstring_view text) {
  to.clear();
  for (std::size_t at = 0; at < text.size();) AppendUtf8(to, NextCharacter(text, at));
}

void MakeSheetCell(const SheetColumn& column, const SheetValue& value, SheetCell& cell) {
  cell.Type = SheetCell::Is::Empty;
  cell.Text.clear();
  if (const auto* text = std::get_if<std::wstring>(&value)) {
    if (!text->empty()) cell.Type = SheetCell::Is::Text;
    return AssignUtf8(cell.Text, *text);
  }
  const auto* number = std::get_if<double>(&value);
  const auto* whole = std::get_if<std::int64_t>(&value);
  if (number == nullptr && whole == nullptr) return;
  const double seconds = number != nullptr ? *number : static_cast<double>(*whole);
  const TimeKind* time = FindTimeKind(column.Kind);
  if (time != nullptr && MakeTime(*time, column.Decimals, seconds, cell)) return;
  number != nullptr ? MakeNumber(column, *number, cell) : MakeWhole(column, *whole, cell);
  if (time != nullptr) cell.Type = SheetCell::Is::Text;
}

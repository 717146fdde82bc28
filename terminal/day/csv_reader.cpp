#include "terminal/day/csv_reader.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <utility>

#include "foundations/text_tools.h"
#include "terminal/common/errors.h"

namespace {

constexpr std::size_t kLongestLine = 65536;

std::string Joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ",") + name;
  return text;
}

}  // namespace

CsvReader::CsvReader(std::filesystem::path path, std::vector<std::string> columns, BadLineReport& badLines)
    : Bytes(std::move(path)), Columns(std::move(columns)), BadLines(badLines) {
  CheckHeader();
}

void CsvReader::CheckHeader() {
  if (Bytes.Peek(kByteOrderMark.size()).starts_with(kByteOrderMark)) Bytes.Drop(kByteOrderMark.size());
  std::string_view line;
  const std::string header = Joined(Columns);
  if (!NextLine(line) || line != header)
    throw TerminalError(ExitCode::File, PathText(Bytes.Path()) + ":1: the header must be \"" + header + "\"");
}

bool CsvReader::Next() {
  std::string_view line;
  while (NextLine(line)) {
    if (line.empty()) continue;
    const std::size_t count = SplitCsvLine(line, Fields, Reason);
    if (count == Columns.size()) return true;
    if (count != 0)
      Reason = std::to_string(count) + " fields where " + std::to_string(Columns.size()) + " are expected";
    Report(Reason);
  }
  return false;
}

// The line ends at a line feed or at the end of the file; the search stops after the longest line.
std::size_t CsvReader::LineEnd() {
  for (std::size_t searched = 0;;) {
    const std::string_view window = Bytes.Peek(searched + 1);
    const std::size_t end = window.find('\n', searched);
    if (end != std::string_view::npos) return end;
    if (window.size() == searched || searched > kLongestLine) return window.size();
    searched = window.size();
  }
}

// The line is valid until the next call.
bool CsvReader::NextLine(std::string_view& line) {
  for (;;) {
    const std::size_t end = LineEnd();
    const std::string_view window = Bytes.Peek(0);
    if (window.empty()) return false;
    ++Line;
    if (end <= kLongestLine) {
      line = window.substr(0, end);
      Bytes.Drop(std::min(end + 1, window.size()));
      if (line.ends_with('\r')) line.remove_suffix(1);
      return true;
    }
    Report("the line is longer than " + std::to_string(kLongestLine) + " bytes");
    DropLine();
  }
}

// Drops a line that is too long block by block.
void CsvReader::DropLine() {
  for (;;) {
    const std::string_view window = Bytes.Peek(1);
    const std::size_t end = window.find('\n');
    Bytes.Drop(end == std::string_view::npos ? window.size() : end + 1);
    if (end != std::string_view::npos || window.empty()) return;
  }
}

void CsvReader::ReportField(std::size_t column, const char* expected) {
  Report(Columns[column] + " \"" + Fields[column] + "\" is not " + expected);
}

namespace {

// Takes the field up to the next comma from the front of rest.
void TakePlainField(std::string_view& rest, std::string& field) {
  const std::size_t end = std::min(rest.find(','), rest.size());
  field.assign(rest.substr(0, end));
  rest.remove_prefix(end);
}

// Takes the field between quotes from the front of rest; false if its closing quote is missing.
bool TakeQuotedField(std::string_view& rest, std::string& field) {
  field.clear();
  for (rest.remove_prefix(1);; rest.remove_prefix(1)) {
    const std::size_t quote = rest.find('"');
    if (quote == std::string_view::npos) return false;
    field.append(rest.substr(0, quote));
    rest.remove_prefix(quote + 1);
    if (!rest.starts_with('"')) return true;
    field.push_back('"');
  }
}

}  // namespace

std::size_t SplitCsvLine(std::string_view line, std::vector<std::string>& fields, std::string& reason) {
  for (std::size_t count = 0;; line.remove_prefix(1)) {
    if (fields.size() == count) fields.emplace_back();
    std::string& field = fields[count++];
    if (!line.starts_with('"')) {
      TakePlainField(line, field);
    } else if (!TakeQuotedField(line, field)) {
      reason = "field " + std::to_string(count) + " has no closing quote";
      return 0;
    }
    if (line.empty()) return count;
    if (line.front() == ',') continue;
    reason = "field " + std::to_string(count) + " has text behind its closing quote";
    return 0;
  }
}

namespace {

template <typename Number>
bool ReadWhole(std::string_view text, Number& value) {
  Number read{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), read);
  if (error != std::errc() || end != text.data() + text.size()) return false;
  value = read;
  return true;
}

bool IsControl(char c) {
  return static_cast<unsigned char>(c) < ' ' || c == '\x7F';
}

}  // namespace

FieldFault ReadCsvField(std::string_view text, std::size_t limit, std::string& value) {
  if (text.size() > limit) return "a shorter text";
  if (std::any_of(text.begin(), text.end(), IsControl)) return "a text without control characters";
  value.assign(text);
  return nullptr;
}

FieldFault ReadCsvField(std::string_view text, std::size_t /*limit*/, std::uint8_t& value) {
  return ReadWhole(text, value) ? nullptr : "a whole number from 0 to 255";
}

FieldFault ReadCsvField(std::string_view text, std::size_t /*limit*/, std::uint16_t& value) {
  return ReadWhole(text, value) ? nullptr : "a whole number from 0 to 65535";
}

FieldFault ReadCsvField(std::string_view text, std::size_t /*limit*/, std::uint32_t& value) {
  return ReadWhole(text, value) ? nullptr : "a whole number from 0 to 4294967295";
}

FieldFault ReadCsvField(std::string_view text, std::size_t /*limit*/, double& value) {
  double read = 0;
  if (!ReadWhole(text, read) || !std::isfinite(read)) return "a number";
  value = read;
  return nullptr;
}

FieldFault ReadCsvField(std::string_view text, std::size_t /*limit*/, TradeSide& value) {
  if (text != "Buy" && text != "Sell") return "Buy or Sell";
  value = text == "Buy" ? TradeSide::Buy : TradeSide::Sell;
  return nullptr;
}

FieldFault ReadCsvField(std::string_view text, std::size_t /*limit*/, DayTime& value) {
  return ParseDayTime(text, value) ? nullptr : "a time such as 20131007-12:00:00";
}

namespace {

constexpr std::size_t kDateSize = 8;       // yyyyMMdd
constexpr std::size_t kTimeOfDaySize = 8;  // HH:mm:ss

bool ParseDigits(std::string_view text, unsigned& value) {
  value = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') return false;
    value = value * 10 + static_cast<unsigned>(c - '0');
  }
  return true;
}

bool ParseDate(std::string_view text, std::int64_t& days) {
  unsigned year = 0;
  unsigned month = 0;
  unsigned day = 0;
  if (!ParseDigits(text.substr(0, 4), year) || !ParseDigits(text.substr(4, 2), month) ||
      !ParseDigits(text.substr(6, 2), day))
    return false;
  const std::chrono::year_month_day date{std::chrono::year(static_cast<int>(year)), std::chrono::month(month),
                                         std::chrono::day(day)};
  if (!date.ok()) return false;
  days = std::chrono::sys_days(date).time_since_epoch().count();
  return true;
}

}  // namespace

std::string DayClockText(std::optional<std::int64_t> seconds) {
  if (!seconds) return {};
  const std::int64_t date = DateOf(*seconds);
  const std::chrono::year_month_day day{std::chrono::sys_days(std::chrono::days(date))};
  const auto second = static_cast<int>(*seconds - date * kSecondsPerDay);
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02u-%02u %02d:%02d:%02d", static_cast<int>(day.year()),
                static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()), second / 3600, second / 60 % 60,
                second % 60);
  return text;
}

bool ParseTimeOfDay(std::string_view text, std::int64_t& seconds) {
  unsigned hour = 0;
  unsigned minute = 0;
  unsigned second = 0;
  if (text.size() != kTimeOfDaySize || text[2] != ':' || text[5] != ':' || !ParseDigits(text.substr(0, 2), hour) ||
      !ParseDigits(text.substr(3, 2), minute) || !ParseDigits(text.substr(6, 2), second))
    return false;
  if (hour > 23 || minute > 59 || second > 59) return false;
  seconds = std::int64_t{hour} * 3600 + minute * 60 + second;
  return true;
}

bool ParseDayTime(std::string_view text, DayTime& time) {
  std::int64_t days = 0;
  std::int64_t seconds = 0;
  if (text.size() != kDateSize + 1 + kTimeOfDaySize || text[kDateSize] != '-' ||
      !ParseDate(text.substr(0, kDateSize), days) || !ParseTimeOfDay(text.substr(kDateSize + 1), seconds))
    return false;
  time.Text.assign(text);
  time.Seconds = days * kSecondsPerDay + seconds;
  return true;
}

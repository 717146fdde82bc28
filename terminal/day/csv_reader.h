// CsvReader: reads a CSV file with a fixed header line by line, and a line into a record by a table of its columns.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "terminal/common/errors.h"
#include "terminal/day/message_file.h"

// Times of a day file, "yyyyMMdd-HH:mm:ss", and times of day, "HH:mm:ss". They have no zone: their order and the
// seconds between them count.
inline constexpr std::int64_t kSecondsPerDay = 86400;

// The text goes over the wire unchanged; the seconds count from 1970-01-01 00:00:00.
struct DayTime {
  std::string Text;
  std::int64_t Seconds = 0;
};

// Strict: digits in every place, a date of the calendar, hours to 23, minutes and seconds to 59. On failure the result
// stays unchanged.
bool ParseDayTime(std::string_view text, DayTime& time);
bool ParseTimeOfDay(std::string_view text, std::int64_t& seconds);

// "2013-10-07 10:23:45"; empty for nothing.
std::string DayClockText(std::optional<std::int64_t> seconds);

// The date of a count of seconds, as days since 1970-01-01.
constexpr std::int64_t DateOf(std::int64_t seconds) {
  const std::int64_t days = seconds / kSecondsPerDay;
  return seconds % kSecondsPerDay < 0 ? days - 1 : days;
}

// The kinds of value that a field can have, each with its strict reader: no blanks, no sign, nothing after the number.

// As a trade message carries it.
enum class TradeSide : std::uint8_t { Buy = 1, Sell = 2 };

// Stores the value and returns null, or returns what the field should be and leaves the value unchanged. limit is the
// longest text in characters; other kinds ignore it.
using FieldFault = const char*;
FieldFault ReadCsvField(std::string_view text, std::size_t limit, std::string& value);
FieldFault ReadCsvField(std::string_view text, std::size_t limit, std::uint8_t& value);
FieldFault ReadCsvField(std::string_view text, std::size_t limit, std::uint16_t& value);
FieldFault ReadCsvField(std::string_view text, std::size_t limit, std::uint32_t& value);
FieldFault ReadCsvField(std::string_view text, std::size_t limit, double& value);
FieldFault ReadCsvField(std::string_view text, std::size_t limit, TradeSide& value);
FieldFault ReadCsvField(std::string_view text, std::size_t limit, DayTime& value);

// Next stops at each line with as many fields as columns. It skips empty lines and reports others. A wrong header is a
// TerminalError. Lines end with LF or CR LF; a byte order mark is skipped. A field cannot hold a line end.
class CsvReader {
 public:
  CsvReader(std::filesystem::path path, std::vector<std::string> columns, BadLineReport& badLines);

  bool Next();
  const std::string& Field(std::size_t column) const { return Fields[column]; }
  // Reports the current line.
  void Report(const std::string& reason) { BadLines.AtLine(Bytes.Path(), Line, reason); }
  // Reports that column of the current line, with what it should be.
  void ReportField(std::size_t column, const char* expected);

 private:
  bool NextLine(std::string_view& line);
  std::size_t LineEnd();
  void DropLine();
  void CheckHeader();

  FileBytes Bytes;
  std::vector<std::string> Columns;
  BadLineReport& BadLines;
  std::uint64_t Line = 0;
  std::vector<std::string> Fields;
  std::string Reason;
};

// A column: its name in the header, its place in the record, the longest text and whether it may be empty.
template <typename Record>
struct CsvColumn {
  const char* Name;
  std::variant<std::string Record::*, std::uint8_t Record::*, std::uint16_t Record::*, std::uint32_t Record::*,
               double Record::*, TradeSide Record::*, DayTime Record::*>
      Place;
  std::size_t Limit = 0;
  bool MayBeEmpty = false;
};

template <typename Record, std::size_t Count>
std::vector<std::string> ColumnNames(const CsvColumn<Record> (&columns)[Count]) {
  std::vector<std::string> names;
  for (const auto& column : columns) names.emplace_back(column.Name);
  return names;
}

// Reads the current line. If a field is wrong, reports the line and returns false.
template <typename Record, std::size_t Count>
bool ReadCsvRecord(CsvReader& file, const CsvColumn<Record> (&columns)[Count], Record& record) {
  for (std::size_t i = 0; i < Count; ++i) {
    const std::string& field = file.Field(i);
    const bool missing = field.empty() && !columns[i].MayBeEmpty;
    const FieldFault fault =
        missing ? "filled"
                : std::visit([&](auto place) { return ReadCsvField(field, columns[i].Limit, record.*place); },
                             columns[i].Place);
    if (fault == nullptr) continue;
    file.ReportField(i, fault);
    return false;
  }
  return true;
}

// Reads the next good line; false at the end of the file.
template <typename Record, std::size_t Count>
bool NextCsvRecord(CsvReader& file, const CsvColumn<Record> (&columns)[Count], Record& record) {
  while (file.Next())
    if (ReadCsvRecord(file, columns, record)) return true;
  return false;
}

// Splitting of one CSV line into its fields.
//
//   line   := field ("," field)*
//   field  := plain | '"' (any character but '"', or '""' for one '"')* '"'
//   plain  := characters other than "," and not beginning with '"'

// Fills fields, whose texts are reused from line to line, and returns their count. If the line breaks the grammar,
// returns 0 and sets reason. An empty line has one empty field.
std::size_t SplitCsvLine(std::string_view line, std::vector<std::string>& fields, std::string& reason);

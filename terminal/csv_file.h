// CCsvFile: the lines of a CSV file with a fixed header, one after the other, with their numbers; and the reading of a
// line into a record by a table of its columns. One thread.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "terminal/bad_lines.h"
#include "terminal/csv_fields.h"
#include "terminal/file_bytes.h"

// Promises: Next stops at each line that has as many fields as there are columns; any other but an empty one is
// reported and passed. A first line that is not the header is a TerminalError. Line ends are LF or CR LF; a byte order
// mark ahead of the header is passed over. A field cannot hold a line end.
class CCsvFile {
 public:
  CCsvFile(std::filesystem::path path, std::vector<std::string> columns, CBadLines& badLines);

  bool Next();
  const std::string& Field(std::size_t column) const { return Fields[column]; }
  // Reports the line that Next stopped at.
  void Report(const std::string& reason) { BadLines.AtLine(Bytes.Path(), Line, reason); }
  // Reports the column's field on that line, which would have to be what expected says.
  void ReportField(std::size_t column, const char* expected);

 private:
  bool NextLine(std::string_view& line);
  std::size_t LineEnd();
  void DropLine();
  void CheckHeader();

  CFileBytes Bytes;
  std::vector<std::string> Columns;
  CBadLines& BadLines;
  std::uint64_t Line = 0;
  std::vector<std::string> Fields;
  std::string Reason;
};

// One column: its name in the header, where its value goes, the longest text and whether it may be empty.
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

// Reads the line that Next stopped at; false, with the line reported, when a field is not what its column asks for.
template <typename Record, std::size_t Count>
bool ReadCsvRecord(CCsvFile& file, const CsvColumn<Record> (&columns)[Count], Record& record) {
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

// The next good record of the file; false at its end.
template <typename Record, std::size_t Count>
bool NextCsvRecord(CCsvFile& file, const CsvColumn<Record> (&columns)[Count], Record& record) {
  while (file.Next())
    if (ReadCsvRecord(file, columns, record)) return true;
  return false;
}

// A cell as it is written: a value brought together with the kind of its column. And the bytes of both kinds of files.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "terminal/sheets/sheet.h"

struct SheetCell {
  enum class Is : std::uint8_t { Empty, Text, Number };
  Is Type = Is::Empty;
  std::string Text;   // UTF-8: the text, or the number as CSV has it
  double Number = 0;  // as a workbook has it: 15 digits; times are days, dates count from 1899-12-30
};

// Makes the cell in place, so that its text keeps its room.
void MakeSheetCell(const SheetColumn& column, const SheetValue& value, SheetCell& cell);

// Replaces the text. With 16-bit characters pairs become one character; half a pair becomes U+FFFD.
void AssignUtf8(std::string& to, std::wstring_view text);

// The whole table as CSV.
std::string CsvOf(const SheetSource& source);

// Why a table cannot be saved, without the file's name.
struct SheetError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// The whole table as a workbook; throws SheetError.
std::string WorkbookOf(const SheetSource& source);

// Throws SheetError unless the bytes are a complete workbook with so many rows and cells in its sheet.
void CheckWorkbook(std::string_view bytes, std::uint64_t rows, std::uint64_t cells);

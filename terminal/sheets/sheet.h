// Saved tables: what a grid gives to be saved (SheetSource), and SaveSheet, which writes it as CSV or as a workbook.
//
// CSV is for programs: UTF-8 with a byte order mark, a line of titles, CR LF after each line, commas. Numbers are
// plain, with a point. A text is quoted if it needs to be and if it does not begin with a letter, so that 0012 is seen
// to be a text by readers that heed quotes; many spreadsheets do not. A workbook keeps each value with its kind:
// numbers are numbers, times are times, texts stay texts (also 0012 and =1+1), under a frozen line of titles with a
// filter.
//
// The same table gives the same bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <variant>

// How the numbers of a column are written. Texts may stand in any column.
enum class SheetKind : std::uint8_t {
  Text,       // texts and identifiers; a number becomes its digits
  Whole,      // 1234
  Decimal,    // 1313.25
  TimeOfDay,  // 17:30:00, from seconds of the day
  DateTime,   // 2013-10-07 17:30:00, from seconds since 1970-01-01 00:00:00 of the clock that is shown: no zone is
              // applied
  Date,       // 2013-10-07, from the same
};

struct SheetColumn {
  std::wstring Title;
  SheetKind Kind = SheetKind::Text;
  // Of a number, which keeps up to six more where it has them. Of seconds, 0 to 3: 3 writes 17:30:00.250.
  int Decimals = 0;
  int WidthChars = 0;  // of the column in a workbook; 0 leaves the usual width
};

// Nothing, a text, a number, which is rounded to 15 digits as in spreadsheets, and a whole number. Seconds may be
// either. What a kind cannot show becomes a text: a number that is not finite, a whole number of more than 15 digits in
// a workbook, seconds outside the day or before 1970.
using SheetValue = std::variant<std::monostate, std::wstring, double, std::int64_t>;

class SheetSource {
 public:
  virtual ~SheetSource() = default;
  virtual std::size_t Rows() const = 0;
  virtual std::span<const SheetColumn> Columns() const = 0;
  // Called once for each cell, row by row from the first. May throw to end the saving; the old file stays.
  virtual SheetValue ValueAt(std::size_t row, std::size_t column) const = 0;
};

// False if this build has no workbooks; then SaveSheet refuses them.
bool CanSaveWorkbooks() noexcept;

// Writes a workbook if the file's name ends with .xlsx in any case, otherwise CSV. The new file replaces the old one at
// once. Throws TerminalError with file and reason; the old file then stays. A workbook refuses what it cannot hold:
// more than 1,048,575 rows, 16,384 columns, or 32,767 characters in a text. A million rows of eleven columns take two
// seconds and 130 MB of memory as CSV; as a workbook ten times as long, about half of it after the last ValueAt,
// 75 MB, and 1.2 GB in the folder for temporary files.
void SaveSheet(const SheetSource& source, const std::filesystem::path& file);

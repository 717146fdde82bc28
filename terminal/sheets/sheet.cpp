#include "terminal/sheets/sheet.h"

#include <new>

#include "foundations/text_tools.h"
#include "platform/files.h"
#include "terminal/common/errors.h"
#include "terminal/sheets/sheet_cell.h"

namespace {

constexpr std::string_view kSpecial = "\",\r\n";

bool IsLetter(char byte) {
  return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') || static_cast<unsigned char>(byte) >= 0x80;
}

bool NeedsQuotes(std::string_view text) {
  return !text.empty() &&
         (!IsLetter(text.front()) || text.back() == ' ' || text.find_first_of(kSpecial) != std::string_view::npos);
}

void AppendText(std::string& csv, std::string_view text) {
  if (!NeedsQuotes(text)) {
    csv += text;
    return;
  }
  csv += '"';
  for (const char byte : text) {
    if (byte == '"') csv += '"';
    csv += byte;
  }
  csv += '"';
}

bool IsWorkbook(const std::filesystem::path& file) {
  return ToUpperText(PathText(file.extension())) == ".XLSX";
}

}  // namespace

std::string CsvOf(const SheetSource& source) {
  const auto columns = source.Columns();
  std::string csv(kByteOrderMark);
  SheetCell cell;
  for (std::size_t at = 0; at < columns.size(); ++at) {
    AssignUtf8(cell.Text, columns[at].Title);
    AppendText(at == 0 ? csv : csv += ',', cell.Text);
  }
  csv += "\r\n";
  for (std::size_t row = 0; row < source.Rows(); ++row) {
    for (std::size_t at = 0; at < columns.size(); ++at) {
      MakeSheetCell(columns[at], source.ValueAt(row, at), cell);
      if (at > 0) csv += ',';
      cell.Type == SheetCell::Is::Text ? AppendText(csv, cell.Text) : void(csv += cell.Text);
    }
    csv += "\r\n";
  }
  return csv;
}

namespace {

std::string BytesFor(const SheetSource& source, const std::filesystem::path& file) try {
  return IsWorkbook(file) ? WorkbookOf(source) : CsvOf(source);
} catch (const SheetError& error) {
  throw TerminalError(ExitCode::File, PathText(file) + ": " + error.what());
} catch (const std::bad_alloc&) {
  throw TerminalError(ExitCode::File, PathText(file) + ": the table is too large for the memory");
}

}  // namespace

void SaveSheet(const SheetSource& source, const std::filesystem::path& file) {
  unsigned long errorNumber = 0;
  if (ReplaceFileContent(file, BytesFor(source, file), errorNumber)) return;
  ThrowFileError(file, "cannot be written", std::error_code(static_cast<int>(errorNumber), std::system_category()));
}

#include <xlsxwriter.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <random>
#include <span>
#include <utility>
#include <vector>

#include "foundations/paths.h"
#include "platform/locale.h"
#include "terminal/common/errors.h"
#include "terminal/sheets/sheet_cell.h"

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostRows = LXW_ROW_MAX - 1;  // under the titles
constexpr std::size_t kMostColumns = LXW_COL_MAX;
constexpr std::size_t kMostCharacters = 32'767;  // of 16 bits
constexpr std::time_t kCreated = 1'356'998'400;  // always the same, 2013-01-01, for the same bytes
constexpr int kFilterButtonChars = 2;            // beside a title

struct NumberFormat {
  SheetKind Kind;
  const char* Whole;
  const char* BeforeDecimals;
};
constexpr NumberFormat kFormats[] = {
    {SheetKind::Text, "@", nullptr},
    {SheetKind::Whole, "0", nullptr},
    {SheetKind::Decimal, "0", "0."},
    {SheetKind::TimeOfDay, "hh:mm:ss", "hh:mm:ss."},
    {SheetKind::DateTime, "yyyy-mm-dd hh:mm:ss", "yyyy-mm-dd hh:mm:ss."},
    {SheetKind::Date, "yyyy-mm-dd", nullptr},
};

std::string FormatOf(const SheetColumn& column) {
  const auto* format = std::ranges::find(kFormats, column.Kind, &NumberFormat::Kind);
  if (format->BeforeDecimals == nullptr || column.Decimals <= 0) return format->Whole;
  const int most = column.Kind == SheetKind::Decimal ? 15 : 3;
  return format->BeforeDecimals + std::string(static_cast<std::size_t>(std::min(column.Decimals, most)), '0');
}

// A folder for the library's files, which nobody else has.
class WorkFolder {
 public:
  WorkFolder() {
    constexpr int kAttempts = 64;
    std::random_device random;
    std::error_code error;
    const fs::path base = fs::temp_directory_path(error);
    for (int attempt = 0; attempt < kAttempts && !error; ++attempt) {
      Path = base / ("tradebook-sheet-" + std::to_string(random()));
      if (fs::create_directory(Path, error)) break;
      Path.clear();
    }
    if (Path.empty())
      throw SheetError("no folder can be made for temporary files" + (error ? ": " + error.message() : std::string()));
    fs::permissions(Path, fs::perms::owner_all, error);
  }
  ~WorkFolder() {
    std::error_code ignored;
    fs::remove_all(Path, ignored);
  }
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;
  fs::path Path;
};

void Require(lxw_error error) {
  if (error != LXW_NO_ERROR) throw SheetError(std::string("the workbook cannot be written: ") + lxw_strerror(error));
}

template <typename Made>
Made& RequireMade(Made* made) {
  if (made == nullptr) throw SheetError("the workbook cannot be begun: memory or room for temporary files is missing");
  return *made;
}

// The library's workbook with one sheet. Its rows wait in a temporary file, so that memory does not grow with them.
class Workbook {
 public:
  explicit Workbook(const fs::path& folder) : Folder(PathText(folder)), File(folder / "workbook.xlsx") {
    lxw_workbook_options options{LXW_TRUE, Folder.data(), LXW_FALSE};
    Book = &RequireMade(workbook_new_opt(PathText(File).c_str(), &options));
    Sheet = workbook_add_worksheet(Book, nullptr);
    lxw_doc_properties properties{};
    properties.created = kCreated;
    workbook_set_properties(Book, &properties);
  }
  ~Workbook() {
    if (Book == nullptr) return;
    if (Sheet != nullptr && Sheet->optimize_tmpfile != nullptr) std::fclose(Sheet->optimize_tmpfile);
    lxw_workbook_free(Book);
  }
  Workbook(const Workbook&) = delete;
  Workbook& operator=(const Workbook&) = delete;

  lxw_workbook& Whole() { return *Book; }
  lxw_worksheet& Table() { return RequireMade(Sheet); }

  std::string Close() {
    Sheet = nullptr;
    Require(workbook_close(std::exchange(Book, nullptr)));
    return ReadWholeFile(File);
  }

 private:
  std::string Folder;
  fs::path File;
  lxw_workbook* Book = nullptr;
  lxw_worksheet* Sheet = nullptr;
};

bool IsHex(char byte) {
  return (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'F') || (byte >= 'a' && byte <= 'f');
}

// In a workbook _xHHHH_ stands for a character; the library writes control characters so. Where the text itself has it,
// its first byte is written so. What XML cannot hold becomes U+FFFD.
std::string_view InWorkbook(std::string& text) {
  constexpr std::size_t kEscapeSize = 7;
  constexpr std::string_view kEscapedLine = "_x005F", kNoCharacter = "\xEF\xBF\xBD";
  for (std::size_t at = 0; (at = text.find("_x", at)) != std::string::npos; ++at) {
    const std::string_view escape = std::string_view(text).substr(at, kEscapeSize);
    if (escape.size() < kEscapeSize || escape[6] != '_' || !std::ranges::all_of(escape.substr(2, 4), IsHex)) continue;
    text.insert(at, kEscapedLine);
    at += kEscapedLine.size();
  }
  for (std::size_t at = 0; (at = text.find('\0', at)) != std::string::npos;) text.replace(at, 1, kNoCharacter);
  for (const char* none : {"\xEF\xBF\xBE", "\xEF\xBF\xBF"})
    for (std::size_t at = 0; (at = text.find(none, at)) != std::string::npos;) text.replace(at, 3, kNoCharacter);
  return text;
}

std::size_t Utf16Size(std::string_view utf8) {
  return static_cast<std::size_t>(std::ranges::count_if(utf8, [](char byte) { return (byte & 0xC0) != 0x80; }) +
                                  std::ranges::count_if(utf8, [](char byte) { return (byte & 0xF8) == 0xF0; }));
}

// Writes the titles and rows of a source, from the top.
class SheetWriter {
 public:
  SheetWriter(const SheetSource& source, Workbook& book) : Source(source), Columns(source.Columns()), Book(book) {
    for (const SheetColumn& column : Columns) Formats.push_back(FormatFor(FormatOf(column)));
  }

  void Write() {
    WriteFrame();
    for (std::size_t row = 0; row < Source.Rows(); ++row) WriteRow(row);
  }
  std::uint64_t CellsWritten() const { return Cells; }
  // A row without cells is not in the file.
  std::uint64_t RowsWritten() const { return Lines; }

 private:
  lxw_format* FormatFor(const std::string& shown) {
    lxw_format& format = RequireMade(workbook_add_format(&Book.Whole()));
    format_set_num_format(&format, shown.c_str());
    return &format;
  }

  // The titles, bold and frozen, with the filter; and no marks at numbers that are texts.
  void WriteFrame() {
    lxw_worksheet* table = &Book.Table();
    lxw_format& bold = RequireMade(workbook_add_format(&Book.Whole()));
    format_set_bold(&bold);
    for (std::size_t at = 0; at < Columns.size(); ++at) SetWidth(at);
    if (Columns.empty()) return;
    const auto last = static_cast<lxw_col_t>(Columns.size() - 1);
    const auto end = static_cast<lxw_row_t>(Source.Rows());
    Require(worksheet_autofilter(table, 0, 0, end, last));
    worksheet_freeze_panes(table, 1, 0);
    char range[LXW_MAX_CELL_RANGE_LENGTH];
    lxw_rowcol_to_range(range, 0, 0, end, last);
    Require(worksheet_ignore_errors(table, LXW_IGNORE_NUMBER_STORED_AS_TEXT, range));
    for (std::size_t at = 0; at < Columns.size(); ++at) {
      AssignUtf8(Cell.Text, Columns[at].Title);
      WriteText(0, at, &bold);
    }
  }

  void SetWidth(std::size_t at) {
    const SheetColumn& column = Columns[at];
    if (column.WidthChars <= 0) return;
    const int title = static_cast<int>(column.Title.size()) + kFilterButtonChars;
    const auto number = static_cast<lxw_col_t>(at);
    Require(worksheet_set_column(&Book.Table(), number, number, std::clamp(std::max(column.WidthChars, title), 1, 255),
                                 nullptr));
  }

  void WriteRow(std::size_t row) {
    const auto line = static_cast<lxw_row_t>(row + 1);
    for (std::size_t at = 0; at < Columns.size(); ++at) {
      MakeSheetCell(Columns[at], Source.ValueAt(row, at), Cell);
      if (Cell.Type == SheetCell::Is::Text)
        WriteText(line, at, Columns[at].Kind == SheetKind::Text ? Formats[at] : nullptr);
      if (Cell.Type != SheetCell::Is::Number) continue;
      Require(worksheet_write_number(&Book.Table(), line, static_cast<lxw_col_t>(at), Cell.Number, Formats[at]));
      CountCell(line);
    }
  }

  // Never as a formula or link: the library makes those in other functions.
  void WriteText(lxw_row_t line, std::size_t at, lxw_format* format) {
    if (Cell.Text.empty()) return;
    if (Utf16Size(Cell.Text) > kMostCharacters)
      throw SheetError("the text in row " + std::to_string(line + 1) + ", column " + std::to_string(at + 1) +
                       " is longer than the 32,767 characters that a workbook takes; save as .csv instead");
    const std::string text(InWorkbook(Cell.Text));
    Require(worksheet_write_string(&Book.Table(), line, static_cast<lxw_col_t>(at), text.c_str(), format));
    CountCell(line);
  }

  void CountCell(lxw_row_t line) {
    ++Cells;
    Lines += LastLine != line;
    LastLine = line;
  }

  const SheetSource& Source;
  std::span<const SheetColumn> Columns;
  Workbook& Book;
  std::vector<lxw_format*> Formats;
  SheetCell Cell;
  std::uint64_t Cells = 0;
  std::uint64_t Lines = 0;
  std::optional<lxw_row_t> LastLine;
};

void RequireRoom(const SheetSource& source) {
  if (source.Rows() > kMostRows)
    throw SheetError("the table has " + WithThousands(source.Rows()) + " rows and a workbook takes " +
                     WithThousands(kMostRows) + "; save as .csv instead");
  if (source.Columns().size() > kMostColumns)
    throw SheetError("the table has " + WithThousands(source.Columns().size()) + " columns and a workbook takes " +
                     WithThousands(kMostColumns) + "; save as .csv instead");
}

}  // namespace

bool CanSaveWorkbooks() noexcept {
  return true;
}

std::string WorkbookOf(const SheetSource& source) {
  RequireRoom(source);
  const PointInNumbers point;
  const WorkFolder folder;
  Workbook book(folder.Path);
  SheetWriter writer(source, book);
  writer.Write();
  std::string bytes = book.Close();
  CheckWorkbook(bytes, writer.RowsWritten(), writer.CellsWritten());
  return bytes;
}

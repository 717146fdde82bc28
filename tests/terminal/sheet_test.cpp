#include "terminal/sheets/sheet.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <limits>
#include <optional>
#include <stdexcept>
#include <vector>

#include "terminal/common/errors.h"
#include "terminal/sheets/sheet_cell.h"
#include "tests/support/own_folder.h"

namespace {

namespace fs = std::filesystem;

struct TestSheet : SheetSource {
  std::size_t Rows() const override { return RowCount.value_or(Cells.size()); }
  std::span<const SheetColumn> Columns() const override { return Heads; }
  SheetValue ValueAt(std::size_t row, std::size_t column) const override {
    if (Fails) throw std::runtime_error("stopped");
    return row < Cells.size() ? Cells[row][column] : SheetValue();
  }
  std::vector<SheetColumn> Heads;
  std::vector<std::vector<SheetValue>> Cells;
  std::optional<std::size_t> RowCount;
  bool Fails = false;
};

using Csv = OwnFolder;

std::string CellOf(const SheetColumn& column, const SheetValue& value) {
  SheetCell cell;
  MakeSheetCell(column, value, cell);
  return (cell.Type == SheetCell::Is::Text ? "text " : cell.Type == SheetCell::Is::Number ? "number " : "") + cell.Text;
}

constexpr double kNan = std::numeric_limits<double>::quiet_NaN(), kInfinity = std::numeric_limits<double>::infinity();
constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();

struct CellCase {
  SheetKind Kind;
  int Decimals;
  SheetValue Value;
  const char* Cell;
};
// clang-format off
const CellCase kCells[] = {
    {SheetKind::Text, 0, L"0012", "text 0012"},
    {SheetKind::Text, 0, std::int64_t{12}, "text 12"},
    {SheetKind::Text, 0, 1.5, "text 1.5"},
    {SheetKind::Text, 0, L"", ""},
    {SheetKind::Text, 0, {}, ""},
    {SheetKind::Text, 0, L"\x20AC\xE4\xFFFD", "text \xE2\x82\xAC\xC3\xA4\xEF\xBF\xBD"},
    {SheetKind::Whole, 0, std::int64_t{-7}, "number -7"},
    {SheetKind::Whole, 0, 7.0, "number 7"},
    {SheetKind::Whole, 0, 7.5, "number 7.5"},
    {SheetKind::Whole, 0, L"n/a", "text n/a"},
    {SheetKind::Whole, 0, std::int64_t{999'999'999'999'999}, "number 999999999999999"},
    {SheetKind::Whole, 0, std::int64_t{1'000'000'000'000'000}, "text 1000000000000000"},
    {SheetKind::Whole, 0, -kMost, "text -9223372036854775807"},
    {SheetKind::Decimal, 2, 1313.25, "number 1313.25"},
    {SheetKind::Decimal, 2, 1313.5, "number 1313.50"},
    {SheetKind::Decimal, 2, std::int64_t{3}, "number 3.00"},
    {SheetKind::Decimal, 2, 1313.2525, "number 1313.2525"},
    {SheetKind::Decimal, 2, 262650.00000000003, "number 262650.00"},
    {SheetKind::Decimal, 2, -0.0, "number 0.00"},
    {SheetKind::Decimal, 2, 1e22, "number 10000000000000000000000.00"},
    {SheetKind::Decimal, 0, 1.0 / 3, "number 0.333333"},
    {SheetKind::Decimal, 4, 1321.3 - 1313, "number 8.3000"},
    {SheetKind::Decimal, 9, 1.0 / 3, "number 0.333333333333333"},
    {SheetKind::Decimal, 2, kNan, "text nan"},
    {SheetKind::Decimal, 2, -kInfinity, "text -inf"},
    {SheetKind::TimeOfDay, 0, std::int64_t{0}, "number 00:00:00"},
    {SheetKind::TimeOfDay, 0, std::int64_t{86'399}, "number 23:59:59"},
    {SheetKind::TimeOfDay, 3, 36'900.25, "number 10:15:00.250"},
    {SheetKind::TimeOfDay, 3, 0.0004, "number 00:00:00.000"},
    {SheetKind::TimeOfDay, 0, std::int64_t{86'400}, "text 86400"},
    {SheetKind::TimeOfDay, 3, 86'399.9999, "text 86399.9999"},
    {SheetKind::TimeOfDay, 0, std::int64_t{-1}, "text -1"},
    {SheetKind::TimeOfDay, 0, kNan, "text nan"},
    {SheetKind::DateTime, 0, std::int64_t{1'381'166'100}, "number 2013-10-07 17:15:00"},
    {SheetKind::DateTime, 1, 1'381'166'100.5, "number 2013-10-07 17:15:00.5"},
    {SheetKind::DateTime, 0, kMost, "text 9223372036854775807"},
    {SheetKind::Date, 3, std::int64_t{1'381'166'100}, "number 2013-10-07"},
};
// clang-format on

TEST(SheetCells, AreMadeOfValueAndKind) {
  for (const auto& [kind, decimals, value, cell] : kCells) EXPECT_EQ(CellOf({L"", kind, decimals, 0}, value), cell);
}

TEST(SheetCells, TellDaysToWorkbooks) {
  const auto days = [](SheetKind kind, double seconds) {
    SheetCell cell;
    MakeSheetCell({L"", kind, 0, 0}, seconds, cell);
    return cell.Number;
  };
  EXPECT_EQ(days(SheetKind::TimeOfDay, 64'800), 0.75);
  EXPECT_EQ(days(SheetKind::DateTime, 1'381'168'800), 41'554.75);
  EXPECT_EQ(days(SheetKind::Date, 1'381'168'800), 41'554);
}

TEST_F(Csv, QuotesWhatCouldBeMistaken) {
  TestSheet sheet;
  sheet.Heads = {{L"No.", SheetKind::Whole, 0, 0}, {L"a,b", SheetKind::Text, 0, 0}};
  for (const wchar_t* text : {L"GC", L"GC ", L"0012", L"=1+1", L" x", L"a,b", L"a\"b", L"a\r\nb", L"\xE4", L""})
    sheet.Cells.push_back({std::int64_t{5}, text});
  SaveSheet(sheet, Folder / u"saved \x416.csv");
  EXPECT_EQ(ReadFile(Folder / u"saved \x416.csv"),
            "\xEF\xBB\xBFNo.,\"a,b\"\r\n5,GC\r\n5,\"GC \"\r\n5,\"0012\"\r\n5,\"=1+1\"\r\n5,\" x\"\r\n5,\"a,b\"\r\n"
            "5,\"a\"\"b\"\r\n5,\"a\r\nb\"\r\n5,\xC3\xA4\r\n5,\r\n");
}

// The sentence of the refusal, behind the file; empty without one.
std::string RefusalOf(const SheetSource& source, const fs::path& file) {
  try {
    SaveSheet(source, file);
  } catch (const TerminalError& error) {
    const std::string sentence = error.what(), before = PathText(file) + ": ";
    EXPECT_EQ(sentence.substr(0, before.size()), before);
    return sentence.substr(before.size());
  }
  return {};
}

TEST_F(Csv, KeepsTheOldFileOnFailure) {
  TestSheet sheet;
  EXPECT_NE(RefusalOf(sheet, Folder / "missing" / "table.csv").find("cannot be written"), std::string::npos);
  sheet.Heads = {{L"x", SheetKind::Whole, 0, 0}};
  sheet.RowCount = 1;
  sheet.Fails = true;
  for (const char* name : {"table.csv", "table.xlsx"}) {
    WriteFile(Folder / name, "old");
    EXPECT_THROW(SaveSheet(sheet, Folder / name), std::runtime_error);
    EXPECT_EQ(ReadFile(Folder / name), "old");
  }
  EXPECT_EQ(std::distance(fs::directory_iterator(Folder), {}), 2);
}

std::string DecimalsOf(double value) {
  char text[16];
  std::snprintf(text, sizeof text, "%.1f", value);
  return text;
}

// In a block of that size, so that a sanitizer sees a byte too far.
void CheckExactly(const std::string& bytes) {
  const std::vector<char> block(bytes.begin(), bytes.end());
  CheckWorkbook({block.data(), block.size()}, 3, 5);
}

class SheetWorkbook : public OwnFolder {
 protected:
  void SetUp() override {
    if (!CanSaveWorkbooks()) GTEST_SKIP() << "this build saves no workbooks";
    Sheet.Heads = {{L"Text", SheetKind::Text, 0, 10}, {L"Price", SheetKind::Decimal, 2, 10}};
  }
  TestSheet Sheet;
};

TEST_F(SheetWorkbook, IsTheSameForTheSameTable) {
  Sheet.Cells = {{L"0012", 1.5}, {L"", {}}, {L"=1+1", kNan}};
  SaveSheet(Sheet, Folder / u"first \x416.XLSX");
  SaveSheet(Sheet, Folder / "second.xlsx");
  const std::string bytes = ReadFile(Folder / "second.xlsx");
  EXPECT_EQ(bytes.substr(0, 4), "PK\x03\x04");
  EXPECT_TRUE(bytes == ReadFile(Folder / u"first \x416.XLSX"));
}

// Numbers are written with a point wherever the machine stands.
TEST_F(SheetWorkbook, KeepsThePointInAnyLocale) {
  Sheet.Cells = {{L"a", 1.5}};
  const std::string former = std::setlocale(LC_ALL, nullptr), bytes = WorkbookOf(Sheet);
  for (const char* locale : {"de_DE.UTF-8", "German_Germany.1252"}) {
    std::setlocale(LC_ALL, locale);  // where the platform has it
    const std::string comma = DecimalsOf(1.5);
    EXPECT_TRUE(WorkbookOf(Sheet) == bytes) << locale;
    EXPECT_EQ(DecimalsOf(1.5), comma) << "the locale is back";
  }
  std::setlocale(LC_ALL, former.c_str());
}

TEST_F(SheetWorkbook, IsCheckedForWhatIsMissing) {
  Sheet.Cells = {{L"a", 1.5}, {L"", {}}, {L"c", {}}};
  const std::string bytes = WorkbookOf(Sheet);
  CheckWorkbook(bytes, 3, 5);
  EXPECT_THROW(CheckWorkbook(bytes, 4, 5), SheetError);
  EXPECT_THROW(CheckWorkbook(bytes, 3, 6), SheetError);
  for (std::size_t size = 0; size < bytes.size(); size += 7)
    EXPECT_THROW(CheckExactly(bytes.substr(0, size)), SheetError) << size;
  const std::size_t sheet = bytes.find("xl/worksheets/sheet1.xml") + 60;
  for (std::size_t at = sheet; at < sheet + 40; ++at) {
    std::string damaged = bytes;
    damaged[at] = static_cast<char>(damaged[at] ^ 1);
    EXPECT_THROW(CheckWorkbook(damaged, 3, 5), SheetError) << at;
  }
}

TEST_F(SheetWorkbook, RefusesWhatItCannotHold) {
  const fs::path file = Folder / "table.xlsx";
  WriteFile(file, "old");
  Sheet.RowCount = 1'048'576;
  EXPECT_EQ(RefusalOf(Sheet, file),
            "the table has 1,048,576 rows and a workbook takes 1,048,575; save as .csv instead");
  Sheet.RowCount.reset();
  Sheet.Cells = {{std::wstring(32'767, L'\xE4'), {}}};
  EXPECT_EQ(RefusalOf(Sheet, Folder / "longest.xlsx"), "");
  Sheet.Cells.push_back({{}, std::wstring(32'768, L'x')});
  EXPECT_EQ(RefusalOf(Sheet, file),
            "the text in row 3, column 2 is longer than the 32,767 characters that a workbook "
            "takes; save as .csv instead");
  Sheet.Heads.resize(16'385);
  EXPECT_EQ(RefusalOf(Sheet, file), "the table has 16,385 columns and a workbook takes 16,384; save as .csv instead");
  EXPECT_EQ(ReadFile(file), "old");
}

}  // namespace

// What a spreadsheet makes of the tables of a whole day: of a saved workbook and CSV of the terminal, and of the CSV
// export and the HTML copy of a book. Every cell is compared with its source.
#include "tests/spreadsheet/spreadsheet.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <deque>
#include <limits>
#include <sstream>

#include "foundations/text_tools.h"
#include "grid_ops/columns/cell_text.h"
#include "grid_ops/exports/csv_export.h"
#include "platform/locale.h"
#include "terminal/day/day_input.h"
#include "terminal/sheets/sheet_cell.h"
#include "tests/support/programs.h"
#include "tests/trade_data/deliver.h"
#include "toolkit/model/copy_text.h"

namespace {

namespace fs = std::filesystem;

// Texts that are not what they look like, as client ids of trades behind those of the day, and what is made of them.
struct OddText {
  const char* Text;
  const char* Exported;  // with quotes if it stays a text
  const char* Copied;
};
constexpr OddText kOddTexts[] = {
    {"0012", "12", "\"0012\""},
    {"12E5", "1200000", "\"12E5\""},
    {"12345678901234567890", "1.23456789012346E+019", "\"12345678901234567890\""},
    {"=1+1", "2", "\"=1+1\""},
    {"-A1", "\"-A1\"", "\"-A1\""},
    {"1/2", "\"1/2\"", "\"1/2\""},
};

// The sample day as the plug-in keeps it, and the odd texts.
struct Day {
  Day() {
    Cache.AutoTradeWriteCSV = false;
    std::ostringstream told;
    BadLineReport badLines(told);
    const fs::path folder = fs::path(SAMPLE_DAY);
    const OrderDesk desk(folder / "desk.csv", badLines);
    const SecurityList securities(folder / "securities.csv", badLines);
    NumberedDay messages(OpenTradeDay(folder / "trades.csv", desk, securities, badLines), {LiveFrom::Kind::Count, 0});
    while (messages.Next() == DayStep::Message) Deliver(Cache, messages.Message());
    for (const auto& [id, record] : Cache.LiveTrades["Default"]) Rows.push_back(record);
    for (const OddText& odd : kOddTexts) AddOdd(odd.Text);
  }

  void AddOdd(std::string_view text) {
    TradeRecord& record = Added.emplace_back(*Rows.front());
    std::fill(std::begin(record.ClientID), std::end(record.ClientID), '\0');
    text.copy(record.ClientID, sizeof record.ClientID - 1);
    record.VELDTradeID = static_cast<std::uint32_t>(Rows.size() + 1);
    Cache.LiveTrades["Default"].Insert(static_cast<std::int32_t>(record.VELDTradeID), &record);
    Rows.push_back(&record);
  }

  CQORTradeImpl Decoder;
  TradeBooks Books;
  TradeCache Cache{Decoder, Books, {}};
  std::deque<TradeRecord> Added;
  std::vector<TradeRecord*> Rows;
};

// The day as a table to save: each kind of column, with the values of the records.
struct DaySheet : SheetSource {
  explicit DaySheet(const Day& day) : Trades(day) {}
  std::size_t Rows() const override { return Trades.Rows.size(); }
  std::span<const SheetColumn> Columns() const override { return Heads; }
  SheetValue ValueAt(std::size_t row, std::size_t column) const override {
    const TradeRecord& record = *Trades.Rows[row];
    const auto number = static_cast<std::int64_t>(row);
    switch (column) {
      case 0:
        return CodePageToWide(TextAt(record.ClientID, kTradeColumns[kClientID].Value));
      case 1:
        return CodePageToWide(TextAt(record.ExchangeOrderNo, kTradeColumns[kOrderNo].Value));
      case 2:
        return record.Price;
      case 3:
        return std::int64_t{record.Quantity};
      case 4:
        return number * 6 % 86'400;
      case 5:
        return 1'381'104'000 + number * 6;
      case 6:
        return static_cast<double>(number) / 7;
      case 7:
        return row % 2 == 0 ? SheetValue() : SheetValue(L"\x416 \xE4, \"q\" <&> _x0041_ \n " + std::to_wstring(row));
      default:
        return 1'381'104'000 + number * 86'400;
    }
  }
  static constexpr int kClientID = 22, kOrderNo = 5;
  const Day& Trades;
  std::vector<SheetColumn> Heads = {
      {L"Client", SheetKind::Text, 0, 10},      {L"Order", SheetKind::Text, 0, 16},
      {L"Price", SheetKind::Decimal, 4, 12},    {L"Quantity", SheetKind::Whole, 0, 8},
      {L"Time", SheetKind::TimeOfDay, 0, 10},   {L"When", SheetKind::DateTime, 0, 20},
      {L"Seventh", SheetKind::Decimal, 12, 20}, {L"Note", SheetKind::Text, 0, 0},
      {L"Day", SheetKind::Date, 0, 12},
  };
};
static_assert(kTradeColumns[DaySheet::kClientID].Title == "ClientID");
static_assert(kTradeColumns[DaySheet::kOrderNo].Title == "ExchangeOrderNo");

const Day& SampleDay() {
  static const Day day;
  return day;
}

constexpr int kCopiedRows = 2000;
int FirstCopied() {
  return static_cast<int>(SampleDay().Rows.size()) - kCopiedRows;
}
std::string CopiedText(int row, int column) {
  CellScratch scratch;
  return std::string(
      ShownText("Default", *SampleDay().Rows[static_cast<std::size_t>(FirstCopied() + row)], column, scratch));
}

void WriteHtml(const fs::path& file) {
  CQORPGridColumnsInfo columns;
  for (int column = 0; column < kTradeColumnCount; ++column) {
    columns.InsertColumn(column, CodePageToWide(kTradeColumns[column].Title), 50);
    columns.SetColumnAlign(column, static_cast<int>(kTradeColumns[column].Align));
  }
  RowSelection selection;
  selection.SetRows(kCopiedRows);
  std::wstring cell;
  const auto cellOf = [&](int row, int column) -> std::wstring_view {
    return cell = CodePageToWide(CopiedText(row, column));
  };
  WriteFile(file, "<meta http-equiv=\"content-type\" content=\"text/html; charset=utf-8\">" +
                      CopyAsHtml({columns, selection, cellOf}));
}

void WriteExport(const fs::path& file) {
  GridColumns columns;
  for (const TradeColumn& column : kTradeColumns)
    columns.push_back({std::string(column.Title), true, static_cast<int>(columns.size()), false});
  ExportGridCsv("All Columns", file, {columns, {}, {}, "Default", SampleDay().Cache.LiveTrades});
}

// The files are written and opened once.
class Spreadsheet : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    if (!HasSpreadsheet()) return;
    fs::remove_all(Folder());
    fs::create_directories(Folder() / "out");
    WriteExport(Folder() / "export.csv");
    WriteHtml(Folder() / "copy.xls");  // by this ending it is opened as a table
    SaveSheet(DaySheet(SampleDay()), Folder() / "workbook.xlsx");
    SaveSheet(DaySheet(SampleDay()), Folder() / "saved.csv");
    Opened = OpenInSpreadsheet({Folder() / "workbook.xlsx", Folder() / "export.csv", Folder() / "copy.xls"},
                               CsvImport::AsOffered, Folder() / "out") &&
             OpenInSpreadsheet({Folder() / "saved.csv"}, CsvImport::QuotedAsText, Folder() / "out");
  }
  void SetUp() override {
    if (!HasSpreadsheet()) GTEST_SKIP() << "soffice (libreoffice-calc-nogui) is not installed";
    ASSERT_TRUE(Opened) << ReadFile(Folder() / "out" / "log");
  }
  static fs::path Folder() { return ProgramFolder() / "spreadsheet_files"; }
  static SpreadsheetCells CellsOf(const char* name) { return ReadSpreadsheetCells(Folder() / "out" / name); }
  static inline bool Opened = false;
};

std::string Literal(const SpreadsheetCell& cell) {
  return cell.IsText ? '"' + cell.Shown + '"' : cell.Shown;
}
double NumberOf(std::string_view text) {
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() ? number : std::numeric_limits<double>::quiet_NaN();
}

// The cell of a text that is read for what it looks like.
std::string AsItLooks(std::string text) {
  std::erase(text, '"');
  const bool isNumber = !std::isnan(NumberOf(text));
  return isNumber || text.empty() ? text : '"' + text + '"';
}
// "12:05:00 AM", as the program writes the value of a time, as 00:05:00.
std::string ClockOf24Hours(std::string text) {
  if (!text.ends_with(" AM") && !text.ends_with(" PM")) return text;
  const int hour = std::stoi(text) % 12 + (text.ends_with(" PM") ? 12 : 0);
  return (hour < 10 ? "0" : "") + std::to_string(hour) + text.substr(2, 6);
}
bool IsSame(const std::string& expected, const SpreadsheetCell& cell) {
  if (cell.IsText) return Literal(cell) == expected;
  return cell.Shown == expected || ClockOf24Hours(cell.Shown) == expected || NumberOf(cell.Shown) == NumberOf(expected);
}

// Compares the cells below the titles; expectedOf gives those of a row.
template <typename ExpectedOf>
void ExpectRows(const SpreadsheetCells& cells, std::size_t rows, ExpectedOf expectedOf) {
  ASSERT_EQ(cells.size(), rows + 1);
  for (std::size_t row = 0; row < rows && !testing::Test::HasFailure(); ++row) {
    const std::vector<std::string> expected = expectedOf(row);
    ASSERT_EQ(cells[row + 1].size(), expected.size());
    for (std::size_t at = 0; at < expected.size(); ++at)
      if (!IsSame(expected[at], cells[row + 1][at]))
        ADD_FAILURE() << "row " << row << ", column " << at << ": " << expected[at] << " became "
                      << Literal(cells[row + 1][at]);
  }
}

void ExpectSavedTable(const SpreadsheetCells& cells) {
  const DaySheet sheet(SampleDay());
  ExpectRows(cells, sheet.Rows(), [&](std::size_t row) {
    std::vector<std::string> expected;
    SheetCell cell;
    for (std::size_t at = 0; at < sheet.Heads.size(); ++at) {
      MakeSheetCell(sheet.Heads[at], sheet.ValueAt(row, at), cell);
      expected.push_back(cell.Type == SheetCell::Is::Text ? '"' + cell.Text + '"' : cell.Text);
    }
    return expected;
  });
}

// The cells of a book's row: as they look, but for the client id of an odd text.
std::vector<std::string> RowOfBook(std::vector<std::string> texts, std::size_t rowsBehind,
                                   const char* OddText::*becomes) {
  std::ranges::transform(texts, texts.begin(), AsItLooks);
  if (rowsBehind < std::size(kOddTexts))
    texts[DaySheet::kClientID] = kOddTexts[std::size(kOddTexts) - 1 - rowsBehind].*becomes;
  return texts;
}

TEST_F(Spreadsheet, FindsEachCellOfAWorkbook) {
  ExpectSavedTable(CellsOf("workbook.csv"));
}

TEST_F(Spreadsheet, FindsEachCellOfASavedCsv) {
  ExpectSavedTable(CellsOf("saved.csv"));
}

// Numbers are found again; of identifiers that look like numbers only the number, without leading zeros.
TEST_F(Spreadsheet, ReadsExportedTextsForWhatTheyLookLike) {
  const std::string bytes = ReadFile(Folder() / "export.csv") + '\n';
  std::string_view rest = bytes;
  TakeLine(rest);
  const std::size_t rows = SampleDay().Rows.size();
  ExpectRows(CellsOf("export.csv"), rows, [&](std::size_t row) {
    return RowOfBook(SplitText(std::string(TakeLine(rest)) + ',', ','), rows - 1 - row, &OddText::Exported);
  });
}

TEST_F(Spreadsheet, FindsEachCellOfAnHtmlCopy) {
  ExpectRows(CellsOf("copy.csv"), kCopiedRows, [](std::size_t row) {
    std::vector<std::string> texts;
    for (int column = 0; column < kTradeColumnCount; ++column)
      texts.push_back(CopiedText(static_cast<int>(row), column));
    return RowOfBook(texts, kCopiedRows - 1 - row, &OddText::Copied);
  });
}

}  // namespace

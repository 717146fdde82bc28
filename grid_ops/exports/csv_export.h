// ExportGridCsv: the trades of a book as a CSV file. Reads the cache without a lock, on the terminal's calling thread.
//
//   file := header ( CR LF line )*     no line end behind the last line
//
// Cells are those of TradeCellText without a date format. Commas within a cell are not escaped: meant so.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "grid_ops/exports/export_file.h"
#include "trade_data/cache/trade_cache.h"

// What the writers of a book's files ask the grid for, as values: its columns and the rows that are selected. Plain
// data.

// One column by its index, which never changes; Order is its place on the screen.
struct GridColumn {
  std::string Name;  // the title over the column
  bool Visible = true;
  int Order = 0;
  bool Selected = false;
};
using GridColumns = std::vector<GridColumn>;

// Rows that are selected together, both ends included. A range that starts below 0 or ends above its start holds none.
struct GridRowRange {
  int Top = -1;
  int Bottom = -1;
};

// What the modes take their rows from.
struct CsvSource {
  std::span<const GridColumn> Columns;            // by index
  std::span<const TradeRecord* const> Rows;       // the grid's, in the order shown
  std::span<const GridRowRange> Selections = {};  // of those rows
  std::string_view ServerName;                    // stands in column "Server" of the grid's rows
  const ServerTrades& Trades;                     // the cache's; its keys stand in column "Server" of these rows
};

// Modes are "All Columns" (every trade of the cache, columns by index), "Visible Columns" (the grid's rows, columns as
// shown) and "Selected Columns" (selected rows and columns). Any other mode leaves an empty file.
void ExportGridCsv(std::string_view mode, const std::filesystem::path& path, const CsvSource& source,
                   const ExportProgress& progress = {});

// The four commands of the menu "Export CSV": the file name that each proposes, and the folder that each remembers.
// Nothing here touches the disk.
struct CsvCommand {
  int Id;
  std::string_view MenuText;
  std::string_view Mode;         // of ExportGridCsv
  std::string_view Stem;         // of the proposed name
  std::string_view DatePattern;  // of the date behind it
  // Which folder the next proposal starts from.
  enum class Remembers : std::uint8_t { ChosenFolder, Proposal } Last;
  bool StartsFromBase;  // while none is remembered
  bool SavesPath;       // the chosen folder goes to config.ini: SaveTradePath
};

inline constexpr CsvCommand kCsvCommands[] = {
    {30010, "All Columns", "All Columns", "TradeBook_All", "yyyyMMdd", CsvCommand::Remembers::ChosenFolder, true,
     false},
    {30011, "Visible Columns", "Visible Columns", "TradeBook_Visible", "yyyyMMdd", CsvCommand::Remembers::ChosenFolder,
     true, true},
    // The proposal, file name included, so that each one starts with the one before: meant so.
    {30013, "Selected Columns", "Selected Columns", "TradeBook_Selected", "yyyyMMdd", CsvCommand::Remembers::Proposal,
     true, false},
    {30012, "Manual Export", "", "TradeBook_Manual", "yyyyMMdd_HHmm", CsvCommand::Remembers::ChosenFolder, false, true},
};
inline constexpr int kAllColumnsCommand = 30010, kVisibleColumnsCommand = 30011, kSelectedColumnsCommand = 30013,
                     kManualExportCommand = 30012;

// What the dialog offers beside the proposal, and what is said after it was accepted, whatever became of the file.
inline constexpr std::wstring_view kCsvExtension = L".CSV";
inline constexpr std::wstring_view kCsvFilter = L"CSV (Comma delimited)(*.csv)";
inline constexpr std::wstring_view kCsvReport = L"Trade Book CSV Successfully exported..!!";
inline constexpr std::wstring_view kExportCaption = L"Trade Book";

// The folders of one process; all start empty and none is stored.
struct ExportFolders {
  std::filesystem::path Base;
  std::array<std::filesystem::path, std::size(kCsvCommands)> Last;  // by place in kCsvCommands
};

// The command of that menu id, or null.
const CsvCommand* FindCsvCommand(int id) noexcept;

// The proposed path: the start folder, the stem and the local date of now. "Selected Columns" first moves the base of
// all commands to the grid's folder "CSV".
std::filesystem::path ProposeCsvPath(const CsvCommand& command, ExportFolders& folders,
                                     const std::filesystem::path& gridFolder, std::int64_t now);

// After the dialog was accepted.
void RememberCsvFolder(const CsvCommand& command, ExportFolders& folders, const std::filesystem::path& proposal,
                       const std::filesystem::path& chosen);

// The path up to its last separator, without it; empty where there is none.
std::filesystem::path FolderOf(const std::filesystem::path& path);

// Whether a book's selection may be copied.
inline constexpr int kMostCopiedRows = 10001;

// Null where it may, else what the user is told. Without a selection the content is called too large, however small it
// is: meant so.
constexpr const wchar_t* CopyRefusal(int selections, int topRow, int bottomRow) noexcept {
  if (selections == 0) return L"Content of the grid is too large, please make selection and repeat command.";
  if (selections > 1) return L"This command can't be used on multiple selection.";
  if (bottomRow - topRow >= kMostCopiedRows)
    return L"Selection is too large, please make smaller selection and repeat command.";
  return nullptr;
}

// What is said after the HTML copy. The second text has no way to show: a copy without a selection is refused.
constexpr const wchar_t* HtmlCopyReport(int selections) noexcept {
  return selections > 0 ? L"Selection was copied to the clipboard as HTML"
                        : L"Content of the grid was copied to the clipboard as HTML";
}

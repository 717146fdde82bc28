// The CSV export of a book: the writer, and the four commands of the menu "Export CSV" with their file names and
// folders. Also the rules for a copy to the clipboard.
//
//   file := header ( CR LF line )*     no line end after the last line
//
// Cells are those of TradeCellText without a date format. Intentional: commas in a cell are not escaped.
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

// A column of the grid, by its index, which never changes.
struct GridColumn {
  std::string Name;  // the title
  bool Visible = true;
  int Order = 0;  // the place on the screen
  bool Selected = false;
};
using GridColumns = std::vector<GridColumn>;

// A selected range of rows, both ends included. Empty if it starts below 0 or ends before its start.
struct GridRowRange {
  int Top = -1;
  int Bottom = -1;
};

struct CsvSource {
  std::span<const GridColumn> Columns;            // by index
  std::span<const TradeRecord* const> Rows;       // of the grid, in the order shown
  std::span<const GridRowRange> Selections = {};  // of those rows
  std::string_view ServerName;                    // column "Server" of the grid's rows
  const ServerTrades& Trades;                     // of the cache; the key is column "Server"
};

// Writes the file silently. Modes: "All Columns" (every trade of the cache, columns by index), "Visible Columns" (the
// rows of the grid, columns as shown), "Selected Columns" (selected rows and columns). Any other mode leaves an empty
// file.
void ExportGridCsv(std::string_view mode, const std::filesystem::path& path, const CsvSource& source,
                   const ExportProgress& progress = {});

struct CsvCommand {
  int Id;
  std::string_view MenuText;
  std::string_view Mode;         // of ExportGridCsv
  std::string_view Stem;         // of the proposed name
  std::string_view DatePattern;  // of the date after the stem
  // The start folder of the next proposal.
  enum class Remembers : std::uint8_t { ChosenFolder, Proposal } Last;
  bool StartsFromBase;  // as long as no folder is remembered
  bool SavesPath;       // SaveTradePath puts the chosen folder into config.ini
};

inline constexpr CsvCommand kCsvCommands[] = {
    {30010, "All Columns", "All Columns", "TradeBook_All", "yyyyMMdd", CsvCommand::Remembers::ChosenFolder, true,
     false},
    {30011, "Visible Columns", "Visible Columns", "TradeBook_Visible", "yyyyMMdd", CsvCommand::Remembers::ChosenFolder,
     true, true},
    // Intentional: remembers the proposal, file name included, so that each proposal starts with the one before.
    {30013, "Selected Columns", "Selected Columns", "TradeBook_Selected", "yyyyMMdd", CsvCommand::Remembers::Proposal,
     true, false},
    {30012, "Manual Export", "", "TradeBook_Manual", "yyyyMMdd_HHmm", CsvCommand::Remembers::ChosenFolder, false, true},
};
inline constexpr int kAllColumnsCommand = 30010, kVisibleColumnsCommand = 30011, kSelectedColumnsCommand = 30013,
                     kManualExportCommand = 30012;

// The command with that menu id, or null. A table of commands can look it up at compile time.
constexpr const CsvCommand* FindCsvCommand(int id) noexcept {
  for (const CsvCommand& command : kCsvCommands)
    if (command.Id == id) return &command;
  return nullptr;
}

// The texts of the save dialog, and of the report after it, even if the file could not be written.
inline constexpr std::wstring_view kCsvExtension = L".CSV";
inline constexpr std::wstring_view kCsvFilter = L"CSV (Comma delimited)(*.csv)";
inline constexpr std::wstring_view kCsvReport = L"Trade Book CSV Successfully exported..!!";
inline constexpr std::wstring_view kExportCaption = L"Trade Book";

// The folders of one process. All start empty; none is stored.
struct ExportFolders {
  std::filesystem::path ExportFolder;                               // where commands without a last folder start
  std::array<std::filesystem::path, std::size(kCsvCommands)> Last;  // by index in kCsvCommands
};

// The proposed path: start folder, stem and local date. "Selected Columns" first moves the base of all commands to the
// folder "CSV" of the grid's folder. No access to the disk.
std::filesystem::path ProposeCsvPath(const CsvCommand& command, ExportFolders& folders,
                                     const std::filesystem::path& gridFolder, std::int64_t now);

// Call after the dialog was accepted.
void RememberCsvFolder(const CsvCommand& command, ExportFolders& folders, const std::filesystem::path& proposal,
                       const std::filesystem::path& chosen);

// The path before its last separator; empty without one.
std::filesystem::path FolderOf(const std::filesystem::path& path);

inline constexpr int kMostCopiedRows = 10001;

// Why the selection cannot be copied, or null. Intentional: without a selection the content counts as too large, even
// if it is small.
constexpr const wchar_t* CopyRefusal(int selections, int topRow, int bottomRow) noexcept {
  if (selections == 0) return L"Content of the grid is too large, please make selection and repeat command.";
  if (selections > 1) return L"This command can't be used on multiple selection.";
  if (bottomRow - topRow >= kMostCopiedRows)
    return L"Selection is too large, please make smaller selection and repeat command.";
  return nullptr;
}

// The report of the HTML copy. The second text never shows, because a copy without a selection is refused.
constexpr const wchar_t* HtmlCopyReport(int selections) noexcept {
  return selections > 0 ? L"Selection was copied to the clipboard as HTML"
                        : L"Content of the grid was copied to the clipboard as HTML";
}

// The four commands of the menu "Export CSV": the file name that each proposes, and the folder that each remembers. Not
// the dialog that asks for the name, and not the writing: csv_export.h, exchange_files.h. Nothing here touches the
// disk.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string_view>

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

// LibreOffice as a judge: opens files without a window and tells what it makes of each cell.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

struct SpreadsheetCell {
  bool IsText = false;
  std::string Shown;  // UTF-8
};
using SpreadsheetCells = std::vector<std::vector<SpreadsheetCell>>;

bool HasSpreadsheet();

// How CSV is opened: by double click, or with "Quoted field as text" and UTF-8 chosen in the dialog.
enum class CsvImport { AsOffered, QuotedAsText };

// Opens the files, whose stems differ, with one start of the program; their cells come to out as STEM.csv. What the
// program keeps for itself goes there too. False if it fails.
bool OpenInSpreadsheet(const std::vector<std::filesystem::path>& files, CsvImport import,
                       const std::filesystem::path& out);

// The cells of such a file. Texts are quoted there and numbers are not.
SpreadsheetCells ReadSpreadsheetCells(const std::filesystem::path& file);

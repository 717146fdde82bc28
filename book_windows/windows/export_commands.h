// ExportCommands: the commands of a book that write files, from the save dialog to the report.
#pragma once

#include <filesystem>

#include "grid_ops/exports/csv_export.h"
#include "grid_ops/exports/exchange_files.h"

class TradeBookScreen;
class CTradeBookGrid;

class ExportCommands {
 public:
  ExportCommands(TradeBookScreen& screen, CTradeBookGrid& grid) : Screen(screen), Grid(grid) {}

  void ExportCsv(const CsvCommand& command);
  void WriteExchangeFiles();

 private:
  void ExportManually(const CsvCommand& command);
  // Runs the writer under a wait cursor and shows its progress in the book.
  template <typename Write>
  void ShowRunning(Write write);
  // Asks for the file, writes it, reports and remembers the folder.
  template <typename Write>
  void ExportToChosenFile(const CsvCommand& command, Write write);
  void Report(std::wstring_view text) const;
  void RememberFolder(const CsvCommand& command, const std::filesystem::path& proposal,
                      const std::filesystem::path& chosen);
  GridColumns Columns() const;
  std::vector<GridRowRange> Selections() const;
  void WriteCsv(const CsvCommand& command, const std::filesystem::path& path, const ExportProgress& progress);
  TradeFileRun TradeFiles(const GridColumns& columns) const;

  TradeBookScreen& Screen;
  CTradeBookGrid& Grid;
};

// ExportGridCsv: the trades of a book as a CSV file. Not the choice of the file's name (csv_commands.h) and not the
// files that description files lay out (exchange_files.h). Reads the cache without a lock, on the terminal's calling
// thread.
//
//   file := header ( CR LF line )*     no line end behind the last line
//
// Cells are those of TradeCellText without a date format. Commas within a cell are not escaped: meant so.
#pragma once

#include <filesystem>
#include <span>
#include <string_view>

#include "grid_ops/export_file.h"
#include "grid_ops/grid_columns.h"
#include "trade_data/trade_cache.h"

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

// The trade files of the commands "Exchange Trade Format" and "Manual Export", laid out by description files. Failures
// are silent: a file that cannot be opened or written loses its text.
//
//   ExchangeTradeFormat/FO/<date>TRD.txt, ExchangeTradeFormat/CM/<date>TRD.txt := ( fields CR LF )*
//   the file of Manual Export                                                  := header ( CR LF line )*
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "grid_ops/exports/csv_export.h"
#include "grid_ops/exports/export_file.h"
#include "grid_ops/exports/trade_file_text.h"

struct TradeFileRun {
  std::span<const GridColumn> Columns;
  const ServerTrades& Trades;
  const PriceDivisors& Divisors;
  std::filesystem::path GridFolder;    // the current folder when the grid was created
  std::filesystem::path PluginFolder;  // the current folder when the plug-in was loaded
  std::int64_t Now = 0;                // the date of the files
};

// Writes every trade of the cache to the file of derivatives or of the cash market in the grid's folder, by its
// EXCHANGETRADEFORMAT.TXT. Both files are created. Without a description file each trade is an empty line.
void WriteExchangeTradeFiles(const TradeFileRun& run, const ExportProgress& progress = {});

// True if the trade has a row that the grid shows. Intentional: the plug-in has no index of rows and passes an empty
// test, so that its exchange branch always leaves two empty files.
using RowTest = std::function<bool(std::string_view server, std::int32_t tradeId)>;

// With exchangeFormat the exchange branch: the two files in the plug-in's folder, with visible columns and trades with
// a row; the path is unused. Otherwise the free branch: every trade of the cache to the path, by TRADEBOOKEXPORT.TXT in
// the grid's folder; without it the file stays empty.
void WriteManualExport(const TradeFileRun& run, bool exchangeFormat, const std::filesystem::path& path,
                       const RowTest& hasVisibleRow, const ExportProgress& progress = {});

// The first four characters of the local date, and "TRD.txt". The manual pattern is that of the exchange branch.
inline constexpr const char *kExchangeDate = "MMddyy", *kManualDate = "ddMMyy";
std::string TradeFileName(const char* datePattern, std::int64_t now);

// The reports, even if no file could be written. Intentional: the spelling.
inline constexpr std::wstring_view kExchangeReport = L"Exchange Trade File Sucessfully Write";
std::wstring ManualExchangeReport(std::int64_t now);

// The trade files that exchanges and users lay out in description files: the commands "Exchange Trade Format" and
// "Manual Export". Nothing here reports an error: a file that cannot be opened or written swallows the text. Reads the
// cache without a lock, on the terminal's calling thread.
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
#include "trade_data/cache/trade_cache.h"

struct TradeFileRun {
  std::span<const GridColumn> Columns;
  const ServerTrades& Trades;
  const PriceDivisors& Divisors;
  std::filesystem::path GridFolder;    // the process's folder when the grid was made
  std::filesystem::path PluginFolder;  // and when the plug-in was loaded
  std::int64_t Now = 0;                // dates the files
};

// Writes every trade of the cache to the file of derivatives or that of the cash market, both made anew in the grid's
// folder, by its EXCHANGETRADEFORMAT.TXT. Without that file each trade is an empty line.
void WriteExchangeTradeFiles(const TradeFileRun& run, const ExportProgress& progress = {});

// Whether a trade has a row that the grid shows. The plug-in keeps no index of rows, so that its answer is always no,
// and the exchange branch leaves two empty files: meant so.
using RowTest = std::function<bool(std::string_view server, std::int32_t tradeId)>;

// With the flag the exchange branch: the two files in the plug-in's folder, of visible columns and of trades with a
// row; the path is not used. Without it the free branch: every trade of the cache to the path, by the grid folder's
// TRADEBOOKEXPORT.TXT, without which the file stays empty.
void WriteManualExport(const TradeFileRun& run, bool exchangeFormat, const std::filesystem::path& path,
                       const RowTest& hasVisibleRow, const ExportProgress& progress = {});

// The local date, cut to its first four characters, and "TRD.txt": patterns "MMddyy" for the exchange command and
// "ddMMyy" for the exchange branch of the manual one.
inline constexpr const char *kExchangeDate = "MMddyy", *kManualDate = "ddMMyy";
std::string TradeFileName(const char* datePattern, std::int64_t now);

// What the commands say in the end, whatever became of the files. The spelling is meant so.
inline constexpr std::wstring_view kExchangeReport = L"Exchange Trade File Sucessfully Write";
std::wstring ManualExchangeReport(std::int64_t now);

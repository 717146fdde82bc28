#include "grid_ops/exports/exchange_files.h"

#include <vector>

#include "foundations/date_time.h"
#include "foundations/paths.h"
#include "grid_ops/exports/trade_file_lines.h"

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::size_t kDateLength = 4;  // cuts the year off

// The two files. Both are created, even if only one gets trades.
struct FilePair {
  FilePair(const fs::path& folder, const std::string& name)
      : FO(BuildFolderPath("ExchangeTradeFormat\\FO\\", name, folder)),
        CM(BuildFolderPath("ExchangeTradeFormat\\CM\\", name, folder)) {}

  void AddLine(TradeFileLines& lines, bool isCash, std::string_view server, const TradeRecord& record) {
    LineBuffer& line = (isCash ? CM : FO).Room(lines.Longest(server) + kLineEnd.size());
    lines.Append(line, isCash, server, record);
    line.Append(kLineEnd);
  }

  ExportFile FO;
  ExportFile CM;
};

void WriteExchangeBranch(const TradeFileRun& run, const RowTest& hasVisibleRow, const ExportProgress& progress) {
  FilePair files(run.PluginFolder, TradeFileName(kManualDate, run.Now));
  TradeFileLines lines(ReadExchangeFormat(run.PluginFolder), IndexColumns(run.Columns, true), run.Divisors);
  VisitTrades(run.Trades, progress, [&](std::string_view server, const TradeMap::Entry& trade) {
    if (!hasVisibleRow || !hasVisibleRow(server, trade.Id)) return;
    files.AddLine(lines, IsCash(ExchangeOf(*trade.Record)), server, *trade.Record);
  });
}

// An entry of TRADEBOOKEXPORT.TXT whose name is a visible column.
struct FreeField {
  int Column;
  std::string Title;
  std::string DateFormat;
};

std::vector<FreeField> FreeFields(const DescriptionList& entries, const ColumnIndexes& columns) {
  std::vector<FreeField> fields;
  for (const DescriptionEntry& entry : entries)
    if (const auto column = columns.find(entry.Name); column != columns.end())
      fields.push_back({column->second, entry.Title, entry.DateFormat});
  return fields;
}

void AddFreeCell(LineBuffer& line, std::string_view server, const TradeRecord& record, const FreeField& field) {
  if (field.DateFormat.empty())
    AppendTradeCell(line, server, record, field.Column);
  else
    line.Append(TradeCellText(server, record, field.Column, field.DateFormat));
  line.Append(',');
}

void WriteFreeBranch(const TradeFileRun& run, const fs::path& path, const ExportProgress& progress) {
  ExportFile file(path);
  const DescriptionList entries = ReadBookExport(run.GridFolder);
  if (entries.empty()) return;
  const std::vector<FreeField> fields = FreeFields(entries, IndexColumns(run.Columns, true));
  for (const FreeField& field : fields) {
    LineBuffer& line = file.Room(field.Title.size() + 1);
    line.Append(field.Title);
    line.Append(',');
  }
  VisitTrades(run.Trades, progress, [&](std::string_view server, const TradeMap::Entry& trade) {
    LineBuffer& line = file.Room(kLineEnd.size() + fields.size() * (LongestTradeCell(server) + 1));
    line.Append(kLineEnd);
    for (const FreeField& field : fields) AddFreeCell(line, server, *trade.Record, field);
  });
}

}  // namespace

void WriteExchangeTradeFiles(const TradeFileRun& run, const ExportProgress& progress) {
  FilePair files(run.GridFolder, TradeFileName(kExchangeDate, run.Now));
  TradeFileLines lines(ReadExchangeFormat(run.GridFolder), IndexColumns(run.Columns, false), run.Divisors);
  VisitTrades(run.Trades, progress, [&](std::string_view server, const TradeMap::Entry& trade) {
    files.AddLine(lines, IsCash(trade.Record->Exchange), server, *trade.Record);
  });
}

void WriteManualExport(const TradeFileRun& run, bool exchangeFormat, const fs::path& path, const RowTest& hasVisibleRow,
                       const ExportProgress& progress) {
  if (exchangeFormat)
    WriteExchangeBranch(run, hasVisibleRow, progress);
  else
    WriteFreeBranch(run, path, progress);
}

std::string TradeFileName(const char* datePattern, std::int64_t now) {
  return FormatTimeText(now, datePattern, false).substr(0, kDateLength) + "TRD.txt";
}

std::wstring ManualExchangeReport(std::int64_t now) {
  const std::string name = TradeFileName(kManualDate, now);
  return std::wstring(name.begin(), name.end()) + L" Successfully exported..!!";
}

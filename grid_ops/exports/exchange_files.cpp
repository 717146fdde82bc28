#include "grid_ops/exports/exchange_files.h"

#include <algorithm>

#include "foundations/date_time.h"
#include "foundations/paths.h"
#include "foundations/text_tools.h"

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kSecurityNameWidth = 25;

// The parts between the commas: one more than there are commas.
std::vector<std::string_view> PartsOf(std::string_view line) {
  std::vector<std::string_view> parts;
  const auto commas = std::count(line.begin(), line.end(), ',');
  for (auto i = commas; i >= 0; --i) parts.push_back(TakeUntil(line, ','));
  return parts;
}

bool IsEmpty(std::string_view part) {
  return part.empty();
}

const NamedField* FindNamedField(std::string_view name) {
  const auto* field = std::find_if(std::begin(kNamedFields), std::end(kNamedFields),
                                   [name](const NamedField& each) { return each.Name == name; });
  return field == std::end(kNamedFields) ? nullptr : field;
}

char* PrintSecurityName(char* to, const TradeRecord& record) {
  char* end = PrintField(to, record.Text55107, sizeof record.Text55107);
  const auto length = static_cast<std::size_t>(end - to);
  if (length < kSecurityNameWidth) end = PrintBlanks(end, kSecurityNameWidth - length);
  *end++ = ',';
  return end;
}

char* PrintBookType(char* to, bool isCash, const TradeRecord& record) {
  const std::string_view orderType = OrderTypeText(record.OrderType);
  for (const BookType& type : kBookTypes)
    if (type.OrderType == orderType) return PrintText(to, isCash ? type.CM : type.FO);
  return to;
}

char* PrintNamedField(char* to, const NamedField& field, bool isCash, const TradeRecord& record) {
  switch (field.How) {
    case NamedField::Kind::Fixed:
      return PrintText(to, isCash ? field.CM : field.FO);
    case NamedField::Kind::SecurityName:
      return PrintSecurityName(to, record);
    case NamedField::Kind::BookType:
      return PrintBookType(to, isCash, record);
    case NamedField::Kind::Client:
      return PrintText(to, std::string_view(record.ClientID) == "OWN" ? "2," : "1,");
  }
  return to;
}

}  // namespace

DescriptionList ParseExchangeFormat(std::string_view text) {
  DescriptionList entries;
  text = WithoutByteOrderMark(text);
  while (!text.empty()) {
    const std::string_view line = TakeLine(text);
    if (line.empty()) continue;
    const auto parts = PartsOf(line);
    entries.push_back({std::string(parts[0]), {}, parts.size() > 1 ? std::string(parts[1]) : std::string()});
  }
  return entries;
}

DescriptionList ParseBookExport(std::string_view text) {
  DescriptionList entries;
  text = WithoutByteOrderMark(text);
  while (!text.empty()) {
    const auto parts = PartsOf(TakeLine(text));
    if (parts.size() < 2 || parts.size() > 3 || std::any_of(parts.begin(), parts.end(), IsEmpty)) continue;
    entries.push_back(
        {std::string(parts[0]), std::string(parts[1]), parts.size() > 2 ? std::string(parts[2]) : std::string()});
  }
  return entries;
}

DescriptionList ReadExchangeFormat(const std::filesystem::path& folder) {
  return ParseExchangeFormat(ReadWholeFile(folder / "EXCHANGETRADEFORMAT.TXT"));
}

DescriptionList ReadBookExport(const std::filesystem::path& folder) {
  return ParseBookExport(ReadWholeFile(folder / "TRADEBOOKEXPORT.TXT"));
}

ColumnIndexes IndexColumns(std::span<const GridColumn> columns, bool visibleOnly) {
  ColumnIndexes indexes;
  for (std::size_t i = 0; i < columns.size(); ++i)
    if (columns[i].Visible || !visibleOnly) indexes[columns[i].Name] = static_cast<int>(i);
  return indexes;
}

TradeFileLines::TradeFileLines(const DescriptionList& entries, const ColumnIndexes& columns,
                               const PriceDivisors& divisors)
    : Divisors(divisors) {
  for (const DescriptionEntry& entry : entries) {
    if (entry.Name.empty()) continue;
    // The cell of the last entry has no comma, even if the entries before it wrote nothing.
    const bool comma = &entry != &entries.back();
    if (const auto column = columns.find(entry.Name); column != columns.end())
      Steps.push_back({nullptr, TradeCellPrinterFO(column->second), TradeCellPrinterCM(column->second), comma});
    else if (const NamedField* named = FindNamedField(entry.Name); named != nullptr)
      Steps.push_back({named, nullptr, nullptr, false});
  }
}

// Intentional: an empty cell of the cash market drops its comma, so that the next fields move up.
void TradeFileLines::Append(LineBuffer& line, bool isCash, std::string_view server, const TradeRecord& record) {
  const TradeFileSource source{Divisors, server, {}, Times};
  char* to = line.Tail();
  for (const Step& step : Steps) {
    if (step.Named != nullptr) {
      to = PrintNamedField(to, *step.Named, isCash, record);
      continue;
    }
    char* end = (isCash ? step.CM : step.FO)(to, source, record);
    if (step.Comma && !(isCash && end == to)) *end++ = ',';
    to = end;
  }
  line.EndAt(to);
}

namespace {

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

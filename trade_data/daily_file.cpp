#include "trade_data/daily_file.h"

#include "foundations/paths.h"
#include "foundations/text_tools.h"

namespace {
constexpr std::string_view kLineEnd = "\r\n";
}

void DailyFile::OpenDailyFile(const std::filesystem::path& folder, std::string_view date, std::string_view serverName) {
  const std::filesystem::path file = folder / ("Trade" + std::string(date) + ".CSV");
  std::vector<NamedColumn> columns = ReadColumns(folder / "TradeHeaderFile.txt");
  if (!AutoStream.is_open()) Line.Start(LongestLine(columns.size(), serverName));
  // From here on nothing takes memory: the file is opened once.
  AutoColumns = std::move(columns);
  AutoStream.open(file, std::ios::binary | std::ios::trunc);
  WriteHeader();
}

std::size_t DailyFile::LongestLine(std::size_t columns, std::string_view serverName) {
  return kLineEnd.size() + columns * (LongestDailyValue(serverName) + 1);
}

// The columns so far with those of the file behind them. A line counts when it holds a name and no comma; names are
// taken as they stand.
std::vector<DailyFile::NamedColumn> DailyFile::ReadColumns(const std::filesystem::path& headerFile) const {
  std::vector<NamedColumn> columns = AutoColumns;
  const std::string text = ReadWholeFile(headerFile);
  for (std::string_view rest = WithoutByteOrderMark(text); !rest.empty();) {
    const std::string_view name = TakeLine(rest);
    if (!name.empty() && name.find(',') == std::string_view::npos)
      columns.push_back({std::string(name), FindDailyColumn(name)});
  }
  return columns;
}

void DailyFile::WriteHeader() {
  for (const NamedColumn& column : AutoColumns) AutoStream << column.Name << ',';
}

void DailyFile::WriteTradeLine(const TradeRecord& record, std::string_view serverName) {
  if (!AutoStream.is_open() || !AutoStream.good()) return;
  Line.Start(LongestLine(AutoColumns.size(), serverName));
  Line.Append(kLineEnd);
  for (const NamedColumn& column : AutoColumns) {
    if (column.Column == nullptr) continue;
    column.Column->Append(Line, record, serverName);
    Line.Append(',');
  }
  AutoStream.write(Line.Text().data(), static_cast<std::streamsize>(Line.Text().size()));
}

void DailyFile::Flush() {
  AutoStream.flush();
}

#include "trade_data/daily_file.h"

namespace {
constexpr std::string_view kLineEnd = "\r\n";
}

void DailyFile::OpenDailyFile(const std::filesystem::path& folder, std::string_view date) {
  AutoStream.open(folder / ("Trade" + std::string(date) + ".CSV"), std::ios::binary | std::ios::trunc);
  ReadColumns(folder / "TradeHeaderFile.txt");
  WriteHeader();
}

// A line counts when it holds a name and no comma; names are taken as they stand.
void DailyFile::ReadColumns(const std::filesystem::path& headerFile) {
  std::ifstream lines(headerFile, std::ios::binary);
  for (std::string name; std::getline(lines, name);) {
    if (name.ends_with('\r')) name.pop_back();
    if (!name.empty() && name.find(',') == std::string::npos) AutoColumns.push_back({name, FindDailyColumn(name)});
  }
}

void DailyFile::WriteHeader() {
  for (const NamedColumn& column : AutoColumns) AutoStream << column.Name << ',';
}

void DailyFile::WriteTradeLine(const TradeRecord& record, std::string_view serverName) {
  if (!AutoStream.is_open() || !AutoStream.good()) return;
  Line.Start(kLineEnd.size() + AutoColumns.size() * (LongestDailyValue(serverName) + 1));
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

#include "grid_ops/exports/trade_file_lines.h"

#include <algorithm>

#include "foundations/paths.h"
#include "foundations/text_tools.h"

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

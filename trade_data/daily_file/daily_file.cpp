#include "trade_data/daily_file/daily_file.h"

#include <iterator>

#include "foundations/paths.h"
#include "foundations/text_tools.h"

void DailyFile::OpenDailyFile(const std::filesystem::path& folder, std::string_view date, std::string_view serverName) {
  const std::filesystem::path file = folder / ("Trade" + std::string(date) + ".CSV");
  std::vector<NamedColumn> columns = ReadColumns(folder / "TradeHeaderFile.txt");
  if (!AutoStream.is_open()) Line.Start(LongestLine(columns.size(), serverName));
  // Nothing allocates from here on, because the file can be opened only once.
  AutoColumns = std::move(columns);
  AutoStream.open(file, std::ios::binary | std::ios::trunc);
  WriteHeader();
}

std::size_t DailyFile::LongestLine(std::size_t columns, std::string_view serverName) {
  return kLineEnd.size() + columns * (LongestDailyValue(serverName) + 1);
}

// The known columns, then those of the file. A line without a name or with a comma is ignored; names are not trimmed.
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

namespace {

using Line = LineBuffer;
using Record = TradeRecord;
using Server = std::string_view;

constexpr DailyColumn kDailyColumns[] = {
    {"Server", [](Line& line, const Record&, Server serverName) { line.Append(serverName); }},
    {"UserID", [](Line& line, const Record& record, Server) { line.Append(record.UserID); }},
    {"VELDTradeID", [](Line& line, const Record& record, Server) { line.AppendSigned(record.VELDTradeID); }},
    {"VELDOrderID", [](Line& line, const Record& record, Server) { line.AppendSigned(record.VELDOrderID); }},
    {"OrderID", [](Line& line, const Record& record, Server) { line.AppendSigned(record.OrderID); }},
    {"ExchangeOrderID", [](Line& line, const Record& record, Server) { line.Append(record.ExchangeOrderNo); }},
    {"ExchangeTradeID", [](Line& line, const Record& record, Server) { line.Append(record.ExchangeTradeID); }},
    {"OrderTime", [](Line& line, const Record& record, Server) { line.Append(record.OrderTime); }},
    {"ExchangeOrderTime", [](Line& line, const Record& record, Server) { line.Append(record.ExchangeOrderTime); }},
    {"ExchangeTradeTime", [](Line& line, const Record& record, Server) { line.Append(record.ExchangeTradeTime); }},
    {"Exchange", [](Line& line, const Record& record, Server) { line.Append(ExchangeOf(record)); }},
    {"SecurityID", [](Line& line, const Record& record, Server) { line.Append(SecurityIDOf(record)); }},
    {"Symbol", [](Line& line, const Record& record, Server) { line.Append(SymbolOf(record)); }},
    {"ExpiryDate", [](Line& line, const Record& record, Server) { line.Append(ExpiryDateOf(record)); }},
    {"SecurityType", [](Line& line, const Record& record, Server) { line.Append(SecurityTypeOf(record)); }},
    {"Side", [](Line& line, const Record& record, Server) { line.Append(SideText(record.Side)); }},
    {"OrderType", [](Line& line, const Record& record, Server) { line.Append(OrderTypeText(record.OrderType)); }},
    {"Quantity", [](Line& line, const Record& record, Server) { line.AppendSigned(record.Quantity); }},
    {"PendingQuantity", [](Line& line, const Record& record, Server) { line.AppendSigned(record.PendingQuantity); }},
    {"Price", [](Line& line, const Record& record, Server) { line.AppendDouble(record.Price); }},
    {"StrikePrice", [](Line& line, const Record& record, Server) { line.AppendDouble(StrikePriceOf(record)); }},
    {"CTCLId", [](Line& line, const Record& record, Server) { line.Append(record.CTCLID); }},
    {"ClientID", [](Line& line, const Record& record, Server) { line.Append(record.ClientID); }},
    {"ReferenceText", [](Line& line, const Record& record, Server) { line.Append(record.ReferenceText); }},
    {"MemberID", [](Line& line, const Record& record, Server) { line.Append(record.MemberID); }},
    {"StrategyID", [](Line& line, const Record& record, Server) { line.AppendSigned(record.StrategyID); }},
    {"OptionType", [](Line& line, const Record& record, Server) { line.Append(OptionTypeOf(record)); }},
    {"ProductType", [](Line& line, const Record& record, Server) { line.Append(ProductTypeText(record.ProductType)); }},
    {"OpenClose", [](Line& line, const Record& record, Server) { line.Append(OpenCloseText(record.OpenClose)); }},
    {"ManagerID", [](Line& line, const Record& record, Server) { line.Append(record.ManagerID); }},
    {"Pancard", [](Line& line, const Record& record, Server) { line.Append(record.Pancard); }},
    {"TerminalInfo", [](Line& line, const Record& record, Server) { line.Append(record.TerminalInfo); }},
    {"Multiplier", [](Line& line, const Record& record, Server) { line.AppendDouble(MultiplierOf(record)); }},
    {"AlgoID", [](Line& line, const Record& record, Server) { line.Append(record.AlgoID); }},
};
static_assert(std::size(kDailyColumns) == 34);

}  // namespace

const DailyColumn* FindDailyColumn(std::string_view name) noexcept {
  for (const DailyColumn& column : kDailyColumns)
    if (column.Name == name) return &column;
  return nullptr;
}

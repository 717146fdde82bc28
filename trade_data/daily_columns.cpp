#include "trade_data/daily_columns.h"

#include <iterator>

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

// The names of the terminal's grids by type code.
#pragma once

#include <iterator>
#include <string_view>

// The index is the type code; the title of the field chooser shows the name. Intentional: the misspellings.
inline constexpr std::wstring_view kGridTypeNames[] = {
    L"Alert",
    L"AlgoRuleGrid",
    L"AllIndices",
    L"ArrangeSpin",
    L"AskPriceGrid",
    L"BidPriceGrid",
    L"BroadcastRulegrid",
    L"BroadcastFiltergrid",
    L"BroadcastAllRulegrid",
    L"Brokerage",
    L"C2C",
    L"Depth",
    L"Dynamic",
    L"ExchangeStopTime",
    L"Index",
    L"InsertRule",
    L"LegSpin",
    L"MultiLegGrid",
    L"ManualOrder",
    L"ManualTrade",
    L"AlgoNetPosition",
    L"NetPosition",
    L"NetPostionHistory",
    L"OptionCalculatorgrid",
    L"OrderCount",
    L"OrderMultiLegGrid",
    L"Order",
    L"OrderHistory",
    L"PendingOrder",
    L"SecurityInformation",
    L"Spread",
    L"Scale",
    L"SpinDepth",
    L"Scalebook",
    L"SpinDepthPendingOrder",
    L"SpinnerGrid",
    L"SpinnerLegDetailGrid",
    L"SpinnerOrderBook",
    L"SpinnerPendingOrder",
    L"SpinPropertyGrid",
    L"SpinnerSpreadBookGrid",
    L"Trade",
    L"TradeHistory",
    L"TOD",
    L"Watch",
    L"VolHedge",
    L"VolHedgeSum",
    L"AutoDelta",
    L"AuctionWatch",
    L"NetPosExpiry",
};
inline constexpr int kTradeGridType = 41;
static_assert(std::size(kGridTypeNames) == 50 && kGridTypeNames[kTradeGridType] == L"Trade");

// Empty for an unknown code.
constexpr std::wstring_view GridTypeName(int code) noexcept {
  return code < 0 || code >= static_cast<int>(std::size(kGridTypeNames)) ? std::wstring_view() : kGridTypeNames[code];
}

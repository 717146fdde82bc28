// The names of the terminal's grids, by type code, as the title of the field chooser shows them.
#pragma once

#include <filesystem>
#include <iterator>
#include <string_view>

// The place is the code. Spelled as they stand, slips included: meant so.
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

// Empty for a code that is none.
constexpr std::wstring_view GridTypeName(int code) noexcept {
  return code < 0 || code >= static_cast<int>(std::size(kGridTypeNames)) ? std::wstring_view() : kGridTypeNames[code];
}

// BuildFolderPath: a file's path in folders that are made on the way.

// The base folder, then each part of the relative folder between its backslashes or slashes, then the file name if
// there is one, joined with the platform's separator. Each folder is made where it is missing; that it cannot be made
// is told by nobody and seen when the file is opened. Without a relative folder the result is empty: meant so, whatever
// the file and the base.
std::filesystem::path BuildFolderPath(const std::filesystem::path& relativeFolder,
                                      const std::filesystem::path& fileName, const std::filesystem::path& baseFolder);

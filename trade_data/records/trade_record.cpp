#include "trade_data/records/trade_record.h"

namespace {

struct CodeText {
  std::uint32_t Code;
  std::string_view Text;
};

constexpr CodeText kSides[] = {{1, "Buy"}, {2, "Sell"}};
constexpr CodeText kProductTypes[] = {{1, "NORMAL"}, {2, "DELIVERY"}, {3, "INTRADAY"}};
constexpr CodeText kOpenCloses[] = {
    {1, "Open"},           {2, "Close"},    {3, "ForceClose"},      {4, "CloseToday"},
    {5, "CloseYesterday"}, {6, "ForceOff"}, {7, "LocalForceClose"},
};
constexpr CodeText kOrderTypes[] = {
    {1, "Market"},
    {2, "Limit"},
    {3, "StopMarket"},
    {4, "StopLimit"},
    {11, "OCO"},
    {74, "MIT"},
    {78, "NegotiatedDealOrder"},
    {80, "PreOpenOrder"},
    {82, "MITLimit"},
    {87, "AuctionBuyIn"},
    {88, "AuctionSellOut"},
    {89, "AuctionTradingBuyIn"},
    {90, "AuctionTradingSellOut"},
    {101, "MultiLeg"},
    {102, "Spread"},
};

template <std::size_t Count>
std::string_view TextOf(const CodeText (&table)[Count], std::uint32_t code, std::string_view other) noexcept {
  for (const CodeText& row : table)
    if (row.Code == code) return row.Text;
  return other;
}

}  // namespace

std::string_view SideText(std::uint8_t side) noexcept {
  return TextOf(kSides, side, "Both");
}
std::string_view OrderTypeText(std::uint8_t orderType) noexcept {
  return TextOf(kOrderTypes, orderType, "");
}
std::string_view ProductTypeText(std::uint32_t productType) noexcept {
  return TextOf(kProductTypes, productType, "*");
}
std::string_view OpenCloseText(std::uint8_t openClose) noexcept {
  return TextOf(kOpenCloses, openClose, "NONE");
}

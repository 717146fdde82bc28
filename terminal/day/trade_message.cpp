#include "terminal/day/trade_message.h"

#include "host_link/messages/wire_fields.h"

namespace {

// The terminal counts its orders apart from those of plug-ins.
constexpr std::uint32_t kOrderIdBase = 500000;

// Requires: the text has the limits of the files.
void AddText(CQORPacketWriter& writer, std::uint16_t tag, const std::string& text) {
  writer.AddBytes(tag, text.data(), static_cast<std::uint16_t>(text.size()));
}

void AddSecurity(CQORPacketWriter& writer, const DayTrade& trade, const Security* security) {
  AddText(writer, 55010, trade.Exchange);
  AddText(writer, 55104, trade.SecurityID);
  AddText(writer, 55105, trade.SecurityType);
  AddText(writer, 55103, trade.Symbol);
  AddText(writer, 55143, trade.ExpiryDate);
  AddText(writer, 55106, trade.OptionType);
  writer.AddDouble(40004, trade.StrikePrice);
  writer.AddDouble(40008, trade.Multiplier);
  AddText(writer, 55107, security == nullptr ? std::string() : security->Name);
}

void AddTrade(CQORPacketWriter& writer, const DayTrade& trade, const DeskLine& desk, std::uint32_t orderNumber,
              const std::string& orderTime) {
  AddText(writer, 55118, trade.ExchangeTradeTime.Text);
  writer.AddU32(20011, kOrderIdBase + orderNumber);
  AddText(writer, 55116, orderTime);
  AddText(writer, 55117, orderTime);
  writer.AddU8(101, static_cast<std::uint8_t>(trade.Side));
  writer.AddU8(102, desk.OrderType);
  writer.AddU32(20084, desk.ProductType);
  writer.AddU32(20014, trade.Quantity);
  writer.AddU32(20013, 0);
  writer.AddU32(20036, 0);
  writer.AddDouble(40002, trade.Price);
}

void AddDesk(CQORPacketWriter& writer, const DeskLine& desk) {
  AddText(writer, 55018, desk.ManagerID);
  AddText(writer, 55102, desk.ClientID);
  AddText(writer, 55131, desk.MemberID);
  AddText(writer, 55012, desk.CTCLID);
  AddText(writer, 55109, desk.ReferenceText);
  writer.AddU32(20068, desk.StrategyID);
  writer.AddU32(20081, 0);
  writer.AddU32(20082, 0);
  writer.AddU32(20083, 0);
  AddText(writer, 55151, std::string());
  writer.AddU8(115, desk.OpenClose);
  writer.AddU32(20101, 0);
  AddText(writer, 55124, desk.TerminalInfo);
  AddText(writer, 55123, desk.Pancard);
  AddText(writer, 55328, desk.AlgoID);
  writer.AddU16(11115, desk.AlgoCategory);
  AddText(writer, 55329, desk.ParticipantID);
  AddText(writer, 55109, desk.ReferenceText);  // once more: the layout asks for it
}

}  // namespace

void TradeMessages::Write(const DayTrade& trade, std::uint16_t number, CQORPacketWriter& writer) {
  const Order& order = OrderOf(trade);
  const DeskLine& desk = Desk.LineOf(trade.ExchangeOrderNo);
  writer.AddU16(10002, number);
  AddText(writer, 55001, desk.UserID);
  writer.AddU32(20008, ++LastTradeID);
  writer.AddU32(20009, order.Number);
  AddText(writer, 55101, trade.ExchangeTradeID);
  AddText(writer, 55100, trade.ExchangeOrderNo);
  writer.AddTerminator();
  AddSecurity(writer, trade, Securities.Find(trade.Exchange, trade.SecurityID));
  AddTrade(writer, trade, desk, order.Number, order.Time);
  AddDesk(writer, desk);
}

const TradeMessages::Order& TradeMessages::OrderOf(const DayTrade& trade) {
  const auto [order, isNew] = Orders.try_emplace(trade.ExchangeOrderNo);
  if (isNew) order->second = {static_cast<std::uint32_t>(Orders.size()), trade.ExchangeTradeTime.Text};
  return order->second;
}

namespace {

constexpr WireField kPrintFields[] = {
    {101, Field::U8, offsetof(TradePrint, Side)},
    {20008, Field::U32, offsetof(TradePrint, Number)},
    {20014, Field::U32, offsetof(TradePrint, Quantity)},
    {40002, Field::Double, offsetof(TradePrint, Price)},
    {40008, Field::Double, offsetof(TradePrint, Multiplier)},
    {55010, Field::Text, offsetof(TradePrint, Exchange), TradePrint::kLongestText},
    {55100, Field::Text, offsetof(TradePrint, ExchangeOrderNo), TradePrint::kLongestKey},
    {55101, Field::Text, offsetof(TradePrint, ExchangeTradeID), TradePrint::kLongestKey},
    {55102, Field::Text, offsetof(TradePrint, ClientID), TradePrint::kLongestClient},
    {55103, Field::Text, offsetof(TradePrint, Symbol), TradePrint::kLongestText},
    {55104, Field::Text, offsetof(TradePrint, SecurityID), TradePrint::kLongestText},
    {55107, Field::Text, offsetof(TradePrint, Name), TradePrint::kLongestText},
    {55118, Field::Text, offsetof(TradePrint, Time), TradePrint::kLongestText},
    {55143, Field::Text, offsetof(TradePrint, ExpiryDate), TradePrint::kLongestText},
};
static_assert(FieldsFit(kPrintFields, sizeof(TradePrint)));
constexpr FieldIndex kPrintIndex(kPrintFields);

constexpr WireField kAmendmentFields[] = {
    {101, Field::U8, offsetof(TradeAmendment, Trade.Side)},
    {20008, Field::U32, offsetof(TradeAmendment, Number)},
    {20103, Field::U32, offsetof(TradeAmendment, NewQuantity)},
    {20104, Field::U32, offsetof(TradeAmendment, AddQuantity)},
    {55010, Field::Text, offsetof(TradeAmendment, Trade.Exchange), TradePrint::kLongestText},
    {55100, Field::Text, offsetof(TradeAmendment, Trade.ExchangeOrderNo), TradePrint::kLongestKey},
    {55102, Field::Text, offsetof(TradeAmendment, Trade.ClientID), TradePrint::kLongestClient},
    {55104, Field::Text, offsetof(TradeAmendment, Trade.SecurityID), TradePrint::kLongestText},
};
static_assert(FieldsFit(kAmendmentFields, sizeof(TradeAmendment)));
constexpr FieldIndex kAmendmentIndex(kAmendmentFields);

}  // namespace

TradePrint ReadTradePrint(CQORPacketReader& message) {
  const std::uint16_t start = message.Cursor;
  TradePrint print;
  ReadFields(message, kPrintFields, kPrintIndex, &print);
  message.Cursor = start;
  return print;
}

void ReadTradeAmendment(CQORPacketReader& message, TradeAmendment& amendment) {
  const std::uint16_t start = message.Cursor;
  amendment.Number = amendment.NewQuantity = amendment.AddQuantity = 0;
  ReadFields(message, kAmendmentFields, kAmendmentIndex, &amendment);
  message.Cursor = start;
}

std::uint32_t ReadTradeNumber(const CQORPacketReader& message) {
  constexpr std::uint16_t kNumberTag = 20008;
  FieldCursor place{message.Data, message.Cursor, message.End};
  std::uint16_t tag = 0;
  std::uint32_t number = 0;
  while (place.NextTag(tag)) {
    if (tag != kNumberTag)
      place.SkipValue(tag);
    else if (place.ReadValue(&number, sizeof number))
      break;
  }
  return number;
}

void TradeListeners::OnTradeSent(const TradePrint& print) {
  for (TradeListener* listener : All) listener->OnTradeSent(print);
}
void TradeListeners::OnAmendmentSent(CQORPacketReader& message) {
  for (TradeListener* listener : All) listener->OnAmendmentSent(message);
}
void TradeListeners::OnDownloadEndSent() {
  for (TradeListener* listener : All) listener->OnDownloadEndSent();
}
void TradeListeners::OnStartOver() {
  for (TradeListener* listener : All) listener->OnStartOver();
}

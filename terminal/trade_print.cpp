#include "terminal/trade_print.h"

namespace {

constexpr std::uint16_t kLongestText = 48;

struct TextField {
  std::uint16_t Tag;
  std::string TradePrint::*Place;
};
constexpr TextField kTextFields[] = {
    {55010, &TradePrint::Exchange}, {55104, &TradePrint::SecurityID}, {55103, &TradePrint::Symbol},
    {55107, &TradePrint::Name},     {55143, &TradePrint::ExpiryDate}, {55118, &TradePrint::Time},
};

bool ReadTextField(CQORPacketReader& message, TradePrint& print) {
  for (const TextField& field : kTextFields) {
    if (field.Tag != message.Tag) continue;
    char text[kLongestText + 1] = {};
    if (message.ReadText(text, kLongestText)) print.*field.Place = text;
    return true;
  }
  return false;
}

}  // namespace

TradePrint ReadTradePrint(CQORPacketReader& message) {
  const std::uint16_t start = message.Cursor;
  TradePrint print;
  while (message.NextTag()) {
    if (message.Tag == 20014)
      message.ReadU32(print.Quantity);
    else if (message.Tag == 40002)
      message.ReadDouble(print.Price);
    else if (!ReadTextField(message, print))
      message.SkipValue();
  }
  message.Cursor = start;
  return print;
}

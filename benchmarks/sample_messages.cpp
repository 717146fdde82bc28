#include "benchmarks/sample_messages.h"

#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>

#include "host_link/messages/packet_writer.h"
#include "trade_data/records/trade_impl.h"

namespace {

template <std::size_t Size>
void SetText(char (&field)[Size], const std::string& text) {
  text.copy(field, Size - 1);
}

std::string Numbered(const char* format, std::uint32_t number) {
  char text[64];
  std::snprintf(text, sizeof text, format, number);
  return text;
}

void AppendMessage(std::vector<std::uint8_t>& messages, std::uint32_t i, std::uint16_t messageNumber) {
  static CQORTradeImpl encoder;
  const TradeRecord record = SampleRecord(i);
  CQORPacketWriter writer(0);
  encoder.EncodeRecord(writer, record, false, messageNumber, false);
  writer.AddText(55107, record.Text55107, 48, false);
  writer.AddU32(20083, record.Value20083);
  writer.Finish();
  if (writer.GetSize() != kSampleMessageSize) {
    std::fprintf(stderr, "a sample message takes %u bytes, not %zu\n", writer.GetSize(), kSampleMessageSize);
    std::exit(1);
  }
  messages.insert(messages.end(), writer.GetData(), writer.GetData() + writer.GetSize());
}

}  // namespace

TradeRecord SampleRecord(std::uint32_t i) {
  TradeRecord record{};
  SetText(record.UserID, Numbered("DEALER%02u", i % 40));
  SetText(record.ManagerID, "DESK1");
  record.VELDTradeID = i + 1;
  record.VELDOrderID = i / 3 + 1;
  SetText(record.ExchangeTradeID, Numbered("%07u", i));
  SetText(record.ExchangeTradeTime, "20131007-09:30:01");
  record.OrderID = i / 3;
  SetText(record.OrderTime, "20131007-09:30:00");
  SetText(record.ExchangeOrderNo, Numbered("11%08u", i / 3));
  SetText(record.ExchangeOrderTime, "20131007-09:30:00");
  SetText(record.Exchange, "COMEX");
  SetText(record.SecurityID, Numbered("GC2013%02u", i % 12 + 1));
  SetText(record.SecurityType, "FUTCOM");
  SetText(record.Symbol, "GC");
  SetText(record.ExpiryDate, "201312");
  SetText(record.OptionType, "XX");
  SetText(record.Text55107, "GOLD");
  record.Side = static_cast<std::uint8_t>(i % 2 + 1);
  record.OrderType = 2;
  record.Quantity = i % 50 + 1;
  record.PendingQuantity = i % 7;
  record.Value20036 = 1;
  record.Price = 1313.0 + (i % 1000) / 10.0;
  record.ProductType = i % 3 + 1;
  record.OpenClose = 1;
  SetText(record.ClientID, Numbered("C%03u", i % 300));
  SetText(record.MemberID, "M12");
  SetText(record.CTCLID, "100200");
  SetText(record.ReferenceText, "order 1");
  record.StrategyID = i % 9;
  record.Multiplier = 100;
  SetText(record.Text55151, "text 123456");
  SetText(record.TerminalInfo, "TERM-1");
  SetText(record.Pancard, "AAAPL1234C");
  SetText(record.AlgoID, "ALGO1");
  record.AlgoCategory = 1;
  SetText(record.ParticipantID, "PART1");
  return record;
}

const std::vector<std::uint8_t>& SampleMessages(std::size_t count, std::uint16_t messageNumber) {
  static std::map<std::pair<std::size_t, std::uint16_t>, std::vector<std::uint8_t>> made;
  std::vector<std::uint8_t>& messages = made[{count, messageNumber}];
  if (messages.empty()) {
    messages.reserve(count * kSampleMessageSize);
    for (std::uint32_t i = 0; i < count; ++i) AppendMessage(messages, i, messageNumber);
  }
  return messages;
}

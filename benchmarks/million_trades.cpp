#include "benchmarks/million_trades.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

#include "benchmarks/sample_messages.h"
#include "host_link/messages/packet_writer.h"

namespace {

constexpr std::uint32_t kSecurities = 200;
constexpr std::uint32_t kFirstSecond = 9 * 3600 + 15 * 60;
constexpr std::uint32_t kDaySeconds = 6 * 3600 + 15 * 60;
constexpr const char* kExchanges[] = {"NSEFO", "NSECM", "BSECM", "MCX"};
constexpr const char* kRoots[] = {"NIFTY", "BANKN", "RELIA", "GOLDM", "CRUDE", "TATAS", "INFYS", "SILVE"};

template <std::size_t Size, typename... Values>
void Print(char (&field)[Size], const char* format, Values... values) {
  std::snprintf(field, Size, format, values...);
}

// A well-mixed number, always the same for its index.
std::uint32_t Mixed(std::uint32_t i) {
  i = (i ^ (i >> 16)) * 0x7FEB352Du;
  i = (i ^ (i >> 15)) * 0x846CA68Bu;
  return i ^ (i >> 16);
}

double PriceOf(std::uint32_t security, std::uint32_t i) {
  const double base = 20.0 * std::pow(1.03, security);
  const double wave = std::sin(i / 40'000.0 + security) * 0.02;
  const double tick = static_cast<double>(Mixed(i) % 41) - 20;
  return std::round((base * (1 + wave)) * 20 + tick) / 20;
}

}  // namespace

TradeRecord DayRecord(std::uint32_t i) {
  const std::uint32_t random = Mixed(i + 77), security = random % kSecurities, order = i / 3 + 1;
  const auto second = kFirstSecond + static_cast<std::uint32_t>(std::uint64_t{i} * kDaySeconds / kMillion);
  const bool option = security % 4 == 0;
  TradeRecord record{};
  Print(record.UserID, "DEALER%02u", random % 40);
  Print(record.ManagerID, "DESK%u", random % 5);
  record.VELDTradeID = i + 1;
  record.VELDOrderID = order;
  Print(record.ExchangeTradeID, "%08u", 50'000'000 + i);
  Print(record.ExchangeTradeTime, "20131007-%02u:%02u:%02u", second / 3600, second / 60 % 60, second % 60);
  record.OrderID = order;
  Print(record.OrderTime, "20131007-%02u:%02u:%02u", second / 3600, second / 60 % 60, second % 60);
  Print(record.ExchangeOrderNo, "11%014u", order);
  Print(record.ExchangeOrderTime, "20131007-%02u:%02u:%02u", second / 3600, second / 60 % 60, second % 60);
  Print(record.Exchange, "%s", kExchanges[security % 4]);
  Print(record.SecurityID, "%u", 35'000 + security);
  Print(record.SecurityType, "%s", option ? "OPTSTK" : "EQ");
  Print(record.Symbol, "%s%02u", kRoots[security % 8], security / 8);
  Print(record.ExpiryDate, "%s", option ? "20131031" : "");
  Print(record.OptionType, "%s", option ? (security % 8 == 0 ? "CE" : "PE") : "XX");
  record.StrikePrice = option ? 100.0 * (security % 50 + 1) : 0;
  Print(record.Text55107, "%s%02u 2013", kRoots[security % 8], security / 8);
  record.Side = static_cast<std::uint8_t>(random / kSecurities % 2 + 1);
  record.OrderType = random % 7 == 0 ? 1 : 2;
  record.Quantity = 25 * (random / 400 % 40 + 1);
  record.PendingQuantity = random % 3 == 0 ? 25 : 0;
  record.Price = PriceOf(security, i);
  record.ProductType = random % 3 + 1;
  record.OpenClose = 1;
  Print(record.ClientID, "C%04u", random % 900);
  Print(record.MemberID, "10412");
  Print(record.CTCLID, "4000123456780%02u", random % 40);
  if (random % 10 == 0) Print(record.ReferenceText, "call %04u", random % 1500);
  record.StrategyID = random % 9;
  record.Multiplier = security % 4 == 3 ? 100 : 1;
  Print(record.TerminalInfo, "TERM-A%02u", random % 40);
  Print(record.Pancard, "AAAPA%04uA", random % 900);
  Print(record.AlgoID, "%u", random % 3);
  record.AlgoCategory = static_cast<std::uint16_t>(random % 3);
  Print(record.ParticipantID, "10412");
  return record;
}

void PlayTrade(TradeCache& cache, const TradeRecord& record) {
  static CQORTradeImpl encoder;
  CQORPacketWriter writer(0);
  encoder.EncodeRecord(writer, record, false, 9101, false);
  writer.Finish();
  CQORPacketReader reader(writer.GetData(), writer.GetSize());
  OpenSample(reader, 9101);
  cache.OnTrade(reader);
}

const TradeCache& MillionTrades() {
  static CQORTradeImpl decoder;
  static const TradeBooks noBooks;
  static TradeCache& cache = [&]() -> TradeCache& {
    static TradeCache made(decoder, noBooks, ".");
    made.AutoTradeWriteCSV = false;
    made.OnDownloadEnd();
    for (std::uint32_t i = 0; i < kMillion; ++i) PlayTrade(made, DayRecord(i));
    return made;
  }();
  return cache;
}

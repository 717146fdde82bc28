#include "tests/feeds/venue/venue_run.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

#include "feeds/journal/journal_day.h"
#include "trade_data/records/trade_impl.h"

bool WaitFor(const std::function<bool()>& condition) {
  for (const auto end = std::chrono::steady_clock::now() + kBound; !condition();) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  return true;
}

VenueRun::VenueRun(const std::filesystem::path& folder, const VenuePlan& plan)
    : Day(plan.Trades, DeskFile(folder), BadLines),
      Faults(ParseFaults(plan.Faults, "faults", plan.Trades)),
      Session(plan.Settings, Day, Faults),
      Server(Session, Day, plan.Pace, 0) {
  Served = std::async(std::launch::async, [this] {
    Server.Run([this](const std::string& line) {
      const std::lock_guard guard(Lock);
      Told += line + "\n";
    });
  });
}

VenueRun::~VenueRun() {
  Server.Stop();
  Served.wait();
}

std::string VenueRun::Notices() const {
  const std::lock_guard guard(Lock);
  return Told;
}

namespace {

template <typename... Values>
std::string Line(const Values&... values) {
  std::ostringstream text;
  ((text << values << '|'), ...);
  return text.str();
}

// The sign makes a copy of a number, as records are packed.
std::string LineOf(const TradeRecord& trade) {
  return Line(trade.ExchangeTradeID, trade.ExchangeOrderNo, trade.Exchange, trade.SecurityID, trade.Symbol,
              trade.SecurityType, trade.ExpiryDate, trade.OptionType, +trade.StrikePrice, +trade.Multiplier,
              int{trade.Side}, +trade.Quantity, +trade.Price, trade.ExchangeTradeTime, trade.UserID, trade.MemberID,
              trade.ClientID, trade.CTCLID, int{trade.OrderType}, int{trade.OpenClose}, trade.ReferenceText);
}

std::string ExpectedLine(const DayTrade& trade, const DeskLine& desk, const std::string& suffix,
                         const std::string& text) {
  return Line(trade.ExchangeTradeID + suffix, trade.ExchangeOrderNo, trade.Exchange, trade.SecurityID, trade.Symbol,
              trade.SecurityType, trade.ExpiryDate, trade.OptionType, trade.StrikePrice, trade.Multiplier,
              static_cast<int>(trade.Side), trade.Quantity, trade.Price, trade.ExchangeTradeTime.Text, desk.UserID,
              desk.MemberID, desk.ClientID, desk.CTCLID, int{desk.OrderType}, int{desk.OpenClose}, text);
}

}  // namespace

std::map<std::uint32_t, std::string> VenueRun::ExpectedTrades() const {
  std::map<std::uint32_t, std::string> lines;
  for (std::uint32_t i = 0; i < Day.Count(); ++i) {
    DayTrade trade = Day.At(i);
    const DeskLine& desk = Day.DeskOf(trade);
    std::string suffix;
    std::string text = desk.ReferenceText;
    for (const VenueFault& fault : Faults) {
      const std::string name = fault.Kind->Name;
      if (name == "empty-field" && fault.After == i) text.clear();
      if (fault.After != i + 1) continue;
      if (name == "correct") {
        suffix = "-C";
        trade.Quantity += 1;
        trade.Price += 0.5;
      } else if (name == "bust") {
        suffix = "-B";
        trade.Quantity = 0;
        text = "bust " + trade.ExchangeTradeID;
      }
    }
    lines[i + 1] = ExpectedLine(trade, desk, suffix, text);
  }
  return lines;
}

std::string FirstDifference(const TradeLines& kept, const TradeLines& expected) {
  if (kept == expected) return {};
  const auto lineOf = [](const TradeLines& lines, std::uint32_t number) {
    const auto found = lines.find(number);
    return found == lines.end() ? std::string("nothing") : found->second;
  };
  std::uint32_t number = 0;
  while (lineOf(kept, number) == lineOf(expected, number)) ++number;
  return std::to_string(number) + " of " + std::to_string(expected.size()) + ": " + lineOf(kept, number) +
         " instead of " + lineOf(expected, number);
}

namespace {

class CountedAlarms : public AlarmSink {
 public:
  explicit CountedAlarms(JournalTrades& trades) : Trades(trades) {}
  void OnAlarm(const Alarm& alarm) override {
    ++Trades.Alarms[alarm.Kind];
    Trades.AlarmTexts += alarm.Text + "\n";
  }

 private:
  JournalTrades& Trades;
};

void TakeMessages(const std::vector<std::uint8_t>& bytes, JournalTrades& trades) {
  CQORTradeImpl decoder;
  for (std::size_t at = 0; at < bytes.size();) {
    const auto size = static_cast<std::uint16_t>(std::min<std::size_t>(bytes.size() - at, UINT16_MAX));
    CQORPacketReader message(&bytes[at], size);
    std::uint16_t needed = 0;
    std::uint16_t consumed = 0;
    ASSERT_TRUE(message.ParseHeader(needed, consumed));
    TradeRecord record{};
    decoder.DecodeKeySection(message, record);
    decoder.DecodeBody(message, record);
    ASSERT_EQ(message.MessageNumber, 9101);
    trades.Last[+record.VELDTradeID] = LineOf(record);
    ++trades.Messages;
    at += consumed;
  }
}

}  // namespace

JournalTrades ReadJournals(const std::filesystem::path& folder) {
  JournalTrades trades;
  CountedAlarms alarms(trades);
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() != ".journal") continue;
    JournalDay day(entry.path(), {}, alarms);
    for (std::vector<std::uint8_t> messages; day.Take(messages, 1 << 20); messages.clear())
      TakeMessages(messages, trades);
    trades.Reports += day.Counts().Trades + day.Counts().Corrections + day.Counts().Busts;
  }
  return trades;
}

#include "terminal/ledger/trade_ledger.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/support/wire_bytes.h"
#include "tests/trade_data/deliver.h"

namespace {

struct TestTrade {
  std::uint32_t Number;
  std::string Execution;
  std::uint32_t Quantity;
  double Price = 1;
  const char* Security = "IBM";
  const char* Client = "C1";
  unsigned Side = 1;
};

std::string Message(const TestTrade& trade, unsigned number = 9101) {
  return WireMessage(number, WireU32(20008, trade.Number) + WireText(55101, trade.Execution) + WireText(55100, "11") +
                                 WireTerminator() + WireText(55010, "ARCA") + WireText(55104, trade.Security) +
                                 WireText(55103, "SYM") + WireDouble(40008, 100) + WireText(55107, "NAME") +
                                 WireText(55118, "20131007-00:00:09") + WireU8(101, trade.Side) +
                                 WireU32(20014, trade.Quantity) + WireDouble(40002, trade.Price) +
                                 WireText(55102, trade.Client) + WireText(55143, "201312"));
}
std::string Amendment(std::uint32_t number, std::uint32_t newQuantity, std::uint32_t addQuantity,
                      const std::string& more = {}) {
  return WireMessage(9112, WireU32(20008, number) + WireU32(20103, newQuantity) + WireU32(20104, addQuantity) + more);
}
const std::string kDownloadEnd = WireMessage(8112, "");
const std::string kLogin = WireMessage(30022, "");

class OpenBook : public TradeBook {
 public:
  bool FilterBarActive() const override { return false; }
  void MakeRoom(std::size_t) override {}
  bool AdmitRow(TradeRecord&) override { return true; }
  void UpdateTotals(const TradeRecord&) override {}
  void RefilterRow(TradeRecord&) override {}
  void CopyAllRows(const TradeNumberMap&, std::int32_t) override {}
  void ClearRows() override {}
};

// A ledger, and the trade cache of the plug-in beside it.
class TradeLedgerTest : public testing::Test {
 protected:
  TradeLedgerTest() { Cache.AutoTradeWriteCSV = false; }

  void Play(const std::string& message) {
    CQORPacketReader reader(reinterpret_cast<const std::uint8_t*>(message.data()),
                            static_cast<std::uint16_t>(message.size()));
    std::uint16_t needed = 0, consumed = 0;
    ASSERT_TRUE(reader.ParseHeader(needed, consumed));
    const std::uint16_t start = reader.Cursor;
    const unsigned number = reader.MessageNumber;
    if (number == 8111 || number == 9101) Ledger.OnTradeSent(ReadTradePrint(reader));
    if (number == 9112) Ledger.OnAmendmentSent(reader);
    if (number == 8112) Ledger.OnDownloadEndSent();
    if (number == 30022) Ledger.OnStartOver();
    EXPECT_EQ(reader.Cursor, start);
    Deliver(Cache, reader);
  }
  // Number, security, client, side, quantity and price of each trade.
  static std::string Text(std::uint32_t number, const std::string& security, const std::string& client, unsigned side,
                          std::uint32_t quantity, double price) {
    return std::to_string(number) + " " + security + " " + client + " " + std::to_string(side) + " " +
           std::to_string(quantity) + "@" + std::to_string(price) + "\n";
  }
  std::string LedgerText(const LedgerTrade& trade) const {
    return Text(trade.Number, Ledger.Securities()[trade.Security].SecurityID, Ledger.Clients()[trade.Client],
                trade.Side, trade.Quantity, trade.Price);
  }
  std::string CacheText() const {
    std::string text;
    const TradeMap* live = Cache.LiveTradesOf("Default");
    if (live == nullptr) return text;
    for (const TradeMap::Entry trade : *live)
      text += Text(static_cast<std::uint32_t>(trade.Id), trade.Record->SecurityID, trade.Record->ClientID,
                   trade.Record->Side, trade.Record->Quantity, trade.Record->Price);
    return text;
  }
  // By rising numbers, as the cache has them.
  std::string SortedLedgerText() const {
    std::map<std::int32_t, std::string> lines;
    for (const LedgerTrade& trade : Ledger.Trades()) lines[static_cast<std::int32_t>(trade.Number)] = LedgerText(trade);
    std::string text;
    for (const auto& [number, line] : lines) text += line;
    return text;
  }
  // "3x5 4x2": numbers and quantities.
  std::string Trades() const {
    std::string text;
    for (const LedgerTrade& trade : Ledger.Trades())
      text += std::to_string(trade.Number) + "x" + std::to_string(trade.Quantity) + " ";
    return text;
  }
  // The lists of the securities lead to each trade once, in its order.
  void CheckLists() const {
    std::size_t count = 0;
    for (std::uint32_t at = 0; at < Ledger.Securities().size(); ++at) {
      const std::vector<std::uint32_t>& places = Ledger.Securities()[at].Trades;
      EXPECT_TRUE(std::ranges::is_sorted(places));
      for (const std::uint32_t place : places) EXPECT_EQ(Ledger.Trades()[place].Security, at);
      count += places.size();
    }
    EXPECT_EQ(count, Ledger.Trades().size());
  }

  TradeLedger Ledger;
  OpenBook Book;
  TradeBooks Books{{"book", &Book}};
  CQORTradeImpl Decoder;
  TradeCache Cache{Decoder, Books, {}};
};

TEST_F(TradeLedgerTest, FollowsTheMessagesOfADay) {
  const struct {
    const char* What;
    std::string Message;
    const char* Trades;
  } steps[] = {
      {"an amendment before any trade", Amendment(1, 9, 9), ""},
      {"the download is held back", Message({7, "a", 70}, 8111), ""},
      {"an older one", Message({3, "b", 30}, 8111), ""},
      {"a number that is held", Message({7, "c", 71}, 8111), ""},
      {"a live one ahead of the end", Message({5, "d", 50}), ""},
      {"none is known yet", Amendment(7, 9, 9), ""},
      {"by rising numbers", kDownloadEnd, "3x30 5x50 7x71 "},
      {"a repeat under another number", Message({8, "b", 99}), "3x30 5x50 7x71 "},
      {"a live one", Message({9, "e", 90}), "3x30 5x50 7x71 9x90 "},
      {"a known number", Message({5, "f", 51}), "3x30 5x51 7x71 9x90 "},
      {"an older live one comes last", Message({4, "g", 40}), "3x30 5x51 7x71 9x90 4x40 "},
      {"a new quantity", Amendment(3, 33, 0), "3x33 5x51 7x71 9x90 4x40 "},
      {"no new quantity", Amendment(7, 0, 6), "3x33 5x51 7x71 9x90 4x40 "},
      {"a bust", Message({9, "h", 0}), "3x33 5x51 7x71 9x0 4x40 "},
      {"unknown, of the execution that was amended", Amendment(20, 1, 2), "3x33 5x51 7x71 9x0 4x40 "},
      {"unknown", Amendment(20, 1, 2, WireText(55100, "12")), "3x33 5x51 7x71 9x0 4x40 20x2 "},
      {"unknown without a quantity", Amendment(21, 1, 0, WireText(55100, "13")), "3x33 5x51 7x71 9x0 4x40 20x2 "},
      {"a number that counts as below 0", Message({0xFFFFFFFF, "i", 1}), "3x33 5x51 7x71 9x0 4x40 20x2 4294967295x1 "},
      {"a login", kLogin, ""},
      {"executions are forgotten", Message({2, "b", 20}, 8111), ""},
      {"a second day", Message({0x80000000, "j", 1}, 8111), ""},
      {"merged", kDownloadEnd, "2147483648x1 2x20 "},
  };
  for (const auto& [what, message, trades] : steps) {
    SCOPED_TRACE(what);
    Play(message);
    EXPECT_EQ(Trades(), trades);
    EXPECT_EQ(SortedLedgerText(), CacheText());
    CheckLists();
  }
  EXPECT_EQ(Ledger.Epoch(), 1U);
}

TEST_F(TradeLedgerTest, KeepsWhatATradeSays) {
  Play(kDownloadEnd);
  Play(Message({1, "a", 5, 1.5}));
  const LedgerTrade kExpected{1381104009, 1.5, 100, 5, 1, 0, 0, 1};  // 2013-10-07 00:00:09
  EXPECT_EQ(Ledger.Trades().at(0), kExpected);
  const LedgerSecurity& security = Ledger.Securities().at(0);
  EXPECT_EQ(security.Exchange + security.SecurityID + security.Symbol + security.Name + security.ExpiryDate,
            "ARCAIBMSYMNAME201312");
  Play(WireMessage(9101, WireU32(20008, 2) + WireTerminator() + WireText(55118, "09:30:00")));
  EXPECT_EQ(Ledger.Trades().at(1).Seconds, LedgerTrade::kNoSeconds);
  EXPECT_EQ(std::pair(Ledger.FindSecurity("ARCA", "IBM"), Ledger.FindSecurity("", "")),
            std::pair(std::optional(0U), std::optional(1U)));
  EXPECT_EQ(Ledger.FindSecurity("IBM", "ARCA"), std::nullopt);
  // An unknown trade has what the last amended one said.
  Play(Amendment(1, 6, 0));
  Play(Amendment(3, 0, 7, WireText(55100, "12")));
  const LedgerTrade kAdded{1381104009, 1.5, 100, 7, 3, 0, 0, 1};
  EXPECT_EQ(Ledger.Trades().at(2), kAdded);
}

TEST_F(TradeLedgerTest, CountsRewritesOfASecurity) {
  const auto counts = [this] {
    std::string text;
    for (const LedgerSecurity& security : Ledger.Securities()) text += std::to_string(security.Rewrites) + " ";
    return text + "= " + std::to_string(Ledger.AllRewrites());
  };
  Play(kDownloadEnd);
  for (const TestTrade& trade : {TestTrade{1, "a", 1}, {2, "b", 1, 1, "BAC"}, {3, "c", 1, 1, "BAC"}})
    Play(Message(trade));
  EXPECT_EQ(counts(), "0 0 = 0");
  Play(Message({2, "d", 0, 1, "BAC"}));
  EXPECT_EQ(counts(), "0 1 = 1");
  Play(Message({2, "e", 0, 1, "BAC"}));  // another execution, nothing else
  Play(Amendment(1, 0, 0));
  EXPECT_EQ(counts(), "0 1 = 1");
  Play(Message({1, "f", 1, 1, "BAC"}));  // moves to another security
  EXPECT_EQ(counts(), "1 2 = 3");
  EXPECT_EQ(Ledger.Securities()[1].Trades, (std::vector<std::uint32_t>{0, 1, 2}));
  CheckLists();
}

// The cache is the second way: it shares no code with the ledger.
TEST_F(TradeLedgerTest, AgreesWithTheTradeCacheOverRandomDays) {
  std::mt19937 random(20131007);
  const auto below = [&random](unsigned limit) { return static_cast<unsigned>(random() % limit); };
  const char* const securities[] = {"IBM", "BAC", "GC201312"};
  const char* const clients[] = {"C1", "C2", ""};
  const auto changes = [&] {
    return WireText(55100, std::to_string(below(90))) + WireText(55102, clients[below(3)]) + WireU8(101, below(3));
  };
  for (int step = 0; step < 20000; ++step) {
    const unsigned dice = below(1000);
    if (dice < 2)
      Play(kLogin);
    else if (dice < 10)
      Play(kDownloadEnd);
    else if (dice < 200)
      Play(Amendment(below(400), below(3) * 7, below(2) * 5, below(2) == 0 ? "" : changes()));
    else
      Play(Message({below(400), std::to_string(below(600)), below(4) * 10, below(9) * 0.5, securities[below(3)],
                    clients[below(3)], below(4)},
                   dice < 500 ? 8111 : 9101));
    if (step % 50 != 0) continue;
    ASSERT_EQ(SortedLedgerText(), CacheText()) << "step " << step;
    CheckLists();
  }
}

}  // namespace

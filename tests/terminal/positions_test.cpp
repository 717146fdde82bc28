#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <deque>
#include <map>
#include <random>
#include <set>

#include "terminal/positions/position_list.h"
#include "tests/support/files.h"
#include "tests/support/wire_bytes.h"

namespace {

TradePrint Print(std::uint32_t number, const std::string& execution, unsigned side, std::uint32_t quantity,
                 double price) {
  TradePrint print{"X", "GOLD", "", "", "", "20131007-09:30:00", quantity, price, number};
  print.Side = static_cast<std::uint8_t>(side);
  print.Multiplier = 10;
  execution.copy(print.ExchangeTradeID, sizeof print.ExchangeTradeID - 1);
  return print;
}

std::string Money(double amount) {
  char text[64];
  std::snprintf(text, sizeof text, "%.2f", amount);
  return text;
}

// A row of the page's tables.
std::string PageRow(const char* trade, const PositionTable& table) {
  const Position& position = table.At(0);
  const std::optional<double> average = position.AveragePrice();
  std::string row = "| ";
  for (const std::string& cell :
       {std::string(trade), std::to_string(position.Bought()), std::to_string(position.Sold()),
        std::to_string(position.Net()), average ? Money(*average) : std::string(), Money(table.LastPrice(0).value()),
        Money(position.Realised()), Money(table.OpenProfit(0)), Money(table.TotalProfit(0))})
    row += cell + " | ";
  row.pop_back();
  return row;
}

TEST(Positions, CountTheExampleOfTheirPage) {
  const std::string page = ReadFile(std::filesystem::path(TRADEBOOK_SOURCE_FOLDER) / "docs" / "positions.md");
  const struct {
    const char* Name;
    TradePrint Trade;
    const char* Average;
    const char* FirstInFirstOut;
  } steps[] = {
      {"1", Print(1, "a", 1, 10, 100), "| 1 | 10 | 0 | 10 | 100.00 | 100.00 | 0.00 | 0.00 | 0.00 |",
       "| 1 | 10 | 0 | 10 | 100.00 | 100.00 | 0.00 | 0.00 | 0.00 |"},
      {"2", Print(2, "b", 1, 10, 110), "| 2 | 20 | 0 | 20 | 105.00 | 110.00 | 0.00 | 1000.00 | 1000.00 |",
       "| 2 | 20 | 0 | 20 | 105.00 | 110.00 | 0.00 | 1000.00 | 1000.00 |"},
      {"3", Print(3, "c", 2, 15, 120), "| 3 | 20 | 15 | 5 | 105.00 | 120.00 | 2250.00 | 750.00 | 3000.00 |",
       "| 3 | 20 | 15 | 5 | 110.00 | 120.00 | 2500.00 | 500.00 | 3000.00 |"},
      {"2 corrected", Print(2, "d", 1, 10, 108),
       "| 2 corrected | 20 | 15 | 5 | 104.00 | 120.00 | 2400.00 | 800.00 | 3200.00 |",
       "| 2 corrected | 20 | 15 | 5 | 108.00 | 120.00 | 2600.00 | 600.00 | 3200.00 |"},
      {"4", Print(4, "e", 2, 10, 90), "| 4 | 20 | 25 | -5 | 90.00 | 90.00 | 1700.00 | 0.00 | 1700.00 |",
       "| 4 | 20 | 25 | -5 | 90.00 | 90.00 | 1700.00 | 0.00 | 1700.00 |"},
      {"5", Print(5, "f", 1, 3, 80), "| 5 | 23 | 25 | -2 | 90.00 | 80.00 | 2000.00 | 200.00 | 2200.00 |",
       "| 5 | 23 | 25 | -2 | 90.00 | 80.00 | 2000.00 | 200.00 | 2200.00 |"},
      {"5 busted", Print(5, "g", 1, 0, 80), "| 5 busted | 20 | 25 | -5 | 90.00 | 90.00 | 1700.00 | 0.00 | 1700.00 |",
       "| 5 busted | 20 | 25 | -5 | 90.00 | 90.00 | 1700.00 | 0.00 | 1700.00 |"},
  };
  TradeLedger ledger;
  ledger.OnDownloadEndSent();
  PositionTable average(ledger);
  PositionTable firstOut(ledger);
  firstOut.Use({false, CostMethod::FirstInFirstOut});
  for (const auto& step : steps) {
    ledger.OnTradeSent(step.Trade);
    EXPECT_FALSE(average.TakeChanges().IsEmpty() || firstOut.TakeChanges().IsEmpty());
    EXPECT_EQ(PageRow(step.Name, average), step.Average);
    EXPECT_EQ(PageRow(step.Name, firstOut), step.FirstInFirstOut);
    EXPECT_NE(page.find(step.Average), std::string::npos);
    EXPECT_NE(page.find(step.FirstInFirstOut), std::string::npos);
  }
}

// The second way: the trades of a list, in whole ticks of a hundredth and in whole lots. What a quantity has cost on
// average is kept in parts of a tick.
__extension__ typedef __int128 Ticks;
constexpr Ticks kParts = Ticks{1} << 40;

struct SlowTrade {
  std::uint32_t Number;
  std::string Security, Client;
  int Direction;  // 1, -1, 0
  std::int64_t Quantity, Price, Multiplier;
};

struct SlowPosition {
  std::int64_t Bought = 0, Sold = 0, Open = 0;  // Open is below 0 after sells
  Ticks Realised = 0, Cost = 0, Units = 0;      // in parts
  std::deque<SlowTrade> Lots;

  void Add(const SlowTrade& trade, bool firstOut) {
    (trade.Direction > 0 ? Bought : Sold) += trade.Direction == 0 ? 0 : trade.Quantity;
    for (std::int64_t left = trade.Quantity; left > 0 && trade.Direction != 0;) {
      if (Open * trade.Direction >= 0) {
        Lots.push_back(trade);
        Lots.back().Quantity = left;
        Cost += kParts * trade.Price * trade.Multiplier * left;
        Units += kParts * trade.Multiplier * left;
        Open += left * trade.Direction;
        break;
      }
      const std::int64_t open = Open * -trade.Direction;
      const std::int64_t part = std::min(left, firstOut ? Lots.front().Quantity : open);
      const SlowTrade& lot = Lots.front();
      const Ticks cost = firstOut ? kParts * lot.Price * lot.Multiplier * part : Cost * part / open;
      const Ticks units = firstOut ? kParts * lot.Multiplier * part : Units * part / open;
      Realised += trade.Direction * (cost - kParts * trade.Price * trade.Multiplier * part);
      Cost -= cost;
      Units -= units;
      Open += part * trade.Direction;
      left -= part;
      if (firstOut && (Lots.front().Quantity -= part) == 0) Lots.pop_front();
    }
  }
  static double InMoney(Ticks parts) { return static_cast<double>(parts) / static_cast<double>(kParts) / 100; }
};

// The rules of the day on a list.
struct SlowDay {
  std::vector<SlowTrade> Held, Trades;
  std::set<std::string> Executions;
  bool IsLive = false;

  void Enter(const SlowTrade& trade, std::vector<SlowTrade>& list) {
    for (SlowTrade& known : list)
      if (known.Number == trade.Number) return void(known = trade);
    list.push_back(trade);
  }
  void Add(const SlowTrade& trade, const std::string& execution) {
    if (Executions.insert(execution).second) Enter(trade, IsLive ? Trades : Held);
  }
  void EndDownload() {
    std::ranges::sort(Held, {}, &SlowTrade::Number);
    for (const SlowTrade& trade : Held) Enter(trade, Trades);
    Held.clear();
    IsLive = true;
  }
  void Amend(std::uint32_t number, std::int64_t quantity) {
    for (SlowTrade& known : Trades)
      if (known.Number == number) known.Quantity = quantity;
  }
};

// A row as numbers: bought, sold, average, last, realised, open, total.
using Values = std::array<double, 7>;
using RowValues = std::map<std::string, Values>;

RowValues SlowRows(const SlowDay& day, const PositionSettings& settings) {
  std::map<std::string, SlowPosition> positions;
  std::map<std::string, std::int64_t> last;
  std::map<std::string, std::string> securities;
  for (const SlowTrade& trade : day.Trades) {
    const std::string key = trade.Security + (settings.ByClient ? "|" + trade.Client : "");
    positions[key].Add(trade, settings.Method == CostMethod::FirstInFirstOut);
    securities[key] = trade.Security;
    if (trade.Quantity != 0) last[trade.Security] = trade.Price;
  }
  RowValues rows;
  for (const auto& [key, position] : positions) {
    const Ticks worth = position.Units * last[securities[key]];
    const double open = SlowPosition::InMoney(position.Open < 0 ? position.Cost - worth : worth - position.Cost);
    const double average =
        position.Open == 0 ? 0 : static_cast<double>(position.Cost) / static_cast<double>(position.Units) / 100;
    const double realised = SlowPosition::InMoney(position.Realised);
    rows[key] = {static_cast<double>(position.Bought),
                 static_cast<double>(position.Sold),
                 average,
                 static_cast<double>(last[securities[key]]) / 100,
                 realised,
                 open,
                 realised + open};
  }
  return rows;
}

// The rows of a table as its changes told them.
class ToldRows {
 public:
  ToldRows(const TradeLedger& ledger, const PositionSettings& settings) : Table(ledger) { Table.Use(settings); }

  RowValues Take() {
    const PositionChanges changes = Table.TakeChanges();
    if (changes.All) Told.clear();
    if (changes.All)
      for (std::uint32_t row = 0; row < Table.Rows(); ++row) Note(row);
    for (const std::uint32_t row : changes.Rows) Note(row);
    return Told;
  }
  PositionTable Table;

 private:
  void Note(std::uint32_t row) {
    const Position& position = Table.At(row);
    const std::string key =
        Table.SecurityAt(row).SecurityID + (Table.Settings().ByClient ? "|" + Table.ClientAt(row) : "");
    Told[key] = {static_cast<double>(position.Bought()),
                 static_cast<double>(position.Sold()),
                 position.AveragePrice().value_or(0),
                 Table.LastPrice(row).value_or(0),
                 position.Realised(),
                 Table.OpenProfit(row),
                 Table.TotalProfit(row)};
  }
  RowValues Told;
};

class PositionDays : public testing::Test {
 protected:
  std::uint32_t Below(std::uint32_t limit) { return static_cast<std::uint32_t>(Random() % limit); }

  void SendTrade() {
    const std::uint32_t number = Below(4) == 0 ? Below(NextNumber) + 1 : NextNumber++;
    const std::string execution = std::to_string(Below(20) == 0 ? Below(NextExecution) : NextExecution++);
    const bool bust = Below(15) == 0;
    SlowTrade trade{number,
                    "S" + std::to_string(Below(3)),
                    "C" + std::to_string(Below(3)),
                    std::array{1, -1, 1, -1, 0}[Below(5)],
                    bust ? 0 : 1 + Below(Below(9) == 0 ? 100000 : 40),
                    9000 + Below(2000),
                    1 + Below(3) * 49};
    TradePrint print = Print(number, execution,
                             trade.Direction == 0  ? 3
                             : trade.Direction < 0 ? 2
                                                   : 1,
                             static_cast<std::uint32_t>(trade.Quantity), static_cast<double>(trade.Price) / 100);
    print.Multiplier = static_cast<double>(trade.Multiplier);
    trade.Security.copy(print.SecurityID, 5);
    print.SecurityID[trade.Security.size()] = 0;
    trade.Client.copy(print.ClientID, 5);
    Ledger.OnTradeSent(print);
    Day.Add(trade, execution);
  }
  void SendAmendment() {
    const std::uint32_t number = Below(NextNumber) + 1;
    const std::uint32_t quantity = 1 + Below(50);
    const std::string message = WireMessage(9112, WireU32(20008, number) + WireU32(20103, quantity));
    CQORPacketReader reader(reinterpret_cast<const std::uint8_t*>(message.data()),
                            static_cast<std::uint16_t>(message.size()));
    std::uint16_t needed = 0, consumed = 0;
    reader.ParseHeader(needed, consumed);
    Ledger.OnAmendmentSent(reader);
    Day.Amend(number, quantity);
  }
  void SendNext() {
    const std::uint32_t dice = Below(1000);
    if (dice == 0) {
      Ledger.OnStartOver();
      Day = {};
    } else if (dice < 12) {
      Ledger.OnDownloadEndSent();
      Day.EndDownload();
    } else if (dice < 100) {
      SendAmendment();
    } else {
      SendTrade();
    }
  }
  static void Compare(const RowValues& rows, const RowValues& slow) {
    ASSERT_EQ(rows.size(), slow.size());
    for (const auto& [key, values] : slow) {
      SCOPED_TRACE(key);
      ASSERT_TRUE(rows.contains(key));
      for (std::size_t at = 0; at < values.size(); ++at) ASSERT_NEAR(rows.at(key)[at], values[at], 0.004) << at;
    }
  }

  std::mt19937 Random{20131007};
  std::uint32_t NextNumber = 1, NextExecution = 1;
  TradeLedger Ledger;
  SlowDay Day;
};

TEST_F(PositionDays, AgreeWithTheSecondWay) {
  std::vector<ToldRows> tables;
  for (const bool byClient : {false, true})
    for (const CostMethod method : {CostMethod::Average, CostMethod::FirstInFirstOut})
      tables.emplace_back(Ledger, PositionSettings{byClient, method});
  for (int step = 0; step < 6000; ++step) {
    SendNext();
    if (Below(8) != 0) continue;
    ToldRows& told = tables[Below(4)];
    SCOPED_TRACE(step);
    ASSERT_NO_FATAL_FAILURE(Compare(told.Take(), SlowRows(Day, told.Table.Settings())));
    EXPECT_TRUE(told.Table.TakeChanges().IsEmpty());
  }
}

TEST(Positions, TellOnlyChangedRowsAndSumThem) {
  TradeLedger ledger;
  ledger.OnDownloadEndSent();
  PositionTable table(ledger);
  table.Use({.ByClient = true});
  const auto send = [&](std::uint32_t number, const char* security, const char* client, unsigned side,
                        std::uint32_t quantity, double price) {
    TradePrint print = Print(number, std::to_string(ledger.Trades().size()) + client, side, quantity, price);
    std::snprintf(print.SecurityID, sizeof print.SecurityID, "%s", security);
    std::snprintf(print.ClientID, sizeof print.ClientID, "%s", client);
    ledger.OnTradeSent(print);
  };
  EXPECT_TRUE(table.TakeChanges().All);
  send(1, "A", "one", 1, 5, 10);
  send(2, "A", "two", 2, 5, 10);
  send(3, "B", "one", 1, 5, 20);
  EXPECT_EQ(table.TakeChanges().Rows, (std::vector<std::uint32_t>{0, 1, 2}));
  send(4, "A", "two", 2, 1, 11);  // the last price changes the other client too
  EXPECT_EQ(table.TakeChanges().Rows, (std::vector<std::uint32_t>{1, 0}));
  send(3, "B", "none", 1, 0, 20);  // a bust leaves an empty row and one of the other client
  const PositionChanges changes = table.TakeChanges();
  EXPECT_EQ(changes.Rows, (std::vector<std::uint32_t>{2, 3}));
  EXPECT_TRUE(table.At(2).IsEmpty() && table.At(3).IsEmpty());
  EXPECT_EQ(table.LastPrice(2), std::nullopt);
  const std::uint32_t rows[] = {0, 1, 2};
  const PositionSums sums = table.Sum(rows);
  EXPECT_EQ(std::tuple(sums.Bought, sums.Sold, sums.Net(), sums.Realised, sums.Open, sums.Total()),
            std::tuple(5U, 6U, -1, 0., 0., 0.));
  table.Use({});
  EXPECT_EQ(table.Rows(), 0U);
  EXPECT_TRUE(table.TakeChanges().All);
  EXPECT_EQ(table.ClientAt(0), "");
  EXPECT_EQ(table.At(0).Net(), -1);
  ledger.OnStartOver();
  EXPECT_EQ(table.Rows(), 0U);  // nothing may look at trades that are gone
}

TEST(Positions, ShowTextsSignsAndValues) {
  TradeLedger ledger;
  ledger.OnDownloadEndSent();
  ledger.OnTradeSent(Print(1, "a", 2, 2500, 1000.125));
  ledger.OnTradeSent(Print(2, "b", 1, 500, 1000));
  ledger.OnTradeSent(Print(3, "c", 3, 1, 1001.5));
  PositionList list(ledger);
  list.Use({.ByClient = true});
  EXPECT_TRUE(list.TakeChanges().All);
  std::wstring texts;
  std::string signs;
  for (std::size_t column = 0; column < list.Columns().size(); ++column) {
    texts += list.Text(0, column) + L"|";
    signs += "-0+"[list.SignAt(0, column) + 1];
  }
  EXPECT_EQ(texts, L"X|GOLD||||500|2,500|-2,000|1,000.125|1,001.50|625.00|-27,500.00|-26,875.00|");
  EXPECT_EQ(signs, "0000000-00+--");
  EXPECT_EQ(list.Value(0, 7), SheetValue(std::int64_t{-2000}));
  EXPECT_EQ(list.Value(0, 12), SheetValue(-26875.));
  // A price that is none shows nothing, and sorts as nothing.
  ledger.OnTradeSent(Print(4, "d", 1, 1, std::nan("")));
  const std::uint64_t version = list.Version();
  EXPECT_EQ(list.TakeChanges().Rows, std::vector<ListRow>{0});
  EXPECT_TRUE(list.TakeChanges().Rows.empty());
  EXPECT_EQ(list.Version(), version + 1);
  EXPECT_TRUE(list.Text(0, 12).empty());
  EXPECT_EQ(list.Value(0, 12), SheetValue());
  EXPECT_EQ(std::pair(SignOf(0.004), ProfitText(-0.004)), std::pair(0, std::wstring(L"0.00")));
}

}  // namespace

// MarketWatch: the securities of a day with their prices, changes and volumes so far.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "terminal/day/csv_tables.h"
#include "terminal/day/trade_message.h"
#include "terminal/lists/list_source.h"

enum class Trend : std::uint8_t { None, Up, Down };

struct WatchRow {
  std::string Exchange;
  std::string SecurityID;
  std::string Symbol;
  std::string Name;
  std::string ExpiryDate;
  double First = 0;  // prices count once Trades is not 0
  double Last = 0;
  Trend Tick = Trend::None;  // of the last change of price
  std::uint64_t Trades = 0;
  std::uint64_t Quantity = 0;
  std::string Time;              // of the last trade
  std::uint64_t TradedBeat = 0;  // 0 before the first trade
  std::uint32_t LastNumber = 0;  // of the trade that set Last

  double Change() const noexcept { return Last - First; }
  Trend ChangeTrend() const noexcept;
};

// A trade whose number has come replaces the one before: it changes the quantity, and the last price if no later trade
// set it; a bust keeps the price and counts no longer. A trade of an unlisted security adds a row at the end. A trade
// costs one hash.
class MarketWatch : public TradeListener, public ListSource {
 public:
  explicit MarketWatch(const SecurityList& securities) { Fill(securities); }

  // Starts over with these securities and no trades.
  void Fill(const SecurityList& securities);
  // Forgets the trades; the rows stay.
  void ForgetTrades();
  void OnTradeSent(const TradePrint& print) override;

  const WatchRow& At(ListRow row) const { return Securities[row]; }
  // The first row with that id on any exchange.
  std::optional<ListRow> Find(const std::string& securityId) const;

  std::span<const ListColumn> Columns() const override;
  ListRow EndRow() const override { return Securities.size(); }
  std::wstring Text(ListRow row, std::size_t column) const override;
  SheetValue Value(ListRow row, std::size_t column) const override;
  // A row changes once more a beat after its last trade: it is no longer fresh.
  ListChanges TakeChanges() override;

  // The direction that the cell shows; None for most columns.
  Trend TrendAt(ListRow row, std::size_t column) const;
  // Traded in the last beat or since.
  bool IsFresh(ListRow row) const noexcept {
    return Securities[row].TradedBeat != 0 && Securities[row].TradedBeat + 1 >= Beat;
  }

 private:
  struct CountedTrade {
    ListRow Row;
    std::uint32_t Quantity;
  };
  void Count(WatchRow& row, const TradePrint& print);
  void Replace(CountedTrade& former, const TradePrint& print);
  void NoteTraded(WatchRow& row);
  WatchRow& RowFor(const TradePrint& print);
  template <typename Told>
  WatchRow& Add(const Told& security);

  std::vector<WatchRow> Securities;
  std::unordered_map<std::string, std::size_t> ByKey;  // exchange and id
  std::unordered_map<std::uint32_t, CountedTrade> ByNumber;
  std::uint64_t Beat = 1;
  bool AllChanged = true;
  std::vector<ListRow> Traded;        // in this beat, each once
  std::vector<ListRow> TradedBefore;  // in the beat before
};

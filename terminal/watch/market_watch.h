// MarketWatch: the securities of a day with their prices, changes and volumes so far, in the order that the user chose.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "terminal/day/csv_tables.h"
#include "terminal/day/trade_message.h"

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
// set it; a bust keeps the price and counts no longer. Rows move only in SortBy, ApplySort and Fill. A trade of an
// unlisted security adds a row at the end. A trade costs one hash; a sort is O(n log n).
class MarketWatch : public TradeListener {
 public:
  explicit MarketWatch(const SecurityList& securities) { Fill(securities); }

  // Starts over with these securities and no trades.
  void Fill(const SecurityList& securities);
  // Forgets the trades; the rows stay in place.
  void ForgetTrades();
  void OnTradeSent(const TradePrint& print) override;

  int Rows() const noexcept { return static_cast<int>(Order.size()); }
  const WatchRow& RowAt(int row) const { return Securities[Order[static_cast<std::size_t>(row)]]; }
  // The first row with that id on any exchange; -1 for none.
  int RowOf(const std::string& securityId) const;
  // Identifies a security across sorts.
  std::size_t IdentityAt(int row) const { return Order[static_cast<std::size_t>(row)]; }
  int RowOfIdentity(std::size_t identity) const;

  // Equal rows, and rows without a value, keep the order of the securities.
  void SortBy(std::optional<int> column, bool rising);
  // Sorts again after changes.
  void ApplySort();
  std::optional<int> SortColumn() const noexcept { return SortedBy; }
  bool SortsRising() const noexcept { return Rising; }

  // True if there is anything new to show since the last call; call it on the beat. Sorts as ApplySort does.
  bool TakeChanges();
  // Traded in the last beat or since.
  bool IsFresh(const WatchRow& row) const noexcept { return row.TradedBeat != 0 && row.TradedBeat + 1 >= Beat; }

 private:
  struct CountedTrade {
    std::size_t Row;
    std::uint32_t Quantity;
  };
  void Count(WatchRow& row, const TradePrint& print);
  void Replace(CountedTrade& former, const TradePrint& print);
  WatchRow& RowFor(const TradePrint& print);
  template <typename Told>
  WatchRow& Add(const Told& security);

  std::vector<WatchRow> Securities;
  std::vector<std::size_t> Order;                      // rows as they stand, by index into Securities
  std::unordered_map<std::string, std::size_t> ByKey;  // exchange and id
  std::unordered_map<std::uint32_t, CountedTrade> ByNumber;
  std::optional<int> SortedBy;
  bool Rising = true;
  bool Changed = true;
  std::uint64_t Beat = 1;
  std::uint64_t LastTraded = 0;  // the beat of the last trade
};

// The columns of the market watch: one row feeds display, sort and storage.
struct WatchColumn {
  const wchar_t* Title;
  int WidthPx;    // on a screen of 96 dots an inch
  bool ToRight;   // numbers
  bool OfTrades;  // empty until the security has traded
  std::string (*Text)(const WatchRow& row);
  int (*Compare)(const WatchRow& left, const WatchRow& right);  // below 0: left comes first when rising
  Trend (*TrendOf)(const WatchRow& row);                        // null: always None
};

inline constexpr std::size_t kWatchColumnCount = 11;
extern const WatchColumn kWatchColumns[kWatchColumnCount];

// Two to four decimals, and a comma at the thousands.
std::string PriceText(double price);

// TradeLedger: the trades of the day as the plug-in keeps them, for the terminal's own windows.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "terminal/day/csv_reader.h"
#include "terminal/day/trade_message.h"
#include "terminal/ledger/index_table.h"

struct LedgerTrade {
  // A trade without a readable time.
  static constexpr std::int64_t kNoSeconds = std::numeric_limits<std::int64_t>::min();

  std::int64_t Seconds = kNoSeconds;  // of the exchange time, from 1970-01-01 00:00:00
  double Price = 0;
  double Multiplier = 0;
  std::uint32_t Quantity = 0;  // 0: the trade was busted
  std::uint32_t Number = 0;
  std::uint32_t Security = 0;  // index into Securities()
  std::uint32_t Client = 0;    // index into Clients()
  std::uint8_t Side = 0;       // as on the wire: 1 is a buy, 2 a sell

  bool operator==(const LedgerTrade&) const = default;
};

struct LedgerSecurity {
  std::string Exchange;
  std::string SecurityID;
  std::string Symbol;
  std::string Name;
  std::string ExpiryDate;
  std::vector<std::uint32_t> Trades;  // places in Trades(), rising
  std::uint64_t Rewrites = 0;         // changes of trades that were there already, busts among them
};

// Follows the messages as the trade cache of the plug-in does. A repeated execution counts once, until a new login. A
// trade whose number is known replaces that trade in its place. Trades ahead of 8112, live ones too, are held back, and
// enter then by rising numbers. An amendment changes the quantity of a known trade; ahead of 8112 it has no effect. One
// of an unknown trade adds it with what earlier amendments left, as in a terminal with an open book: without one the
// plug-in does not keep it. Places end with Clear only.
//
// A trade costs two searches in tables of hashes, its security and its client, however long the day; about 130 bytes.
class TradeLedger : public TradeListener {
 public:
  // New login, or another day.
  void Clear();

  // In the order in which the plug-in took them.
  const std::vector<LedgerTrade>& Trades() const noexcept { return Live; }
  const std::vector<LedgerSecurity>& Securities() const noexcept { return AllSecurities; }
  const std::vector<std::string>& Clients() const noexcept { return AllClients; }
  std::optional<std::uint32_t> FindSecurity(std::string_view exchange, std::string_view securityId) const;
  // Changes with each Clear.
  std::uint64_t Epoch() const noexcept { return Clears; }
  // The sum of the rewrites of all securities.
  std::uint64_t AllRewrites() const noexcept { return Rewritten; }
  std::size_t MemoryBytes() const noexcept;

  void OnTradeSent(const TradePrint& print) override;
  void OnAmendmentSent(CQORPacketReader& message) override;
  void OnDownloadEndSent() override;
  void OnStartOver() override { Clear(); }

 private:
  // The texts of an execution's key, in Characters.
  struct Execution {
    std::uint32_t Start;
    std::uint8_t OrderLength;
    std::uint8_t TradeLength;
  };
  struct ExecutionKey {
    explicit ExecutionKey(const TradePrint& print);
    std::string_view Text() const noexcept { return {Characters, OrderLength + TradeLength}; }

    std::size_t OrderLength;
    std::size_t TradeLength;
    std::uint32_t Hash;
    char Characters[2 * TradePrint::kLongestKey];
  };
  struct Entry {
    LedgerTrade Trade;
    std::uint32_t Execution = 0;
  };

  std::uint32_t NumberPlace(std::uint32_t number) const;
  std::string_view KeyOf(const Execution& execution) const;
  // Nothing if the key is known.
  std::optional<std::uint32_t> AddExecution(const ExecutionKey& key);
  std::uint32_t SecurityOf(const TradePrint& print);
  std::uint32_t ClientOf(std::string_view client);
  std::int64_t SecondsOf(const TradePrint& print);
  Entry EntryOf(const TradePrint& print, std::int64_t seconds, std::uint32_t execution);
  void Hold(const Entry& entry);
  void Enter(const Entry& entry);
  void Rewrite(std::uint32_t place, const Entry& entry);
  void AmendKnown(std::uint32_t place);
  void AmendUnknown();
  void KeepAsAmended(std::uint32_t place);

  std::vector<LedgerTrade> Live;
  std::vector<std::uint32_t> LiveExecutions;  // of each
  std::vector<Entry> Pending;                 // until the end of the download
  std::vector<LedgerSecurity> AllSecurities;
  std::vector<std::string> AllClients;
  std::vector<Execution> Executions;
  std::string Characters;

  IndexTable ByNumber;         // of Live
  IndexTable PendingByNumber;  // of Pending
  IndexTable BySecurity;
  IndexTable ByClient;
  IndexTable ByExecution;

  TradeAmendment Amendment;  // never cleared, as in the plug-in
  std::int64_t AmendedSeconds = LedgerTrade::kNoSeconds;
  DayTime Time;  // keeps its memory
  bool DownloadComplete = false;
  std::uint64_t Clears = 0;
  std::uint64_t Rewritten = 0;
};

// DaySender: hands the messages of a day to the plug-in, counts them and has the books corrected where trades alone do
// not do that.
#pragma once

#include <cstdint>
#include <map>
#include <optional>

#include "terminal/day/numbered_day.h"
#include "terminal/day/trade_message.h"
#include "terminal/link/plugin_link.h"
#include "terminal/link/terminal_host.h"

struct PlayCounts {
  std::uint64_t Messages = 0;  // sent, trades among them
  std::uint64_t Download = 0;  // trades
  std::uint64_t Live = 0;      // trades
  std::uint64_t NotAsked = 0;  // messages that the plug-in does not take

  std::uint64_t Trades() const noexcept { return Download + Live; }
};

// A set of numbers as ranges: numbers that come in order are one range. O(log n) of the ranges.
class NumberRanges {
 public:
  // False if it is there already.
  bool Add(std::uint32_t number);
  void Clear() { Ranges.clear(); }

 private:
  std::map<std::uint32_t, std::uint32_t> Ranges;  // first and last of each
};

// Sends a 30020 after each 8112, as only that corrects the books of one security, and one for all live trades that
// replaced others, as only that corrects totals: when the day has nothing else to send now, or after a second.
class DaySender {
 public:
  // The listener, which may be null, is told of the messages before the plug-in.
  DaySender(MessageTarget& target, PlayClock& clock, TradeListener* listener = nullptr)
      : Target(target), Clock(clock), Listener(listener) {}

  // Sends the current message.
  void Send(NumberedDay& script);
  // There is nothing else to send now.
  void Rest();
  // The trades come once more.
  void StartOver();
  const PlayCounts& Counts() const noexcept { return Sent; }

 private:
  void Tell(CQORPacketReader& message);
  bool IsReplacement(const CQORPacketReader& message);
  void Refresh();

  MessageTarget& Target;
  PlayClock& Clock;
  TradeListener* Listener;
  PlayCounts Sent;
  NumberRanges Numbers;                      // of the trades
  std::optional<PlayClock::Time> Corrected;  // since then totals wait for a 30020
};

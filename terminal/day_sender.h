// CDaySender: hands the messages of a day to the plug-in and counts them. Not when they go. One thread.
#pragma once

#include <cstdint>

#include "terminal/day_script.h"
#include "terminal/message_target.h"
#include "terminal/trade_print.h"

struct PlayCounts {
  std::uint64_t Messages = 0;  // sent, trades among them
  std::uint64_t Download = 0;  // trades
  std::uint64_t Live = 0;      // trades
  std::uint64_t NotAsked = 0;  // messages that the plug-in does not take

  std::uint64_t Trades() const noexcept { return Download + Live; }
};

// Promises: each 8112 is followed by a 30020, as only that makes the books of one security right again.
class CDaySender {
 public:
  // The listener, where there is one, is told of a trade ahead of the plug-in.
  explicit CDaySender(MessageTarget& target, TradeListener* listener = nullptr) : Target(target), Listener(listener) {}

  // Sends the message that the script stands at.
  void Send(CDayScript& script);
  const PlayCounts& Counts() const noexcept { return Sent; }

 private:
  MessageTarget& Target;
  TradeListener* Listener;
  PlayCounts Sent;
};

// CDayPlayer: sends a day to a plug-in: the download at once, live trades at their pace, with the beat between
// messages. Not the order and numbers of the messages: that is CDayScript. One thread.
#pragma once

#include <cstdint>
#include <optional>

#include "terminal/beat.h"
#include "terminal/day_script.h"
#include "terminal/message_target.h"
#include "terminal/progress.h"

struct PlayCounts {
  std::uint64_t Messages = 0;  // sent, trades among them
  std::uint64_t Download = 0;  // trades
  std::uint64_t Live = 0;      // trades
  std::uint64_t NotAsked = 0;  // messages that the plug-in does not take
};

class CDayPlayer {
 public:
  // speed is how many times faster than the day itself live trades go; nothing for as fast as the plug-in takes them.
  CDayPlayer(MessageTarget& target, CBeat& beat, PlayClock& clock, CProgress& progress, std::optional<double> speed)
      : Target(target), Beat(beat), Clock(clock), Progress(progress), Speed(speed) {}

  PlayCounts Play(CDayScript& script);

 private:
  void WaitForTrade(CDayScript& script);
  void Send(CDayScript& script);

  MessageTarget& Target;
  CBeat& Beat;
  PlayClock& Clock;
  CProgress& Progress;
  std::optional<double> Speed;
  PlayCounts Counts;
  std::optional<std::int64_t> LastSeconds;  // of the live trade sent last
  PlayClock::Time LastDue;                  // when it was to be sent
};

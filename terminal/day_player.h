// CDayPlayer: plays a day from its begin to its end without windows: the download at once, live trades at their pace,
// with the beat between messages. Not the order and numbers of the messages: that is CDayScript. One thread.
#pragma once

#include <optional>

#include "terminal/beat.h"
#include "terminal/day_pace.h"
#include "terminal/day_sender.h"
#include "terminal/progress.h"

class CDayPlayer {
 public:
  // speed is how many times faster than the day itself live trades go; nothing for as fast as the plug-in takes them.
  CDayPlayer(MessageTarget& target, CBeat& beat, PlayClock& clock, CProgress& progress, std::optional<double> speed)
      : Sender(target), Beat(beat), Clock(clock), Progress(progress), Pace(speed) {}

  PlayCounts Play(CDayScript& script);

 private:
  void WaitForTrade(CDayScript& script);

  CDaySender Sender;
  CBeat& Beat;
  PlayClock& Clock;
  CProgress& Progress;
  CDayPace Pace;
};

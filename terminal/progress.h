// CProgress: one line on a screen that tells how far a long day is. One thread.
#pragma once

#include <cstdint>
#include <iosfwd>

#include "terminal/play_clock.h"

// Promises: nothing in the first second, then at most two lines a second, each over the one before; Finish wipes the
// last.
class CProgress {
 public:
  CProgress(std::ostream& out, PlayClock& clock);

  void Tell(std::uint64_t trades);
  void Finish();

 private:
  std::ostream& Out;
  PlayClock& Clock;
  PlayClock::Time Next;
  bool Shown = false;
};

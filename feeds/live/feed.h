// Feed: trades from elsewhere while they happen: a day log, or a FIX session of the terminal's own. It has a thread of
// its own; no call waits for the network.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "feeds/common/feed_report.h"

enum class FeedPhase : std::uint8_t {
  Connecting,   // for the first time
  Downloading,  // the trades so far
  Live,
  Lost,   // it connects again by itself
  Ended,  // for good, see Text
};

struct FeedState {
  FeedPhase Phase = FeedPhase::Connecting;
  std::string Text;          // "reading trades.20260301 from desk-log:4222", or why it is lost or ended
  std::uint64_t Behind = 0;  // what is known to be there and has not been taken, in messages or batches
};

class Feed {
 public:
  virtual ~Feed() = default;
  // Appends whole wire messages, each of number 9101, that have come; false for nothing now. Bounded to about a
  // megabyte.
  virtual bool Take(std::vector<std::uint8_t>& messages) = 0;
  // All trades from before the connection have been given by Take; never false again.
  virtual bool IsCaughtUp() const = 0;
  virtual FeedState State() const = 0;
  // The alarms since the last call, the oldest first.
  virtual std::vector<Alarm> TakeAlarms() = 0;
};

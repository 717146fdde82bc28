// What feeds tell people: FeedError ends what was asked for, an Alarm does not. Both are one sentence.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

class FeedError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

enum class AlarmKind : std::uint8_t {
  RefusedMessage,  // the engine refused a message; its text is kept in the journal
  RefusedTrade,    // a trade that cannot be mapped; its text is kept in the journal
  CutField,        // a trade was taken, but one of its fields does not fit or is not known
  UnknownTrade,    // a correction or bust of a trade that never came
  NumberReset,     // the counterparty set the numbers anew, or jumped ahead
  Gap,             // messages are missing and have been asked for again
  WrongCompId,     // a message of another session
  Disconnected,    // of the counterparty or of the log's servers; the feed connects again by itself
  Disk,            // the journal cannot be written
  Damage,          // a journal or log has bytes that cannot be read
};

// "refused message", as alarms are shown and counted.
const char* NameOf(AlarmKind kind) noexcept;

struct Alarm {
  AlarmKind Kind;
  std::string Text;
};

// May be called on any thread.
class AlarmSink {
 public:
  virtual ~AlarmSink() = default;
  virtual void OnAlarm(const Alarm& alarm) = 0;
};

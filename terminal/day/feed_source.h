// FeedSource: the trades of a feed as the messages of a day; FeedNews: what the feed tells the user beside them.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "feeds/live/feed.h"
#include "terminal/day/numbered_day.h"

struct FeedNote {
  bool IsAlarm = false;  // else a change of the connection
  std::string Text;
};

// Collects the alarms and the changes of a connection, each once. Feeds may follow one another.
class FeedNews {
 public:
  // A flood of alarms is told by its count from here on.
  static constexpr std::size_t kMostNotes = 200;

  void Add(const Alarm& alarm);
  // What is new since the last call, the oldest first.
  std::vector<FeedNote> Take(Feed& feed);
  std::uint64_t Alarms() const noexcept { return Count; }

 private:
  void NoteState(const FeedState& state);

  std::vector<FeedNote> Notes;
  std::uint64_t LeftOut = 0;
  std::uint64_t Count = 0;
  std::optional<std::string> Told;  // the last state
};

// "Live, trades.20260301", "Downloading, 1,200 behind", "Lost, 2 alarms: no answer; connecting again".
std::string FeedStateText(const FeedState& state, const std::string& name, std::uint64_t alarms);

// The size of the message that the bytes begin with; 0 if that is no whole one.
std::size_t WholeMessageSize(std::span<const std::uint8_t> bytes);

// Both must outlive the source. A message that is no whole one costs itself and what came with it.
class FeedSource : public MessageSource {
 public:
  FeedSource(Feed& feed, FeedNews& news) : Trades(feed), News(news) {}

  DayStep Next(RawMessage& frame) override;
  bool IsCaughtUp() const override { return CaughtUp; }
  void Report(const std::string& reason) override { News.Add({AlarmKind::Damage, reason}); }

 private:
  DayStep TakeMore();

  Feed& Trades;
  FeedNews& News;
  std::vector<std::uint8_t> Bytes;
  std::size_t Begin = 0;
  bool CaughtUp = false;  // before Bytes came
};

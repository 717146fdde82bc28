#include "terminal/day/feed_source.h"

#include <iterator>
#include <limits>
#include <utility>

#include "foundations/byte_words.h"
#include "host_link/messages/message_header.h"
#include "terminal/common/errors.h"

namespace {

struct PhaseRow {
  FeedPhase Phase;
  const char* Name;
};
constexpr PhaseRow kPhases[] = {
    {FeedPhase::Connecting, "Not connected yet"},
    {FeedPhase::Downloading, "Downloading"},
    {FeedPhase::Live, "Live"},
    {FeedPhase::Lost, "Lost"},
    {FeedPhase::Ended, "Ended"},
};

const char* NameOfPhase(FeedPhase phase) {
  for (const PhaseRow& row : kPhases)
    if (row.Phase == phase) return row.Name;
  return "";
}

bool TellsWhy(const FeedState& state) {
  return !state.Text.empty() && state.Phase != FeedPhase::Downloading && state.Phase != FeedPhase::Live;
}

std::string Reason(const FeedState& state) {
  return ": " + state.Text + (state.Phase == FeedPhase::Lost ? "; connecting again" : "");
}

}  // namespace

void FeedNews::Add(const Alarm& alarm) {
  ++Count;
  if (Notes.size() < kMostNotes)
    Notes.push_back({true, std::string(NameOf(alarm.Kind)) + ": " + alarm.Text});
  else
    ++LeftOut;
}

void FeedNews::NoteState(const FeedState& state) {
  std::string text = NameOfPhase(state.Phase);
  if (!state.Text.empty()) text += TellsWhy(state) ? Reason(state) : ", " + state.Text;
  if (Told == text) return;
  Told = text;
  Notes.push_back({false, std::move(text)});
}

std::vector<FeedNote> FeedNews::Take(Feed& feed) {
  for (const Alarm& alarm : feed.TakeAlarms()) Add(alarm);
  if (LeftOut != 0) Notes.push_back({true, WithThousands(std::exchange(LeftOut, 0)) + " more alarms"});
  NoteState(feed.State());
  return std::exchange(Notes, {});
}

std::string FeedStateText(const FeedState& state, const std::string& name, std::uint64_t alarms) {
  std::string text = NameOfPhase(state.Phase);
  if (alarms != 0) text += ", " + WithThousands(alarms) + (alarms == 1 ? " alarm" : " alarms");
  if (TellsWhy(state)) return text + Reason(state);
  if (state.Behind != 0) return text + ", " + WithThousands(state.Behind) + " behind";
  return text + ", " + name;
}

std::size_t WholeMessageSize(std::span<const std::uint8_t> bytes) {
  if (bytes.size() < kHeaderSize || bytes[0] != kFieldMark || bytes[kSecondMarkOffset] != kFieldMark) return 0;
  const std::size_t size = std::size_t{LoadValue<std::uint16_t>(bytes.data() + kLengthOffset)} + kHeaderSize;
  return size <= bytes.size() && size <= std::numeric_limits<std::uint16_t>::max() ? size : 0;
}

DayStep FeedSource::Next(RawMessage& frame) {
  for (;;) {
    if (Begin == Bytes.size())
      if (const DayStep step = TakeMore(); step != DayStep::Message) return step;
    if (const std::size_t size = WholeMessageSize(std::span(Bytes).subspan(Begin)); size != 0) {
      frame = {Bytes.data() + Begin, static_cast<std::uint16_t>(size), 0};
      Begin += size;
      return DayStep::Message;
    }
    Report(WithThousands(Bytes.size() - std::exchange(Begin, Bytes.size())) + " bytes that are no whole message");
  }
}

// State and what is caught up are asked first: what comes meanwhile belongs to the live trades.
DayStep FeedSource::TakeMore() {
  const bool hasEnded = Trades.State().Phase == FeedPhase::Ended;
  CaughtUp = Trades.IsCaughtUp();
  Bytes.clear();
  Begin = 0;
  if (Trades.Take(Bytes) && !Bytes.empty()) return DayStep::Message;
  return hasEnded ? DayStep::End : DayStep::NothingYet;
}

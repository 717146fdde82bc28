#include "terminal/day/numbered_day.h"

#include <charconv>
#include <string>
#include <utility>

#include "host_link/messages/message_header.h"
#include "terminal/day/csv_reader.h"
#include "terminal/day/trade_message.h"

NumberedDay::NumberedDay(std::unique_ptr<MessageSource> source, LiveFrom liveFrom)
    : Source(std::move(source)), From(liveFrom), DownloadEnd(kModePlain) {
  DownloadEnd.AddU16(10002, 8112);
  DownloadEnd.Finish();
}

DayStep NumberedDay::Next() {
  if (Held.Data != nullptr) {
    Parse(std::exchange(Held, {}));
    SetNumber(9101);
    return DayStep::Message;
  }
  if (const DayStep step = TakeNext(); step != DayStep::Message) {
    if (DownloadEnded || (step == DayStep::NothingYet && !Source->IsCaughtUp())) return step;
    ShowDownloadEnd();
    return DayStep::Message;
  }
  if (Reader->MessageNumber == 8112) DownloadEnded = true;
  if (Reader->MessageNumber == 30022) DownloadEnded = false;
  if (Reader->MessageNumber == 9101 && !DownloadEnded) {
    Held = Shown;
    ShowDownloadEnd();
  }
  return DayStep::Message;
}

// The next readable message of the source, with its number.
DayStep NumberedDay::TakeNext() {
  for (RawMessage frame;;) {
    if (const DayStep step = Source->Next(frame); step != DayStep::Message) return step;
    if (!Parse(frame)) {
      const bool enciphered = Reader->Mode == kModeEnciphered || Reader->Mode == kModeEncipheredByReader;
      Source->Report(enciphered ? "the message is enciphered and there is no key" : "the message cannot be read");
      continue;
    }
    if (From.By == LiveFrom::Kind::AsNumbered) return DayStep::Message;
    if (IsLeftOut()) continue;
    if (IsTrade()) Renumber();
    return DayStep::Message;
  }
}

// Messages of a feed come from elsewhere: one with an address of a function in it must not reach the plug-in.
bool NumberedDay::IsLeftOut() {
  if (From.By != LiveFrom::Kind::CaughtUp || IsTrade()) return Reader->MessageNumber == 8112;
  Source->Report("message " + std::to_string(Reader->MessageNumber) + " is no trade");
  return true;
}

bool NumberedDay::Parse(const RawMessage& frame) {
  std::uint16_t needed = 0;
  std::uint16_t consumed = 0;
  Shown = frame;
  Reader.emplace(frame.Data, frame.Size);
  // A cut number reads as 0.
  return Reader->ParseHeader(needed, consumed) && Reader->MessageNumber != 0;
}

void NumberedDay::ShowDownloadEnd() {
  DownloadEnded = true;
  Parse({DownloadEnd.Buffer, DownloadEnd.GetSize(), 0});
}

void NumberedDay::Renumber() {
  Live = Live || IsLive();
  ++TradeCount;
  SetNumber(Live ? 9101 : 8111);
}

// Changes the number in the bytes too, just after its tag. Both the frame and the decoded bytes of the reader may be
// changed.
void NumberedDay::SetNumber(std::uint16_t number) {
  Reader->MessageNumber = number;
  StoreValue(const_cast<std::uint8_t*>(Reader->Data) + Reader->Cursor - sizeof number, number);
}

bool NumberedDay::IsLive() {
  if (From.By == LiveFrom::Kind::CaughtUp) return Source->IsCaughtUp();
  if (From.By == LiveFrom::Kind::Count) return TradeCount >= From.Value;
  const std::optional<std::int64_t> seconds = TradeSeconds();
  if (!seconds) return false;
  if (From.By == LiveFrom::Kind::Instant) return *seconds >= From.Value;
  if (!FirstDate) FirstDate = DateOf(*seconds);
  return *seconds >= *FirstDate * kSecondsPerDay + From.Value;
}

std::optional<std::int64_t> NumberedDay::TradeSeconds() {
  DayTime time;
  return ParseDayTime(ReadTradePrint(*Reader).Time, time) ? std::optional(time.Seconds) : std::nullopt;
}

std::optional<LiveFrom> ParseLiveFrom(std::string_view text) {
  DayTime time;
  if (ParseDayTime(text, time)) return LiveFrom{LiveFrom::Kind::Instant, time.Seconds};
  std::int64_t value = 0;
  if (ParseTimeOfDay(text, value)) return LiveFrom{LiveFrom::Kind::TimeOfDay, value};
  const char* end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || rest != end || value < 0 || text.starts_with('-')) return std::nullopt;
  return LiveFrom{LiveFrom::Kind::Count, value};
}

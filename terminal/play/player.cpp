#include "terminal/play/player.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <ostream>
#include <string>

#include "terminal/common/errors.h"
#include "terminal/day/csv_reader.h"

namespace {
constexpr std::uint64_t kMessagesBetweenClocks = 16;
// Until a feed is looked at again.
constexpr std::chrono::milliseconds kLookAgain{10};
}  // namespace

void DayRun::Begin(DayInput& input) {
  Input = &input;
  DownloadOfLogin.reset();
  Start();
}

void DayRun::LoginAgain() {
  if (Input == nullptr) return;
  if (Live) DownloadOfLogin = TradesOfDay;
  if (Target.Send(30022)) ++Control;
  Start();
}

// If the day cannot be read, it has ended.
void DayRun::Start() {
  Ended = true;
  Live = false;
  Waiting = false;
  TradesOfDay = 0;
  DownloadSeconds.reset();
  Sender.StartOver();
  if (const auto speed = IsFeed() ? std::nullopt : Speed; Pace.GetSpeed() != speed) Pace.SetSpeed(speed, Clock.Now());
  Script = DownloadOfLogin ? &Input->OpenWithDownload(*DownloadOfLogin) : &Input->Open();
  Ended = false;
}

std::optional<PlayClock::Time> DayRun::PlayFor(std::chrono::milliseconds time) {
  const PlayClock::Time end = Clock.Now() + time;
  for (std::uint64_t sent = 0; !Ended; ++sent) {
    if (sent % kMessagesBetweenClocks == kMessagesBetweenClocks - 1 && Clock.Now() >= end) return Clock.Now();
    const DayStep step = Waiting ? DayStep::Message : Script->Next();
    Ended = step == DayStep::End;
    if (step != DayStep::Message) return Rest();
    if (!IsDue()) {
      Sender.Rest();
      return Pace.IsPaused() ? std::nullopt : std::optional(Pace.DueAgain());
    }
    SendNext();
  }
  return std::nullopt;
}

// The download of a feed goes on in a pause.
std::optional<PlayClock::Time> DayRun::Rest() {
  Sender.Rest();
  const bool looksAgain = !Ended && !(Pace.IsPaused() && Live);
  return looksAgain ? std::optional(Clock.Now() + kLookAgain) : std::nullopt;
}

void DayRun::SetSpeed(std::optional<double> speed) {
  Speed = speed;
  if (!IsFeed()) Pace.SetSpeed(speed, Clock.Now());
}

bool DayRun::IsDownload() const {
  return Script->Message().MessageNumber == 8111 || Script->Message().MessageNumber == 8112;
}

// Asks for the due time of a live trade once.
bool DayRun::IsDue() {
  const bool isNew = !Waiting;
  Waiting = true;
  if (IsDownload()) return true;
  const PlayClock::Time now = Clock.Now();
  if (isNew && Script->Message().MessageNumber == 9101)
    if (const auto seconds = Script->TradeSeconds()) Pace.DueTime(*seconds, now);
  return !Pace.IsPaused() && Pace.DueAgain() <= now;
}

void DayRun::SendNext() {
  Waiting = false;
  const std::uint16_t number = Script->Message().MessageNumber;
  if (number == 8111) DownloadSeconds = Script->TradeSeconds();
  if (number == 8112) Live = true;
  if (number == 8111 || number == 9101) ++TradesOfDay;
  Sender.Send(*Script);
}

PlayCounts DayRun::Counts() const noexcept {
  PlayCounts counts = Sender.Counts();
  counts.Messages += Control;
  return counts;
}

std::optional<std::int64_t> DayRun::DaySeconds() const {
  const auto seconds = Pace.DaySeconds(Clock.Now());
  return seconds ? seconds : DownloadSeconds;
}

std::string StateText(const DayRun& day, std::uint64_t badLines) {
  std::string text = "Live, " + SpeedText(day.GetSpeed());
  if (!day.IsLive()) text = "Download";
  if (day.IsPaused()) text = "Paused";
  if (day.HasEnded()) text = "Day played";
  if (badLines != 0) text += ", " + WithThousands(badLines) + " bad lines";
  return text;
}

PlayCounts DayPlayer::Play(NumberedDay& script, const std::function<bool()>& goesOn) {
  while (goesOn()) {
    const DayStep step = script.Next();
    if (step == DayStep::Message) {
      Send(script);
      continue;
    }
    Sender.Rest();
    if (step == DayStep::End) break;
    Beat.WaitUntil(Clock.Now() + kLookAgain);
  }
  return Sender.Counts();
}

void DayPlayer::Send(NumberedDay& script) {
  if (Pace.GetSpeed() && script.Message().MessageNumber == 9101) WaitForTrade(script);
  Sender.Send(script);
  Beat.CallIfDue();
  Progress.Tell(Sender.Counts().Trades());
}

void DayPlayer::WaitForTrade(NumberedDay& script) {
  const std::optional<std::int64_t> seconds = script.TradeSeconds();
  if (!seconds) return;
  const PlayClock::Time due = Pace.DueTime(*seconds, Clock.Now());
  if (due > Clock.Now()) Sender.Rest();
  Beat.WaitUntil(due);
}

PlayClock::Time DayPace::DueTime(std::int64_t seconds, PlayClock::Time now) {
  const bool jumps = !Start || !Speed || seconds < Last || DateOf(seconds) != DateOf(Last);
  if (jumps) Start = Anchor{now, static_cast<double>(seconds)};
  Last = seconds;
  return DueAgain();
}

PlayClock::Time DayPace::DueAgain() const {
  if (!Start) return {};
  if (!Speed) return Start->Wall;
  const std::chrono::duration<double> gap((static_cast<double>(Last) - Start->Day) / *Speed);
  return Start->Wall + std::chrono::round<PlayClock::Time::duration>(gap);
}

double DayPace::DayAt(PlayClock::Time now) const {
  if (Paused || !Speed) return Start->Day;
  const std::chrono::duration<double> gone = now - Start->Wall;
  return std::min(Start->Day + gone.count() * *Speed, static_cast<double>(Last));
}

void DayPace::SetSpeed(std::optional<double> speed, PlayClock::Time now) {
  if (Start) Start = Anchor{now, DayAt(now)};
  Speed = speed;
}

void DayPace::Pause(PlayClock::Time now) {
  if (Start) Start = Anchor{now, DayAt(now)};
  Paused = true;
}

void DayPace::Resume(PlayClock::Time now) {
  if (Start) Start->Wall = now;
  Paused = false;
}

std::optional<std::int64_t> DayPace::DaySeconds(PlayClock::Time now) const {
  if (!Start) return std::nullopt;
  return static_cast<std::int64_t>(std::floor(DayAt(now)));
}

namespace {
constexpr std::chrono::seconds kRateTime{2};
}

std::string SpeedText(std::optional<double> speed) {
  if (!speed) return "full speed";
  char text[64];
  std::snprintf(text, sizeof text, "%gx", *speed);
  return text;
}

void TradeRate::Tell(std::uint64_t trades, PlayClock::Time now) {
  if (!Samples.empty() && trades < Samples.back().Trades) Samples.clear();
  Samples.push_back({now, trades});
  while (Samples.size() > 2 && now - Samples[1].Time >= kRateTime) Samples.pop_front();
}

std::uint64_t TradeRate::PerSecond() const {
  if (Samples.size() < 2) return 0;
  const std::chrono::duration<double> time = Samples.back().Time - Samples.front().Time;
  const auto trades = static_cast<double>(Samples.back().Trades - Samples.front().Trades);
  return time.count() <= 0 ? 0 : static_cast<std::uint64_t>(std::llround(trades / time.count()));
}

namespace {
constexpr std::size_t kLineWidth = 40;
}

PlayProgress::PlayProgress(std::ostream& out, PlayClock& clock)
    : Out(out), Clock(clock), Next(clock.Now() + std::chrono::seconds(1)) {}

void PlayProgress::Tell(std::uint64_t trades) {
  const PlayClock::Time now = Clock.Now();
  if (now < Next) return;
  Next = now + std::chrono::milliseconds(500);
  std::string line = WithThousands(trades) + " trades";
  line.resize(kLineWidth, ' ');
  Out << line << '\r' << std::flush;
  Shown = true;
}

void PlayProgress::Finish() {
  if (Shown) Out << std::string(kLineWidth, ' ') << '\r' << std::flush;
  Shown = false;
}

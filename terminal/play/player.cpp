#include "terminal/play/player.h"

#include <algorithm>
#include <cmath>

#include "terminal/common/errors.h"

namespace {
constexpr std::uint64_t kMessagesBetweenClocks = 16;
}

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
  Script = DownloadOfLogin ? &Input->OpenWithDownload(*DownloadOfLogin) : &Input->Open();
  Ended = false;
}

std::optional<PlayClock::Time> DayRun::PlayFor(std::chrono::milliseconds time) {
  const PlayClock::Time end = Clock.Now() + time;
  for (std::uint64_t sent = 0; !Ended; ++sent) {
    if (sent % kMessagesBetweenClocks == kMessagesBetweenClocks - 1 && Clock.Now() >= end) return Clock.Now();
    if (!Waiting && !Script->Next()) {
      Ended = true;
      break;
    }
    if (!IsDue()) return Pace.IsPaused() ? std::nullopt : std::optional(Pace.DueAgain());
    SendNext();
  }
  return std::nullopt;
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

void DaySender::Send(NumberedDay& script) {
  const std::uint16_t number = script.Message().MessageNumber;
  if (Listener != nullptr && script.IsTrade()) Listener->OnTradeSent(ReadTradePrint(script.Message()));
  if (!Target.Deliver(script.Message(), script.Raw())) {
    ++Sent.NotAsked;
    return;
  }
  ++Sent.Messages;
  if (number == 8111) ++Sent.Download;
  if (number == 9101) ++Sent.Live;
  if (number == 8112 && Target.Send(30020)) ++Sent.Messages;
}

std::string StateText(const DayRun& day, std::uint64_t badLines) {
  std::string text = "Live, " + SpeedText(day.GetSpeed());
  if (!day.IsLive()) text = "Download";
  if (day.IsPaused()) text = "Paused";
  if (day.HasEnded()) text = "Day played";
  if (badLines != 0) text += ", " + WithThousands(badLines) + " bad lines";
  return text;
}

PlayCounts DayPlayer::Play(NumberedDay& script) {
  while (script.Next()) {
    if (Pace.GetSpeed() && script.Message().MessageNumber == 9101) WaitForTrade(script);
    Sender.Send(script);
    Beat.CallIfDue();
    Progress.Tell(Sender.Counts().Trades());
  }
  return Sender.Counts();
}

void DayPlayer::WaitForTrade(NumberedDay& script) {
  const std::optional<std::int64_t> seconds = script.TradeSeconds();
  if (seconds) Beat.WaitUntil(Pace.DueTime(*seconds, Clock.Now()));
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

#include "terminal/day_player.h"

#include "terminal/day_time.h"

PlayCounts CDayPlayer::Play(CDayScript& script) {
  while (script.Next()) {
    if (Speed && script.Message().MessageNumber == 9101) WaitForTrade(script);
    Send(script);
    Beat.CallIfDue();
    Progress.Tell(Counts.Download + Counts.Live);
  }
  return Counts;
}

void CDayPlayer::Send(CDayScript& script) {
  const std::uint16_t number = script.Message().MessageNumber;
  if (!Target.Deliver(script.Message(), script.Raw())) {
    ++Counts.NotAsked;
    return;
  }
  ++Counts.Messages;
  if (number == 8111) ++Counts.Download;
  if (number == 9101) ++Counts.Live;
}

// Each gap counts from when the trade before was due, so that a slow plug-in does not stretch the day. The first live
// trade, a step back in time and a change of date are not waited for.
void CDayPlayer::WaitForTrade(CDayScript& script) {
  const std::optional<std::int64_t> seconds = script.TradeSeconds();
  if (!seconds) return;
  if (LastSeconds && *seconds >= *LastSeconds && DateOf(*seconds) == DateOf(*LastSeconds)) {
    const std::chrono::duration<double> gap(static_cast<double>(*seconds - *LastSeconds) / *Speed);
    LastDue += std::chrono::duration_cast<PlayClock::Time::duration>(gap);
    Beat.WaitUntil(LastDue);
  } else {
    LastDue = Clock.Now();
  }
  LastSeconds = seconds;
}

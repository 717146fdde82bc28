#include "terminal/day_player.h"

PlayCounts CDayPlayer::Play(CDayScript& script) {
  while (script.Next()) {
    if (Pace.GetSpeed() && script.Message().MessageNumber == 9101) WaitForTrade(script);
    Sender.Send(script);
    Beat.CallIfDue();
    Progress.Tell(Sender.Counts().Trades());
  }
  return Sender.Counts();
}

void CDayPlayer::WaitForTrade(CDayScript& script) {
  const std::optional<std::int64_t> seconds = script.TradeSeconds();
  if (seconds) Beat.WaitUntil(Pace.DueTime(*seconds, Clock.Now()));
}

#include "terminal/day_sender.h"

void CDaySender::Send(CDayScript& script) {
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

#include "terminal/play/day_sender.h"

#include <iterator>

namespace {
constexpr std::chrono::seconds kLongestCorrection{1};
}

bool NumberRanges::Add(std::uint32_t number) {
  auto behind = Ranges.upper_bound(number);
  const auto before = behind == Ranges.begin() ? Ranges.end() : std::prev(behind);
  if (before != Ranges.end() && number <= before->second) return false;
  const bool joinsBefore = before != Ranges.end() && before->second + 1 == number;
  const bool joinsBehind = behind != Ranges.end() && number + 1 == behind->first;
  const std::uint32_t last = joinsBehind ? behind->second : number;
  if (joinsBehind) behind = Ranges.erase(behind);
  if (joinsBefore)
    before->second = last;
  else
    Ranges.emplace_hint(behind, number, last);
  return true;
}

void DaySender::Send(NumberedDay& script) {
  const std::uint16_t number = script.Message().MessageNumber;
  if (number == 30022) StartOver();
  const bool isReplacement = script.IsTrade() && IsReplacement(script.Message());
  if (Listener != nullptr) Tell(script.Message());
  if (!Target.Deliver(script.Message(), script.Raw())) {
    ++Sent.NotAsked;
    return;
  }
  ++Sent.Messages;
  if (number == 8111) ++Sent.Download;
  if (number == 9101) ++Sent.Live;
  if (number == 8112) Refresh();
  if (isReplacement && number == 9101 && !Corrected) Corrected = Clock.Now();
  if (Corrected && Clock.Now() - *Corrected >= kLongestCorrection) Refresh();
}

void DaySender::Tell(CQORPacketReader& message) {
  switch (message.MessageNumber) {
    case 8111:
    case 9101:
      return Listener->OnTradeSent(ReadTradePrint(message));
    case 9112:
      return Listener->OnAmendmentSent(message);
    case 8112:
      return Listener->OnDownloadEndSent();
  }
}

bool DaySender::IsReplacement(const CQORPacketReader& message) {
  const std::uint32_t number = ReadTradeNumber(message);
  return number != 0 && !Numbers.Add(number);
}

void DaySender::Rest() {
  if (Corrected) Refresh();
}

void DaySender::StartOver() {
  Numbers.Clear();
  Corrected.reset();
  if (Listener != nullptr) Listener->OnStartOver();
}

void DaySender::Refresh() {
  Corrected.reset();
  if (Target.Send(30020)) ++Sent.Messages;
}

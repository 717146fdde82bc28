#include "feeds/engine/session_store.h"

namespace {

// A hostile counterparty must not fill the disk with garbage, nor the alarms.
constexpr std::uint64_t kMostGarbledKept = 1000;
constexpr std::uint64_t kToldEach = 1000;

// QuickFIX 1.15 looks at the time once a second and whenever bytes have come, 8 KiB of them at most, and keeps all that
// are not yet a message: 16 MiB of them are no message any more.
constexpr unsigned kMostBeats = 2048;
constexpr unsigned kBeatsOfSecond = 4;

// What these functions may throw is part of their type; anything else would end the process.
template <typename Work>
auto OrIoException(Work work) -> decltype(work()) {
  try {
    return work();
  } catch (const FIX::IOException&) {
    throw;
  } catch (const std::exception& error) {
    throw FIX::IOException(error.what());
  }
}

}  // namespace

void SessionStore::Keep(std::uint32_t sender, std::uint32_t target, const std::string* text, bool refused) {
  if (IsResetDue && !Store.Reset()) throw FIX::IOException("the numbers cannot be kept");
  IsResetDue = false;
  if (!text) {
    if (!Store.Keep(sender, target, nullptr, refused)) throw FIX::IOException("the numbers cannot be kept");
    return;
  }
  // A reject may quote what it rejects, for example a logon.
  const std::string type = FixField(*text, 35);
  const std::string masked = type == "3" || type == "j" ? Told.Masked(*text) : std::string();
  if (!Store.Keep(sender, target, masked.empty() ? text : &masked, refused))
    throw FIX::IOException("the message cannot be kept");
}

// QuickFIX also counts up for a logout or reject that is ahead of the expected number, which would lose the message
// that has it. Only a message that has come takes its number.
void SessionStore::TakeNumber() {
  TellPending("without a reason");
  const std::uint32_t number = NextTarget();
  const std::string* text = Incoming.TextOf(number);
  if (!text)
    return Told.Tell(AlarmKind::Gap, "Message " + std::to_string(number) + " is missing; it will be asked for again.");
  const bool isSession = IsSessionMessage(*text);
  const bool refused = !isSession && !Incoming.IsAccepted(number);
  Keep(NextSender(), number + 1, isSession ? nullptr : text, refused);
  if (refused) PendingRefusal = KeptRefusal = number;
  Incoming.ForgetBelow(number + 1);
}

void SessionStore::TellPending(const std::string& reason) {
  if (PendingRefusal) TellRefused(PendingRefusal, reason, AlarmKind::RefusedMessage);
}

void SessionStore::TellRefused(std::uint32_t number, const std::string& reason, AlarmKind kind) {
  PendingRefusal = 0;
  const std::string* text = Incoming.TextOf(number);
  try {
    if (KeptRefusal != number && text) Keep(NextSender(), NextTarget(), text, true);
  } catch (const FIX::IOException&) {
    // The store has told why, and the counterparty gets the reject.
  }
  Told.Tell(kind, "Message " + std::to_string(number) + (text ? " (35=" + FixField(*text, 35) + ")" : "") +
                      " was refused: " + reason + ".");
}

// A message that came as it was sent would be no better the next time: it takes its number, as those behind it wait.
void SessionStore::KeepGarbled(const std::string& reason) {
  const std::uint32_t number = NextTarget();
  const bool isLast = Incoming.IsLast(number);
  const std::string text = Incoming.TakeGarbled();
  const bool takesNumber = isLast && IsUnharmed(text);
  try {
    if (takesNumber || ++Garbled <= kMostGarbledKept) Keep(NextSender(), number + (takesNumber ? 1 : 0), &text, true);
  } catch (const FIX::IOException&) {
    return;  // the store has told why, and the message comes again
  }
  if (takesNumber)
    Told.Tell(AlarmKind::RefusedMessage, "Message " + std::to_string(number) + " was refused: " + reason + ".");
  else if (Garbled < 10 || Garbled % kToldEach == 0)
    Told.Tell(AlarmKind::RefusedMessage,
              "A garbled message was left out, the " + std::to_string(Garbled) + ". so far: " + reason + ".");
}

void SessionStore::Jump(std::uint32_t number) {
  const std::uint32_t before = NextTarget();
  Keep(NextSender(), number, nullptr, false);
  Incoming.ForgetBelow(number);
  if (IsJump && number > before)
    Told.Tell(AlarmKind::NumberReset, "The counterparty has gone on from number " + std::to_string(before) + " to " +
                                          std::to_string(number) + ": " + std::to_string(number - before) +
                                          " messages will not come.");
  IsJump = false;
}

int SessionStore::getNextSenderMsgSeqNum() const throw(FIX::IOException) {
  return OrIoException([this] { return static_cast<int>(IsResetDue ? 1 : Store.NextSender()); });
}
int SessionStore::getNextTargetMsgSeqNum() const throw(FIX::IOException) {
  return OrIoException([this] { return static_cast<int>(IsResetDue ? 1 : Store.NextTarget()); });
}
void SessionStore::setNextSenderMsgSeqNum(int number) throw(FIX::IOException) {
  OrIoException([&] { Keep(static_cast<std::uint32_t>(number), NextTarget(), nullptr, false); });
}
void SessionStore::setNextTargetMsgSeqNum(int number) throw(FIX::IOException) {
  OrIoException([&] { Jump(static_cast<std::uint32_t>(number)); });
}
void SessionStore::incrNextSenderMsgSeqNum() throw(FIX::IOException) {
  OrIoException([this] { Keep(NextSender() + 1, NextTarget(), nullptr, false); });
}
void SessionStore::incrNextTargetMsgSeqNum() throw(FIX::IOException) {
  OrIoException([this] { TakeNumber(); });
}

void SessionStore::Hear() {
  Beats = 0;
  Heard = std::chrono::steady_clock::now();
}

void SessionStore::EndEndless() const {
  if (++Beats <= kMostBeats) return;
  const auto silent =
      std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - Heard).count();
  if (Beats <= kMostBeats + kBeatsOfSecond * static_cast<unsigned>(silent)) return;
  Beats = 0;
  throw FIX::IOException("it sends bytes without an end");
}

// The one function that QuickFIX calls whenever bytes have come.
FIX::UtcTimeStamp SessionStore::getCreationTime() const throw(FIX::IOException) {
  return OrIoException([this] {
    EndEndless();
    return IsResetDue ? FIX::UtcTimeStamp() : FIX::UtcTimeStamp(static_cast<time_t>(Store.Created()));
  });
}

// Never fails: QuickFIX resets while it connects, and an exception there would leave it waiting for that connection for
// good. The next number cannot be kept before the reset is.
void SessionStore::reset() throw(FIX::IOException) {
  OrIoException([this] {
    IsResetDue = !Store.Reset();
    Incoming.ForgetBelow(~std::uint32_t{0});
    PendingRefusal = KeptRefusal = 0;
  });
}

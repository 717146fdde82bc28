#include "feeds/engine/session_watch.h"

#include <quickfix/Exceptions.h>

#include <cstdlib>

namespace {

enum class Event {
  Routine,
  Connecting,
  Disconnecting,
  Missing,     // messages, asked for again
  LowNumber,   // of the counterparty
  WrongParty,  // a message of another session
  Garbled,
  Reason,  // anything else may be why the connection ends next
};

// What QuickFIX 1.15 writes into its log; the first row that fits the begin of a text.
struct EventText {
  const char* Begin;
  Event Means;
};
constexpr EventText kEvents[] = {
    {"Connecting to ", Event::Connecting},
    {"Disconnecting", Event::Disconnecting},
    {"Sent ResendRequest ", Event::Missing},
    {"MsgSeqNum too low", Event::LowNumber},
    {"Invalid message", Event::Garbled},
    {"Created session", Event::Routine},
    {"Initiated ", Event::Routine},
    {"Received ", Event::Routine},
    {"Responding to logon", Event::Routine},
    {"Sending logout", Event::Routine},
    {"Sent ", Event::Routine},
    {"Already sent ", Event::Routine},
    {"Processing QUEUED", Event::Routine},
    {"ResendRequest for ", Event::Routine},
    {"MsgSeqNum too high", Event::Routine},
    {"Resending Message", Event::Routine},
    {"Logon contains ResetSeqNumFlag", Event::Routine},
    {"Message ", Event::Routine},  // the reject tells it
    {"Loading ", Event::Routine},
    {"No SSL certificate configured", Event::Routine},
    {"Configuring ", Event::Routine},
};

Event MeaningOf(const std::string& text) {
  if (text.find("CompID problem") != std::string::npos) return Event::WrongParty;
  for (const EventText& event : kEvents)
    if (text.compare(0, std::string(event.Begin).size(), event.Begin) == 0) return event.Means;
  return Event::Reason;
}

std::string FieldOf(const FIX::FieldMap& fields, int tag) {
  return fields.isSetField(tag) ? fields.getField(tag) : std::string();
}

std::uint32_t NumberOf(const FIX::FieldMap& fields, int tag) {
  return static_cast<std::uint32_t>(std::strtoul(FieldOf(fields, tag).c_str(), nullptr, 10));
}

// "Tag appears more than once (448)", of a reject.
std::string RefusalReason(const FIX::Message& reject) {
  const std::string text = FieldOf(reject, FIX::FIELD::Text);
  const std::string tag = FieldOf(reject, FIX::FIELD::RefTagID);
  return (text.empty() ? "no reason given" : text) + (tag.empty() ? "" : " (" + tag + ")");
}

constexpr const char* kWrongParty = "9";  // 373
constexpr const char* kTooFarAhead = "too many messages wait for a missing one";

}  // namespace

SessionWatch::SessionWatch(const FixEngineSettings& settings, const DataFields& data, SessionStore& store,
                           IncomingMessages& incoming, ToldTexts& told)
    : Peer(settings.TargetCompID + " at " + settings.Host + ":" + std::to_string(settings.Port)),
      Username(settings.Username),
      Password(settings.Password),
      Data(data),
      Store(store),
      Incoming(incoming),
      Told(told) {}

void SessionWatch::onLogon(const FIX::SessionID&) {
  IsLoggedOn = true;
  IsOutageTold = false;
  Lost.clear();
  Reason.clear();
  Told.State(true, "logged on to " + Peer);
}

void SessionWatch::toAdmin(FIX::Message& message, const FIX::SessionID&) {
  const std::string type = FieldOf(message.getHeader(), FIX::FIELD::MsgType);
  if (type == "A") {
    if (!Username.empty()) message.setField(FIX::FIELD::Username, Username);
    if (!Password.empty()) message.setField(FIX::FIELD::Password, Password);
  }
  if (type == "3")
    Store.TellRefused(NumberOf(message, FIX::FIELD::RefSeqNum), RefusalReason(message),
                      FieldOf(message, FIX::FIELD::SessionRejectReason) == kWrongParty ? AlarmKind::WrongCompId
                                                                                       : AlarmKind::RefusedMessage);
  if (type == "5") Store.TellPending(FieldOf(message, FIX::FIELD::Text));
}

void SessionWatch::toApp(FIX::Message& message, const FIX::SessionID&) throw(FIX::DoNotSend) {
  if (FieldOf(message.getHeader(), FIX::FIELD::MsgType) == "j")
    Store.TellRefused(NumberOf(message, FIX::FIELD::RefSeqNum), RefusalReason(message), AlarmKind::RefusedMessage);
}

void SessionWatch::fromAdmin(const FIX::Message& message,
                             const FIX::SessionID&) throw(FIX::FieldNotFound, FIX::IncorrectDataFormat,
                                                          FIX::IncorrectTagValue, FIX::RejectLogon) {
  const std::string type = FieldOf(message.getHeader(), FIX::FIELD::MsgType);
  const std::string text = FieldOf(message, FIX::FIELD::Text);
  Store.Hear();
  Incoming.Accept(NumberOf(message.getHeader(), FIX::FIELD::MsgSeqNum));
  if (type == "4") Store.ExpectJump(FieldOf(message, FIX::FIELD::GapFillFlag) != "Y");
  if (type == "5") Reason = "it logged out" + (text.empty() ? "" : ": " + text);
}

void SessionWatch::fromApp(const FIX::Message& message,
                           const FIX::SessionID&) throw(FIX::FieldNotFound, FIX::IncorrectDataFormat,
                                                        FIX::IncorrectTagValue, FIX::UnsupportedMessageType) {
  Store.Hear();
  Incoming.Accept(NumberOf(message.getHeader(), FIX::FIELD::MsgSeqNum));
}

void SessionWatch::onIncoming(const std::string& text) {
  Store.Hear();
  if (!Incoming.Take(text, Store.NextTarget())) throw FIX::InvalidMessage(kTooFarAhead);
  if (Data.HasLengthBeyondEnd(text)) throw FIX::InvalidMessage("a field is longer than the message");
}

void SessionWatch::onEvent(const std::string& text) {
  switch (MeaningOf(text)) {
    case Event::Routine:
      return;
    case Event::Connecting:
      return OnConnecting();
    case Event::Disconnecting:
      return OnDisconnecting();
    case Event::Missing:
      return Told.Tell(AlarmKind::Gap, "Messages from number " + std::to_string(Store.NextTarget()) +
                                           " on are missing and have been asked for again.");
    case Event::LowNumber:
      Reason = text;
      return Told.Tell(AlarmKind::NumberReset, Peer + " has begun its numbers anew without saying so (" + text +
                                                   "): agree with it on the numbers, or trades may be missing.");
    case Event::WrongParty:
      Reason = text;
      if (!IsLoggedOn) Told.Tell(AlarmKind::WrongCompId, Peer + " answers for another session: " + text + ".");
      return;
    case Event::Garbled:
      if (text.find(kTooFarAhead) == std::string::npos) Store.KeepGarbled(text);
      return;
    case Event::Reason:
      Reason = text;
      return;
  }
}

// The alarm waits for the next try: after a logout at the end of the session, or of the program, there is none.
void SessionWatch::OnConnecting() {
  if (!Lost.empty() && !IsOutageTold) {
    Told.Tell(AlarmKind::Disconnected, Lost + ".");
    IsOutageTold = true;
  }
  Reason.clear();
  Store.Hear();
  Told.State(false, Lost.empty() ? "connecting to " + Peer : Lost + "; connecting again");
}

void SessionWatch::OnDisconnecting() {
  Lost = (IsLoggedOn ? "disconnected from " : "no session with ") + Peer + (Reason.empty() ? "" : ": " + Reason);
  IsLoggedOn = false;
  Incoming.Clear();
  Told.State(false, Lost);
}

void SessionWatch::OnNoConnection(const std::string& reason) {
  Reason = reason;
  OnDisconnecting();
}

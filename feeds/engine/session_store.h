// SessionStore: QuickFIX's message store over a FixStore. The number of a message and its raw text are kept together.
#pragma once

#include <quickfix/MessageStore.h>

#include <chrono>

#include "feeds/engine/fix_engine.h"
#include "feeds/engine/incoming_messages.h"
#include "feeds/engine/told_texts.h"

// QuickFIX gives a message to the application and then takes its number: only the latter is kept. If that fails, it
// gets FIX::IOException, which disconnects and leaves the number.
class SessionStore : public FIX::MessageStore, public FIX::MessageStoreFactory {
 public:
  SessionStore(FixStore& store, IncomingMessages& incoming, ToldTexts& told)
      : Store(store), Incoming(incoming), Told(told) {}

  std::uint32_t NextTarget() { return IsResetDue ? 1 : Store.NextTarget(); }
  // The engine has answered that it refuses a message.
  void TellRefused(std::uint32_t number, const std::string& reason, AlarmKind kind);
  // Tells of a message that was kept as refused without an answer so far.
  void TellPending(const std::string& reason);
  void KeepGarbled(const std::string& reason);
  // A message has come, or a connection is made.
  void Hear();
  // The next change of the target's number upwards is one by a reset, not by a gap fill.
  void ExpectJump(bool isReset) { IsJump = isReset; }

  FIX::MessageStore* create(const FIX::SessionID&) override { return this; }
  void destroy(FIX::MessageStore*) override {}

  // Nothing that an initiator of this kind sends is worth sending again: QuickFIX fills the gap.
  bool set(int, const std::string&) throw(FIX::IOException) override { return true; }
  void get(int, int, std::vector<std::string>&) const throw(FIX::IOException) override {}
  int getNextSenderMsgSeqNum() const throw(FIX::IOException) override;
  int getNextTargetMsgSeqNum() const throw(FIX::IOException) override;
  void setNextSenderMsgSeqNum(int number) throw(FIX::IOException) override;
  void setNextTargetMsgSeqNum(int number) throw(FIX::IOException) override;
  void incrNextSenderMsgSeqNum() throw(FIX::IOException) override;
  void incrNextTargetMsgSeqNum() throw(FIX::IOException) override;
  FIX::UtcTimeStamp getCreationTime() const throw(FIX::IOException) override;
  void reset() throw(FIX::IOException) override;
  void refresh() throw(FIX::IOException) override {}

 private:
  std::uint32_t NextSender() { return IsResetDue ? 1 : Store.NextSender(); }
  void Keep(std::uint32_t sender, std::uint32_t target, const std::string* text, bool refused);
  void TakeNumber();
  void EndEndless() const;
  void Jump(std::uint32_t number);

  FixStore& Store;
  IncomingMessages& Incoming;
  ToldTexts& Told;
  bool IsResetDue = false;
  bool IsJump = false;
  std::uint32_t PendingRefusal = 0;
  std::uint32_t KeptRefusal = 0;
  std::uint64_t Garbled = 0;
  mutable unsigned Beats = 0;  // since Heard
  std::chrono::steady_clock::time_point Heard;
};

// SessionWatch: what QuickFIX says of the session, as states and alarms; and the logon's password.
#pragma once

#include <quickfix/Application.h>
#include <quickfix/Log.h>

#include "feeds/engine/data_fields.h"
#include "feeds/engine/session_store.h"

// QuickFIX's application and log in one: the log sees the raw texts before they are parsed.
class SessionWatch : public FIX::Application, public FIX::Log, public FIX::LogFactory {
 public:
  SessionWatch(const FixEngineSettings& settings, const DataFields& data, SessionStore& store,
               IncomingMessages& incoming, ToldTexts& told);

  // A connection that the session has not heard of could not be made.
  void OnNoConnection(const std::string& reason);

  void onCreate(const FIX::SessionID&) override {}
  void onLogon(const FIX::SessionID&) override;
  void onLogout(const FIX::SessionID&) override {}
  void toAdmin(FIX::Message& message, const FIX::SessionID&) override;
  void toApp(FIX::Message& message, const FIX::SessionID&) throw(FIX::DoNotSend) override;
  void fromAdmin(const FIX::Message& message, const FIX::SessionID&) throw(FIX::FieldNotFound, FIX::IncorrectDataFormat,
                                                                           FIX::IncorrectTagValue,
                                                                           FIX::RejectLogon) override;
  void fromApp(const FIX::Message& message, const FIX::SessionID&) throw(FIX::FieldNotFound, FIX::IncorrectDataFormat,
                                                                         FIX::IncorrectTagValue,
                                                                         FIX::UnsupportedMessageType) override;

  FIX::Log* create() override { return this; }
  FIX::Log* create(const FIX::SessionID&) override { return this; }
  void destroy(FIX::Log*) override {}
  void clear() override {}
  void backup() override {}
  void onIncoming(const std::string& text) override;
  void onOutgoing(const std::string&) override {}  // a logon holds the password
  void onEvent(const std::string& text) override;

 private:
  void OnConnecting();
  void OnDisconnecting();

  const std::string Peer;  // "BROKER at host:port"
  const std::string Username;
  const std::string Password;
  const DataFields& Data;
  SessionStore& Store;
  IncomingMessages& Incoming;
  ToldTexts& Told;
  bool IsLoggedOn = false;
  bool IsOutageTold = false;
  std::string Reason;  // what was said last that may be why a connection ends
  std::string Lost;    // why it ended; empty while there is one
};

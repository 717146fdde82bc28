#include "feeds/engine/fix_engine.h"

#include <quickfix/SSLSocketInitiator.h>
#include <quickfix/Session.h>
#include <quickfix/SocketInitiator.h>

#include <atomic>
#include <stdexcept>

#include "feeds/engine/open_dictionary.h"
#include "feeds/engine/session_store.h"
#include "feeds/engine/session_watch.h"
#include "feeds/engine/tls_client.h"

namespace {

constexpr int kLogonSeconds = 10;
constexpr int kLogoutSeconds = 2;

// QuickFIX finds sessions by their names in one list for the process: this keeps two of the same name apart.
FIX::SessionID NewSessionId(const FixEngineSettings& settings) {
  static std::atomic<unsigned> made{0};
  return FIX::SessionID(settings.BeginString, settings.SenderCompID, settings.TargetCompID, std::to_string(++made));
}

void AddTls(const TlsClient& tls, FIX::Dictionary& values) {
  values.setString(FIX::SSL_PROTOCOL, "+TLSv1_2");  // 1.3 is not in QuickFIX's list, but allowed as well
  values.setString(FIX::CERT_AUTH_FILE, tls.Authorities());
}

FIX::SessionSettings MakeSettings(const FixEngineSettings& settings, const TlsClient* tls, const FIX::SessionID& id) {
  FIX::Dictionary values;
  values.setString(FIX::CONNECTION_TYPE, "initiator");
  values.setString(FIX::SOCKET_CONNECT_HOST, settings.Host);
  values.setInt(FIX::SOCKET_CONNECT_PORT, settings.Port);
  values.setBool(FIX::SOCKET_NODELAY, true);
  values.setInt(FIX::HEARTBTINT, settings.HeartbeatSeconds);
  values.setInt(FIX::RECONNECT_INTERVAL, settings.ReconnectSeconds);
  values.setString(FIX::START_TIME, settings.StartTime);
  values.setString(FIX::END_TIME, settings.EndTime);
  if (!settings.StartDay.empty()) {
    values.setString(FIX::START_DAY, settings.StartDay);
    values.setString(FIX::END_DAY, settings.EndDay);
  }
  values.setBool(FIX::RESET_ON_LOGON, settings.ResetOnLogon);
  values.setInt(FIX::LOGON_TIMEOUT, kLogonSeconds);
  values.setInt(FIX::LOGOUT_TIMEOUT, kLogoutSeconds);
  values.setBool(FIX::CHECK_LATENCY, false);        // a wrong clock is no reason to refuse a trade
  values.setBool(FIX::USE_DATA_DICTIONARY, false);  // they are set later
  if (id.isFIXT()) values.setString(FIX::DEFAULT_APPLVERID, "FIX.5.0SP2");
  if (tls) AddTls(*tls, values);

  FIX::SessionSettings all;
  all.set(values);
  all.set(id, values);
  return all;
}

}  // namespace

struct FixEngine::State {
  State(const FixEngineSettings& settings, FixStore& fixStore, FixEngineEvents& events)
      : Dictionaries(MakeDictionaries(settings.BeginString, settings.Dictionary)),
        Data(Dictionaries, settings.BeginString),
        Told(events, settings.Password),
        Store(fixStore, Incoming, Told),
        Watch(settings, Data, Store, Incoming, Told) {
    const FIX::SessionID id = NewSessionId(settings);
    if (settings.Tls)
      Tls.reset(new TlsClient(settings.TlsHost.empty() ? settings.Host : settings.TlsHost,
                              {settings.TlsAuthorities, settings.TlsCertificate, settings.TlsKey},
                              [this](const std::string& reason) { Watch.OnNoConnection(reason); }));
    const FIX::SessionSettings all = MakeSettings(settings, Tls.get(), id);
    if (Tls)
      Initiator.reset(new FIX::SSLSocketInitiator(Watch, Store, all, Watch));
    else
      Initiator.reset(new FIX::SocketInitiator(Watch, Store, all, Watch));
    Initiator->getSession(id)->setDataDictionaryProvider(Dictionaries);
  }

  const FIX::DataDictionaryProvider Dictionaries;
  const DataFields Data;
  IncomingMessages Incoming;
  ToldTexts Told;
  SessionStore Store;
  SessionWatch Watch;
  std::unique_ptr<TlsClient> Tls;
  std::unique_ptr<FIX::Initiator> Initiator;
};

namespace {

template <typename Work>
auto OrRuntimeError(Work work) -> decltype(work()) {
  try {
    return work();
  } catch (const FIX::Exception& error) {
    throw std::runtime_error(error.what());
  }
}

}  // namespace

FixEngine::FixEngine(const FixEngineSettings& settings, FixStore& store, FixEngineEvents& events)
    : Self(OrRuntimeError([&] { return std::unique_ptr<State>(new State(settings, store, events)); })) {}

FixEngine::~FixEngine() {
  Stop();
}

void FixEngine::Start() {
  const TlsClient::Scope scope(Self->Tls.get());
  OrRuntimeError([this] { Self->Initiator->start(); });
}

void FixEngine::Stop() {
  if (Self->Tls) Self->Tls->GiveUp();
  Self->Initiator->stop();
}

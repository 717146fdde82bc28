#include "feeds/day_log/nats_link.h"

#include <algorithm>
#include <random>

#include "feeds/day_log/secret_file.h"

namespace {

constexpr std::int64_t kPingMs = 5000;
constexpr int kPingsWithoutAnswer = 2;

// The client's words, without the line of its source.
std::string LastError(natsStatus status) {
  const char* reason = nats_GetLastError(nullptr);
  const std::string text = reason != nullptr ? reason : natsStatus_GetText(status);
  const std::size_t place = text.starts_with('(') ? text.find("): ") : std::string::npos;
  return place == std::string::npos ? text : text.substr(place + 3);
}

void Set(natsStatus status, const char* what) {
  if (status != NATS_OK) throw FeedError(std::string(what) + ": " + LastError(status));
}

// The client writes the password as it is into a text of JSON.
std::string ReadPassword(const std::filesystem::path& file) {
  std::string password = ReadSecretLine(file);
  if (std::ranges::any_of(password,
                          [](char c) { return c == '"' || c == '\\' || static_cast<unsigned char>(c) < 0x20; }))
    throw FeedError("the password in " + file.string() + " has a quote, a backslash or a control character");
  return password;
}

// What a user may not do is answered beside the request, which would wait for its answer in vain.
void CloseIfNotPermitted(natsConnection* connection, natsSubscription*, natsStatus status, void*) {
  if (status == NATS_NOT_PERMITTED) natsConnection_Close(connection);
}

std::string WithoutScheme(const std::string& server) {
  return server.substr(server.find("//") + 2);
}

}  // namespace

NatsPtr<natsOptions> NatsLink::Options(const std::string& server, Milliseconds atMost) const {
  natsOptions* made = nullptr;
  Set(natsOptions_Create(&made), "options");
  NatsPtr<natsOptions> options(made);
  Set(natsOptions_SetURL(made, server.c_str()), "server");
  Set(natsOptions_SetName(made, "Trade Book"), "name");
  Set(natsOptions_SetTimeout(made, std::max<std::int64_t>(atMost.count(), 1)), "timeout");
  Set(natsOptions_SetAllowReconnect(made, false), "reconnect");
  // Secrets go to no server but those that the user named.
  Set(natsOptions_SetIgnoreDiscoveredServers(made, true), "servers");
  Set(natsOptions_SetPingInterval(made, kPingMs), "ping");
  Set(natsOptions_SetErrorHandler(made, CloseIfNotPermitted, nullptr), "errors");
  Set(natsOptions_SetMaxPingsOut(made, kPingsWithoutAnswer), "ping");
  if (server.starts_with("tls://")) Set(natsOptions_SetSecure(made, true), "this build has no TLS for logs");
  if (!Access.Authorities.empty())
    Set(natsOptions_LoadCATrustedCertificates(made, Access.Authorities.string().c_str()),
        ("authorities " + Access.Authorities.string()).c_str());
  if (!Access.User.empty())
    Set(natsOptions_SetUserInfo(made, Access.User.c_str(), ReadPassword(Access.PasswordFile).c_str()), "user");
  if (!Access.CredentialsFile.empty()) {
    CheckSecretFile(Access.CredentialsFile);
    Set(natsOptions_SetUserCredentialsFromFiles(made, Access.CredentialsFile.string().c_str(), nullptr), "credentials");
  }
  return options;
}

void NatsLink::Connect(Milliseconds atMost) {
  Close();
  if (Servers.empty()) {
    CheckLogAccess(Access);
    Servers = ParseLogServers(Access.Servers);
    NextServer = std::random_device()() % Servers.size();
  }
  const std::string& server = Servers[NextServer];
  NextServer = (NextServer + 1) % Servers.size();
  ServerName = WithoutScheme(server);
  const NatsPtr<natsOptions> options = Options(server, atMost);
  natsConnection* connection = nullptr;
  const natsStatus status = natsConnection_Connect(&connection, options.get());
  if (status == NATS_ERR && !Access.CredentialsFile.empty())
    throw FeedError(ServerName + ": the credentials in " + Access.CredentialsFile.string() + " cannot be used");
  if (status != NATS_OK) Fail("no connection", status);
  {
    const std::lock_guard lock(Guard);
    Connection.reset(connection);
    if (Cancelled) throw FeedError(ServerName + ": no connection: it is not wanted any more");
  }
  jsCtx* context = nullptr;
  Set(natsConnection_JetStream(&context, connection, nullptr), "JetStream");
  Context.reset(context);
}

void NatsLink::Close() noexcept {
  Context.reset();
  NatsPtr<natsConnection> closed;
  const std::lock_guard lock(Guard);
  closed = std::move(Connection);
}

void NatsLink::Cancel() noexcept {
  const std::lock_guard lock(Guard);
  Cancelled = true;
  if (Connection != nullptr) natsConnection_Close(Connection.get());
}

bool NatsLink::IsConnected() const noexcept {
  return Connection != nullptr && natsConnection_Status(Connection.get()) == NATS_CONN_STATUS_CONNECTED;
}

NatsPtr<jsStreamInfo> NatsLink::StreamInfo(const LogDay& day, Milliseconds atMost) {
  jsOptions options;
  jsOptions_Init(&options);
  options.Wait = std::max<std::int64_t>(atMost.count(), 1);
  jsStreamInfo* info = nullptr;
  jsErrCode code = jsErrCode(0);
  const natsStatus status = js_GetStreamInfo(&info, Context.get(), day.Stream().c_str(), &options, &code);
  if (status == NATS_NOT_FOUND && code == JSStreamNotFoundErr) return nullptr;
  if (status != NATS_OK) Fail("the log " + day.Subject() + " does not answer", status, code);
  return NatsPtr<jsStreamInfo>(info);
}

// Texts of the client and of servers name users, subjects and streams, but no secret.
void NatsLink::Fail(const std::string& what, natsStatus status, jsErrCode code) const {
  const std::string begin = ServerName + ": " + what + ": ";
  if (status == NATS_CONNECTION_AUTH_FAILED || status == NATS_NOT_PERMITTED)
    throw FeedError(begin + (Access.User.empty() ? "the server refuses this access"
                                                 : "the server refuses the user " + Access.User + " or the password"));
  const char* ofServer = nullptr;
  if (Connection != nullptr && natsConnection_GetLastError(Connection.get(), &ofServer) == NATS_NOT_PERMITTED)
    throw FeedError(begin + (Access.User.empty() ? "this access" : "the user " + Access.User) +
                    " may not do that: " + (ofServer != nullptr ? ofServer : ""));
  const std::string told = LastError(status);
  if (status == NATS_SSL_ERROR || status == NATS_SECURE_CONNECTION_WANTED) throw FeedError(begin + told);
  if (status == NATS_NO_SERVER || status == NATS_IO_ERROR) throw LogTrouble(begin + "the server cannot be reached");
  throw LogTrouble(begin + (code != 0 ? told : natsStatus_GetText(status)));
}

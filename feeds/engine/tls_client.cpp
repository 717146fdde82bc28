#include "feeds/engine/tls_client.h"

#include <openssl/err.h>
#include <openssl/x509v3.h>
#include <sys/socket.h>

#include <cstdlib>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <thread>

namespace {

constexpr int kFreeRetries = 8;  // a read of what has come ends with one
constexpr std::chrono::milliseconds kPause(1);
constexpr std::chrono::seconds kLongestSilence(10);  // within a handshake or a record

thread_local TlsClient* t_client = nullptr;

std::string SystemAuthorities() {
  const char* chosen = std::getenv(X509_get_default_cert_file_env());
  const char* const files[] = {chosen ? chosen : "", "/etc/ssl/certs/ca-certificates.crt",
                               "/etc/pki/tls/certs/ca-bundle.crt", X509_get_default_cert_file()};
  for (const char* file : files)
    if (*file && std::ifstream(file)) return file;
  throw std::runtime_error("The system has no file of authorities for TLS: set authorities in [tls].");
}

bool SetHost(X509_VERIFY_PARAM* checks, const std::string& host) {
  X509_VERIFY_PARAM_set_hostflags(checks, X509_CHECK_FLAG_NO_PARTIAL_WILDCARDS);
  return X509_VERIFY_PARAM_set1_ip_asc(checks, host.c_str()) ||
         X509_VERIFY_PARAM_set1_host(checks, host.c_str(), host.size());
}

// Of all kinds of keys, with the chain behind the certificate.
void CheckOwnCertificate(const TlsClient::Files& files) {
  if (files.Certificate.empty()) return;
  const std::unique_ptr<SSL_CTX, decltype(&SSL_CTX_free)> context(SSL_CTX_new(TLS_client_method()), SSL_CTX_free);
  if (!context || SSL_CTX_use_certificate_chain_file(context.get(), files.Certificate.c_str()) != 1)
    throw std::runtime_error(files.Certificate + " holds no certificate.");
  if (SSL_CTX_use_PrivateKey_file(context.get(), files.Key.c_str(), SSL_FILETYPE_PEM) != 1)
    throw std::runtime_error(files.Key + " holds no key of the certificate in " + files.Certificate + ".");
}

std::string FailureOf(const SSL* connection) {
  const long verified = SSL_get_verify_result(connection);
  if (verified != X509_V_OK)
    return std::string("its certificate is refused: ") + X509_verify_cert_error_string(verified);
  const char* reason = ERR_reason_error_string(ERR_peek_last_error());
  return std::string("no TLS: ") + (reason ? reason : "the connection ended");
}

}  // namespace

TlsClient::Scope::Scope(TlsClient* client) {
  t_client = client;
}
TlsClient::Scope::~Scope() {
  t_client = nullptr;
}

TlsClient::TlsClient(const std::string& host, const Files& files, std::function<void(const std::string&)> onFailure)
    : Host(host),
      Pem{files.Authorities.empty() ? SystemAuthorities() : files.Authorities, files.Certificate, files.Key},
      OnFailure(std::move(onFailure)) {
  ContextIndex();
  CheckOwnCertificate(Pem);
  Trusted = X509_STORE_new();
  if (Trusted && X509_STORE_load_file(Trusted, Pem.Authorities.c_str()) == 1) return;
  X509_STORE_free(Trusted);
  throw std::runtime_error(Pem.Authorities + " holds no certificates of authorities.");
}

TlsClient::~TlsClient() {
  X509_STORE_free(Trusted);
}

int TlsClient::ContextIndex() {
  static const int index = SSL_CTX_get_ex_new_index(0, nullptr, OnContext, nullptr, nullptr);
  return index;
}

void TlsClient::OnContext(void* context, void*, CRYPTO_EX_DATA* data, int index, long, void*) {
  if (!t_client) return;
  CRYPTO_set_ex_data(data, index, t_client);
  SSL_CTX_set_info_callback(static_cast<SSL_CTX*>(context), OnInfo);
}

void TlsClient::OnInfo(const SSL* connection, int where, int result) {
  auto* client = static_cast<TlsClient*>(SSL_CTX_get_ex_data(SSL_get_SSL_CTX(connection), ContextIndex()));
  if ((where & SSL_CB_HANDSHAKE_START) != 0 && !SSL_is_init_finished(connection))
    client->Prepare(const_cast<SSL*>(connection));
  if (where == SSL_CB_CONNECT_EXIT && result <= 0 && SSL_want_nothing(connection))
    client->OnFailure(FailureOf(connection));
  // TLS 1.3: the other side refuses a certificate after the handshake.
  if (where == SSL_CB_READ_ALERT && SSL_is_init_finished(connection) && result >> 8 == SSL3_AL_FATAL)
    client->OnFailure(std::string("no TLS: ") + SSL_alert_desc_string_long(result));
}

// Before anything is sent. What fails here leaves the connection without an authority that it trusts.
void TlsClient::Prepare(SSL* connection) {
  SSL_set_verify(connection, SSL_VERIFY_PEER, [](int isVerified, X509_STORE_CTX*) { return isVerified; });
  if (SetHost(SSL_get0_param(connection), Host)) SSL_set1_verify_cert_store(connection, Trusted);
  if (!Pem.Certificate.empty()) {
    SSL_use_certificate_chain_file(connection, Pem.Certificate.c_str());
    SSL_use_PrivateKey_file(connection, Pem.Key.c_str(), SSL_FILETYPE_PEM);
  }
  if (X509_VERIFY_PARAM_get0_host(SSL_get0_param(connection), 0))
    SSL_ctrl(connection, SSL_CTRL_SET_TLSEXT_HOSTNAME, TLSEXT_NAMETYPE_host_name, const_cast<char*>(Host.c_str()));
  BIO_set_callback_ex(SSL_get_rbio(connection), OnRead);
  BIO_set_callback_arg(SSL_get_rbio(connection), reinterpret_cast<char*>(this));
  Retries = 0;
  LastRead = std::chrono::steady_clock::now();
}

long TlsClient::OnRead(BIO* bio, int operation, const char*, size_t, int, long, int result, size_t*) {
  auto* client = reinterpret_cast<TlsClient*>(BIO_get_callback_arg(bio));
  if (operation != (BIO_CB_READ | BIO_CB_RETURN)) return result;
  if (result <= 0 && BIO_should_retry(bio)) {
    client->WaitOrGiveUp(bio);
  } else {
    client->Retries = 0;
    client->LastRead = std::chrono::steady_clock::now();
  }
  return result;
}

void TlsClient::WaitOrGiveUp(BIO* bio) {
  if (++Retries <= kFreeRetries) return;
  std::this_thread::sleep_for(kPause);
  if (IsGivenUp || std::chrono::steady_clock::now() - LastRead > kLongestSilence)
    shutdown(static_cast<int>(BIO_get_fd(bio, nullptr)), SHUT_RDWR);
}

// TlsClient: makes the TLS connections of an engine safe: the host's name, its authorities, and an end for those that
// never answer.
#pragma once

#include <openssl/ssl.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <string>

// QuickFIX 1.15 asks OpenSSL for neither name nor server name indication, trusts the system's authorities beside the
// given ones, prints each certificate, takes no own certificate but of RSA and DSA keys and no chain of them, and tries
// a handshake without a pause until it ends. None of this can be set, so
// OpenSSL's callbacks do it: they see each context that is made on a thread while a Scope stands there.
class TlsClient {
 public:
  // PEM files. Empty authorities are those of the system; an empty certificate is none.
  struct Files {
    std::string Authorities, Certificate, Key;
  };
  // Host is a name or an IP address. onFailure is called with the reason of each handshake that fails, on the thread
  // that connects. Throws std::runtime_error.
  TlsClient(const std::string& host, const Files& files, std::function<void(const std::string&)> onFailure);
  ~TlsClient();
  TlsClient(const TlsClient&) = delete;
  TlsClient& operator=(const TlsClient&) = delete;

  class Scope {
   public:
    explicit Scope(TlsClient* client);  // null for none
    ~Scope();
  };

  // The file with the authorities.
  const std::string& Authorities() const { return Pem.Authorities; }
  // Ends a connection that waits for its other side. On any thread.
  void GiveUp() { IsGivenUp = true; }

 private:
  static int ContextIndex();
  static void OnContext(void* context, void*, CRYPTO_EX_DATA* data, int index, long, void*);
  static void OnInfo(const SSL* connection, int where, int result);
  static long OnRead(BIO* bio, int operation, const char*, size_t, int, long, int result, size_t*);
  void Prepare(SSL* connection);
  void WaitOrGiveUp(BIO* bio);

  const std::string Host;
  const Files Pem;
  const std::function<void(const std::string&)> OnFailure;
  X509_STORE* Trusted = nullptr;
  std::atomic<bool> IsGivenUp{false};
  int Retries = 0;
  std::chrono::steady_clock::time_point LastRead;
};

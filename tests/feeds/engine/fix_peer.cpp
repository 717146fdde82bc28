#include "tests/feeds/engine/fix_peer.h"

#include <arpa/inet.h>
#include <openssl/ssl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <utility>

namespace {

constexpr int kMostMilliseconds = 30000;

void WaitFor(int socket, short event) {
  pollfd wanted{socket, event, 0};
  if (poll(&wanted, 1, kMostMilliseconds) != 1) throw std::runtime_error("the session's other side is silent");
}

}  // namespace

struct FixPeer::State {
  std::string BeginString;
  int Listener = -1;
  int Client = -1;
  SSL_CTX* Context = nullptr;
  SSL* Tls = nullptr;
  std::string Bytes;

  bool Receive() {
    char block[65536];
    if (!Tls || SSL_pending(Tls) == 0) WaitFor(Client, POLLIN);
    const auto size = Tls ? SSL_read(Tls, block, sizeof block) : recv(Client, block, sizeof block, 0);
    if (size > 0) Bytes.append(block, static_cast<std::size_t>(size));
    return size > 0;
  }
};

FixPeer::FixPeer(std::string beginString) : Self(std::make_unique<State>()) {
  Self->BeginString = std::move(beginString);
  Self->Listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (bind(Self->Listener, reinterpret_cast<sockaddr*>(&address), sizeof address) || listen(Self->Listener, 5))
    throw std::runtime_error("cannot listen");
}

FixPeer::FixPeer(std::string beginString, const std::string& pemFile) : FixPeer(std::move(beginString)) {
  Self->Context = SSL_CTX_new(TLS_server_method());
  if (SSL_CTX_use_certificate_file(Self->Context, pemFile.c_str(), SSL_FILETYPE_PEM) != 1 ||
      SSL_CTX_use_PrivateKey_file(Self->Context, pemFile.c_str(), SSL_FILETYPE_PEM) != 1)
    throw std::runtime_error("cannot read " + pemFile);
}

void FixPeer::DemandCertificate(const std::string& authoritiesFile) {
  SSL_CTX_set_verify(Self->Context, SSL_VERIFY_PEER | SSL_VERIFY_FAIL_IF_NO_PEER_CERT, nullptr);
  if (SSL_CTX_load_verify_locations(Self->Context, authoritiesFile.c_str(), nullptr) != 1)
    throw std::runtime_error("cannot read " + authoritiesFile);
}

FixPeer::~FixPeer() {
  Close();
  SSL_CTX_free(Self->Context);
  close(Self->Listener);
}

int FixPeer::Port() const {
  sockaddr_in address{};
  socklen_t size = sizeof address;
  getsockname(Self->Listener, reinterpret_cast<sockaddr*>(&address), &size);
  return ntohs(address.sin_port);
}

bool FixPeer::Accept() {
  Close();
  WaitFor(Self->Listener, POLLIN);
  Self->Client = accept4(Self->Listener, nullptr, nullptr, SOCK_CLOEXEC);
  if (!Self->Context) return true;
  Self->Tls = SSL_new(Self->Context);
  SSL_set_fd(Self->Tls, Self->Client);
  return SSL_accept(Self->Tls) == 1;
}

void FixPeer::Close() {
  SSL_free(std::exchange(Self->Tls, nullptr));
  if (Self->Client >= 0) close(std::exchange(Self->Client, -1));
  Self->Bytes.clear();
}

std::string FixPeer::Read() {
  for (;;) {
    const std::size_t trailer = Self->Bytes.find("\00110=");
    const std::size_t end = trailer == std::string::npos ? trailer : Self->Bytes.find('\001', trailer + 1);
    if (end != std::string::npos) {
      std::string message = Self->Bytes.substr(0, end + 1);
      Self->Bytes.erase(0, end + 1);
      return message;
    }
    if (!Self->Receive()) return {};
  }
}

std::string FixPeer::Read(std::string_view type) {
  const std::string wanted = "\00135=" + std::string(type) + '\001';
  for (;;) {
    std::string message = Read();
    if (message.empty()) throw std::runtime_error("the connection ended before a message " + std::string(type));
    if (message.find(wanted) != std::string::npos) return message;
  }
}

std::string FixPeer::LogOn(unsigned number, std::string_view fields) {
  if (!Accept()) throw std::runtime_error("no connection");
  std::string logon = Read("A");
  Send("A", number,
       "98=0|108=30|" + std::string(Self->BeginString == "FIXT.1.1" ? "1137=9|" : "") + std::string(fields));
  return logon;
}

std::string FixPeer::Make(std::string_view type, unsigned number, std::string_view fields,
                          std::string_view sender) const {
  std::string body = "35=" + std::string(type) + "|49=" + std::string(sender) +
                     "|56=DESK|34=" + std::to_string(number) + "|52=20260301-09:00:00.000|" + std::string(fields);
  std::ranges::replace(body, '|', '\001');
  std::string message = "8=" + Self->BeginString + "\0019=" + std::to_string(body.size()) + '\001' + body;
  unsigned sum = 0;
  for (const unsigned char byte : message) sum += byte;
  char trailer[16];
  std::snprintf(trailer, sizeof trailer, "10=%03u\001", sum % 256);
  return message + trailer;
}

std::string FixPeer::Send(std::string_view type, unsigned number, std::string_view fields, std::string_view sender) {
  std::string message = Make(type, number, fields, sender);
  SendRaw(message);
  return message;
}

void FixPeer::SendRaw(std::string_view text) {
  if (!Self->Tls) return SendPlain(text);
  if (SSL_write(Self->Tls, text.data(), static_cast<int>(text.size())) <= 0) throw std::runtime_error("cannot send");
}

void FixPeer::SendPlain(std::string_view bytes) {
  if (send(Self->Client, bytes.data(), bytes.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(bytes.size()))
    throw std::runtime_error("cannot send");
}

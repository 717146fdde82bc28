#include "tests/feeds/day_log/log_server.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <stdexcept>
#include <thread>

#include "foundations/byte_words.h"
#include "tests/support/files.h"

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds kBound(30);

sockaddr_in Loopback(int port) {
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  return address;
}

}  // namespace

int FreePort() {
  const int handle = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address = Loopback(0);
  socklen_t size = sizeof address;
  bind(handle, reinterpret_cast<sockaddr*>(&address), size);
  getsockname(handle, reinterpret_cast<sockaddr*>(&address), &size);
  close(handle);
  return ntohs(address.sin_port);
}

LogServer::LogServer(std::filesystem::path folder, std::string settings)
    : Folder(std::move(folder)), Settings(std::move(settings)) {
  std::filesystem::create_directories(Folder);
  // Another program may be faster to take a port that was free.
  for (int i = 0; i < 10; ++i) {
    OwnPort = FreePort();
    if (TryStart()) return;
  }
  throw std::runtime_error("no server could be started in " + Folder.string());
}

void LogServer::Start() {
  const Clock::time_point end = Clock::now() + kBound;
  while (!TryStart())
    if (Clock::now() > end) throw std::runtime_error("the server could not be started again");
}

bool LogServer::TryStart() {
  const std::filesystem::path file = Folder / "server.conf";
  WriteFile(file, "listen: \"127.0.0.1:" + std::to_string(OwnPort) + "\"\njetstream { store_dir: \"" +
                      (Folder / "data").string() + "\" }\nlog_file: \"" + (Folder / "log").string() + "\"\n" +
                      Settings);
  Pid = fork();
  if (Pid == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int nowhere = open("/dev/null", O_RDWR);
    for (int handle = 0; handle < 3; ++handle) dup2(nowhere, handle);
    execlp("nats-server", "nats-server", "-c", file.c_str(), nullptr);
    _exit(127);
  }
  const Clock::time_point end = Clock::now() + kBound;
  while (Clock::now() < end) {
    if (waitpid(Pid, nullptr, WNOHANG) == Pid) {
      Pid = 0;
      return false;
    }
    if (Answers()) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  Kill();
  return false;
}

// The first words of a server that has JetStream say so.
bool LogServer::Answers() const {
  const int handle = socket(AF_INET, SOCK_STREAM, 0);
  const sockaddr_in address = Loopback(OwnPort);
  char words[2048] = {};
  const bool connected = connect(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  if (connected) recv(handle, words, sizeof words - 1, 0);
  close(handle);
  return connected && std::string_view(words).find("\"jetstream\":true") != std::string_view::npos;
}

void LogServer::Kill() {
  if (Pid == 0) return;
  kill(Pid, SIGKILL);
  waitpid(Pid, nullptr, 0);
  Pid = 0;
}

LogAccess LogServer::Access(const std::string& scheme) const {
  LogAccess access;
  access.Servers = scheme + "://127.0.0.1:" + std::to_string(OwnPort);
  return access;
}

std::vector<std::uint8_t> TradeMessages(std::uint32_t first, std::uint32_t count, std::size_t size) {
  std::vector<std::uint8_t> messages;
  for (std::uint32_t id = first; id < first + count; ++id) {
    std::vector<std::uint8_t> one = {0x23, 1,    0,    0,    0,    0x23, 0x11, 0x27, 0,
                                     0,    0x23, 0x12, 0x27, 0x8d, 0x23, 0x23, 0x28, 0x4e};
    one.resize(size, 0xEE);
    StoreValue(&one[8], static_cast<std::uint16_t>(size - 10));
    StoreValue(&one[18], id);
    messages.insert(messages.end(), one.begin(), one.end());
  }
  return messages;
}

std::vector<std::uint32_t> TradeIds(const std::vector<std::uint8_t>& messages) {
  std::vector<std::uint32_t> ids;
  for (std::size_t at = 0; at + 22 <= messages.size(); at += 10u + LoadValue<std::uint16_t>(&messages[at + 8]))
    ids.push_back(LoadValue<std::uint32_t>(&messages[at + 18]));
  return ids;
}

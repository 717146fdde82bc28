#include "demo_venue/venue_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

namespace {

constexpr std::size_t kEnoughOutput = 65536;
constexpr int kBeatMs = 100;
constexpr VenueTime kLongestStop = 2000000;

int Checked(int result, const char* what) {
  if (result < 0) throw std::system_error(errno, std::generic_category(), what);
  return result;
}

sockaddr_in Loopback(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

void SetOption(int socket, int level, int option) {
  const int on = 1;
  Checked(setsockopt(socket, level, option, &on, sizeof on), "socket option");
}

}  // namespace

VenueServer::VenueServer(VenueSession& session, const VenueDay& day, VenuePace pace, int port)
    : Session(session), Day(day), Pace(pace) {
  Wake = Checked(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK), "eventfd");
  Listener = Checked(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0), "socket");
  SetOption(Listener, SOL_SOCKET, SO_REUSEADDR);
  const sockaddr_in address = Loopback(port);
  Checked(bind(Listener, reinterpret_cast<const sockaddr*>(&address), sizeof address), "bind");
  Checked(listen(Listener, 8), "listen");
}

VenueServer::~VenueServer() {
  for (const int file : {Client, Listener, Wake})
    if (file >= 0) close(file);
}

int VenueServer::Port() const {
  sockaddr_in address{};
  socklen_t size = sizeof address;
  Checked(getsockname(Listener, reinterpret_cast<sockaddr*>(&address), &size), "getsockname");
  return ntohs(address.sin_port);
}

void VenueServer::Stop() noexcept {
  const std::uint64_t one = 1;
  [[maybe_unused]] const auto written = write(Wake, &one, sizeof one);
}

void VenueServer::Run(const std::function<void(const std::string&)>& notice) {
  while (!Session.IsFinished()) {
    if (Stopped != 0 && (Client < 0 || VenueNow() - Stopped > kLongestStop)) break;
    Wait();
    if (Client >= 0) {
      Session.OnBeat(VenueNow());
      Fill();
      Write();
    }
    for (const std::string& line : Session.TakeNotices()) notice(line);
  }
  Disconnect();
}

// A second initiator stays in the listener's queue while there is a first.
void VenueServer::Wait() {
  const bool hasOutput = Client >= 0 && !Session.Output().empty();
  std::array<pollfd, 2> files{{{Wake, POLLIN, 0}, {Client < 0 ? Listener : Client, POLLIN, 0}}};
  if (hasOutput) files[1].events |= POLLOUT;
  if (poll(files.data(), files.size(), MillisecondsToWait()) <= 0) return;
  if ((files[0].revents & POLLIN) != 0) {
    std::uint64_t count = 0;
    [[maybe_unused]] const auto taken = read(Wake, &count, sizeof count);
    Stopped = VenueNow();
    Session.End(Stopped);
  }
  if ((files[1].revents & ~POLLOUT) == 0) return;
  if (Client < 0)
    Accept();
  else
    Read();
}

void VenueServer::Accept() {
  Client = accept4(Listener, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
  if (Client < 0) return;
  SetOption(Client, IPPROTO_TCP, TCP_NODELAY);
  Session.OnConnected(VenueNow());
}

void VenueServer::Read() {
  std::array<char, 65536> bytes;
  const auto size = recv(Client, bytes.data(), bytes.size(), 0);
  if (size > 0) {
    Session.OnBytes({bytes.data(), static_cast<std::size_t>(size)}, VenueNow());
    if (Start == 0 && Session.IsLoggedOn()) Start = VenueNow();
  } else if (size == 0 || (errno != EAGAIN && errno != EINTR)) {
    Disconnect();
  }
}

void VenueServer::Fill() {
  const auto hasRoom = [&] { return Session.Output().empty() || Session.Output().back().Bytes.size() < kEnoughOutput; };
  for (VenueTime now = VenueNow(); hasRoom() && !Session.WantsClose(); now = VenueNow()) {
    if ((!IsFree() && DueTime() > now) || !Session.SendNext(now)) break;
    Sent = Session.TradesSent();
  }
}

VenueTime VenueServer::DueTime() const {
  const std::uint64_t next = Session.TradesSent();
  double seconds = 0;
  if (next == Day.Count()) return 0;
  if (Pace.Speed) seconds = Day.SecondsUntil(next) / *Pace.Speed;
  if (Pace.Rate) seconds = std::max(seconds, static_cast<double>(next) / *Pace.Rate);
  return Start + static_cast<VenueTime>(seconds * 1e6);
}

bool VenueServer::IsFree() const {
  return Session.IsResending() || Session.IsRepeating();
}

// What is due goes out as soon as the socket takes it, which poll tells.
int VenueServer::MillisecondsToWait() const {
  if (Client < 0 || !Session.HasNext() || !Session.Output().empty()) return kBeatMs;
  const VenueTime wait = IsFree() ? 0 : DueTime() - VenueNow();
  return static_cast<int>(std::clamp<VenueTime>((wait + 999) / 1000, 0, kBeatMs));
}

void VenueServer::Write() {
  auto& output = Session.Output();
  while (Client >= 0 && !output.empty()) {
    VenueOutput& front = output.front();
    const std::size_t most = front.Piece == 0 ? front.Bytes.size() : std::min(front.Piece, front.Bytes.size());
    const auto size = send(Client, front.Bytes.data(), most, MSG_NOSIGNAL);
    if (size < 0 && (errno == EAGAIN || errno == EINTR)) return;
    if (size < 0) return Disconnect();
    front.Bytes.erase(0, static_cast<std::size_t>(size));
    if (front.Bytes.empty()) output.pop_front();
  }
  if (Session.WantsClose()) Disconnect();
}

void VenueServer::Disconnect() {
  if (Client >= 0) close(Client);
  Client = -1;
  Session.OnClosed();
}

// VenueServer: the socket of a venue on loopback, for one initiator at a time, and the pace of the day.
#pragma once

#include <atomic>
#include <functional>
#include <optional>
#include <string>

#include "demo_venue/venue_session.h"

// When trades are due: the clock starts with the first logon. Without any limit they go as fast as they are taken.
struct VenuePace {
  std::optional<double> Speed;  // times real time
  std::optional<double> Rate;   // trades a second
};

class VenueServer {
 public:
  // Listens; port 0 is any free one. Throws std::system_error.
  VenueServer(VenueSession& session, const VenueDay& day, VenuePace pace, int port);
  ~VenueServer();
  VenueServer(const VenueServer&) = delete;
  VenueServer& operator=(const VenueServer&) = delete;

  int Port() const;
  // Serves until the session has finished or Stop was called, which logs out. Further initiators wait until the one
  // before has gone. notice is called with each line for the screen.
  void Run(const std::function<void(const std::string&)>& notice);
  // On any thread, and in a signal handler.
  void Stop() noexcept;
  // Reports that have been made for the first time; on any thread.
  std::uint64_t TradesSent() const noexcept { return Sent; }

 private:
  void Wait();
  void Accept();
  void Read();
  void Fill();
  void Write();
  void Disconnect();
  VenueTime DueTime() const;
  bool IsFree() const;
  int MillisecondsToWait() const;

  VenueSession& Session;
  const VenueDay& Day;
  VenuePace Pace;
  int Listener = -1;
  int Wake = -1;
  int Client = -1;
  VenueTime Start = 0;  // of the first logon
  VenueTime Stopped = 0;
  std::atomic<std::uint64_t> Sent = 0;
};

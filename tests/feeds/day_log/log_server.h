// LogServer: a NATS server with JetStream on a free port, for one test; killed with the test.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "feeds/day_log/log_address.h"

class LogServer {
 public:
  // Starts it, storing in the folder; `settings` are added to its own.
  explicit LogServer(std::filesystem::path folder, std::string settings = {});
  ~LogServer() { Kill(); }
  LogServer(const LogServer&) = delete;
  LogServer& operator=(const LogServer&) = delete;

  // As kill -9 does.
  void Kill();
  // On the same port, with what is stored. Returns when it takes connections.
  void Start();
  int Port() const noexcept { return OwnPort; }
  pid_t Process() const noexcept { return Pid; }
  LogAccess Access(const std::string& scheme = "nats") const;

 private:
  bool TryStart();
  bool Answers() const;

  const std::filesystem::path Folder;
  const std::string Settings;
  int OwnPort = 0;
  pid_t Pid = 0;
};

// A port that is free now.
int FreePort();
// Wire messages 9101 with the trade ids from first on, `size` bytes each (41 at least).
std::vector<std::uint8_t> TradeMessages(std::uint32_t first, std::uint32_t count, std::size_t size = 41);
// The trade ids of such messages.
std::vector<std::uint32_t> TradeIds(const std::vector<std::uint8_t>& messages);

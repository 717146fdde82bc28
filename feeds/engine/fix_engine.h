// FixEngine: a FIX initiator session over QuickFIX. This header also compiles as C++14, which QuickFIX's own need.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

struct FixEngineSettings {
  std::string BeginString;  // FIX.4.2, FIX.4.4 or FIXT.1.1
  std::string SenderCompID;
  std::string TargetCompID;
  std::string Host;
  int Port = 0;
  int HeartbeatSeconds = 30;
  int ReconnectSeconds = 5;
  std::string StartTime = "00:00:00";  // UTC; equal times: around the clock
  std::string EndTime = "00:00:00";
  std::string Username;  // sent in the logon if not empty, as is the password; neither is ever logged
  std::string Password;
  bool ResetOnLogon = false;
  std::string Dictionary;  // file; empty for the open dictionary
  std::string WorkFolder;  // for the open dictionary's file
  bool Tls = false;
  std::string TlsAuthorities;  // PEM file; empty for the system's
  std::string TlsHost;         // the name that the certificate must have; empty for Host
  std::string TlsCertificate;  // of the client, empty for none
  std::string TlsKey;
};

// Where the engine keeps numbers and messages. Called on the engine's thread.
class FixStore {
 public:
  virtual ~FixStore() = default;
  virtual std::uint32_t NextSender() = 0;
  virtual std::uint32_t NextTarget() = 0;
  // Of the numbers, in seconds UTC since 1970.
  virtual std::int64_t Created() = 0;
  // Keeps both numbers with the raw message that moved them (null for none), in one write. False if that failed: the
  // session disconnects and the numbers stay.
  virtual bool Keep(std::uint32_t nextSender, std::uint32_t nextTarget, const std::string* text, bool refused) = 0;
  // Both numbers are 1 from now on, created now.
  virtual bool Reset() = 0;
};

// What the session tells, on the engine's thread. AlarmKind of feed_report.h as a number, so that this header stays
// alone.
class FixEngineEvents {
 public:
  virtual ~FixEngineEvents() = default;
  virtual void OnState(bool loggedOn, const std::string& text) = 0;
  virtual void OnEngineAlarm(int alarmKind, const std::string& text) = 0;
};

class FixEngine {
 public:
  // Throws std::runtime_error for settings that QuickFIX refuses.
  FixEngine(const FixEngineSettings& settings, FixStore& store, FixEngineEvents& events);
  ~FixEngine();
  FixEngine(const FixEngine&) = delete;
  FixEngine& operator=(const FixEngine&) = delete;

  // Starts the engine's thread, which connects, and connects again whenever the connection is lost.
  void Start();
  // Logs out and ends the thread; waits for the logout for some seconds at most.
  void Stop();

 private:
  struct State;
  std::unique_ptr<State> Self;
};

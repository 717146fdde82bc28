// FixEngine: a FIX initiator session over QuickFIX that takes every message as it came. This header also compiles as
// C++14, which QuickFIX's own need.
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
  std::string StartTime = "00:00:00";  // UTC; equal times: around the clock, from midnight to midnight
  std::string EndTime = "00:00:00";
  std::string StartDay;  // "monday"; of a session of a week, empty for one of a day
  std::string EndDay;
  std::string Username;  // sent in the logon if not empty, as is the password; neither is ever logged
  std::string Password;
  bool ResetOnLogon = false;
  std::string Dictionary;  // file in QuickFIX's format; empty for the open dictionary
  bool Tls = false;
  std::string TlsAuthorities;  // PEM file; empty for the system's
  std::string TlsHost;         // the name that the certificate must have; empty for Host
  std::string TlsCertificate;  // of the client, empty for none
  std::string TlsKey;
};

// Where the engine keeps numbers and messages. Called on the thread that makes the engine, then on the engine's.
class FixStore {
 public:
  virtual ~FixStore() = default;
  virtual std::uint32_t NextSender() = 0;
  virtual std::uint32_t NextTarget() = 0;
  // Of the numbers, in seconds UTC since 1970.
  virtual std::int64_t Created() = 0;
  // Keeps both numbers with the raw message that moved them (null for none), in one write. A refused message may come
  // with numbers that have not moved. False if that failed: the session disconnects and the numbers stay.
  virtual bool Keep(std::uint32_t nextSender, std::uint32_t nextTarget, const std::string* text, bool refused) = 0;
  // Both numbers are 1 from now on, created now. False if that failed: it is asked for again.
  virtual bool Reset() = 0;
};

// What the session tells; on the same threads. AlarmKind of feed_report.h as a number, so that this header stays alone.
// No text has the password.
class FixEngineEvents {
 public:
  virtual ~FixEngineEvents() = default;
  virtual void OnState(bool loggedOn, const std::string& text) = 0;
  virtual void OnEngineAlarm(int alarmKind, const std::string& text) = 0;
};

// Messages reach the store once each and in the order of their numbers. What QuickFIX refuses (35=3, 35=j), and what is
// garbled, is kept too and told. With TLS, the certificate
// must have the host's name and be signed by one of the authorities.
class FixEngine {
 public:
  // Throws std::runtime_error for settings that QuickFIX refuses.
  FixEngine(const FixEngineSettings& settings, FixStore& store, FixEngineEvents& events);
  ~FixEngine();
  FixEngine(const FixEngine&) = delete;
  FixEngine& operator=(const FixEngine&) = delete;

  // Starts the engine's thread, which connects, and connects again whenever the connection is lost.
  void Start();
  // Logs out and ends the thread; waits for the logout for about ten seconds at most.
  void Stop();

 private:
  struct State;
  std::unique_ptr<State> Self;
};

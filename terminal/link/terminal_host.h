// TerminalHost: answers the calls of a plug-in to the exported functions; RefreshBeat and the clock by which it goes.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <thread>

#include "host_link/host_functions/terminal_functions.h"
#include "host_link/messages/message_table.h"
#include "host_link/messages/packet_writer.h"
#include "terminal/day/csv_tables.h"
#include "terminal/link/message_log.h"
#include "terminal/link/plugin_messages.h"

// The time by which a day plays; tests have one of their own.
class PlayClock {
 public:
  using Time = std::chrono::steady_clock::time_point;

  virtual ~PlayClock() = default;
  virtual Time Now() = 0;
  virtual void SleepUntil(Time time) = 0;
};

class WallClock : public PlayClock {
 public:
  Time Now() override { return std::chrono::steady_clock::now(); }
  void SleepUntil(Time time) override { std::this_thread::sleep_until(time); }
};

// RefreshBeat: calls the refresh callback of a plug-in at its period.
class RefreshBeat {
 public:
  explicit RefreshBeat(PlayClock& clock) : Clock(clock) {}

  // Replaces the last registration.
  void Register(const BeatRequest& request);
  void CallIfDue();
  // Sleeps until that time and calls the beats that fall due meanwhile.
  void WaitUntil(PlayClock::Time time);

  // When the next call is due; nothing without a callback.
  std::optional<PlayClock::Time> NextCall() const;

  std::uint64_t Calls() const noexcept { return CallCount; }

 private:
  PlayClock& Clock;
  CommandFunction Callback = nullptr;
  std::chrono::milliseconds Period{};
  PlayClock::Time Due;
  std::uint64_t CallCount = 0;
};

// The requests of a plug-in to the windows.
class TerminalWindows {
 public:
  virtual ~TerminalWindows() = default;
  // Message 32022: asks for the selection in the window at that address. The answer, message 32023, goes to the
  // function before this returns; no answer if there is no such window.
  virtual void TellSelection(std::uint64_t window, MessageFunction answer) = 0;
  // Message 32003: asks to show the properties of that grid. Requires: the request is complete.
  virtual void ShowProperties(const PropertyRequest& request) = 0;
  // Message 32004: the plug-in has filled the list.
  virtual void PropertiesFilled() = 0;
  // A bar or a grid of the plug-in got the focus, or a bar was closed.
  virtual void FocusMoved(const void* window, bool closed) = 0;
};

class TerminalHost {
 public:
  TerminalHost(const SecurityList& securities, RefreshBeat& beat) : Securities(&securities), Beat(beat) {}

  // Answers about these from now on.
  void UseSecurities(const SecurityList& securities) { Securities = &securities; }
  // Null, the default: there are no windows, and their messages are ignored.
  void UseWindows(TerminalWindows* windows) { Windows = windows; }
  // Logs the messages of the plug-in; null, the default, logs nothing.
  void LogTo(MessageLog* log) { Log = log; }

  // Puts the master record of the security into the second slot, if there is one.
  void GetMasterRequest(MasterRequest* request, const std::uint16_t* requestNumber) const;
  // Takes an open message. 32005 registers the refresh callback; 32003, 32004 and 32022 go to the windows; all are
  // counted.
  void PluginDataSend(const CQORPacketWriter* message);
  void ApplicationFocus(const void* window, bool closed);
  // An id that no bar has now. A book name gets the same id at every start, as plug-ins store their bars under it; if
  // that id is in use, the next free one.
  std::uint32_t GetPluginBarID(const char* bookName);
  void PluginRemoveBarID(std::uint32_t barId) { BarNames.erase(barId); }

  // The bars that have an id now, with their names.
  const std::map<std::uint32_t, std::string>& Bars() const noexcept { return BarNames; }
  // Counts of the messages of the plug-in by number.
  const std::map<std::uint16_t, std::uint64_t>& Received() const noexcept { return ReceivedCounts; }

 private:
  const SecurityList* Securities;
  RefreshBeat& Beat;
  TerminalWindows* Windows = nullptr;
  MessageLog* Log = nullptr;
  std::map<std::uint16_t, std::uint64_t> ReceivedCounts;
  std::map<std::uint32_t, std::string> BarNames;
};

// The host of the exported functions; null before and after a run.
TerminalHost* RunningHost() noexcept;

// Makes a host the running one for its own life.
class RunningHostScope {
 public:
  explicit RunningHostScope(TerminalHost& host) noexcept;
  ~RunningHostScope();
  RunningHostScope(const RunningHostScope&) = delete;
  RunningHostScope& operator=(const RunningHostScope&) = delete;
};

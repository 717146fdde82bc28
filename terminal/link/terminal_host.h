// TerminalHost: what the terminal answers when a plug-in calls its exported functions.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <thread>

#include "host_link/host_functions/terminal_functions.h"
#include "host_link/messages/packet_writer.h"
#include "host_link/module/message_router.h"
#include "terminal/day/csv_tables.h"
#include "terminal/link/message_log.h"
#include "terminal/link/plugin_messages.h"

// PlayClock: the time that playing a day goes by, apart from the machine's so that a test can turn it.
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

// RefreshBeat: the refresh callback that a plug-in registers, called at its period.
class RefreshBeat {
 public:
  explicit RefreshBeat(PlayClock& clock) : Clock(clock) {}

  // The last registration holds. Null ends the calls.
  void Register(CommandFunction callback, std::chrono::milliseconds period);
  void CallIfDue();
  // Sleeps until the time is there, with the beats that fall due meanwhile.
  void WaitUntil(PlayClock::Time time);

  // When the next call falls due; nothing while no callback is registered.
  std::optional<PlayClock::Time> NextCall() const;

  std::uint64_t Calls() const noexcept { return CallCount; }

 private:
  PlayClock& Clock;
  CommandFunction Callback = nullptr;
  std::chrono::milliseconds Period{};
  PlayClock::Time Due;
  std::uint64_t CallCount = 0;
};

// What a plug-in asks of the terminal's windows.
class TerminalWindows {
 public:
  virtual ~TerminalWindows() = default;
  // Message 32022: what is selected in the window at that address? The answer, message 32023, goes to the function
  // before this returns; no answer for an address that is none of a window.
  virtual void TellSelection(std::uint64_t window, MessageFunction answer) = 0;
  // Message 32003: the properties of that grid are to be shown. All parts of the request are given.
  virtual void ShowProperties(const PropertyRequest& request) = 0;
  // Message 32004: the list that the plug-in was given is filled.
  virtual void PropertiesFilled() = 0;
  // A bar or a grid of the plug-in got the focus, or a bar was closed.
  virtual void FocusMoved(const void* window, bool closed) = 0;
};

class TerminalHost {
 public:
  TerminalHost(const SecurityList& securities, RefreshBeat& beat) : Securities(&securities), Beat(beat) {}

  // From now on it answers about these.
  void UseSecurities(const SecurityList& securities) { Securities = &securities; }
  // Null, as at the begin, for a terminal without windows: then nothing comes of their messages.
  void UseWindows(TerminalWindows* windows) { Windows = windows; }
  // Where the plug-in's messages are logged; null, as at the begin, for nowhere.
  void LogTo(MessageLog* log) { Log = log; }

  // Fills the second slot with the master record of the security, if there is one.
  void GetMasterRequest(MasterRequest* request, const std::uint16_t* requestNumber) const;
  // Takes a message that is not finished. 32005 registers the refresh callback; 32003, 32004 and 32022 are the windows'
  // to answer; all others are only counted.
  void PluginDataSend(const CQORPacketWriter* message);
  void ApplicationFocus(const void* window, bool closed);
  // An id that no bar has now: the same for the same book name at every start, as what plug-ins keep of their bars goes
  // by it. While another bar has that one it is the next that is free.
  std::uint32_t GetPluginBarID(const char* bookName);
  void PluginRemoveBarID(std::uint32_t barId) { BarNames.erase(barId); }

  // The bars that have an id now, with the names that they gave for it.
  const std::map<std::uint32_t, std::string>& Bars() const noexcept { return BarNames; }
  // How often each message number came from the plug-in.
  const std::map<std::uint16_t, std::uint64_t>& Received() const noexcept { return ReceivedCounts; }

 private:
  const SecurityList* Securities;
  RefreshBeat& Beat;
  TerminalWindows* Windows = nullptr;
  MessageLog* Log = nullptr;
  std::map<std::uint16_t, std::uint64_t> ReceivedCounts;
  std::map<std::uint32_t, std::string> BarNames;
};

// The host that the exported functions forward to: the one of the run, null before and after it.
TerminalHost* RunningHost() noexcept;

// Makes a host the running one for as long as this lives.
class RunningHostScope {
 public:
  explicit RunningHostScope(TerminalHost& host) noexcept;
  ~RunningHostScope();
  RunningHostScope(const RunningHostScope&) = delete;
  RunningHostScope& operator=(const RunningHostScope&) = delete;
};

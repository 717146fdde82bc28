// CTerminalHost: what the terminal answers when a plug-in calls its exported functions. Not the functions themselves:
// terminal_exports.cpp forwards them here. All calls come on the terminal's one calling thread.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "host_link/entry_points.h"
#include "host_link/packet_writer.h"
#include "host_link/terminal_functions.h"
#include "terminal/beat.h"
#include "terminal/message_log.h"
#include "terminal/property_request.h"
#include "terminal/securities.h"

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

class CTerminalHost {
 public:
  CTerminalHost(const CSecurities& securities, CBeat& beat) : Securities(&securities), Beat(beat) {}

  // From now on it answers about these.
  void UseSecurities(const CSecurities& securities) { Securities = &securities; }
  // Null, as at the begin, for a terminal without windows: then nothing comes of their messages.
  void UseWindows(TerminalWindows* windows) { Windows = windows; }
  // Where the plug-in's messages are logged; null, as at the begin, for nowhere.
  void LogTo(CMessageLog* log) { Log = log; }

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
  const CSecurities* Securities;
  CBeat& Beat;
  TerminalWindows* Windows = nullptr;
  CMessageLog* Log = nullptr;
  std::map<std::uint16_t, std::uint64_t> ReceivedCounts;
  std::map<std::uint32_t, std::string> BarNames;
};

// The host that the exported functions forward to: the one of the run, null before and after it.
CTerminalHost* RunningHost() noexcept;

// Makes a host the running one for as long as this lives.
class CRunningHostScope {
 public:
  explicit CRunningHostScope(CTerminalHost& host) noexcept;
  ~CRunningHostScope();
  CRunningHostScope(const CRunningHostScope&) = delete;
  CRunningHostScope& operator=(const CRunningHostScope&) = delete;
};

// CTerminalHost: what the terminal answers when a plug-in calls its exported functions. Not the functions themselves:
// terminal_exports.cpp forwards them here. All calls come on the terminal's one calling thread.
#pragma once

#include <cstdint>
#include <map>

#include "host_link/packet_writer.h"
#include "host_link/terminal_functions.h"
#include "terminal/beat.h"
#include "terminal/securities.h"

class CTerminalHost {
 public:
  CTerminalHost(const CSecurities& securities, CBeat& beat) : Securities(securities), Beat(beat) {}

  // Fills the second slot with the master record of the security, if there is one.
  void GetMasterRequest(MasterRequest* request, const std::uint16_t* requestNumber) const;
  // Takes a message that is not finished. 32005 registers the refresh callback; all others are only counted, as
  // without windows there is no pane to fill and no focused window to ask.
  void PluginDataSend(const CQORPacketWriter* message);
  std::uint32_t GetPluginBarID() noexcept { return ++LastBarId; }

  // How often each message number came from the plug-in.
  const std::map<std::uint16_t, std::uint64_t>& Received() const noexcept { return ReceivedCounts; }

 private:
  const CSecurities& Securities;
  CBeat& Beat;
  std::map<std::uint16_t, std::uint64_t> ReceivedCounts;
  std::uint32_t LastBarId = 0;
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

// CPluginLink: a loaded plug-in module, its description and the calls into it. All calls on the terminal's one calling
// thread, one at a time; the running host must be set before, as the module calls back from within.
#pragma once

#include <cstdint>
#include <filesystem>

#include "host_link/entry_points.h"
#include "host_link/packet_writer.h"
#include "platform/module.h"
#include "terminal/message_target.h"
#include "terminal/plugin_description.h"

// Promises: a message number that the module did not ask for does not reach it, but for 30026. The module is unloaded
// with the object.
class CPluginLink : public MessageTarget {
 public:
  // Loads the module and asks it what it is. Throws TerminalError with ExitCode::Plugin when it cannot be loaded or
  // lacks an entry point.
  explicit CPluginLink(const std::filesystem::path& module);
  ~CPluginLink() override;
  CPluginLink(const CPluginLink&) = delete;
  CPluginLink& operator=(const CPluginLink&) = delete;

  const PluginDescription& Description() const noexcept { return Told; }

  bool Deliver(CQORPacketReader& message, const WireFrame& raw) override;
  // Sends a message that holds nothing but its number; false when the module did not ask for it.
  bool Send(std::uint16_t number);
  // Sends 30026, which restores the books, to OnMessage whatever the module asked for.
  void SendRestore();

 private:
  void Resolve(const std::filesystem::path& path);
  void Describe();

  ModuleHandle Module = nullptr;
  GetDllInfoFunction GetDllInfo = nullptr;
  MessageFunction OnMessage = nullptr;
  MessageFunction OnPluginMessage = nullptr;
  PluginDescription Told;
};

// PluginLink: a loaded plug-in module, its description and the calls into it.
#pragma once

#include <cstdint>
#include <filesystem>

#include "host_link/messages/packet_reader.h"
#include "host_link/messages/packet_writer.h"
#include "host_link/module/message_router.h"
#include "platform/modules.h"
#include "terminal/day/message_file.h"
#include "terminal/link/message_log.h"
#include "terminal/link/plugin_messages.h"

// MessageTarget: where the messages of a day go.
class MessageTarget {
 public:
  virtual ~MessageTarget() = default;
  // The same message twice: with its header parsed, and raw. False when the target does not take its number.
  virtual bool Deliver(CQORPacketReader& message, const WireFrame& raw) = 0;
  // Delivers a message that holds nothing but its number.
  bool Send(std::uint16_t number);
};

// Promises: a message number that the module did not ask for does not reach it, but for 30026. The module is unloaded
// with the object.
class PluginLink : public MessageTarget {
 public:
  // Loads the module and asks it what it is. Throws TerminalError with ExitCode::Plugin when it cannot be loaded or
  // lacks an entry point.
  explicit PluginLink(const std::filesystem::path& module);
  ~PluginLink() override;
  PluginLink(const PluginLink&) = delete;
  PluginLink& operator=(const PluginLink&) = delete;

  const PluginDescription& Description() const noexcept { return Told; }

  // Where messages to the module are logged; null, as at the begin, for nowhere.
  void LogTo(MessageLog* log) { Log = log; }
  bool Deliver(CQORPacketReader& message, const WireFrame& raw) override;
  // Sends 30026, which restores the books, to OnMessage whatever the module asked for.
  void SendRestore();
  // Asks the module, by message 32022 to OnPluginMessage, what is selected in a window of its own; it answers through
  // the function before this returns. Only for addresses of windows that the module made.
  void AskSelection(std::uint64_t window, MessageFunction answer);
  // The menu command of message 30005; nothing when none came.
  void RunMenuCommand();
  // Calls one of the functions whose addresses the module's messages carry.
  template <typename Callback>
  void Run(Callback callback) {
    ++CallDepth;
    callback();
    --CallDepth;
  }
  // The module is being called: it must not be called again before that returns.
  bool IsBusy() const noexcept { return CallDepth != 0; }

 private:
  void Resolve(const std::filesystem::path& path);
  void Describe();
  void Call(MessageFunction function, CQORPacketReader& message);

  ModuleHandle Module = nullptr;
  GetDllInfoFunction GetDllInfo = nullptr;
  MessageFunction OnMessage = nullptr;
  MessageFunction OnPluginMessage = nullptr;
  PluginDescription Told;
  MessageLog* Log = nullptr;
  int CallDepth = 0;
};

// What a plug-in gets ahead of a day: its timer, its saved books, and no trades.

// Sends 30025, 30026 and 30022; gives how many of them the plug-in takes. 30026 only where there are windows: the
// plug-in would open its books in a frame of its own otherwise.
std::uint64_t SendStart(PluginLink& plugin, bool withWindows);

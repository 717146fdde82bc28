// PluginLink: a loaded plug-in module, its description and the calls into it.
#pragma once

#include <cstdint>
#include <filesystem>

#include "host_link/messages/message_table.h"
#include "host_link/messages/packet_reader.h"
#include "host_link/messages/packet_writer.h"
#include "platform/modules.h"
#include "terminal/day/message_file.h"
#include "terminal/link/message_log.h"
#include "terminal/link/plugin_messages.h"

// Takes the messages of a day.
class MessageTarget {
 public:
  virtual ~MessageTarget() = default;
  // The same message after ParseHeader and raw. False if the target does not take its number.
  virtual bool Deliver(CQORPacketReader& message, const RawMessage& raw) = 0;
  // Delivers a message without fields.
  bool Send(std::uint16_t number);
};

// The module gets only the numbers that it asked for, and 30026. It is unloaded with the object.
class PluginLink : public MessageTarget {
 public:
  // Loads the module and reads its description. Throws TerminalError with ExitCode::Plugin if it cannot be loaded or
  // lacks an entry point.
  explicit PluginLink(const std::filesystem::path& module);
  ~PluginLink() override;
  PluginLink(const PluginLink&) = delete;
  PluginLink& operator=(const PluginLink&) = delete;

  const PluginDescription& Description() const noexcept { return Told; }

  // Logs the messages to the module; null, the default, logs nothing.
  void LogTo(MessageLog* log) { Log = log; }
  bool Deliver(CQORPacketReader& message, const RawMessage& raw) override;
  // Sends 30026, which restores the books, to OnMessage whatever the module asked for.
  void SendRestore();
  // Asks the module for the selection in one of its windows, by message 32022 to OnPluginMessage. It answers through
  // the function before this returns. Requires: the module made that window.
  void AskSelection(std::uint64_t window, MessageFunction answer);
  // Runs the menu command of message 30005, if there is one.
  void RunMenuCommand();
  // Calls one of the functions whose addresses the module's messages carry.
  template <typename Callback>
  void Run(Callback callback) {
    ++CallDepth;
    callback();
    --CallDepth;
  }
  // The module must not be called now.
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

// Sends 30025, 30026 and 30022 and returns how many of them the plug-in takes. Without windows it leaves out 30026, as
// the plug-in would open its books in a frame of its own.
std::uint64_t SendStart(PluginLink& plugin, bool withWindows);

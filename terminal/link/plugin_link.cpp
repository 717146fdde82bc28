#include "terminal/link/plugin_link.h"

#include "host_link/messages/message_header.h"
#include "host_link/messages/packet_writer.h"
#include "host_link/messages/reply_buffer.h"
#include "terminal/common/errors.h"

namespace {

// The terminal's side of a HostReplyBuffer: growable, released at the end.
class GrowingReply {
 public:
  GrowingReply() {
    Buffer.Growable = 1;
    if (InitializeLock(Buffer.Lock, 0) != 0)
      throw TerminalError(ExitCode::Plugin, "the reply buffer's lock cannot be made");
  }
  ~GrowingReply() {
    DestroyLock(Buffer.Lock);
    delete[] Buffer.Data;
  }
  GrowingReply(const GrowingReply&) = delete;
  GrowingReply& operator=(const GrowingReply&) = delete;

  HostReplyBuffer Buffer{};
};

// The address of the route, or the exported function if there is none.
MessageFunction FunctionOf(const MessageRoute& route, MessageFunction exported) {
  return route.Address == 0 ? exported : reinterpret_cast<MessageFunction>(route.Address);
}

}  // namespace

PluginLink::PluginLink(const std::filesystem::path& module) {
  std::string reason;
  Module = LoadModule(module, reason);
  if (Module == nullptr)
    throw TerminalError(ExitCode::Plugin, PathText(module) + ": the plug-in cannot be loaded: " + reason);
  try {
    Resolve(module);
    Describe();
  } catch (...) {
    UnloadModule(Module);
    throw;
  }
}

PluginLink::~PluginLink() {
  UnloadModule(Module);
}

void PluginLink::Resolve(const std::filesystem::path& path) {
  const auto find = [&](const char* name) {
    void* function = ModuleSymbol(Module, name);
    if (function == nullptr)
      throw TerminalError(ExitCode::Plugin, PathText(path) + ": the plug-in lacks the entry point " + name);
    return function;
  };
  GetDllInfo = reinterpret_cast<GetDllInfoFunction>(find("GetDllInfo"));
  OnMessage = reinterpret_cast<MessageFunction>(find("OnMessage"));
  OnPluginMessage = reinterpret_cast<MessageFunction>(find("OnPluginMessage"));
}

void PluginLink::Describe() {
  const std::uint8_t infoOnly = 0;
  GrowingReply reply;
  GetDllInfo(&reply.Buffer, &infoOnly);
  Told = ReadPluginDescription({reply.Buffer.Data, reply.Buffer.Used});
}

void PluginLink::Call(MessageFunction function, CQORPacketReader& message) {
  Run([&] { function(&message); });
}

// Each function gets a reader of its own, as OnPluginMessage parses its header itself.
bool PluginLink::Deliver(CQORPacketReader& message, const RawMessage& raw) {
  const std::uint16_t number = message.MessageNumber;
  const bool toOnMessage = Told.ToOnMessage.Numbers.contains(number);
  const bool toOnPluginMessage = Told.ToOnPluginMessage.Numbers.contains(number);
  if (Log != nullptr && (toOnMessage || toOnPluginMessage))
    Log->Add(true, number, {message.Data + message.Cursor, message.Data + message.End});
  if (toOnMessage) Call(FunctionOf(Told.ToOnMessage, OnMessage), message);
  if (toOnPluginMessage) {
    CQORPacketReader reader(raw.Data, raw.Size);
    Call(FunctionOf(Told.ToOnPluginMessage, OnPluginMessage), reader);
  }
  return toOnMessage || toOnPluginMessage;
}

void PluginLink::SendRestore() {
  CQORPacketWriter writer(kModePlain);
  writer.AddU16(10002, 30026);
  writer.AddU32(20128, 0);
  writer.AddU64(30002, 0);
  writer.Finish();
  if (Log != nullptr) Log->Add(true, writer);
  CQORPacketReader reader(writer.GetData(), writer.GetSize());
  std::uint16_t needed = 0;
  std::uint16_t consumed = 0;
  if (reader.ParseHeader(needed, consumed)) Call(OnMessage, reader);
}

void PluginLink::AskSelection(std::uint64_t window, MessageFunction answer) {
  CQORPacketWriter writer(kModePlain);
  writer.AddU16(10002, 32022);
  writer.AddU64(30001, window);
  writer.AddU64(30002, reinterpret_cast<std::uint64_t>(answer));
  writer.Finish();
  if (Log != nullptr) Log->Add(true, writer);
  CQORPacketReader reader(writer.GetData(), writer.GetSize());
  Call(FunctionOf(Told.ToOnPluginMessage, OnPluginMessage), reader);
}

void PluginLink::RunMenuCommand() {
  if (Told.MenuCommand == 0) return;
  Run(reinterpret_cast<CommandFunction>(Told.MenuCommand));
}

std::uint64_t SendStart(PluginLink& plugin, bool withWindows) {
  std::uint64_t sent = plugin.Send(30025) ? 1 : 0;
  if (withWindows) {
    plugin.SendRestore();
    ++sent;
  }
  sent += plugin.Send(30022) ? 1 : 0;
  return sent;
}

bool MessageTarget::Send(std::uint16_t number) {
  CQORPacketWriter writer(kModePlain);
  writer.AddU16(10002, number);
  writer.Finish();
  CQORPacketReader reader(writer.GetData(), writer.GetSize());
  std::uint16_t needed = 0;
  std::uint16_t consumed = 0;
  return reader.ParseHeader(needed, consumed) && Deliver(reader, {writer.Buffer, writer.GetSize(), 0});
}

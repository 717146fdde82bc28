// The smallest terminal for the plug-in, without windows: loads it, sends a downloaded and a live trade, and prints the
// plug-in's messages and daily file. docs/host_guide.md explains it.
//
//   minimal_host [MODULE]    the default is the module beside the program
//
// Its working folder is minimal_host in the current one.
#include <fstream>
#include <iostream>
#include <iterator>

#include "host_link/host_functions/terminal_functions.h"
#include "host_link/messages/message_table.h"
#include "host_link/messages/packet_reader.h"
#include "host_link/messages/packet_writer.h"
#include "host_link/messages/reply_buffer.h"
#include "platform/modules.h"

namespace {

CommandFunction refresh = nullptr;

// OnMessage gets a message with its header read; OnPluginMessage reads it itself.
void Send(MessageFunction function, CQORPacketWriter& message, bool isHeaderRead) {
  message.Finish();
  CQORPacketReader reader(message.GetData(), message.GetSize());
  std::uint16_t needed = 0, consumed = 0;
  if (!isHeaderRead || reader.ParseHeader(needed, consumed)) function(&reader);
}

void SendNumber(MessageFunction function, std::uint16_t number, bool isHeaderRead) {
  CQORPacketWriter message(0);
  message.AddU16(10002, number);
  Send(function, message, isHeaderRead);
}

void SendTrade(MessageFunction onMessage, std::uint16_t number, std::uint32_t id, double price) {
  CQORPacketWriter message(0);
  message.AddU16(10002, number);
  message.AddU32(20008, id);
  message.AddText(55101, std::to_string(700000 + id).c_str(), 32, false);
  message.AddText(55100, "1100000000001", 32, false);
  message.AddTerminator();  // the fields after the key section may have any order
  message.AddText(55104, "GC201312", 48, false);
  message.AddU8(101, 1);
  message.AddU32(20014, 2);
  message.AddDouble(40002, price);
  Send(onMessage, message, true);
}

// A buffer with room for the whole description, which does not grow: so neither side frees memory of the other.
void TakeDescription(GetDllInfoFunction getDllInfo) {
  std::uint8_t bytes[4096];
  HostReplyBuffer reply{};
  reply.Data = bytes;
  reply.Capacity = sizeof bytes;
  InitializeLock(reply.Lock, 0);
  const std::uint8_t infoOnly = 0;
  getDllInfo(&reply, &infoOnly);
  DestroyLock(reply.Lock);
  while (reply.ReadPosition < reply.Used) {
    CQORPacketReader message(bytes + reply.ReadPosition, static_cast<std::uint16_t>(reply.Used - reply.ReadPosition));
    std::uint16_t needed = 0, consumed = 0;
    if (!message.ParseHeader(needed, consumed)) return;
    std::cout << message.MessageNumber << ' ' << consumed << " bytes\n";
    reply.ReadPosition += consumed;
  }
}

void PlayDay(MessageFunction onMessage, MessageFunction onPluginMessage) {
  SendNumber(onPluginMessage, 30025, false);  // answered by 32005 before this returns
  SendNumber(onPluginMessage, 30022, false);
  SendTrade(onMessage, 8111, 1, 1313.25);
  SendNumber(onMessage, 8112, true);
  SendNumber(onPluginMessage, 30020, false);
  SendTrade(onMessage, 9101, 2, 1313.4);
  if (refresh != nullptr) refresh();  // a terminal calls it at the period, between messages
  SendNumber(onPluginMessage, 30021, false);
}

}  // namespace

TRADEBOOK_EXPORT void PluginDataSend(CQORPacketWriter* message) {
  CQORPacketReader reader(message->Buffer, message->Cursor);
  reader.Cursor = message->HeaderSize;
  if (!reader.NextTag() || reader.Tag != 10002 || !reader.ReadU16(reader.MessageNumber)) return;
  if (reader.MessageNumber != 32005) return;
  std::uint64_t callback = 0;
  std::uint32_t periodMs = 0;
  // Field by field, for terminals that do not want the tables of wire_fields.h.
  while (reader.NextTag()) {
    if (reader.Tag == 30002) reader.ReadU64(callback);
    if (reader.Tag == 60003) reader.ReadU32(periodMs);
  }
  refresh = reinterpret_cast<CommandFunction>(callback);
  std::cout << "32005: every " << periodMs << " ms\n";
}

int main(int argc, char** argv) {
  namespace fs = std::filesystem;
  const std::vector<fs::path> arguments = CommandLineArguments(argc, argv);
  const fs::path beside = ProgramFolder() / (std::string("tradebook") + ModuleSuffix());
  const fs::path file = arguments.empty() ? beside : fs::absolute(arguments[0]);
  fs::create_directories("minimal_host");
  fs::current_path("minimal_host");
  std::ofstream("TradeHeaderFile.txt") << "VELDTradeID\nSecurityID\nSide\nQuantity\nPrice\n";
  std::string error;
  const ModuleHandle module = LoadModule(file, error);
  const auto getDllInfo = reinterpret_cast<GetDllInfoFunction>(module ? ModuleSymbol(module, "GetDllInfo") : nullptr);
  if (getDllInfo == nullptr) {
    std::cerr << "the module cannot be used: " << error << '\n';
    return 1;
  }
  TakeDescription(getDllInfo);
  PlayDay(reinterpret_cast<MessageFunction>(ModuleSymbol(module, "OnMessage")),
          reinterpret_cast<MessageFunction>(ModuleSymbol(module, "OnPluginMessage")));
  UnloadModule(module);
  for (const auto& entry : fs::directory_iterator("."))
    if (entry.path().extension() == ".CSV") std::cout << std::ifstream(entry.path()).rdbuf() << '\n';
}

// A plug-in for the terminal's tests: writes what it is told into fake_plugin.log in the folder that is current when it
// is loaded, one line for each call, and calls the terminal back. ON_PLUGIN_MESSAGE is the name of its third entry
// point: the right one, or another to be a plug-in that lacks it.
#include <fstream>

#include "host_link/host_functions/terminal_functions.h"
#include "host_link/messages/message_table.h"
#include "host_link/messages/packet_reader.h"
#include "host_link/messages/reply_buffer.h"
#include "platform/modules.h"
#include "tests/support/wire_bytes.h"

namespace {

std::ofstream Log("fake_plugin.log", std::ios::binary);  // opened while the module is being loaded

template <typename Function>
Function Terminal(const char* name) {
  return reinterpret_cast<Function>(MainProgramSymbol(name));
}

void Refresh() {
  Log << "refresh" << std::endl;
}
void RunMenuCommand() {
  Log << "command" << std::endl;
}

void Send(std::uint16_t number, const std::string& fields = {}) {
  CQORPacketWriter message(0);
  message.AddU16(10002, number);
  message.Cursor +=
      static_cast<std::uint16_t>(fields.copy(reinterpret_cast<char*>(message.Buffer) + message.Cursor, fields.size()));
  Terminal<PluginDataSendFunction>("PluginDataSend")(&message);
}

void AskTerminal() {
  MasterRequest request;
  request.Texts[MasterRequest::kExchange] = u"ARCA";
  request.Texts[MasterRequest::kSecurityID] = u"IBM";
  std::uint16_t number = MasterRequest::kRequestNumber;
  Terminal<GetMasterRequestFunction>("GetMasterRequest")(&request, 0, &number);
  const auto* record = reinterpret_cast<const char*>(request.MasterRecord);
  Log << "master " << record + kMasterNameOffset << ' ' << LoadValue<double>(record + kMasterMultiplierOffset)
      << std::endl;
  const auto newBar = Terminal<GetPluginBarIDFunction>("GetPluginBarID");
  const auto removeBar = Terminal<PluginRemoveBarIDFunction>("PluginRemoveBarID");
  const std::uint32_t first = newBar("Fake", "one");
  removeBar(first, "Fake");
  Log << "bars " << (first != 0 && newBar("Fake", "one") == first) << std::endl;
  removeBar(first, "Fake");
  Terminal<ApplicationFocusFunction>("ApplicationFocus")(nullptr, 0);
  Send(32022);
}

// Where the route of message 30006 points: apart from the exported function, so that a test sees which was called.
void RoutedMessage(CQORPacketReader* message) {
  const std::uint16_t number = message->MessageNumber;
  char tradeNumber[65] = {};
  while (message->NextTag() && message->Tag != 55101) message->SkipValue();
  if (message->Tag == 55101) message->ReadText(tradeNumber, 64);
  Log << "routed " << number << (number == 8112 ? "" : " ") << tradeNumber << std::endl;
  if (number == 8112) AskTerminal();
}

template <typename Function>
std::string Address(Function* function, int tag = 30001) {
  return WireValue(tag, reinterpret_cast<std::uint64_t>(function));
}

std::string Route(unsigned number, MessageFunction function, Numbers routed) {
  std::string fields = Address(function);
  for (const std::uint16_t each : routed) fields += WireU16(11122, each);
  return WireMessage(number, fields + WireTerminator());
}

std::string Wide(int tag, std::u16string text) {
  text.resize(64);
  return WireText(tag, {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t)});
}

}  // namespace

TRADEBOOK_EXPORT void OnMessage(CQORPacketReader* message) {
  Log << "exported " << message->MessageNumber << std::endl;
}

TRADEBOOK_EXPORT void ON_PLUGIN_MESSAGE(CQORPacketReader* message) {
  std::uint16_t needed = 0;
  std::uint16_t consumed = 0;
  const bool raw = message->Cursor == 0 && message->ParseHeader(needed, consumed);
  Log << (raw ? "raw " : "parsed ") << message->MessageNumber << std::endl;
  if (message->MessageNumber == 30025) Send(32005, Address(&Refresh, 30002) + WireU32(60003, 1));
}

TRADEBOOK_EXPORT void GetDllInfo(HostReplyBuffer* reply, const std::uint8_t* infoOnly) {
  std::string messages = WireMessage(30004, WireText(55020, "Fake"));
  if (*infoOnly == 0)
    messages += WireMessage(30005, Wide(55192, u"Fakes") + Address(&RunMenuCommand) + Wide(55353, u"Fake Book") +
                                       WireU8(126, 0x77)) +
                Route(30006, &RoutedMessage, {8111, 8112, 9101}) +
                Route(30007, &ON_PLUGIN_MESSAGE, {30025, 30022, 30021, 30020});
  reply->AppendBytes(messages.data(), static_cast<std::uint32_t>(messages.size()), true);
}

// A plug-in for the terminal's tests: writes what it is told into fake_plugin.log in the folder that is current when it
// is loaded, one line for each call, and calls the terminal back. ON_PLUGIN_MESSAGE is the name of its third entry
// point: the right one, or another to be a plug-in that lacks it.
#include <fstream>
#include <string>

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

// The menu command.
void OpenBook() {
  Log << "command" << std::endl;
}

// The text of the field 55101; empty without one.
std::string TradeNumber(CQORPacketReader& message) {
  char text[65] = {};
  while (message.NextTag() && message.Tag != 55101) message.SkipValue();
  if (message.Tag == 55101) message.ReadText(text, 64);
  return text;
}

void AskTerminal() {
  MasterRequest request;
  request.Texts[MasterRequest::kExchange] = u"ARCA";
  request.Texts[MasterRequest::kSecurityID] = u"IBM";
  std::uint16_t number = MasterRequest::kRequestNumber;
  Terminal<GetMasterRequestFunction>("GetMasterRequest")(&request, 0, &number);
  const auto* record = reinterpret_cast<const char*>(request.MasterRecord);
  double multiplier = 0;
  std::memcpy(&multiplier, record + kMasterMultiplierOffset, sizeof multiplier);
  Log << "master " << record + kMasterNameOffset << ' ' << multiplier << std::endl;
  const auto newBar = Terminal<GetPluginBarIDFunction>("GetPluginBarID");
  const auto removeBar = Terminal<PluginRemoveBarIDFunction>("PluginRemoveBarID");
  const std::uint32_t first = newBar("Fake", "one");
  const std::uint32_t second = newBar("Fake", "one");
  removeBar(first, "Fake");
  const bool isFree = newBar("Fake", "one") == first;
  Log << "bars " << (isFree ? second - first : 0) << std::endl;
  removeBar(first, "Fake");
  removeBar(second, "Fake");
  Terminal<ApplicationFocusFunction>("ApplicationFocus")(nullptr, 0);
  CQORPacketWriter question(0);
  question.AddU16(10002, 32022);
  Terminal<PluginDataSendFunction>("PluginDataSend")(&question);
}

void RegisterRefresh() {
  CQORPacketWriter message(0);
  message.AddU16(10002, 32005);
  message.AddU64(30002, reinterpret_cast<std::uint64_t>(&Refresh));
  message.AddU32(60003, 1);
  Terminal<PluginDataSendFunction>("PluginDataSend")(&message);
}

// Where the route of message 30006 points: apart from the exported function, so that a test sees which was called.
void RoutedMessage(CQORPacketReader* message) {
  const std::uint16_t number = message->MessageNumber;
  Log << "routed " << number;
  if (number != 8112) Log << ' ' << TradeNumber(*message);
  Log << std::endl;
  if (number == 8112) AskTerminal();
}

template <typename Function>
std::string Address(Function* function) {
  return WireValue(30001, reinterpret_cast<std::uint64_t>(function));
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
  if (message->MessageNumber == 30025) RegisterRefresh();
}

TRADEBOOK_EXPORT void GetDllInfo(HostReplyBuffer* reply, const std::uint8_t* infoOnly) {
  std::string messages = WireMessage(30004, WireText(55020, "Fake"));
  if (*infoOnly == 0)
    messages +=
        WireMessage(30005, Wide(55192, u"Fakes") + Address(&OpenBook) + Wide(55353, u"Fake Book") + WireU8(126, 0x77)) +
        Route(30006, &RoutedMessage, {8111, 8112, 9101}) +
        Route(30007, &ON_PLUGIN_MESSAGE, {30025, 30022, 30021, 30020});
  reply->AppendBytes(messages.data(), static_cast<std::uint32_t>(messages.size()), true);
}

// A plug-in for the terminal's tests: writes what it is told into fake_plugin.log in the folder that is current when it
// is loaded, one line for each call, and calls the terminal back. ON_PLUGIN_MESSAGE is the name of its third entry
// point: the right one, or another to be a plug-in that lacks it.
#include <fstream>
#include <string>

#include "host_link/host_functions/terminal_functions.h"
#include "host_link/messages/message_table.h"
#include "host_link/messages/packet_reader.h"
#include "host_link/messages/packet_writer.h"
#include "host_link/messages/reply_buffer.h"
#include "platform/modules.h"

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
  Log << "bars " << second - first << std::endl;
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
  constexpr std::uint32_t kPeriodMs = 1;
  message.AddBytes(60003, &kPeriodMs, 2);  // takes the place of mark, tag and the value's four bytes
  std::memcpy(message.Buffer + message.Cursor - 4, &kPeriodMs, sizeof kPeriodMs);
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

void Append(HostReplyBuffer& reply, CQORPacketWriter& message) {
  message.Finish();
  reply.AppendBytes(message.GetData(), message.GetSize(), true);
}

void AppendRoute(HostReplyBuffer& reply, std::uint16_t number, MessageFunction function,
                 std::initializer_list<std::uint16_t> numbers) {
  CQORPacketWriter message(0);
  message.AddU16(10002, number);
  message.AddU64(30001, reinterpret_cast<std::uint64_t>(function));
  for (const std::uint16_t routed : numbers) message.AddU16(11122, routed);
  message.AddTerminator();
  Append(reply, message);
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
  CQORPacketWriter identity(0);
  identity.AddU16(10002, 30004);
  identity.AddText(55020, "Fake", 64, false);
  Append(*reply, identity);
  if (*infoOnly != 0) return;
  CQORPacketWriter menu(0);
  menu.AddU16(10002, 30005);
  const char16_t title[64] = u"Fakes";
  menu.AddBytes(55192, title, sizeof title);
  menu.AddU64(30001, reinterpret_cast<std::uint64_t>(&OpenBook));
  const char16_t entry[64] = u"Fake Book";
  menu.AddBytes(55353, entry, sizeof entry);
  menu.AddU8(126, 0x77);
  Append(*reply, menu);
  AppendRoute(*reply, 30006, &RoutedMessage, {8111, 8112, 9101});
  AppendRoute(*reply, 30007, &ON_PLUGIN_MESSAGE, {30025, 30022, 30021, 30020});
}

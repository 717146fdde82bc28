#include "host_link/module/plugin_info.h"

#include <array>
#include <string_view>

#include "host_link/host_functions/function_table.h"
#include "host_link/messages/message_table.h"
#include "host_link/messages/packet_writer.h"

namespace {

constexpr char kCopyright[] = "Copyright (c) 2026 The Trade Book developers";
constexpr char kIdentityText[] = "VELD Trade DLL.";
constexpr std::uint8_t kVirtualKeyF8 = 0x77;
constexpr std::uint16_t kMenuTextSize = 128;

void Append(HostReplyBuffer& reply, CQORPacketWriter& message) noexcept {
  message.Finish();
  reply.AppendBytes(message.GetData(), message.GetSize(), true);
}

void AddTextUnlessEmpty(CQORPacketWriter& message, std::uint16_t tag, std::string_view text) noexcept {
  if (!text.empty()) message.AddBytes(tag, text.data(), static_cast<std::uint16_t>(text.size()));
}

// 128 bytes: UTF-16, padded with zeros, of which the first ends the text.
void AddMenuText(CQORPacketWriter& message, std::uint16_t tag, std::u16string_view text) noexcept {
  std::array<char16_t, kMenuTextSize / sizeof(char16_t)> field{};
  text.copy(field.data(), field.size() - 1);
  message.AddBytes(tag, field.data(), kMenuTextSize);
}

// The numbers that the plug-in asks the terminal to send to that entry point.
void AddListedNumbers(CQORPacketWriter& message, MessageWay way) noexcept {
  for (const MessageRow& row : kMessages)
    if (row.IsListed && row.ToPlugin == way) message.AddU16(11122, row.Number);
  message.AddTerminator();
}

// Intentional: no terminator; this message ends with its last field.
void AppendIdentity(HostReplyBuffer& reply) noexcept {
  CQORPacketWriter message(0);
  message.AddU16(10002, 30004);
  message.AddU32(20005, 1);
  message.AddU32(20006, 1001);
  AddTextUnlessEmpty(message, 55020, CQORDLLComman::kPluginName);
  AddTextUnlessEmpty(message, 55017, kCopyright);
  AddTextUnlessEmpty(message, 55112, kIdentityText);
  message.AddU8(5076, 0);
  message.AddU32(20128, 0);
  message.AddU32(20129, 7);
  Append(reply, message);
}

void AppendMenuEntry(HostReplyBuffer& reply, std::uint64_t command) noexcept {
  CQORPacketWriter message(0);
  message.AddU16(10002, 30005);
  AddMenuText(message, 55192, u"Trades");
  message.AddU64(30001, command);
  message.AddU32(20127, 0);
  AddMenuText(message, 55353, u"Trade Book");
  for (const std::uint16_t tag : {std::uint16_t{5029}, std::uint16_t{5064}, std::uint16_t{5065}, std::uint16_t{5066}})
    message.AddU8(tag, 0);
  message.AddU8(126, kVirtualKeyF8);
  message.AddTerminator();
  Append(reply, message);
}

// The second section: the request that starts a download and the number that ends it.
void AppendTradeRoutes(HostReplyBuffer& reply, std::uint64_t onMessage) noexcept {
  CQORPacketWriter message(0);
  message.AddU16(10002, 30006);
  message.AddU64(30001, onMessage);
  AddListedNumbers(message, MessageWay::OnMessage);
  message.AddU16(11120, 8110);
  message.AddU16(11121, 8112);
  message.AddTerminator();
  Append(reply, message);
}

void AppendPluginRoutes(HostReplyBuffer& reply, std::uint64_t onPluginMessage) noexcept {
  CQORPacketWriter message(0);
  message.AddU16(10002, 30007);
  message.AddU64(30001, onPluginMessage);
  AddListedNumbers(message, MessageWay::OnPluginMessage);
  Append(reply, message);
}

}  // namespace

void AppendPluginInfo(HostReplyBuffer& reply, bool identityOnly, const EntryAddresses& addresses) noexcept {
  AppendIdentity(reply);
  if (identityOnly) return;
  AppendMenuEntry(reply, addresses.OnBookCommand);
  AppendTradeRoutes(reply, addresses.OnMessage);
  AppendPluginRoutes(reply, addresses.OnPluginMessage);
}

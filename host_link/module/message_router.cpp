#include "host_link/module/message_router.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "grid_base/settings/registry_store.h"
#include "host_link/host_functions/function_table.h"
#include "host_link/messages/packet_writer.h"
#include "host_link/messages/wire_fields.h"

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

namespace {

constexpr std::uint32_t kRefreshPeriodMs = 250;
constexpr std::uint16_t kKeyTextLimit = 48;

constexpr WireField kSelectionFields[] = {
    {55010, Field::Text, offsetof(FilterKey, Exchange), kKeyTextLimit},
    {55104, Field::Text, offsetof(FilterKey, SecurityID), kKeyTextLimit},
};
static_assert(FieldsFit(kSelectionFields, sizeof(FilterKey)) && ReadsSection(32023, 0, kSelectionFields));

// Fields 30001 and 30002 of a message; 0 if it has no such field.
struct AddressPair {
  std::uint64_t First = 0;
  std::uint64_t Second = 0;
};

constexpr WireField kSelectionRequestFields[] = {
    {30001, Field::U64, offsetof(AddressPair, First)},
    {30002, Field::U64, offsetof(AddressPair, Second)},
};
static_assert(FieldsFit(kSelectionRequestFields, sizeof(AddressPair)) &&
              ReadsSection(32022, 0, kSelectionRequestFields));

struct RestoreValues {
  std::uint64_t Address;
  std::uint32_t Number;
};

constexpr WireField kRestoreFields[] = {
    {20128, Field::U32, offsetof(RestoreValues, Number)},
    {30002, Field::U64, offsetof(RestoreValues, Address)},
};
static_assert(FieldsFit(kRestoreFields, sizeof(RestoreValues)) && ReadsSection(30026, 0, kRestoreFields));

constexpr FieldIndex kSelectionIndex(kSelectionFields);
constexpr FieldIndex kSelectionRequestIndex(kSelectionRequestFields);
constexpr FieldIndex kRestoreIndex(kRestoreFields);

}  // namespace

// A handler and the entry point that the table of messages names for its number; no row, no build.
struct MessageRouter::Route {
  using Handler = void (MessageRouter::*)(CQORPacketReader&);
  consteval Route(std::uint16_t number, Handler handle)
      : Number(number), Way(FindMessage(number)->ToPlugin), Handle(handle) {}

  std::uint16_t Number;
  MessageWay Way;
  Handler Handle;
};

// Trades first: routes are searched in order.
constexpr auto MessageRouter::Routes() {
  return std::to_array<Route>({
      {9101, &MessageRouter::Trade},
      {8111, &MessageRouter::Trade},
      {8112, &MessageRouter::DownloadEnd},
      {9112, &MessageRouter::TradeAmend},
      {30026, &MessageRouter::RestoreLayout},
      {30020, &MessageRouter::ReapplyFilters},
      {30021, &MessageRouter::SaveLayout},
      {30022, &MessageRouter::ClearTrades},
      {30025, &MessageRouter::RegisterRefresh},
      {32022, &MessageRouter::TellSelection},
      {32023, &MessageRouter::TakeSelection},
  });
}

void MessageRouter::Deliver(MessageWay way, CQORPacketReader& message) {
  static constexpr auto kRoutes = Routes();
  static_assert(std::ranges::all_of(kMessages, [](const MessageRow& row) {
    return std::ranges::count(kRoutes, row.Number, &Route::Number) == (row.ToPlugin == MessageWay::None ? 0 : 1);
  }));
  for (const Route& route : kRoutes)
    if (route.Number == message.MessageNumber && route.Way == way) return (this->*route.Handle)(message);
  message.SkipValue();
}

void MessageRouter::OnMessage(CQORPacketReader& message) {
  Deliver(MessageWay::OnMessage, message);
}

void MessageRouter::OnPluginMessage(CQORPacketReader& message) {
  std::uint16_t needed = 0;
  std::uint16_t consumed = 0;
  message.ParseHeader(needed, consumed);
  Deliver(MessageWay::OnPluginMessage, message);
}

void MessageRouter::OnRefresh() {
  if (State.TradeStore.GridsRefreshed) return;
  Books.RepaintAllBooks();
  State.TradeStore.GridsRefreshed = true;
}

void MessageRouter::OnBookCommand() {
  const CQORDLLResource resources;
  Books.OnBookCommand();
}

void MessageRouter::Trade(CQORPacketReader& message) {
  State.TradeStore.OnTrade(message);
}
void MessageRouter::DownloadEnd(CQORPacketReader&) {
  State.TradeStore.OnDownloadEnd();
}
void MessageRouter::TradeAmend(CQORPacketReader& message) {
  State.TradeStore.OnTradeAmend(message);
}
// The cache clears the books in its list only, which lacks a restored book whose key another one took.
void MessageRouter::ClearTrades(CQORPacketReader&) {
  Books.ClearAllBooks();
  State.TradeStore.OnClearTrades();
}

void MessageRouter::RestoreLayout(CQORPacketReader& message) {
  RestoreValues values{State.RestoreAddress, State.RestoreNumber};
  ReadFields(message, kRestoreFields, kRestoreIndex, &values);
  State.RestoreAddress = values.Address;
  State.RestoreNumber = values.Number;
  const CQORDLLResource resources;
  Books.RestoreBookLayout(*CQORPRegistrySP::Create(0, 1));
}

void MessageRouter::ReapplyFilters(CQORPacketReader&) {
  Books.RebuildAllBooks();
}

void MessageRouter::SaveLayout(CQORPacketReader&) {
  Books.SaveBookLayout(*CQORPRegistrySP::Create(0, 0));
}

// Intentional: each request registers again. PluginDataSend takes the message unfinished, as it takes every message.
void MessageRouter::RegisterRefresh(CQORPacketReader&) {
  CQORPacketWriter registration(0);
  registration.AddU16(10002, 32005);
  registration.AddU64(30002, Addresses.OnRefresh);
  registration.AddU32(message_fields::kPeriodTag, kRefreshPeriodMs);
  Terminal.PluginDataSend(registration);
}

void MessageRouter::TellSelection(CQORPacketReader& message) {
  AddressPair request;
  ReadFields(message, kSelectionRequestFields, kSelectionRequestIndex, &request);
  if (request.First == 0 || request.Second == 0) return;
  CQORPacketWriter answer(0);
  answer.AddU16(10002, 32023);
  std::string exchange;
  std::string securityId;
  if (Books.SelectedSecurity(request.First, exchange, securityId) && !exchange.empty() && !securityId.empty()) {
    answer.AddText(55010, exchange.c_str(), kKeyTextLimit, false);
    answer.AddText(55104, securityId.c_str(), kKeyTextLimit, false);
  }
  answer.Finish();
  CQORPacketReader raw(answer.GetData(), answer.GetSize());
  reinterpret_cast<MessageFunction>(request.Second)(&raw);
}

void MessageRouter::TakeSelection(CQORPacketReader& message) {
  ReadFields(message, kSelectionFields, kSelectionIndex, &State.SelectedKey);
  SecurityMasterData master;
  if (Terminal.GetMasterRequest(State.SelectedKey.Exchange, State.SelectedKey.SecurityID, master))
    State.SelectedScriptName = master.NameText();
}

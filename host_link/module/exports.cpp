// The module's three exports, its callbacks and its process-wide objects. All functions forward and let no exception
// out.
#include "book_windows/windows/book_screen.h"
#include "foundations/error_report.h"
#include "host_link/module/message_router.h"
#include "platform/modules.h"
#include "trade_data/records/order_impl.h"

TRADEBOOK_EXPORT void GetDllInfo(HostReplyBuffer* reply, const std::uint8_t* infoOnly) noexcept;
TRADEBOOK_EXPORT void OnMessage(CQORPacketReader* message) noexcept;
TRADEBOOK_EXPORT void OnPluginMessage(CQORPacketReader* message) noexcept;

namespace {

void OnBookCommand() noexcept;
void OnRefresh() noexcept;
void PropertyListRequest(CQORPPropList* list, const void* second) noexcept;
void PropertyChanged(CQORPProp* property, CTradeBookGrid* grid) noexcept;

template <typename Entry>
std::uint64_t AddressOf(Entry* entry) noexcept {
  return reinterpret_cast<std::uint64_t>(entry);
}

EntryAddresses OwnAddresses() noexcept {
  return {AddressOf(&::OnMessage), AddressOf(&::OnPluginMessage), AddressOf(&OnBookCommand), AddressOf(&OnRefresh)};
}

BookCallbacks OwnCallbacks() noexcept {
  return {AddressOf(&::OnPluginMessage), AddressOf(&PropertyListRequest), AddressOf(&PropertyChanged)};
}

// The module's objects come up in this order when it is loaded and go in the reverse one when it is unloaded. Nothing
// is saved at that point.
extern CQORTradeImpl tradeDecoder;
PluginState pluginState(tradeDecoder);
[[maybe_unused]] QOR::Util::CQORExceptionHandler exceptionHandler;
[[maybe_unused]] const unsigned logMessage = RegisterNamedMessage("QOR_MSG_LOG");
CQORDLLComman terminalFunctions;
TradeBookScreen screen(pluginState, terminalFunctions, OwnCallbacks());
CQORTradeImpl tradeDecoder;
// Intentional: unused. The format has an order record, but no message brings one to this plug-in.
[[maybe_unused]] CQOROrderImpl orderDecoder;
MessageRouter router(pluginState, screen.Registry, terminalFunctions, OwnAddresses());

// Out of memory, the current message is lost and the process goes on.
template <typename Work>
void Guarded(Work work) noexcept {
  try {
    work();
  } catch (...) {
  }
}

void OnBookCommand() noexcept {
  Guarded([] { router.OnBookCommand(); });
}

void OnRefresh() noexcept {
  Guarded([] { router.OnRefresh(); });
}

void PropertyListRequest(CQORPPropList* list, const void* second) noexcept {
  Guarded([&] { screen.Registry.PropertyListRequest(list, second); });
}

void PropertyChanged(CQORPProp* property, CTradeBookGrid* grid) noexcept {
  Guarded([&] { TradeBookScreen::PropertyChanged(property, grid); });
}

}  // namespace

void GetDllInfo(HostReplyBuffer* reply, const std::uint8_t* infoOnly) noexcept {
  if (reply != nullptr) AppendPluginInfo(*reply, infoOnly != nullptr && *infoOnly != 0, OwnAddresses());
}

void OnMessage(CQORPacketReader* message) noexcept {
  if (message != nullptr) Guarded([message] { router.OnMessage(*message); });
}

void OnPluginMessage(CQORPacketReader* message) noexcept {
  if (message != nullptr) Guarded([message] { router.OnPluginMessage(*message); });
}

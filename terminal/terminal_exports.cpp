// The functions that plug-ins look up by name in the program. They forward to the running host; without one they are
// no-ops.
#include <type_traits>

#include "host_link/host_functions/terminal_functions.h"
#include "platform/modules.h"
#include "terminal/link/terminal_host.h"

TRADEBOOK_EXPORT void GetMasterRequest(MasterRequest* request, std::uint32_t /*zero*/, std::uint16_t* requestNumber) {
  if (RunningHost() != nullptr) RunningHost()->GetMasterRequest(request, requestNumber);
}

TRADEBOOK_EXPORT void PluginDataSend(CQORPacketWriter* message) {
  if (RunningHost() != nullptr) RunningHost()->PluginDataSend(message);
}

TRADEBOOK_EXPORT void ApplicationFocus(void* window, std::uint32_t closed) {
  if (RunningHost() != nullptr) RunningHost()->ApplicationFocus(window, closed != 0);
}

TRADEBOOK_EXPORT std::uint32_t GetPluginBarID(const char* /*pluginName*/, const char* bookName) {
  return RunningHost() == nullptr ? 0 : RunningHost()->GetPluginBarID(bookName);
}

TRADEBOOK_EXPORT void PluginRemoveBarID(std::uint32_t barId, const char* /*pluginName*/) {
  if (RunningHost() != nullptr) RunningHost()->PluginRemoveBarID(barId);
}

static_assert(std::is_same_v<decltype(&GetMasterRequest), GetMasterRequestFunction>);
static_assert(std::is_same_v<decltype(&PluginDataSend), PluginDataSendFunction>);
static_assert(std::is_same_v<decltype(&ApplicationFocus), ApplicationFocusFunction>);
static_assert(std::is_same_v<decltype(&GetPluginBarID), GetPluginBarIDFunction>);
static_assert(std::is_same_v<decltype(&PluginRemoveBarID), PluginRemoveBarIDFunction>);

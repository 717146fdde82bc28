#include "host_link/host_functions/function_table.h"

#include <cstring>

#include "foundations/byte_words.h"
#include "foundations/text_tools.h"
#include "host_link/host_functions/terminal_functions.h"
#include "platform/modules.h"

CQORDLLComman::CQORDLLComman(Resolver resolve) noexcept {
  if (resolve == nullptr) resolve = [](const char* name) { return MainProgramSymbol(name); };
  for (std::size_t i = 0; i < kTerminalFunctionCount; ++i) Functions[i] = resolve(kTerminalFunctions[i].Name);
}

int CQORDLLComman::ShowMessageWithCheck(void* parent, const std::wstring& caption, const std::wstring& text,
                                        std::uint32_t button, std::uint32_t icon, std::uint32_t extraStyle,
                                        bool checked) {
  if (Boxes == nullptr) return 0;
  const std::uint32_t style = MessageStyle(button, icon, extraStyle, RightToLeft);
  return Boxes->Show({parent, caption, text, style, ButtonCaptions, true, checked, L" Don't Ask Again"});
}

int CQORDLLComman::ShowMessage(void* parent, const std::wstring& caption, const std::wstring& text,
                               std::uint32_t button, std::uint32_t icon, std::uint32_t extraStyle) {
  if (Boxes == nullptr) return 0;
  const std::uint32_t style = MessageStyle(button, icon, extraStyle, RightToLeft);
  return Boxes->Show({parent, caption, text, style, ButtonCaptions, false, false, {}});
}

void CQORDLLComman::PluginDataSend(CQORPacketWriter& message) const noexcept {
  if (auto send = Function<TerminalFunction::PluginDataSend, PluginDataSendFunction>()) send(&message);
}

bool CQORDLLComman::GetMasterRequest(const char* exchange, const char* securityId, SecurityMasterData& data) const {
  const auto ask = Function<TerminalFunction::GetMasterRequest, GetMasterRequestFunction>();
  if (ask == nullptr) return false;
  const std::u16string exchangeText = WideToUtf16(NarrowToWide(std::string(exchange)));
  const std::u16string securityText = WideToUtf16(NarrowToWide(std::string(securityId)));
  MasterRequest request;
  request.Texts[MasterRequest::kExchange] = exchangeText.c_str();
  request.Texts[MasterRequest::kSecurityID] = securityText.c_str();
  std::uint16_t number = MasterRequest::kRequestNumber;
  ask(&request, 0, &number);
  const auto* record = reinterpret_cast<const char*>(request.MasterRecord);
  if (record == nullptr) return false;
  std::memcpy(data.Name.data(), record + kMasterNameOffset, kMasterNameSize);
  data.Multiplier = LoadValue<double>(record + kMasterMultiplierOffset);
  return true;
}

void CQORDLLComman::ApplicationFocus(void* window, bool closed) const noexcept {
  if (auto tell = Function<TerminalFunction::ApplicationFocus, ApplicationFocusFunction>())
    tell(window, closed ? 1 : 0);
}

std::uint32_t CQORDLLComman::GetPluginBarID(const char* bookName) const noexcept {
  const auto ask = Function<TerminalFunction::GetPluginBarID, GetPluginBarIDFunction>();
  return ask == nullptr ? 0 : ask(kPluginName, bookName);
}

void CQORDLLComman::PluginRemoveBarID(std::uint32_t barId) const noexcept {
  if (auto give = Function<TerminalFunction::PluginRemoveBarID, PluginRemoveBarIDFunction>()) give(barId, kPluginName);
}

namespace {

ModuleHandle selectedResources = nullptr;

// The module that holds this code.
ModuleHandle OwnModule() noexcept {
  static const ModuleHandle module = ModuleOfAddress(&selectedResources);
  return module;
}

}  // namespace

ModuleHandle SelectedResources() noexcept {
  return selectedResources;
}

CQORDLLResource::CQORDLLResource() noexcept : SavedHandle(selectedResources) {
  selectedResources = OwnModule();
}
CQORDLLResource::~CQORDLLResource() {
  selectedResources = SavedHandle;
}

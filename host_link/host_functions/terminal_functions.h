// The functions that a terminal exports to its plug-ins, and the blocks that they take: for authors of a terminal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>

class CQORPacketWriter;

// The functions in the order in which they are looked up.
enum class TerminalFunction : std::uint8_t {
  GetMasterRequest,
  SendToAccess,
  PluginDataSend,
  SendToDataFeed,
  SendDepthBroadCastRequest,
  SendWatchBroadCastRequest,
  SendIndexBroadCastRequest,
  GetOrderNo,
  GetDepth,
  ApplicationFocus,
  OnMessage,
  IsVELDSLogin,
  GetPluginBarID,
  SetPluginBarName,
  PluginRemoveBarID,
  TERBCastRequest,
  PasswordVerification,
  ModifyOrderQtyCheck,
  M2MDisplay,
};

struct TerminalFunctionRow {
  const char* Name;
  TerminalFunction Function;
  bool IsCalled = false;  // the plug-in looks the others up and leaves their signatures to the terminal
};

inline constexpr TerminalFunctionRow kTerminalFunctions[] = {
    {"GetMasterRequest", TerminalFunction::GetMasterRequest, true},
    {"SendToAccess", TerminalFunction::SendToAccess},
    {"PluginDataSend", TerminalFunction::PluginDataSend, true},
    {"SendToDataFeed", TerminalFunction::SendToDataFeed},
    {"SendDepthBroadCastRequest", TerminalFunction::SendDepthBroadCastRequest},
    {"SendWatchBroadCastRequest", TerminalFunction::SendWatchBroadCastRequest},
    {"SendIndexBroadCastRequest", TerminalFunction::SendIndexBroadCastRequest},
    {"GetOrderNo", TerminalFunction::GetOrderNo},
    {"GetDepth", TerminalFunction::GetDepth},
    {"ApplicationFocus", TerminalFunction::ApplicationFocus, true},
    {"OnMessage", TerminalFunction::OnMessage},
    {"IsVELDSLogin", TerminalFunction::IsVELDSLogin},
    {"GetPluginBarID", TerminalFunction::GetPluginBarID, true},
    {"SetPluginBarName", TerminalFunction::SetPluginBarName},
    {"PluginRemoveBarID", TerminalFunction::PluginRemoveBarID, true},
    {"TERBCastRequest", TerminalFunction::TERBCastRequest},
    {"PasswordVerification", TerminalFunction::PasswordVerification},
    {"ModifyOrderQtyCheck", TerminalFunction::ModifyOrderQtyCheck},
    {"M2MDisplay", TerminalFunction::M2MDisplay},
};
inline constexpr std::size_t kTerminalFunctionCount = std::size(kTerminalFunctions);

constexpr bool TerminalFunctionsAreInOrder() {
  for (std::size_t i = 0; i < kTerminalFunctionCount; ++i)
    if (static_cast<std::size_t>(kTerminalFunctions[i].Function) != i) return false;
  return kTerminalFunctionCount == static_cast<std::size_t>(TerminalFunction::M2MDisplay) + 1;
}
static_assert(TerminalFunctionsAreInOrder());

// The request block of GetMasterRequest: two slots, then pointers to nine 16-bit texts (never null, closed by a NUL).
// The terminal puts the address of the security's master record into MasterRecord, or leaves it 0.
struct MasterRequest {
  std::uint64_t FirstSlot = 0;
  std::uint64_t MasterRecord = 0;
  const char16_t* Texts[9] = {u"", u"", u"", u"", u"", u"", u"", u"", u""};

  static constexpr std::size_t kExchange = 0;
  static constexpr std::size_t kSecurityID = 7;
  static constexpr std::uint16_t kRequestNumber = 30;
};
static_assert(sizeof(MasterRequest) == 88);

// The fields of a master record that the plug-in reads.
inline constexpr std::size_t kMasterNameOffset = 266;
inline constexpr std::size_t kMasterNameSize = 49;
inline constexpr std::size_t kMasterMultiplierOffset = 435;  // f64, not aligned

using GetMasterRequestFunction = void (*)(MasterRequest* request, std::uint32_t zero, std::uint16_t* requestNumber);
// Takes an unfinished writer: its length word is 0, its size is its cursor.
using PluginDataSendFunction = void (*)(CQORPacketWriter* message);
// closed: 0, the window has got the focus; 1, its bar closes.
using ApplicationFocusFunction = void (*)(void* window, std::uint32_t closed);
using GetPluginBarIDFunction = std::uint32_t (*)(const char* pluginName, const char* bookName);
using PluginRemoveBarIDFunction = void (*)(std::uint32_t barId, const char* pluginName);

// The style bits of the plug-in's button and icon codes for message boxes.

// By button code: OK, yes-no, OK-cancel, retry-cancel, abort-retry-ignore, cancel-try-continue, yes-no-cancel, and the
// two custom buttons.
inline constexpr std::uint32_t kOkButton = 0;  // the code of OK
inline constexpr std::uint32_t kCustomButtonsStyle = 256;
inline constexpr std::uint32_t kButtonStyles[] = {0, 4, 1, 5, 2, 6, 3, kCustomButtonsStyle};
inline constexpr std::uint32_t kCustomButtonIds[] = {1000, 1001};

// By icon code: hand, exclamation, question, information, user icon, none, and one without a name.
inline constexpr std::uint32_t kIconStyles[] = {0x10, 0x30, 0x20, 0x40, 0x80, 0, 0x70};

inline constexpr std::uint32_t kRightToLeftStyle = 0x80000;

// The style bits of a box; a code outside its table adds no bit.
constexpr std::uint32_t MessageStyle(std::uint32_t button, std::uint32_t icon, std::uint32_t extraStyle,
                                     bool rightToLeft) noexcept {
  std::uint32_t style = extraStyle;
  if (button < std::size(kButtonStyles)) style |= kButtonStyles[button];
  if (icon < std::size(kIconStyles)) style |= kIconStyles[icon];
  if (rightToLeft) style |= kRightToLeftStyle;
  return style;
}

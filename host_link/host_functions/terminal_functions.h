// The functions that a terminal exports to its plug-ins, by name, and the blocks that they take. A terminal's author
// includes this; all calls come on the terminal's one calling thread.
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
  TerminalFunction Function;
  const char* Name;
  bool IsCalled = false;  // the plug-in looks the others up and leaves their signatures to the terminal
};

inline constexpr TerminalFunctionRow kTerminalFunctions[] = {
    {TerminalFunction::GetMasterRequest, "GetMasterRequest", true},
    {TerminalFunction::SendToAccess, "SendToAccess"},
    {TerminalFunction::PluginDataSend, "PluginDataSend", true},
    {TerminalFunction::SendToDataFeed, "SendToDataFeed"},
    {TerminalFunction::SendDepthBroadCastRequest, "SendDepthBroadCastRequest"},
    {TerminalFunction::SendWatchBroadCastRequest, "SendWatchBroadCastRequest"},
    {TerminalFunction::SendIndexBroadCastRequest, "SendIndexBroadCastRequest"},
    {TerminalFunction::GetOrderNo, "GetOrderNo"},
    {TerminalFunction::GetDepth, "GetDepth"},
    {TerminalFunction::ApplicationFocus, "ApplicationFocus", true},
    {TerminalFunction::OnMessage, "OnMessage"},
    {TerminalFunction::IsVELDSLogin, "IsVELDSLogin"},
    {TerminalFunction::GetPluginBarID, "GetPluginBarID", true},
    {TerminalFunction::SetPluginBarName, "SetPluginBarName"},
    {TerminalFunction::PluginRemoveBarID, "PluginRemoveBarID", true},
    {TerminalFunction::TERBCastRequest, "TERBCastRequest"},
    {TerminalFunction::PasswordVerification, "PasswordVerification"},
    {TerminalFunction::ModifyOrderQtyCheck, "ModifyOrderQtyCheck"},
    {TerminalFunction::M2MDisplay, "M2MDisplay"},
};
inline constexpr std::size_t kTerminalFunctionCount = std::size(kTerminalFunctions);

constexpr bool TerminalFunctionsAreInOrder() {
  for (std::size_t i = 0; i < kTerminalFunctionCount; ++i)
    if (static_cast<std::size_t>(kTerminalFunctions[i].Function) != i) return false;
  return kTerminalFunctionCount == static_cast<std::size_t>(TerminalFunction::M2MDisplay) + 1;
}
static_assert(TerminalFunctionsAreInOrder());

// The request block of GetMasterRequest: two slots, then nine 16-bit texts, each a pointer to characters ended by a NUL
// (never null). The terminal puts the address of the security's master record into MasterRecord, or leaves it 0.
struct MasterRequest {
  std::uint64_t FirstSlot = 0;
  std::uint64_t MasterRecord = 0;
  const char16_t* Texts[9] = {u"", u"", u"", u"", u"", u"", u"", u"", u""};

  static constexpr std::size_t kExchange = 0;
  static constexpr std::size_t kSecurityID = 7;
  static constexpr std::uint16_t kRequestNumber = 30;
};
static_assert(sizeof(MasterRequest) == 88);

// What the plug-in reads of a master record, by its places.
inline constexpr std::size_t kMasterNameOffset = 266;
inline constexpr std::size_t kMasterNameSize = 49;
inline constexpr std::size_t kMasterMultiplierOffset = 435;  // f64, not aligned

using GetMasterRequestFunction = void (*)(MasterRequest* request, std::uint32_t zero, std::uint16_t* requestNumber);
// Takes the address of a writer that is not finished: its length word still holds 0, its size is its cursor.
using PluginDataSendFunction = void (*)(CQORPacketWriter* message);
// closed is 0 when the window gets the focus and 1 when its bar closes.
using ApplicationFocusFunction = void (*)(void* window, std::uint32_t closed);
using GetPluginBarIDFunction = std::uint32_t (*)(const char* pluginName, const char* bookName);
using PluginRemoveBarIDFunction = void (*)(std::uint32_t barId, const char* pluginName);

// The plug-in's button and icon codes of message boxes and the style bits that they stand for.

// By button code: OK, yes-no, OK-cancel, retry-cancel, abort-retry-ignore, cancel-try-continue, yes-no-cancel, and the
// two custom buttons.
inline constexpr std::uint32_t kCustomButtonsStyle = 256;
inline constexpr std::uint32_t kButtonStyles[] = {0, 4, 1, 5, 2, 6, 3, kCustomButtonsStyle};
inline constexpr std::uint32_t kCustomButtonIds[] = {1000, 1001};

// By icon code: hand, exclamation, question, information, user icon, none, and one of no name.
inline constexpr std::uint32_t kIconStyles[] = {0x10, 0x30, 0x20, 0x40, 0x80, 0, 0x70};

inline constexpr std::uint32_t kRightToLeftStyle = 0x80000;

// The style bits of a box; a code outside its table adds none.
constexpr std::uint32_t MessageStyle(std::uint32_t button, std::uint32_t icon, std::uint32_t extraStyle,
                                     bool rightToLeft) noexcept {
  std::uint32_t style = extraStyle;
  if (button < std::size(kButtonStyles)) style |= kButtonStyles[button];
  if (icon < std::size(kIconStyles)) style |= kIconStyles[icon];
  if (rightToLeft) style |= kRightToLeftStyle;
  return style;
}

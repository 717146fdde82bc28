// PluginDescription: what a plug-in tells of itself when it is loaded: who it is, its menu entry and the messages that
// it asks for.
#pragma once

#include <cstdint>
#include <set>
#include <span>
#include <string>

#include "host_link/module/message_router.h"
#include "terminal/link/message_log.h"

// A list of message numbers that go to one function of the plug-in.
struct MessageRoute {
  std::uint64_t Address = 0;  // 0: the list did not come
  std::set<std::uint16_t> Numbers;
};

struct PluginDescription {
  // 30004
  std::string Name;
  std::string Copyright;
  std::string Maker;
  // 30005
  std::u16string MenuTitle;
  std::u16string MenuEntry;
  std::uint64_t MenuCommand = 0;
  std::uint8_t MenuKey = 0;  // virtual-key code
  // 30006: to OnMessage, and the pair of a download: the request that starts it and the number that ends it
  MessageRoute ToOnMessage;
  std::uint16_t DownloadRequest = 0;
  std::uint16_t DownloadEnd = 0;
  // 30007: to OnPluginMessage
  MessageRoute ToOnPluginMessage;
};

// Reads the messages that GetDllInfo appended, one after the other; unknown ones, and unknown fields, are passed over.
PluginDescription ReadPluginDescription(std::span<const std::uint8_t> reply);

// What message 32003 carries: the grid whose properties are to be shown, and the plug-in's two functions for it.
class CQORPProp;
class CQORPPropList;
class CQORPacketReader;

// Fills the list with the properties of the book with the focus, and tells of it by message 32004 before it returns.
// The second address has no meaning but to be one.
using PropertyFillFunction = void (*)(CQORPPropList* list, const void* second);
// Takes over an item of that list that the user has changed. The grid is the plug-in's, by its address.
using PropertyApplyFunction = void (*)(CQORPProp* property, void* grid);

struct PropertyRequest {
  PropertyFillFunction Fill = nullptr;
  PropertyApplyFunction Apply = nullptr;
  std::uint64_t Grid = 0;

  bool Complete() const noexcept { return Fill != nullptr && Apply != nullptr && Grid != 0; }
};

// Of a message whose number has been read; fields of other tags are skipped.
PropertyRequest ReadPropertyRequest(CQORPacketReader& message);

// The answer to message 32022, the question what is selected in a window: message 32023 with an exchange and a
// security.

// Calls the function with the answer; nothing selected, which an empty text stands for, answers with the number alone.
void AnswerSelection(MessageFunction answer, const std::string& exchange, const std::string& securityId,
                     MessageLog& log);

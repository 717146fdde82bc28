// The messages of a plug-in as the terminal reads them: its description from GetDllInfo, what it asks of the windows
// and of the beat; and the answer to message 32022.
#pragma once

#include <chrono>
#include <cstdint>
#include <set>
#include <span>
#include <string>

#include "host_link/messages/message_table.h"
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

// Reads the messages of GetDllInfo; skips unknown messages and fields.
PluginDescription ReadPluginDescription(std::span<const std::uint8_t> reply);

// Message 32003: the grid whose properties the terminal shows, and the two functions of the plug-in for it.
class CQORPProp;
class CQORPPropList;

// Fills the list with the properties of the book with the focus and sends message 32004 before it returns. Only that it
// is not null counts of the second address.
using PropertyFillFunction = void (*)(CQORPPropList* list, const void* second);
// Takes over an item that the user changed. The grid is the plug-in's, by its address.
using PropertyApplyFunction = void (*)(CQORPProp* property, void* grid);

struct PropertyRequest {
  PropertyFillFunction Fill = nullptr;
  PropertyApplyFunction Apply = nullptr;
  std::uint64_t Grid = 0;

  bool Complete() const noexcept { return Fill != nullptr && Apply != nullptr && Grid != 0; }
};

// This and the next two require that the message number has been read; they skip other fields.
PropertyRequest ReadPropertyRequest(CQORPacketReader& message);

// Message 32005: the function to call at that period; null ends the calls.
struct BeatRequest {
  CommandFunction Callback = nullptr;
  std::chrono::milliseconds Period{};
};
BeatRequest ReadBeatRequest(CQORPacketReader& message);

// Message 32022: the address of a window, and the function that gets the answer.
struct SelectionQuestion {
  std::uint64_t Window = 0;
  MessageFunction Answer = nullptr;
};
SelectionQuestion ReadSelectionQuestion(CQORPacketReader& message);

// Calls the function with message 32023, the answer to 32022. If a text is empty, nothing is selected and the answer
// has no fields.
void AnswerSelection(MessageFunction answer, const std::string& exchange, const std::string& securityId,
                     MessageLog& log);

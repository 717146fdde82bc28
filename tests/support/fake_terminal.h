// The terminal's functions for tests: they record each call, check it against the tables of host_link and answer it.
// Compile fake_terminal.cpp into the test and let it export them (ENABLE_EXPORTS).
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host_link/messages/message_table.h"
#include "platform/modules.h"
#include "tests/support/wire_bytes.h"

struct FakeTerminal {
  // The calls so far.
  std::vector<Bytes> Sent;                    // messages of PluginDataSend, unfinished as they came
  std::vector<std::string> MasterRequests;    // "exchange|security id"
  std::vector<std::string> BarCalls;          // "1 = book name" of GetPluginBarID, "-1" of PluginRemoveBarID
  std::vector<std::pair<void*, bool>> Focus;  // window, and whether its bar closes

  // The answers.
  std::map<std::string, Bytes> Masters;                         // master records by "exchange|security id"
  std::map<std::string, std::uint32_t> BarIds;                  // by book name; a new name gets the next id
  std::optional<std::pair<std::string, std::string>> Selected;  // answers 32022 by 32023; none: without fields

  std::vector<std::uint16_t> SentNumbers() const;
};

// The process's. Assign {} to forget what it holds.
extern FakeTerminal fakeTerminal;

// Finds the function of a name; null for those that the plug-in does not call.
inline constexpr auto FakeTerminalFunction = &MainProgramSymbol;

// A master record: what the plug-in reads of it, and not a byte behind it.
Bytes MasterRecord(std::string_view name, double multiplier);

// Every field of a message is in the table of messages by type and size, and none of the table is missing. A message
// 32023 may have no fields.
void ExpectFieldsOfTable(const Bytes& message);

// Calls an entry point with a message, its header parsed or raw, and returns the reader's cursor behind the call.
std::uint16_t Deliver(bool isHeaderRead, std::uint16_t number, const Bytes& fields,
                      const std::function<void(CQORPacketReader&)>& entry);

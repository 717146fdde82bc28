// MessageRouter: brings each message by its number to what it means for trades and books, and answers the terminal. The
// calls must not overlap: nothing below has a lock for them.
#pragma once

#include <cstdint>

#include "book_windows/model/plugin_state.h"
#include "host_link/host_functions/function_table.h"
#include "host_link/messages/packet_reader.h"
#include "host_link/module/plugin_info.h"

class MessageRouter {
 public:
  MessageRouter(PluginState& state, const CQORDLLComman& terminal, const EntryAddresses& addresses) noexcept
      : State(state), Terminal(terminal), Addresses(addresses) {}

  // A message whose header has been parsed.
  void OnMessage(CQORPacketReader& message);
  // A raw message. It is routed even when its header does not parse, by the number that the reader then holds.
  void OnPluginMessage(CQORPacketReader& message);
  // The refresh callback: a burst of trades costs one repaint.
  void OnRefresh();
  // The menu command.
  void OnBookCommand();

 private:
  struct Route {
    std::uint16_t Number;
    void (MessageRouter::*Handle)(CQORPacketReader&);
  };
  static const Route kMessageRoutes[];
  static const Route kPluginMessageRoutes[];
  template <std::size_t Count>
  void Deliver(const Route (&routes)[Count], CQORPacketReader& message);

  void Trade(CQORPacketReader& message);            // 8111, 9101
  void DownloadEnd(CQORPacketReader& message);      // 8112
  void TradeAmend(CQORPacketReader& message);       // 9112
  void RestoreLayout(CQORPacketReader& message);    // 30026
  void ReapplyFilters(CQORPacketReader& message);   // 30020
  void SaveLayout(CQORPacketReader& message);       // 30021
  void ClearTrades(CQORPacketReader& message);      // 30022
  void RegisterRefresh(CQORPacketReader& message);  // 30025
  void TellSelection(CQORPacketReader& message);    // 32022
  void TakeSelection(CQORPacketReader& message);    // 32023

  PluginState& State;
  const CQORDLLComman& Terminal;
  EntryAddresses Addresses;
};

// The three functions that the module exports, and the callbacks whose addresses travel in its messages. A terminal
// looks the three up by name and calls them, and the callbacks, one call at a time.
class CQORPacketReader;
struct HostReplyBuffer;

// Appends the module's description to reply: message 30004, and 30005 to 30007 where the byte at infoOnly is 0.
using GetDllInfoFunction = void (*)(HostReplyBuffer* reply, const std::uint8_t* infoOnly);
// OnMessage takes a message whose header has been parsed, OnPluginMessage a raw one.
using MessageFunction = void (*)(CQORPacketReader* message);
// The menu command of message 30005 and the refresh callback of message 32005.
using CommandFunction = void (*)();

// MessageRouter: hands each message to the trade cache or the books by its number and entry point, and answers the
// terminal. Calls must not overlap: no lock protects what they change.
#pragma once

#include <cstdint>

#include "book_windows/model/book_registry.h"
#include "host_link/host_functions/function_table.h"
#include "host_link/messages/message_table.h"
#include "host_link/messages/packet_reader.h"
#include "host_link/module/plugin_info.h"

class MessageRouter {
 public:
  MessageRouter(PluginState& state, BookRegistry& books, const CQORDLLComman& terminal,
                const EntryAddresses& addresses) noexcept
      : State(state), Books(books), Terminal(terminal), Addresses(addresses) {}

  // A message whose header is parsed.
  void OnMessage(CQORPacketReader& message);
  // A raw message. If its header does not parse, the number that the reader holds decides.
  void OnPluginMessage(CQORPacketReader& message);
  // The refresh callback: a burst of trades costs one repaint.
  void OnRefresh();
  // The menu command.
  void OnBookCommand();

 private:
  struct Route;
  // A function, as the routes need this class complete.
  static constexpr auto Routes();
  void Deliver(MessageWay way, CQORPacketReader& message);

  void Trade(CQORPacketReader& message);
  void DownloadEnd(CQORPacketReader& message);
  void TradeAmend(CQORPacketReader& message);
  void RestoreLayout(CQORPacketReader& message);
  void ReapplyFilters(CQORPacketReader& message);
  void SaveLayout(CQORPacketReader& message);
  void ClearTrades(CQORPacketReader& message);
  void RegisterRefresh(CQORPacketReader& message);
  void TellSelection(CQORPacketReader& message);
  void TakeSelection(CQORPacketReader& message);

  PluginState& State;
  BookRegistry& Books;
  const CQORDLLComman& Terminal;
  EntryAddresses Addresses;
};

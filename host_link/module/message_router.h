// The plug-in's side of the table of messages: its description for the terminal (messages 30004 to 30007), and the
// router of what the terminal then sends.
#pragma once

#include <cstdint>

#include "book_windows/model/book_registry.h"
#include "host_link/host_functions/function_table.h"
#include "host_link/messages/message_table.h"
#include "host_link/messages/packet_reader.h"
#include "host_link/messages/reply_buffer.h"

// Addresses of the module's functions, as messages carry them.
struct EntryAddresses {
  std::uint64_t OnMessage = 0;
  std::uint64_t OnPluginMessage = 0;
  std::uint64_t OnBookCommand = 0;
  std::uint64_t OnRefresh = 0;
};

// Appends the identity (30004) and, unless identityOnly, the menu entry (30005) and the numbers for OnMessage (30006)
// and OnPluginMessage (30007). A message that does not fit is left out silently.
void AppendPluginInfo(HostReplyBuffer& reply, bool identityOnly, const EntryAddresses& addresses) noexcept;

// Hands each message to the trade cache or the books by its number and entry point, and answers the terminal. Calls
// must not overlap: no lock protects what they change.
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

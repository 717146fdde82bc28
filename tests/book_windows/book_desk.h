// BookDesk: what every test of books needs: an empty current folder, the fake terminal, the plug-in's state, and trades
// as messages.
#pragma once

#include <filesystem>
#include <memory>

#include "host_link/module/message_router.h"
#include "tests/support/fake_terminal.h"

class BookDesk {
 public:
  BookDesk();
  ~BookDesk();

  // A new run of the plug-in over the same files: forgets terminal and state.
  void StartAgain();
  // Messages go to these books from now on, the terminal's answers too.
  void Connect(BookRegistry& books);
  // The callback that the plug-in names in its messages.
  static std::uint64_t OnPluginMessage();

  // Another execution with a known id replaces that trade.
  void Trade(std::uint32_t id, const char* exchange, const char* securityId, std::uint8_t side, std::uint32_t quantity,
             double price, const char* execution = "");
  // Messages without fields: 8112 goes to OnMessage, the others to OnPluginMessage.
  void Tell(std::uint16_t number);
  // The security that the window with the focus selects; without arguments none.
  static void Select(const char* exchange, const char* securityId, const char* name = "GOLD 201312",
                     double multiplier = 1);
  static void SelectNothing() { fakeTerminal.Selected.reset(); }

  std::filesystem::path Folder;
  CQORTradeImpl Decoder;
  std::unique_ptr<PluginState> State;
  std::unique_ptr<CQORDLLComman> Functions;

 private:
  std::unique_ptr<MessageRouter> Router;
};

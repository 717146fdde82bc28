// The module's entry points and callbacks around a router that throws: this program defines the router's functions
// itself.
#include <gtest/gtest.h>

#include "host_link/module/message_router.h"
#include "platform/modules.h"

TRADEBOOK_EXPORT void OnMessage(CQORPacketReader* message) noexcept;
TRADEBOOK_EXPORT void OnPluginMessage(CQORPacketReader* message) noexcept;

namespace {

EntryAddresses addresses;
bool throws = false;
std::vector<std::string> entered;

void Enter(const char* function) {
  entered.emplace_back(function);
  if (throws) throw 42;
}

CommandFunction CommandAt(std::uint64_t address) {
  return reinterpret_cast<CommandFunction>(address);
}

}  // namespace

void MessageRouter::OnMessage(CQORPacketReader&) {
  Enter("OnMessage");
}
void MessageRouter::OnPluginMessage(CQORPacketReader&) {
  addresses = Addresses;
  Enter("OnPluginMessage");
}
void MessageRouter::OnRefresh() {
  Enter("OnRefresh");
}
void MessageRouter::OnBookCommand() {
  Enter("OnBookCommand");
}

namespace {

TEST(EntryGuardTest, NoExceptionLeavesAnEntryPoint) {
  CQORPacketReader reader(nullptr, 0);
  for (const bool throwing : {true, false}) {
    throws = throwing;
    entered.clear();
    ::OnPluginMessage(&reader);
    ::OnMessage(&reader);
    CommandAt(addresses.OnRefresh)();
    CommandAt(addresses.OnBookCommand)();
    EXPECT_EQ(entered, (std::vector<std::string>{"OnPluginMessage", "OnMessage", "OnRefresh", "OnBookCommand"}));
  }
}

}  // namespace

// The module's entry points and callbacks around a router that throws: this program defines the router's functions
// itself.
#include <gtest/gtest.h>

#include "host_link/module/message_router.h"
#include "platform/modules.h"

TRADEBOOK_EXPORT void GetDllInfo(HostReplyBuffer* reply, const std::uint8_t* infoOnly) noexcept;
TRADEBOOK_EXPORT void OnMessage(CQORPacketReader* message) noexcept;
TRADEBOOK_EXPORT void OnPluginMessage(CQORPacketReader* message) noexcept;

static EntryAddresses addresses;
static bool throws = false;
static std::vector<std::string> entered;

static void Enter(const char* function) {
  entered.emplace_back(function);
  if (throws) throw 42;
}

void AppendPluginInfo(HostReplyBuffer&, bool, const EntryAddresses& own) noexcept {
  addresses = own;
}
void MessageRouter::OnMessage(CQORPacketReader&) {
  Enter("OnMessage");
}
void MessageRouter::OnPluginMessage(CQORPacketReader&) {
  Enter("OnPluginMessage");
}
void MessageRouter::OnRefresh() {
  Enter("OnRefresh");
}
void MessageRouter::OnBookCommand() {
  Enter("OnBookCommand");
}

TEST(EntryGuardTest, NoExceptionLeavesAnEntryPoint) {
  CQORPacketReader reader(nullptr, 0);
  HostReplyBuffer reply{};
  ::GetDllInfo(&reply, nullptr);
  for (const bool throwing : {true, false}) {
    throws = throwing;
    entered.clear();
    ::OnPluginMessage(&reader);
    ::OnMessage(&reader);
    for (const std::uint64_t command : {addresses.OnRefresh, addresses.OnBookCommand})
      reinterpret_cast<CommandFunction>(command)();
    EXPECT_EQ(entered, (std::vector<std::string>{"OnPluginMessage", "OnMessage", "OnRefresh", "OnBookCommand"}));
  }
}

// The module's description for the terminal: messages 30004 to 30007.
#pragma once

#include <cstdint>

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

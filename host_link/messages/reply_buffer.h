// HostReplyBuffer: the terminal's object that GetDllInfo appends its messages to. A binary interface: the terminal
// makes it, the plug-in only appends. Shared between threads of the terminal, hence the lock in it.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/threads.h"

struct HostReplyBuffer {
  std::uint8_t* Data;          // array new; the terminal's
  std::uint32_t ReadPosition;  // the terminal's; not used here
  std::uint32_t Used;
  std::uint32_t Capacity;
  std::uint32_t Growable;
  PlatformLock Lock;

  // Appends size bytes, growing the block to exactly what is needed. False, with nothing changed, for no data, where
  // the buffer may not grow, or where memory is out. With lock true the lock is held meanwhile.
  bool AppendBytes(const void* bytes, std::uint32_t size, bool lock) noexcept;

 private:
  bool Append(const void* bytes, std::uint32_t size) noexcept;
  bool GrowTo(std::uint64_t size) noexcept;
};

static_assert(offsetof(HostReplyBuffer, ReadPosition) == 8 && offsetof(HostReplyBuffer, Used) == 12 &&
              offsetof(HostReplyBuffer, Capacity) == 16 && offsetof(HostReplyBuffer, Growable) == 20 &&
              offsetof(HostReplyBuffer, Lock) == 24 && sizeof(HostReplyBuffer) == 64);

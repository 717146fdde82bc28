// HostReplyBuffer: the terminal's object to which GetDllInfo appends its messages. Its layout is a binary interface;
// its lock lets threads of the terminal share it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>

#include "platform/threads.h"

struct HostReplyBuffer {
  std::uint8_t* Data;          // array new; owned by the terminal
  std::uint32_t ReadPosition;  // for the terminal alone
  std::uint32_t Used;
  std::uint32_t Capacity;
  std::uint32_t Growable;
  PlatformLock Lock;

  // Appends size bytes and grows the block to exactly the needed size. False, with nothing changed, for no data, if the
  // buffer must not grow, or out of memory. With lock true it holds the lock.
  bool AppendBytes(const void* bytes, std::uint32_t size, bool lock) noexcept;

 private:
  bool Append(const void* bytes, std::uint32_t size) noexcept;
  bool GrowTo(std::uint64_t size) noexcept;
};

static_assert(offsetof(HostReplyBuffer, ReadPosition) == 8 && offsetof(HostReplyBuffer, Used) == 12 &&
              offsetof(HostReplyBuffer, Capacity) == 16 && offsetof(HostReplyBuffer, Growable) == 20 &&
              offsetof(HostReplyBuffer, Lock) == 24 && sizeof(HostReplyBuffer) == 64);

inline bool HostReplyBuffer::AppendBytes(const void* bytes, std::uint32_t size, bool lock) noexcept {
  if (bytes == nullptr || size < 1) return false;
  if (!lock) return Append(bytes, size);
  EnterLock(Lock);
  const bool appended = Append(bytes, size);
  LeaveLock(Lock);
  return appended;
}

inline bool HostReplyBuffer::Append(const void* bytes, std::uint32_t size) noexcept {
  const std::uint64_t needed = std::uint64_t{Used} + size;
  if (needed > Capacity && !GrowTo(needed)) return false;
  std::memcpy(Data + Used, bytes, size);
  Used += size;
  return true;
}

inline bool HostReplyBuffer::GrowTo(std::uint64_t size) noexcept {
  if (Growable == 0 || size > std::numeric_limits<std::uint32_t>::max()) return false;
  auto* block = new (std::nothrow) std::uint8_t[size];
  if (block == nullptr) return false;
  if (Capacity != 0) std::memcpy(block, Data, Capacity);
  delete[] Data;
  Data = block;
  Capacity = static_cast<std::uint32_t>(size);
  return true;
}

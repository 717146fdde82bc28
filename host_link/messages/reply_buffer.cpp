#include "host_link/messages/reply_buffer.h"

#include <cstring>
#include <limits>
#include <new>

bool HostReplyBuffer::AppendBytes(const void* bytes, std::uint32_t size, bool lock) noexcept {
  if (bytes == nullptr || size < 1) return false;
  if (!lock) return Append(bytes, size);
  EnterLock(Lock);
  const bool appended = Append(bytes, size);
  LeaveLock(Lock);
  return appended;
}

bool HostReplyBuffer::Append(const void* bytes, std::uint32_t size) noexcept {
  const std::uint64_t needed = std::uint64_t{Used} + size;
  if (needed > Capacity && !GrowTo(needed)) return false;
  std::memcpy(Data + Used, bytes, size);
  Used += size;
  return true;
}

bool HostReplyBuffer::GrowTo(std::uint64_t size) noexcept {
  if (Growable == 0 || size > std::numeric_limits<std::uint32_t>::max()) return false;
  auto* block = new (std::nothrow) std::uint8_t[size];
  if (block == nullptr) return false;
  if (Capacity != 0) std::memcpy(block, Data, Capacity);
  delete[] Data;
  Data = block;
  Capacity = static_cast<std::uint32_t>(size);
  return true;
}

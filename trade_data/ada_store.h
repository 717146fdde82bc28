// CQORADAStore: a pool of byte buffers for messages on their way to a record file. Not the file and not the order of
// writing: that is ada_write_async.h. Any thread may call; a buffer taken belongs to who took it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <span>
#include <vector>

#include "foundations/qor_lock.h"

namespace QOR::Base {

struct ADABuffer {
  std::vector<std::uint8_t> Bytes;  // its room is a multiple of 256
  std::size_t Used = 0;
  std::span<const std::uint8_t> Content() const noexcept { return {Bytes.data(), Used}; }
};

// Buffers travel as lists, so that handing one over or giving many back moves nodes and allocates nothing.
using ADABuffers = std::list<ADABuffer>;

// Promises: a buffer given back serves again; memory grows to the most buffers that were in use at once, and is kept.
// A free list behind a critical section; taking and giving back take constant time but for the copy of the bytes.
class CQORADAStore {
 public:
  static constexpr std::size_t kBufferStep = 256;

  // One buffer with a copy of the bytes. Throws std::bad_alloc.
  ADABuffers Take(std::span<const std::uint8_t> bytes);
  void GiveBack(ADABuffers&& buffers) noexcept;

 private:
  QOR::Thread::CQORLock Lock;
  ADABuffers Free;
};

}  // namespace QOR::Base

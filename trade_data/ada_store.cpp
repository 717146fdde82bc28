#include "trade_data/ada_store.h"

#include <algorithm>

namespace QOR::Base {

ADABuffers CQORADAStore::Take(std::span<const std::uint8_t> bytes) {
  ADABuffers taken;
  {
    const QOR::Thread::CQORLockGuard guard(Lock);
    if (!Free.empty()) taken.splice(taken.begin(), Free, Free.begin());
  }
  if (taken.empty()) taken.emplace_back();
  ADABuffer& buffer = taken.front();
  if (buffer.Bytes.size() < bytes.size())
    buffer.Bytes.resize((bytes.size() + kBufferStep - 1) / kBufferStep * kBufferStep);
  std::copy(bytes.begin(), bytes.end(), buffer.Bytes.begin());
  buffer.Used = bytes.size();
  return taken;
}

void CQORADAStore::GiveBack(ADABuffers&& buffers) noexcept {
  const QOR::Thread::CQORLockGuard guard(Lock);
  Free.splice(Free.begin(), buffers);
}

}  // namespace QOR::Base

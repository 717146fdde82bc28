// CQORADAWriteAsync: writes messages to a record file on a thread of its own, in the order in which they were handed
// over. Any thread may call Write; Close and the destructor belong to the owner, and the file and the pool outlive the
// object. In the plug-in none is ever made.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <list>
#include <span>
#include <vector>

#include "foundations/qor_lock.h"
#include "platform/threads.h"
#include "trade_data/record_files/file_impl.h"

// CQORADAStore: a pool of byte buffers for messages on their way to a record file. Any thread may call; a buffer taken
// belongs to who took it.
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

namespace QOR::Base {

// Promises: Close returns with every message written or the failure known, whatever failed; the first failed write is
// reported once and ends the writing, so that a full disk costs the rest of the file and never a wait. Without its
// thread, when the system refuses one, Write writes itself.
// A queue of pooled buffers behind a lock, and a manual-reset event that is set while the queue holds something; the
// thread takes the whole queue at once. The queue has no limit: it grows as far as the disk lags behind.
class CQORADAWriteAsync {
 public:
  CQORADAWriteAsync(CQORFileImpl& file, CQORADAStore& store);
  ~CQORADAWriteAsync();
  CQORADAWriteAsync(const CQORADAWriteAsync&) = delete;
  CQORADAWriteAsync& operator=(const CQORADAWriteAsync&) = delete;

  // Hands over a copy of the message. False when it will not be written: behind a failure or Close, or without memory.
  bool Write(std::span<const std::uint8_t> message) noexcept;
  // Waits until all is written. False when something was not; a second call does nothing and answers the same.
  bool Close() noexcept;
  // The system's number of the failure; 0 where it has none.
  unsigned long Error() const noexcept { return FailureNumber; }

 private:
  void StartThread();
  void Run() noexcept;
  bool WriteBatch();
  void WriteOut(ADABuffers&& buffers);
  void Fail(const char* message, unsigned long error) noexcept;

  CQORFileImpl& File;
  CQORADAStore& Store;
  PlatformEvent Wakeup{};
  bool HasEvent = false;
  QOR::Thread::CQORLock QueueLock;  // of the three below
  ADABuffers Queue;
  bool HasThread = false;
  bool Closing = false;
  std::atomic<bool> Failed = false;
  std::atomic<unsigned long> FailureNumber = 0;
  PlatformThread Writer;
  bool Joinable = false;  // the owner's
};

}  // namespace QOR::Base

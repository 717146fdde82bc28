// CQORADAWriteAsync writes messages to a record file on its own thread, in the order of the calls, from a pool of
// buffers. The plug-in creates none.
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

namespace QOR::Base {

struct ADABuffer {
  std::vector<std::uint8_t> Bytes;  // size: a multiple of 256
  std::size_t Used = 0;
  std::span<const std::uint8_t> Content() const noexcept { return {Bytes.data(), Used}; }
};

// Buffers move as list nodes: passing one on or returning many does not allocate.
using ADABuffers = std::list<ADABuffer>;

// The pool: returned buffers are used again, and memory stays at the largest number in use at once. A free list under a
// lock; Take and GiveBack are O(1) but for the copy of the bytes. Any thread may call.
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

// After Close every message is written or the failure is known. The first failed write is reported once and ends the
// writing: a full disk loses the rest of the file and blocks nobody. If the system refuses the thread, Write writes
// itself. Any thread may call Write; the owner calls Close and keeps the file and the pool alive.
//
// A queue of pooled buffers under a lock, and a manual-reset event that is set while the queue is not empty; the thread
// takes the whole queue at once. The queue has no limit.
class CQORADAWriteAsync {
 public:
  CQORADAWriteAsync(CQORFileImpl& file, CQORADAStore& store);
  ~CQORADAWriteAsync();
  CQORADAWriteAsync(const CQORADAWriteAsync&) = delete;
  CQORADAWriteAsync& operator=(const CQORADAWriteAsync&) = delete;

  // Queues a copy of the message. False if it will not be written: after a failure or Close, or without memory.
  bool Write(std::span<const std::uint8_t> message) noexcept;
  // Waits until all is written; false if something was not. A second call is a no-op with the same result.
  bool Close() noexcept;
  // The system's number of the failure; 0 without one.
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
  QOR::Thread::CQORLock QueueLock;  // for the next three
  ADABuffers Queue;
  bool HasThread = false;
  bool Closing = false;
  std::atomic<bool> Failed = false;
  std::atomic<unsigned long> FailureNumber = 0;
  PlatformThread Writer;
  bool Joinable = false;  // used by the owner only
};

}  // namespace QOR::Base

// CQORADAWriteAsync: writes messages to a record file on a thread of its own, in the order in which they were handed
// over. Not the making of messages. Any thread may call Write; Close and the destructor belong to the owner, and the
// file and the pool outlive the object. In the plug-in none is ever made.
#pragma once

#include <atomic>
#include <cstdint>
#include <span>

#include "foundations/qor_lock.h"
#include "platform/event.h"
#include "platform/thread.h"
#include "trade_data/ada_store.h"
#include "trade_data/file_impl.h"

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

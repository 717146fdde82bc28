#include "trade_data/record_files/ada_write_async.h"

#include <algorithm>
#include <utility>

#include "foundations/error_report.h"
#include "platform/faults.h"

namespace QOR::Base {

namespace {
constexpr const char* kConstructor = "QOR::Base::CQORADAWriteAsync::CQORADAWriteAsync";
constexpr const char* kStartThread = "QOR::Base::CQORADAWriteAsync::StartThread";
constexpr const char* kWriteOut = "QOR::Base::CQORADAWriteAsync::WriteOut";
}  // namespace

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

CQORADAWriteAsync::CQORADAWriteAsync(CQORFileImpl& file, CQORADAStore& store) : File(file), Store(store) {
  const unsigned long error = InitializePlatformEvent(Wakeup);
  HasEvent = error == 0;
  if (HasEvent)
    StartThread();
  else
    CQORLog::ReportFailure("CreateEvent failed: ", error, kConstructor, __LINE__);
}

CQORADAWriteAsync::~CQORADAWriteAsync() {
  Close();
  if (HasEvent) DestroyPlatformEvent(Wakeup);
}

void CQORADAWriteAsync::StartThread() {
  const auto run = [](void* self) noexcept { static_cast<CQORADAWriteAsync*>(self)->Run(); };
  HasThread = true;
  const unsigned long error = StartPlatformThread(Writer, run, this);
  Joinable = error == 0;
  if (Joinable) return;
  HasThread = false;
  // Intentional: the misspelling; readers of logs search for it.
  CQORLog::ReportFailure("Faild to start thread: ", error, kStartThread, __LINE__);
}

// An exception that reaches this function calls the terminate handler of this thread. No destructor here may remove the
// handlers before that.
void CQORADAWriteAsync::Run() noexcept {
  QOR::Util::CQORExceptionHandler::InstallThreadHandlers();
  while (WriteBatch()) {
  }
  QOR::Util::CQORExceptionHandler::RemoveThreadHandlers();
}

// Writes what is queued; false after the last batch.
bool CQORADAWriteAsync::WriteBatch() {
  const unsigned long error = WaitForPlatformEvent(Wakeup);
  if (error != 0) CQORLog::ReportFailure("WaitForSingleObject failed: ", error, kStartThread, __LINE__);
  ADABuffers batch;
  QOR::Thread::CQORLockGuard guard(QueueLock);
  batch.swap(Queue);
  ResetPlatformEvent(Wakeup);
  HasThread = !Closing && error == 0;
  const bool goesOn = HasThread;
  // The last batch is written under the lock, so that the next writer follows it.
  if (goesOn) guard.Release();
  WriteOut(std::move(batch));
  return goesOn;
}

void CQORADAWriteAsync::WriteOut(ADABuffers&& buffers) {
  for (const ADABuffer& buffer : buffers)
    if (!Failed && !File.WriteBytes(buffer.Content())) Fail("Write failed: ", LastSystemError());
  if (!Failed && !File.Flush()) Fail("Write failed: ", LastSystemError());
  Store.GiveBack(std::move(buffers));
}

void CQORADAWriteAsync::Fail(const char* message, unsigned long error) noexcept {
  if (Failed.exchange(true)) return;
  FailureNumber = error;
  CQORLog::ReportFailure(message, error, kWriteOut, __LINE__);
}

bool CQORADAWriteAsync::Write(std::span<const std::uint8_t> message) noexcept {
  if (Failed || message.empty()) return false;
  try {
    ADABuffers buffer = Store.Take(message);
    const QOR::Thread::CQORLockGuard guard(QueueLock);
    if (Closing) return false;
    if (!HasThread) {
      WriteOut(std::move(buffer));
      return !Failed;
    }
    Queue.splice(Queue.end(), buffer);
    SetPlatformEvent(Wakeup);
    return true;
  } catch (...) {
    Fail("No memory for a message: ", 0);
    return false;
  }
}

bool CQORADAWriteAsync::Close() noexcept {
  {
    const QOR::Thread::CQORLockGuard guard(QueueLock);
    Closing = true;
    if (HasEvent) SetPlatformEvent(Wakeup);
  }
  if (Joinable) JoinPlatformThread(Writer);
  Joinable = false;
  return !Failed;
}

}  // namespace QOR::Base

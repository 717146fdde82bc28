#include "platform/threads.h"

#include <windows.h>

#include <memory>
#include <new>

static_assert(sizeof(PlatformLock) == sizeof(CRITICAL_SECTION) && alignof(PlatformLock) == alignof(CRITICAL_SECTION));

namespace {
CRITICAL_SECTION* Section(PlatformLock& lock) {
  return reinterpret_cast<CRITICAL_SECTION*>(&lock);
}
}  // namespace

unsigned long InitializeLock(PlatformLock& lock, unsigned long spinCount) noexcept {
  return InitializeCriticalSectionAndSpinCount(Section(lock), spinCount) != 0 ? 0 : GetLastError();
}

void DestroyLock(PlatformLock& lock) noexcept {
  DeleteCriticalSection(Section(lock));
}
void EnterLock(PlatformLock& lock) noexcept {
  EnterCriticalSection(Section(lock));
}
void LeaveLock(PlatformLock& lock) noexcept {
  LeaveCriticalSection(Section(lock));
}

unsigned long InitializePlatformEvent(PlatformEvent& event) noexcept {
  event.Handle = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  return event.Handle != nullptr ? 0 : GetLastError();
}

void DestroyPlatformEvent(PlatformEvent& event) noexcept {
  CloseHandle(event.Handle);
}
void SetPlatformEvent(PlatformEvent& event) noexcept {
  SetEvent(event.Handle);
}
void ResetPlatformEvent(PlatformEvent& event) noexcept {
  ResetEvent(event.Handle);
}
unsigned long WaitForPlatformEvent(PlatformEvent& event) noexcept {
  return WaitForSingleObject(event.Handle, INFINITE) == WAIT_OBJECT_0 ? 0 : GetLastError();
}

namespace {

struct Start {
  void (*Run)(void*) noexcept;
  void* Argument;
};

DWORD WINAPI RunThread(void* taken) noexcept {
  const Start start = *std::unique_ptr<Start>(static_cast<Start*>(taken));
  start.Run(start.Argument);
  return 0;
}

}  // namespace

unsigned long StartPlatformThread(PlatformThread& thread, void (*run)(void*) noexcept, void* argument) noexcept {
  std::unique_ptr<Start> start(new (std::nothrow) Start{run, argument});
  if (start == nullptr) return ERROR_NOT_ENOUGH_MEMORY;
  thread.Handle = CreateThread(nullptr, 0, RunThread, start.get(), 0, nullptr);
  if (thread.Handle == nullptr) return GetLastError();
  static_cast<void>(start.release());
  return 0;
}

void JoinPlatformThread(PlatformThread& thread) noexcept {
  WaitForSingleObject(thread.Handle, INFINITE);
  CloseHandle(thread.Handle);
}

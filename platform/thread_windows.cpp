#include "platform/thread.h"

#include <windows.h>

#include <memory>
#include <new>

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

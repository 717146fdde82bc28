#include "platform/thread.h"

#include <cerrno>
#include <memory>
#include <new>

namespace {

struct Start {
  void (*Run)(void*) noexcept;
  void* Argument;
};

void* RunThread(void* taken) noexcept {
  const Start start = *std::unique_ptr<Start>(static_cast<Start*>(taken));
  start.Run(start.Argument);
  return nullptr;
}

}  // namespace

unsigned long StartPlatformThread(PlatformThread& thread, void (*run)(void*) noexcept, void* argument) noexcept {
  std::unique_ptr<Start> start(new (std::nothrow) Start{run, argument});
  const int error = start == nullptr ? ENOMEM : pthread_create(&thread.Handle, nullptr, RunThread, start.get());
  if (error == 0) static_cast<void>(start.release());
  return static_cast<unsigned long>(error);
}

void JoinPlatformThread(PlatformThread& thread) noexcept {
  pthread_join(thread.Handle, nullptr);
}

#include "platform/threads.h"

#include <cerrno>
#include <memory>
#include <new>

// A pthread mutex has no spin count; it enters the kernel only if the lock is held.
unsigned long InitializeLock(PlatformLock& lock, unsigned long /*spinCount*/) noexcept {
  pthread_mutexattr_t attributes;
  if (const int error = pthread_mutexattr_init(&attributes); error != 0) return static_cast<unsigned long>(error);
  pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
  const int error = pthread_mutex_init(&lock, &attributes);
  pthread_mutexattr_destroy(&attributes);
  return static_cast<unsigned long>(error);
}

void DestroyLock(PlatformLock& lock) noexcept {
  pthread_mutex_destroy(&lock);
}
void EnterLock(PlatformLock& lock) noexcept {
  pthread_mutex_lock(&lock);
}
void LeaveLock(PlatformLock& lock) noexcept {
  pthread_mutex_unlock(&lock);
}

unsigned long InitializePlatformEvent(PlatformEvent& event) noexcept {
  event.IsSet = false;
  if (const int error = pthread_mutex_init(&event.Lock, nullptr); error != 0) return static_cast<unsigned long>(error);
  const int error = pthread_cond_init(&event.Changed, nullptr);
  if (error != 0) pthread_mutex_destroy(&event.Lock);
  return static_cast<unsigned long>(error);
}

void DestroyPlatformEvent(PlatformEvent& event) noexcept {
  pthread_cond_destroy(&event.Changed);
  pthread_mutex_destroy(&event.Lock);
}

void SetPlatformEvent(PlatformEvent& event) noexcept {
  pthread_mutex_lock(&event.Lock);
  event.IsSet = true;
  pthread_cond_broadcast(&event.Changed);
  pthread_mutex_unlock(&event.Lock);
}

void ResetPlatformEvent(PlatformEvent& event) noexcept {
  pthread_mutex_lock(&event.Lock);
  event.IsSet = false;
  pthread_mutex_unlock(&event.Lock);
}

unsigned long WaitForPlatformEvent(PlatformEvent& event) noexcept {
  int error = pthread_mutex_lock(&event.Lock);
  if (error != 0) return static_cast<unsigned long>(error);
  while (!event.IsSet && error == 0) error = pthread_cond_wait(&event.Changed, &event.Lock);
  pthread_mutex_unlock(&event.Lock);
  return static_cast<unsigned long>(error);
}

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

#include "platform/lock.h"

// The spin count has no place in a pthread mutex: the kernel is entered only when the lock is held.
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

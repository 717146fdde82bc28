// The platform's own re-entrant lock object. HostReplyBuffer holds one in place, so its size and its functions are
// part of the binary interface with the terminal. Code of the system locks with CQORLock, which wraps this.
// Any thread may call.
#pragma once

#ifdef _WIN32
// The layout of CRITICAL_SECTION, declared here so that no public header pulls in windows.h; lock_windows.cpp asserts
// it.
struct PlatformLock {
  void* DebugInfo;
  long LockCount;
  long RecursionCount;
  void* OwningThread;
  void* LockSemaphore;
  unsigned long long SpinCount;
};
#else
#include <pthread.h>
using PlatformLock = pthread_mutex_t;
#endif

// Makes the lock. Returns 0, or the system's error number when the lock could not be made.
unsigned long InitializeLock(PlatformLock& lock, unsigned long spinCount) noexcept;
void DestroyLock(PlatformLock& lock) noexcept;
void EnterLock(PlatformLock& lock) noexcept;
void LeaveLock(PlatformLock& lock) noexcept;

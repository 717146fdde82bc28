// The platform's own re-entrant lock object. HostReplyBuffer holds one in place, so its size and its functions are part
// of the binary interface with the terminal. Code of the system locks with CQORLock, which wraps this. Any thread may
// call.
#pragma once

#ifdef _WIN32
// The layout of CRITICAL_SECTION, declared here so that no public header pulls in windows.h; threads_windows.cpp
// asserts it.
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

// The platform's manual-reset event: once set it lets every waiter through until it is reset. Any thread may call; each
// function returns 0 or the system's error number.
#ifdef _WIN32
struct PlatformEvent {
  void* Handle;
};
#else
struct PlatformEvent {
  pthread_mutex_t Lock;
  pthread_cond_t Changed;
  bool IsSet;
};
#endif

// Makes the event, not set. The other functions take only an event that could be made.
unsigned long InitializePlatformEvent(PlatformEvent& event) noexcept;
void DestroyPlatformEvent(PlatformEvent& event) noexcept;
void SetPlatformEvent(PlatformEvent& event) noexcept;
void ResetPlatformEvent(PlatformEvent& event) noexcept;
unsigned long WaitForPlatformEvent(PlatformEvent& event) noexcept;

// One thread of the platform, whose start may be refused with the system's number of the error. The owner joins it.
#ifdef _WIN32
struct PlatformThread {
  void* Handle = nullptr;
};
#else
struct PlatformThread {
  pthread_t Handle{};
};
#endif

// Runs the function on a thread of its own; 0 or the system's error number. A function that throws ends the process.
unsigned long StartPlatformThread(PlatformThread& thread, void (*run)(void*) noexcept, void* argument) noexcept;
// Waits for the end of a thread that was started; once for each.
void JoinPlatformThread(PlatformThread& thread) noexcept;

// The platform's lock, event and thread.
#pragma once

// A recursive lock. HostReplyBuffer holds one in place, so its size and its functions are part of the binary interface
// with the terminal. Everything else locks with CQORLock, which wraps it.

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

// Returns 0 or the system's error number.
unsigned long InitializeLock(PlatformLock& lock, unsigned long spinCount) noexcept;
void DestroyLock(PlatformLock& lock) noexcept;
void EnterLock(PlatformLock& lock) noexcept;
void LeaveLock(PlatformLock& lock) noexcept;

// A manual-reset event: once set, every wait returns at once until it is reset. Errors are the system's numbers, 0 is
// success.
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

// Creates the event, not set. The other functions require an event that was created.
unsigned long InitializePlatformEvent(PlatformEvent& event) noexcept;
void DestroyPlatformEvent(PlatformEvent& event) noexcept;
void SetPlatformEvent(PlatformEvent& event) noexcept;
void ResetPlatformEvent(PlatformEvent& event) noexcept;
unsigned long WaitForPlatformEvent(PlatformEvent& event) noexcept;

// A thread that its owner joins.
#ifdef _WIN32
struct PlatformThread {
  void* Handle = nullptr;
};
#else
struct PlatformThread {
  pthread_t Handle{};
};
#endif

// Runs the function on a new thread. Returns 0 or the system's error number.
unsigned long StartPlatformThread(PlatformThread& thread, void (*run)(void*) noexcept, void* argument) noexcept;
// Waits for the end of a started thread, once.
void JoinPlatformThread(PlatformThread& thread) noexcept;

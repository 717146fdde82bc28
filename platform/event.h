// The platform's manual-reset event: once set it lets every waiter through until it is reset. Not a lock.
// Any thread may call; each function returns 0 or the system's error number.
#pragma once

#ifdef _WIN32
struct PlatformEvent {
  void* Handle;
};
#else
#include <pthread.h>
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

// One thread of the platform, whose start may be refused with the system's number of the error. The owner joins it.
#pragma once

#ifdef _WIN32
struct PlatformThread {
  void* Handle = nullptr;
};
#else
#include <pthread.h>
struct PlatformThread {
  pthread_t Handle{};
};
#endif

// Runs the function on a thread of its own; 0 or the system's error number. A function that throws ends the process.
unsigned long StartPlatformThread(PlatformThread& thread, void (*run)(void*) noexcept, void* argument) noexcept;
// Waits for the end of a thread that was started; once for each.
void JoinPlatformThread(PlatformThread& thread) noexcept;

#include "platform/event.h"

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

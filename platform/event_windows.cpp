#include "platform/event.h"

#include <windows.h>

unsigned long InitializePlatformEvent(PlatformEvent& event) noexcept {
  event.Handle = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  return event.Handle != nullptr ? 0 : GetLastError();
}

void DestroyPlatformEvent(PlatformEvent& event) noexcept {
  CloseHandle(event.Handle);
}
void SetPlatformEvent(PlatformEvent& event) noexcept {
  SetEvent(event.Handle);
}
void ResetPlatformEvent(PlatformEvent& event) noexcept {
  ResetEvent(event.Handle);
}
unsigned long WaitForPlatformEvent(PlatformEvent& event) noexcept {
  return WaitForSingleObject(event.Handle, INFINITE) == WAIT_OBJECT_0 ? 0 : GetLastError();
}

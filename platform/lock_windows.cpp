#include "platform/lock.h"

#include <windows.h>

static_assert(sizeof(PlatformLock) == sizeof(CRITICAL_SECTION) && alignof(PlatformLock) == alignof(CRITICAL_SECTION));

namespace {
CRITICAL_SECTION* Section(PlatformLock& lock) {
  return reinterpret_cast<CRITICAL_SECTION*>(&lock);
}
}  // namespace

unsigned long InitializeLock(PlatformLock& lock, unsigned long spinCount) noexcept {
  return InitializeCriticalSectionAndSpinCount(Section(lock), spinCount) != 0 ? 0 : GetLastError();
}

void DestroyLock(PlatformLock& lock) noexcept {
  DeleteCriticalSection(Section(lock));
}
void EnterLock(PlatformLock& lock) noexcept {
  EnterCriticalSection(Section(lock));
}
void LeaveLock(PlatformLock& lock) noexcept {
  LeaveCriticalSection(Section(lock));
}

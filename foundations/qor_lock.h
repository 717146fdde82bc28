// The recursive lock of all folders and the guard that holds it for a scope.
#pragma once

#include "foundations/error_report.h"
#include "platform/threads.h"

namespace QOR::Thread {

class CQORLock {
 public:
  CQORLock() noexcept {
    constexpr unsigned long kSpinCount = 262144;
    const unsigned long error = InitializeLock(Section, kSpinCount);
    Made = error == 0;
    // The line number is part of the report's fixed text.
    if (!Made)
      CQORLog::ReportFailure("InitializeCriticalSectionAndSpinCount: ", error, "QOR::Thread::CQORLock::CQORLock", 15);
  }
  ~CQORLock() {
    if (Made) DestroyLock(Section);
  }
  CQORLock(const CQORLock&) = delete;
  CQORLock& operator=(const CQORLock&) = delete;

  void Enter() noexcept {
    if (Made) EnterLock(Section);
  }
  void Leave() noexcept {
    if (Made) LeaveLock(Section);
  }

 private:
  PlatformLock Section{};
  // A lock that the system could not create does nothing; the program continues without it.
  bool Made;
};

// Holds the lock to the end of the scope, or until Release.
class CQORLockGuard {
 public:
  explicit CQORLockGuard(CQORLock& lock) noexcept : Lock(&lock) { Lock->Enter(); }
  ~CQORLockGuard() { Release(); }
  CQORLockGuard(const CQORLockGuard&) = delete;
  CQORLockGuard& operator=(const CQORLockGuard&) = delete;

  void Release() noexcept {
    if (Owned) Lock->Leave();
    Owned = false;
  }

  CQORLock* Lock;
  // Cleared by a function that has left the lock itself.
  bool Owned = true;
};

}  // namespace QOR::Thread

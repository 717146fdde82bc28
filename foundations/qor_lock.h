// The lock of the system, re-entrant, and the guard that holds it for a scope. Any thread may call; a guard stays on
// the thread that made it.
#pragma once

#include "platform/threads.h"

namespace QOR::Thread {

class CQORLock {
 public:
  CQORLock() noexcept;
  ~CQORLock();
  CQORLock(const CQORLock&) = delete;
  CQORLock& operator=(const CQORLock&) = delete;

  void Enter() noexcept;
  void Leave() noexcept;

 private:
  PlatformLock Section{};
  // A lock that the system could not make locks nothing, and the program goes on without it.
  bool Made;
};

// Enters the lock and leaves it at the end of the scope, if it still owns it then.
class CQORLockGuard {
 public:
  explicit CQORLockGuard(CQORLock& lock) noexcept : Lock(&lock) { Lock->Enter(); }
  ~CQORLockGuard() { Release(); }
  CQORLockGuard(const CQORLockGuard&) = delete;
  CQORLockGuard& operator=(const CQORLockGuard&) = delete;

  // Leaves the lock now, once.
  void Release() noexcept {
    if (Owned) Lock->Leave();
    Owned = false;
  }

  CQORLock* Lock;
  // Cleared by hand where a function has left the lock itself.
  bool Owned = true;
};

}  // namespace QOR::Thread

#include "foundations/qor_lock.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

using QOR::Thread::CQORLock;
using QOR::Thread::CQORLockGuard;

TEST(QorLock, KeepsThreadsApartAndLetsItsOwnerInAgain) {
  CQORLock lock;
  int count = 0;
  const auto work = [&] {
    for (int i = 0; i < 20'000; ++i) {
      const CQORLockGuard outer(lock);
      const CQORLockGuard inner(lock);
      count = count + 1;
    }
  };
  std::thread first(work);
  std::thread second(work);
  first.join();
  second.join();
  EXPECT_EQ(count, 40'000);
}

TEST(QorLock, GuardLeavesEarlyAndOnlyWhatItOwns) {
  CQORLock lock;
  bool entered = false;
  const auto enterElsewhere = [&] {
    std::thread([&] {
      const CQORLockGuard guard(lock);
      entered = true;
    }).join();
  };
  {
    CQORLockGuard guard(lock);
    guard.Release();
    guard.Release();
    enterElsewhere();
    EXPECT_TRUE(entered);
  }
  entered = false;
  {
    CQORLockGuard guard(lock);
    lock.Leave();
    guard.Owned = false;
  }
  enterElsewhere();
  EXPECT_TRUE(entered);
}

}  // namespace

#include "foundations/error_report.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <thread>

#include "foundations/qor_lock.h"

namespace {

using QOR::Thread::CQORLock;
using QOR::Thread::CQORLockGuard;

TEST(ErrorReportTest, ReportsOneLineToStandardError) {
  testing::internal::CaptureStderr();
  CQORLog::ReportFailure("No room: ", 0, "F::G", 4294967295u);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "F::G\t4294967295\tNo room: \n");
}

// Of all numbers that systems use: texts of several lines become one, and places for inserts stay visible.
TEST(ErrorReportTest, AppendsTheTextOfTheSystemInOneLine) {
  bool hasInsert = std::filesystem::path::preferred_separator != '\\';  // only Windows has texts with inserts
  for (unsigned long number = 1; number < 16000; ++number) {
    const std::string line = FailureLine("Open: ", number, "F", 7),
                      start = "F\t7\tOpen: ErrorNo: " + std::to_string(number) + ", ";
    EXPECT_TRUE(line.starts_with(start) && (number != 2 || line.size() > start.size())) << line;
    EXPECT_EQ(line.find_first_of("\r\n"), std::string::npos) << line;
    hasInsert = hasInsert || line.find("%1") != std::string::npos;
  }
  EXPECT_TRUE(hasInsert);
  EXPECT_EQ(FailureLine("Open: ", 123456789, "F", 7), "F\t7\tOpen: ErrorNo: 123456789, ") << "no system knows it";
}

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

// A thread that does not wait gets many turns to enter while this one yields.
TEST(QorLock, GuardLeavesEarlyAndOnlyWhatItOwns) {
  CQORLock lock;
  lock.Enter();
  {
    CQORLockGuard guard(lock);
    guard.Release();
  }
  {
    CQORLockGuard guard(lock);
    lock.Leave();
    guard.Owned = false;
  }
  std::atomic<bool> started = false, entered = false;
  std::thread other([&] {
    started = true;
    const CQORLockGuard guard(lock);
    entered = true;
  });
  while (!started) std::this_thread::yield();
  for (int i = 0; i < 200; ++i, std::this_thread::yield()) EXPECT_FALSE(entered);
  lock.Leave();
  other.join();
  EXPECT_TRUE(entered);
}

}  // namespace

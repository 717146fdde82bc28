#include "foundations/qor_lock.h"

#include "foundations/error_report.h"

namespace QOR::Thread {

namespace {
constexpr unsigned long kSpinCount = 262144;
}  // namespace

CQORLock::CQORLock() noexcept {
  const unsigned long error = InitializeLock(Section, kSpinCount);
  Made = error == 0;
  // The line number is part of the report's fixed text.
  if (!Made) {
    CQORLog::ReportFailure("InitializeCriticalSectionAndSpinCount: ", error, "QOR::Thread::CQORLock::CQORLock", 15);
  }
}

CQORLock::~CQORLock() {
  if (Made) DestroyLock(Section);
}

void CQORLock::Enter() noexcept {
  if (Made) EnterLock(Section);
}

void CQORLock::Leave() noexcept {
  if (Made) LeaveLock(Section);
}

}  // namespace QOR::Thread

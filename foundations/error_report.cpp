#include "foundations/error_report.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <mutex>

#include "platform/faults.h"
#include "platform/locale.h"

std::string FailureLine(std::string_view message, unsigned long errorNumber, std::string_view functionName,
                        unsigned line) {
  std::string report(functionName);
  report.append("\t").append(std::to_string(line)).append("\t").append(message);
  if (errorNumber == 0) return report;
  return report.append("ErrorNo: ")
      .append(std::to_string(errorNumber))
      .append(", ")
      .append(SystemErrorText(errorNumber));
}

void CQORLog::ReportFailure(std::string_view message, unsigned long errorNumber, std::string_view functionName,
                            unsigned line) noexcept {
  try {
    const std::string report = FailureLine(message, errorNumber, functionName, line) + '\n';
    std::fwrite(report.data(), 1, report.size(), stderr);
  } catch (...) {  // Out of memory.
  }
}

namespace QOR::Util {

namespace {

// Line numbers that are part of the reports' fixed text.
struct DumpReport {
  DumpOutcome Outcome;
  const char* Message;
  unsigned Line;
};
constexpr DumpReport kDumpReports[] = {
    {DumpOutcome::NoLibrary, "Couldn't load dbghelp.dll", 193},
    {DumpOutcome::NoFile, "Couldn't create minidump file", 219},
    {DumpOutcome::NoFunction, "Bad MiniDumpWriteDump function", 246},
};

std::atomic<CQORExceptionHandler::DumpCallback> dumpCallback = nullptr;

// The terminate handler belongs to the process, so the threads that install it are counted. A dying thread reads these
// without the lock.
std::mutex handlerLock;
int handledThreads = 0;
std::terminate_handler formerTerminate = nullptr;

[[noreturn]] void OnTerminate() noexcept {
  if (CatchesFaultSignals()) EndProcessHere(&CQORExceptionHandler::CreateMiniDump);
  if (formerTerminate != nullptr) formerTerminate();
  std::abort();
}

}  // namespace

// C++20 has no unexpected handler: what called it calls terminate.
void CQORExceptionHandler::InstallThreadHandlers() noexcept {
  if (CatchesFaultSignals()) return;
  CatchFaultSignals(&CreateMiniDump);
  const std::lock_guard guard(handlerLock);
  if (handledThreads++ == 0) formerTerminate = std::set_terminate(OnTerminate);
}

void CQORExceptionHandler::RemoveThreadHandlers() noexcept {
  if (!CatchesFaultSignals()) return;
  {
    const std::lock_guard guard(handlerLock);
    // A handler that was set meanwhile stays.
    if (--handledThreads == 0 && std::get_terminate() == OnTerminate) std::set_terminate(formerTerminate);
  }
  ReleaseFaultSignals();
}

void CQORExceptionHandler::CreateMiniDump(void* exceptionPointers) noexcept {
  if (const DumpCallback callback = dumpCallback; callback != nullptr) callback(exceptionPointers);
  unsigned long error = 0;
  const DumpOutcome outcome = WriteProcessDump(exceptionPointers, error);
  for (const DumpReport& report : kDumpReports)
    if (report.Outcome == outcome)
      CQORLog::ReportFailure(report.Message, error, "QOR::Util::CQORExceptionHandler::CreateMiniDump", report.Line);
}

void CQORExceptionHandler::SetDumpCallback(DumpCallback callback) noexcept {
  dumpCallback = callback;
}

}  // namespace QOR::Util

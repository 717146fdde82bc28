#include "platform/faults.h"

#include <windows.h>
// dbghelp.h requires windows.h before it.
#include <dbghelp.h>

#include <csignal>
#include <iterator>
#include <mutex>

#include "platform/locale.h"

namespace {

constexpr DWORD kLongestName = 520;
constexpr int kSignals[] = {SIGFPE, SIGILL, SIGSEGV};
static_assert(SIGFPE == 8 && SIGILL == 4 && SIGSEGV == 11);

using SignalHandler = void (*)(int);
using WriteDumpFunction = decltype(&MiniDumpWriteDump);

// The C library keeps these handlers per thread, Wine's per process. Counting the guarded threads is right for both:
// the last one restores the former handlers. A fault reads this without the lock.
std::mutex handlersLock;
int guardedThreads = 0;
FaultFunction faultFunction = nullptr;
SignalHandler formerHandlers[std::size(kSignals)];
thread_local bool isGuarded = false;

[[noreturn]] void EndProcess() noexcept {
  TerminateProcess(GetCurrentProcess(), 1);
  __builtin_unreachable();
}

void OnSignal(int number);

// Does what happens without the handler, which the library has removed before the call.
void PassOn(int number) {
  const SignalHandler former = formerHandlers[number == SIGFPE ? 0 : number == SIGILL ? 1 : 2];
  if (former != SIG_DFL && former != SIG_IGN) {
    std::signal(number, OnSignal);
    former(number);
  } else {
    std::signal(number, former);
    std::raise(number);
  }
}

void OnSignal(int number) {
  if (!isGuarded) return PassOn(number);
  if (number == SIGILL) EndProcessHere(faultFunction);
  faultFunction(_pxcptinfoptrs);
  EndProcess();
}

BOOL CALLBACK OnDumpStep(void* /*parameter*/, const PMINIDUMP_CALLBACK_INPUT input, PMINIDUMP_CALLBACK_OUTPUT output) {
  return input != nullptr && output != nullptr && input->CallbackType <= 5 ? TRUE : FALSE;
}

HANDLE CreateDumpFile(const wchar_t* name) noexcept {
  return CreateFileW(name, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

BOOL WriteDump(WriteDumpFunction write, HANDLE file, void* pointers, MINIDUMP_CALLBACK_INFORMATION* callback) noexcept {
  MINIDUMP_EXCEPTION_INFORMATION exception{};
  exception.ThreadId = GetCurrentThreadId();
  exception.ExceptionPointers = static_cast<EXCEPTION_POINTERS*>(pointers);
  exception.ClientPointers = FALSE;
  return write(GetCurrentProcess(), GetCurrentProcessId(), file, MiniDumpNormal,
               pointers != nullptr ? &exception : nullptr, nullptr, callback);
}

DumpOutcome WriteDumpWith(HMODULE library, void* pointers, unsigned long& error) noexcept {
  wchar_t name[kLongestName + kDumpNameRoom] = {};
  const LocalMoment now = LocalNow();
  GetModuleFileNameW(nullptr, name, kLongestName);
  DumpNameOver(name, now.Fields.tm_hour, now.Fields.tm_min);
  HANDLE file = CreateDumpFile(name);
  if (file == INVALID_HANDLE_VALUE) {
    error = GetLastError();
    return DumpOutcome::NoFile;
  }
  const auto write =
      reinterpret_cast<WriteDumpFunction>(reinterpret_cast<void*>(GetProcAddress(library, "MiniDumpWriteDump")));
  if (write == nullptr) {
    error = GetLastError();
    CloseHandle(file);
    return DumpOutcome::NoFunction;
  }
  MINIDUMP_CALLBACK_INFORMATION callback{OnDumpStep, nullptr};
  if (WriteDump(write, file, pointers, &callback) == FALSE) {
    // Once more without the callback; the result does not matter.
    CloseHandle(file);
    file = CreateDumpFile(name);
    callback.CallbackRoutine = nullptr;
    WriteDump(write, file, pointers, &callback);
  }
  CloseHandle(file);
  return DumpOutcome::Done;
}

}  // namespace

void CatchFaultSignals(FaultFunction function) noexcept {
  if (isGuarded) return;
  isGuarded = true;
  const std::lock_guard guard(handlersLock);
  faultFunction = function;
  ++guardedThreads;
  for (std::size_t i = 0; i < std::size(kSignals); ++i) {
    const SignalHandler found = std::signal(kSignals[i], OnSignal);
    if (found != OnSignal) formerHandlers[i] = found == SIG_ERR ? SIG_DFL : found;
  }
}

void ReleaseFaultSignals() noexcept {
  if (!isGuarded) return;
  isGuarded = false;
  const std::lock_guard guard(handlersLock);
  if (--guardedThreads != 0) return;
  for (std::size_t i = 0; i < std::size(kSignals); ++i) {
    const SignalHandler found = std::signal(kSignals[i], formerHandlers[i]);
    if (found != OnSignal && found != SIG_ERR) std::signal(kSignals[i], found);
  }
}

bool CatchesFaultSignals() noexcept {
  return isGuarded;
}

void EndProcessHere(FaultFunction function) noexcept {
  CONTEXT context{};
  RtlCaptureContext(&context);
  EXCEPTION_RECORD record{};
  record.ExceptionAddress = __builtin_return_address(0);
  EXCEPTION_POINTERS pointers{&record, &context};
  function(&pointers);
  EndProcess();
}

DumpOutcome WriteProcessDump(void* exceptionPointers, unsigned long& error) noexcept {
  const HMODULE library = LoadLibraryW(L"dbghelp.dll");
  if (library == nullptr) {
    error = GetLastError();
    return DumpOutcome::NoLibrary;
  }
  const DumpOutcome outcome = WriteDumpWith(library, exceptionPointers, error);
  FreeLibrary(library);
  return outcome;
}

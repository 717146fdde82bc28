// Faults of guarded threads: the signals are caught, a dump is written, the process ends with exit code 1. What runs at
// a fault runs on the dying thread, takes no lock and does not allocate.
#pragma once

#include <cstddef>
#include <cwchar>
#include <iterator>

// Gets the platform's description of the fault (EXCEPTION_POINTERS, siginfo_t), or null; then the process ends.
using FaultFunction = void (*)(void* exceptionPointers);

// Guards this thread: its signals 8 (floating-point fault), 4 (illegal instruction) and 11 (segment violation) call the
// function and end the process with exit code 1. All threads have the same function. Faults of threads that are not
// guarded go to the former handlers.
void CatchFaultSignals(FaultFunction function) noexcept;
// The last guarded thread restores the process's former handlers; a handler that was set meanwhile stays.
void ReleaseFaultSignals() noexcept;
// Whether this thread is guarded.
bool CatchesFaultSignals() noexcept;

// Calls the function with the current context as the fault, then ends the process with exit code 1.
[[noreturn]] void EndProcessHere(FaultFunction function) noexcept;

enum class DumpOutcome { Done, NoLibrary, NoFile, NoFunction };

// Windows: writes a dump of the process into a file named after the program and the time; on failure error is the
// system's number. Linux: writes nothing, because a core file requires death by the signal and the exit code must be 1.
DumpOutcome WriteProcessDump(void* exceptionPointers, unsigned long& error) noexcept;

// Characters that DumpNameOver needs after the name, with the terminator.
inline constexpr std::size_t kDumpNameRoom = 6;

// The last four characters of the program's name, its extension, become _hhmm.dmp: x.exe at 09:05 gives x_0905.dmp.
inline void DumpNameOver(wchar_t* programName, int hour, int minute) noexcept {
  const std::size_t length = std::wcslen(programName);
  const auto digit = [](int value) { return static_cast<wchar_t>(L'0' + value % 10); };
  const wchar_t ending[] = {
      L'_', digit(hour / 10), digit(hour), digit(minute / 10), digit(minute), L'.', L'd', L'm', L'p', L'\0'};
  std::wmemcpy(programName + (length < 4 ? 0 : length - 4), ending, std::size(ending));
}

// The number of this thread's last failed system call.
#ifdef _WIN32
// Declared here so that no public header pulls in windows.h.
extern "C" __declspec(dllimport) unsigned long __stdcall GetLastError();
inline unsigned long LastSystemError() noexcept {
  return GetLastError();
}
#else
#include <cerrno>
inline unsigned long LastSystemError() noexcept {
  return static_cast<unsigned long>(errno);
}
#endif

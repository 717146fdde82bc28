// What the platform does when a guarded thread dies of a fault: the signals that it catches, the dump of the process,
// the end with exit code 1. A fault's functions run on the dying thread, take no lock and allocate nothing of ours.
#pragma once

#include <cstddef>
#include <cwchar>
#include <iterator>

// Called with the platform's description of the fault (EXCEPTION_POINTERS, siginfo_t), or null; the process ends behind
// it.
using FaultFunction = void (*)(void* exceptionPointers);

// From here on the signals 8 (floating-point fault), 4 (illegal instruction) and 11 (segment violation) of the calling
// thread go to the function, and then end the process with exit code 1. The function is the same for all threads.
// Faults of other threads go where they went before.
void CatchFaultSignals(FaultFunction function) noexcept;
// Ends that for the calling thread; behind the last such thread the process has its former handlers back. A handler
// that somebody else has put in place meanwhile stays.
void ReleaseFaultSignals() noexcept;
// Whether the calling thread stands between the two.
bool CatchesFaultSignals() noexcept;

// Calls the function with the present context as the fault, then ends the process with exit code 1.
[[noreturn]] void EndProcessHere(FaultFunction function) noexcept;

enum class DumpOutcome { Done, NoLibrary, NoFile, NoFunction };

// Windows: writes a dump of the process into a file named after the program and the time; on failure error is the
// system's number. Linux: writes nothing. A core file would need the process to die of the signal, and what must hold
// on every platform is the exit code 1.
DumpOutcome WriteProcessDump(void* exceptionPointers, unsigned long& error) noexcept;

// Characters that DumpNameOver needs behind the name, with the terminator.
inline constexpr std::size_t kDumpNameRoom = 6;

// The last four characters of the program's name, its extension, become _hhmm.dmp: x.exe at 09:05 gives x_0905.dmp.
inline void DumpNameOver(wchar_t* programName, int hour, int minute) noexcept {
  const std::size_t length = std::wcslen(programName);
  const auto digit = [](int value) { return static_cast<wchar_t>(L'0' + value % 10); };
  const wchar_t ending[] = {
      L'_', digit(hour / 10), digit(hour), digit(minute / 10), digit(minute), L'.', L'd', L'm', L'p', L'\0'};
  std::wmemcpy(programName + (length < 4 ? 0 : length - 4), ending, std::size(ending));
}

// The number of the calling thread's last failed system call, for error reports.
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

// Error reports, one text line each, and the dump that a dying thread leaves.
#pragma once

#include <string>
#include <string_view>

// "function <tab> line <tab> message", followed by "ErrorNo: number, text" if the number is not 0. The text is the
// system's for the number, empty if it has none.
std::string FailureLine(std::string_view message, unsigned long errorNumber, std::string_view functionName,
                        unsigned line);

class CQORLog {
 public:
  // Writes the line to standard error, without level and time, which only a log object knows; the plug-in has none.
  // A report that cannot allocate is lost.
  static void ReportFailure(std::string_view message, unsigned long errorNumber, std::string_view functionName,
                            unsigned line) noexcept;
};

namespace QOR::Util {

// Ends the process with a dump if a thread that installed it dies of a fatal signal or an uncaught exception. Only the
// writer threads of record files install it; any other crash is the terminal's to handle. What runs at a fault runs on
// the dying thread and takes no lock, so a dump can be made while locks are held.

class CQORExceptionHandler {
 public:
  using DumpCallback = void (*)(void* exceptionPointers);

  virtual ~CQORExceptionHandler() = default;

  // First step of a thread: its signals 8, 4 and 11 and its uncaught exceptions now write a dump and end the process
  // with exit code 1.
  static void InstallThreadHandlers() noexcept;
  // Last step of the thread. After the last thread the process has its former handlers again, and the module can be
  // unloaded.
  static void RemoveThreadHandlers() noexcept;

  // Calls the callback, writes the dump, reports failures. The pointers are the platform's, or null.
  static void CreateMiniDump(void* exceptionPointers) noexcept;

  // Runs before a dump. The plug-in sets none (null).
  static void SetDumpCallback(DumpCallback callback) noexcept;
};

}  // namespace QOR::Util

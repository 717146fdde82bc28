// The sink of the system's error reports, one text line each. Any thread may call.
#pragma once

#include <string>
#include <string_view>

// "function <tab> line <tab> message", and behind it, if the number is not 0, "ErrorNo: number, text", where the text
// is the system's own for the number, empty if the system has none.
std::string FailureLine(std::string_view message, unsigned long errorNumber, std::string_view functionName,
                        unsigned line);

class CQORLog {
 public:
  // Writes the line to standard error, as no log object exists to take it: level and time, which that object would put
  // ahead, are left out. Never throws: a report that finds no memory is lost.
  static void ReportFailure(std::string_view message, unsigned long errorNumber, std::string_view functionName,
                            unsigned line) noexcept;
};

// CQORExceptionHandler: ends the process with a dump when a thread that asked for it dies of a fatal signal or of an
// uncaught exception. Only writer threads of record files ask; a crash anywhere else is the terminal's business. Each
// thread installs and removes for itself. What runs at a fault runs on the dying thread and takes no lock, so that a
// dump can be made while locks are held.
namespace QOR::Util {

class CQORExceptionHandler {
 public:
  using DumpCallback = void (*)(void* exceptionPointers);

  virtual ~CQORExceptionHandler() = default;

  // The first step of a thread. From here on its signals 8, 4 and 11 and its uncaught exceptions write a dump and end
  // the process with exit code 1.
  static void InstallThreadHandlers() noexcept;
  // The last step of the thread: behind the last one the process has its former handlers back, and the module can be
  // unloaded.
  static void RemoveThreadHandlers() noexcept;

  // Calls the callback, writes the dump, reports what fails. The pointers are the platform's, or null.
  static void CreateMiniDump(void* exceptionPointers) noexcept;

  // What runs before a dump; null, as it is in the plug-in, for nothing.
  static void SetDumpCallback(DumpCallback callback) noexcept;
};

}  // namespace QOR::Util

// The number of the calling thread's last failed system call, for error reports. Not a text: FailureLine adds it.
#pragma once

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

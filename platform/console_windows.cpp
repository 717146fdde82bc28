#include "platform/console.h"

#include <windows.h>

bool CloseOwnConsole() noexcept {
  DWORD processes[2] = {};
  if (GetConsoleProcessList(processes, 2) != 1) return false;
  return FreeConsole() != 0;
}

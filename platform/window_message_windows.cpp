#include "platform/window_message.h"

#include <windows.h>

unsigned RegisterNamedMessage(const char* name) noexcept {
  return RegisterWindowMessageA(name);
}

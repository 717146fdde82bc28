#include "platform/console.h"

bool CloseOwnConsole() noexcept {
  return false;
}

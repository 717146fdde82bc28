#include "platform/window_message.h"

unsigned RegisterNamedMessage(const char* /*name*/) noexcept {
  return 0;
}

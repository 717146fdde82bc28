#include "platform/error_text.h"

#include <windows.h>

namespace {
// Places for inserts stay as they are, as there is nothing to insert, and line breaks become blanks.
constexpr DWORD kFlags = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK;
static_assert(kFlags == 0x12FF);
}  // namespace

std::string SystemErrorText(unsigned long errorNumber) {
  char text[512];
  return {text, FormatMessageA(kFlags, nullptr, errorNumber, 0, text, sizeof text, nullptr)};
}

#include "platform/error_text.h"

#include <system_error>

std::string SystemErrorText(unsigned long errorNumber) {
  std::string text = std::system_category().message(static_cast<int>(errorNumber));
  // So begins what the library makes up for a number that the system does not know.
  return text.starts_with("Unknown error") ? std::string() : text;
}

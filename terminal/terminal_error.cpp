#include "terminal/terminal_error.h"

std::string PathText(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

void ThrowFileError(const std::filesystem::path& path, const std::string& what, std::error_code error) {
  const std::string reason = error ? error.message() : "the system gives no reason";
  throw TerminalError(ExitCode::File, PathText(path) + ": " + what + ": " + reason);
}

void ThrowFileError(const std::filesystem::path& path, const std::string& what, int errorNumber) {
  ThrowFileError(path, what, std::error_code(errorNumber, std::generic_category()));
}

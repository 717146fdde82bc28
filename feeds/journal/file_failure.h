// Sentences about files that failed, with the path as UTF-8 on every platform.
#pragma once

#include <filesystem>
#include <string>
#include <system_error>

#include "platform/faults.h"

inline std::string PathInSentence(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

// "WHAT PATH: the system's reason", of this thread's last call that failed.
inline std::string FileFailure(const char* what, const std::filesystem::path& path) {
  const std::error_code error(static_cast<int>(LastSystemError()), std::system_category());
  return std::string(what) + ' ' + PathInSentence(path) + ": " + error.message();
}

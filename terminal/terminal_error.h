// TerminalError: what ends a run of the terminal, with its exit code and one sentence for the user; main catches it.
// Not for bad lines of a file: those are reported (bad_lines.h) and the rest goes on. Any thread may call.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

enum class ExitCode : int {
  Played = 0,
  BadLines = 1,
  CommandLine = 2,
  File = 3,
  Plugin = 4,
  Display = 5,
};

class TerminalError : public std::runtime_error {
 public:
  TerminalError(ExitCode code, const std::string& sentence) : std::runtime_error(sentence), Code(code) {}
  ExitCode Code;
};

// A path for a sentence to the user: UTF-8, whatever the platform's own form is.
std::string PathText(const std::filesystem::path& path);

// Throws "PATH: what: the system's reason" with ExitCode::File.
[[noreturn]] void ThrowFileError(const std::filesystem::path& path, const std::string& what, std::error_code error);
// The same with the reason that errno has.
[[noreturn]] void ThrowFileError(const std::filesystem::path& path, const std::string& what, int errorNumber);

// What the terminal tells its user of failures: TerminalError, which ends a run with an exit code and one sentence, and
// the report of bad lines, which does not. main catches TerminalError.
#pragma once

#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <map>
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

// A path as UTF-8 on every platform.
std::string PathText(const std::filesystem::path& path);

// Throws "PATH: what: reason of the system" with ExitCode::File.
[[noreturn]] void ThrowFileError(const std::filesystem::path& path, const std::string& what, std::error_code error);
// The same for an errno.
[[noreturn]] void ThrowFileError(const std::filesystem::path& path, const std::string& what, int errorNumber);

// Reports and counts lines or messages of a file that cannot be used; reading goes on after each. A file that is read
// again is not reported again. Failed commands of a script are reported alike and counted apart.
class BadLineReport {
 public:
  explicit BadLineReport(std::ostream& out) : Out(out) {}

  // "FILE:LINE: reason", lines counted from 1.
  void AtLine(const std::filesystem::path& file, std::uint64_t line, const std::string& reason);
  // "FILE: byte OFFSET: reason", offsets counted from 0.
  void AtByte(const std::filesystem::path& file, std::uint64_t offset, const std::string& reason);
  // "FILE: reason"
  void InFile(const std::filesystem::path& file, const std::string& reason);
  // "FILE:LINE: reason" for a command that failed.
  void AtCommand(const std::filesystem::path& file, std::uint64_t line, const std::string& reason);

  // The file is read from its begin again: what it reports first has been reported.
  void StartAgain(const std::filesystem::path& file) { Files[file].Read = 0; }

  std::uint64_t Count() const noexcept { return Reported; }
  std::uint64_t FailedCommands() const noexcept { return Failed; }

 private:
  struct FileReports {
    std::uint64_t Read = 0;  // since the file's begin
    std::uint64_t Given = 0;
  };
  bool IsNew(const std::filesystem::path& file);

  std::ostream& Out;
  std::map<std::filesystem::path, FileReports> Files;
  std::uint64_t Reported = 0;
  std::uint64_t Failed = 0;  // commands
};

// "1,234,567" in every locale.
inline std::string WithThousands(std::uint64_t number) {
  std::string text = std::to_string(number);
  for (std::size_t place = text.size(); place > 3; place -= 3) text.insert(place - 3, 1, ',');
  return text;
}

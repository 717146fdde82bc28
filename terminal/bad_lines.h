// CBadLines: tells the user of each line or message of a file that could not be taken, and counts them. Reading goes on
// behind each. A file that is read once more is not reported once more. Commands of a script that failed are told in
// the same way and counted apart. One thread.
#pragma once

#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <map>
#include <string>

class CBadLines {
 public:
  explicit CBadLines(std::ostream& out) : Out(out) {}

  // "FILE:LINE: reason", lines counted from 1.
  void AtLine(const std::filesystem::path& file, std::uint64_t line, const std::string& reason);
  // "FILE: byte OFFSET: reason", offsets counted from 0.
  void AtByte(const std::filesystem::path& file, std::uint64_t offset, const std::string& reason);
  // "FILE:LINE: reason" for a command that could not be done.
  void AtCommand(const std::filesystem::path& file, std::uint64_t line, const std::string& reason);

  // The file is read from its begin again: its first reports are those that have been given.
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

// CBadLines: tells the user of each line or message of a file that could not be taken, and counts them. Reading goes on
// behind each. One thread.
#pragma once

#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <string>

class CBadLines {
 public:
  explicit CBadLines(std::ostream& out) : Out(out) {}

  // "FILE:LINE: reason", lines counted from 1.
  void AtLine(const std::filesystem::path& file, std::uint64_t line, const std::string& reason);
  // "FILE: byte OFFSET: reason", offsets counted from 0.
  void AtByte(const std::filesystem::path& file, std::uint64_t offset, const std::string& reason);

  std::uint64_t Count() const noexcept { return Reported; }

 private:
  std::ostream& Out;
  std::uint64_t Reported = 0;
};
